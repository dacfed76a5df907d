#include "db/picture_fit.h"

namespace lokari {

QRectF fitPicture(QSizeF picture, QSizeF frame) {
  if (picture.isEmpty() || frame.isEmpty()) return {};
  const double ratio = picture.width() / picture.height();
  QSizeF size = ratio > frame.width() / frame.height()
                    ? QSizeF(frame.width(), frame.width() / ratio)
                    : QSizeF(frame.height() * ratio, frame.height());
  size += QSizeF(1, 1);
  return {QPointF((frame.width() - size.width()) / 2, (frame.height() - size.height()) / 2), size};
}

}  // namespace lokari
