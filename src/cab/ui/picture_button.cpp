#include "cab/ui/picture_button.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace lokari {
namespace {

/// Air around the picture, where the frame of the keyboard's focus is drawn.
constexpr int kAir = 3;
/// The files hold their pictures in this resolution at most.
constexpr double kLargest = 2.0;
constexpr double kSmallest = 0.6;
constexpr QSize kWithoutPicture(28, 28);

}  // namespace

PictureButton::PictureButton(const Pictures& pictures, const QString& name,
                             const QString& accessibleName, QWidget* parent)
    : QAbstractButton(parent), pictures_(pictures) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  setToolTip(accessibleName);
  // A click leaves the keyboard where it is, at the speed bar as a rule.
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

PictureButton::Face PictureButton::load(const QString& file) const {
  if (file.isEmpty()) return {};
  return {file, pictures_.pixmap(file, 1.0), pictures_.pixmap(file, kLargest)};
}

void PictureButton::showPicture(const QString& resting, const QString& pressed) {
  if (resting == resting_.file && pressed == pressed_.file) return;
  const QSize before = naturalSize();
  resting_ = load(resting);
  pressed_ = load(pressed);
  if (naturalSize() != before) updateGeometry();
  update();
}

void PictureButton::showOn(bool on) {
  setCheckable(true);
  setChecked(on);
}

QSize PictureButton::naturalSize() const {
  return resting_.small.isNull() ? kWithoutPicture : resting_.small.size();
}

QSize PictureButton::sizeHint() const {
  return naturalSize() + QSize(2 * kAir, 2 * kAir);
}

QSize PictureButton::minimumSizeHint() const {
  return (QSizeF(naturalSize()) * kSmallest).toSize() + QSize(2 * kAir, 2 * kAir);
}

QRectF PictureButton::pictureRect() const {
  const QSizeF natural = naturalSize();
  const QSizeF room = QSizeF(size()) - QSizeF(2 * kAir, 2 * kAir);
  const double scale =
      std::min({room.width() / natural.width(), room.height() / natural.height(), kLargest});
  QRectF place(QPointF(0, 0), natural * std::max(scale, 0.0));
  place.moveCenter(QRectF(rect()).center());
  return place;
}

void PictureButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF place = pictureRect();
  const QRectF around = place.adjusted(-kAir + 0.5, -kAir + 0.5, kAir - 0.5, kAir - 0.5);
  if (isEnabled() && underMouse()) {
    QColor glow = palette().color(QPalette::Highlight);
    glow.setAlpha(isDown() ? 90 : 45);
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawRoundedRect(around, 5, 5);
  }
  const Face& shown = face();
  if (shown.small.isNull()) {
    painter.setPen(palette().color(isChecked() ? QPalette::Link : QPalette::ButtonText));
    painter.drawText(rect(), Qt::AlignCenter, text());
  } else {
    const bool fine = place.width() * devicePixelRatioF() > shown.small.width();
    const QPixmap& picture = fine && !shown.large.isNull() ? shown.large : shown.small;
    painter.drawPixmap(place, picture, QRectF(picture.rect()));
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(around, 5, 5);
  }
}

void PictureButton::enterEvent(QEnterEvent* event) {
  QAbstractButton::enterEvent(event);
  update();
}

void PictureButton::leaveEvent(QEvent* event) {
  QAbstractButton::leaveEvent(event);
  update();
}

void PictureButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    return QAbstractButton::keyPressEvent(event);
  }
  // A key that is held down acts once.
  if (!event->isAutoRepeat()) click();
}

void PictureButton::mouseMoveEvent(QMouseEvent* event) {
  if (!actsOnPress_) QAbstractButton::mouseMoveEvent(event);
}

}  // namespace lokari
