#include "base/ui/pictures.h"

#include <QFileInfo>
#include <QPixmapCache>

#include "base/paths.h"
#include "base/text_file.h"

namespace lokari {
namespace {

QString twinOf(const QString& name) {
  const QFileInfo info(name);
  return info.completeBaseName() + QStringLiteral("@2x.") + info.suffix();
}

}  // namespace

QPixmap Pictures::load(const QString& name, double pixelRatio) const {
  // A throttle has dozens of the same few lamps, and changes them while it polls.
  const QString key = QStringLiteral("%1/%2*%3").arg(basePath_, name).arg(pixelRatio);
  QPixmap picture;
  if (QPixmapCache::find(key, &picture)) return picture;
  const QString path = findFile(basePath_ + u'/' + name);
  if (path.isEmpty()) return {};
  // Through QImage: QPixmap itself would pick an @2x twin by its own rules.
  picture = QPixmap::fromImage(QImage::fromData(readPlainFile(path).value_or(QByteArray())));
  picture.setDevicePixelRatio(pixelRatio);
  if (!picture.isNull()) QPixmapCache::insert(key, picture);
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
