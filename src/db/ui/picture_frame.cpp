#include "db/ui/picture_frame.h"

#include <QLabel>

#include "db/picture_fit.h"

namespace lokari {

PictureFrame::PictureFrame(QWidget* parent) : QFrame(parent), md_pic_(new QLabel(this)) {
  setObjectName(QStringLiteral("picContainer"));
  setAccessibleName(QStringLiteral("Bild des Fahrzeugs"));
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
  // The one dot that the picture is larger by must not lie on the frame's line.
  setContentsMargins(1, 1, 1, 1);
  setMinimumSize(180, 110);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  md_pic_->setObjectName(QStringLiteral("md_pic"));
  md_pic_->setScaledContents(true);
  md_pic_->hide();
}

void PictureFrame::showPicture(const QByteArray& encoded) {
  picture_ = QPixmap::fromImage(QImage::fromData(encoded));
  fit();
}

void PictureFrame::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  fit();
}

void PictureFrame::fit() {
  const QRect room = contentsRect();
  const QRect place =
      fitPicture(picture_.size(), room.size()).translated(room.topLeft()).toAlignedRect();
  md_pic_->setVisible(!picture_.isNull());
  if (picture_.isNull() || room.isEmpty()) {
    md_pic_->clear();
    return;
  }
  // Scaled here, in the screen's own dots: a label's own scaling is coarse.
  QPixmap fitted = picture_.scaled(place.size() * devicePixelRatioF(), Qt::IgnoreAspectRatio,
                                   Qt::SmoothTransformation);
  fitted.setDevicePixelRatio(devicePixelRatioF());
  md_pic_->setPixmap(fitted);
  md_pic_->setGeometry(place);
}

}  // namespace lokari
