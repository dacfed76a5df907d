#include "base/ui/pictures.h"

#include <QFileInfo>

#include "base/paths.h"

namespace lokari {
namespace {

QString twinOf(const QString& name) {
  const QFileInfo info(name);
  return info.completeBaseName() + QStringLiteral("@2x.") + info.suffix();
}

}  // namespace

QPixmap Pictures::load(const QString& name, double pixelRatio) const {
  const QString path = findFile(basePath_ + u'/' + name);
  if (path.isEmpty()) return {};
  // Through QImage: QPixmap itself would pick an @2x twin by its own rules.
  QPixmap picture = QPixmap::fromImage(QImage(path));
  picture.setDevicePixelRatio(pixelRatio);
  return picture;
}

QPixmap Pictures::pixmap(const QString& name, double pixelRatio) const {
  if (pixelRatio > 1.0) {
    const QPixmap twin = load(twinOf(name), 2.0);
    if (!twin.isNull()) return twin;
  }
  return load(name, 1.0);
}

QIcon Pictures::icon(const QString& name) const {
  QIcon icon;
  for (const QPixmap& picture : {load(name, 1.0), load(twinOf(name), 2.0)}) {
    if (!picture.isNull()) icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace lokari
