#include "base/paths.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace lokari {
namespace {

QString withSlashes(const QString& path) {
  return QString(path).replace(u'\\', u'/');
}

/// The entry of `folder` that equals `name` without regard to case, or an empty text.
QString entryOf(const QString& folder, const QString& name) {
  if (name == u"." || name == u"..") return name;
  const QDir dir(folder.isEmpty() ? QStringLiteral(".") : folder);
  if (QFileInfo::exists(dir.filePath(name))) return name;
  const auto filters = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
  // Sorted, so that of two candidates always the same one is taken.
  for (const QString& entry : dir.entryList(filters, QDir::Name)) {
    if (entry.compare(name, Qt::CaseInsensitive) == 0) return entry;
  }
  return {};
}

struct Walk {
  QString path;      // as far as it exists
  QStringList rest;  // the parts that do not
};

Walk walk(const QString& path) {
  const QString plain = withSlashes(path);
  Walk result;
  if (plain.startsWith(u'/')) result.path = QStringLiteral("/");
  QStringList parts = plain.split(u'/', Qt::SkipEmptyParts);
  while (!parts.isEmpty()) {
    const QString entry = entryOf(result.path, parts.first());
    if (entry.isEmpty()) break;
    if (!result.path.isEmpty() && !result.path.endsWith(u'/')) result.path += u'/';
    result.path += entry;
    parts.removeFirst();
  }
  result.rest = parts;
  return result;
}

qsizetype lastSeparator(const QString& path) {
  return std::max({path.lastIndexOf(u':'), path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')});
}

}  // namespace

QString findFile(const QString& path) {
  if (path.isEmpty()) return {};
  const QString plain = withSlashes(path);
  if (QFileInfo::exists(plain)) return plain;
  const Walk found = walk(path);
  return found.rest.isEmpty() ? found.path : QString();
}

QString placeFor(const QString& path) {
  const Walk found = walk(path);
  QString place = found.path;
  for (const QString& part : found.rest) {
    if (!place.isEmpty() && !place.endsWith(u'/')) place += u'/';
    place += part;
  }
  return place;
}

QString insideFolder(const QString& folder, const QStringList& names) {
  QString path = folder;
  for (const QString& name : names) {
    const bool harmful = name.isEmpty() || name == u"." || name == u".." ||
                         std::any_of(name.begin(), name.end(), [](QChar c) {
                           return c == u'/' || c == u'\\' || c == u':' || c.unicode() < 32;
                         });
    if (harmful) return {};
    path += u'/' + name;
  }
  return path;
}

QString fileNameOf(const QString& path) {
  return path.mid(lastSeparator(path) + 1);
}

QString folderOf(const QString& path) {
  return path.left(lastSeparator(path) + 1);
}

}  // namespace lokari
