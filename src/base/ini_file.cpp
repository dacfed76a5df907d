#include "base/ini_file.h"

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <limits>
#include <optional>

#include "base/paths.h"
#include "base/text_file.h"

namespace lokari {
namespace {

const QByteArray kUtf8Mark("\xEF\xBB\xBF");

bool same(QStringView a, QStringView b) {
  return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// The name of a "[section]" line, or nothing.
std::optional<QString> sectionName(const QString& line) {
  const QString plain = line.trimmed();
  if (!plain.startsWith(u'[')) return std::nullopt;
  const auto end = plain.indexOf(u']');
  return plain.mid(1, end < 0 ? -1 : end - 1).trimmed();
}

/// True when the line sets `key`; comment lines never do.
bool setsKey(const QString& line, const QString& key) {
  if (line.trimmed().startsWith(u';')) return false;
  const auto equals = line.indexOf(u'=');
  return equals >= 0 && same(QStringView(line).left(equals).trimmed(), key);
}

struct Place {
  bool sectionFound = false;
  qsizetype keyLine = -1;
  qsizetype insertAt = 0;  // behind the section's last line that is not blank
};

Place find(const QStringList& lines, const QString& section, const QString& key) {
  Place place;
  bool inside = false;
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (const auto name = sectionName(lines[i])) {
      if (place.sectionFound) break;  // a second section of the name is never read
      inside = same(*name, section);
      place.sectionFound = inside;
      if (inside) place.insertAt = i + 1;
      continue;
    }
    if (!inside) continue;
    if (setsKey(lines[i], key)) {
      place.keyLine = i;
      return place;
    }
    if (!lines[i].trimmed().isEmpty()) place.insertAt = i + 1;
  }
  return place;
}

std::optional<QString> valueOf(const QString& path, const QString& section, const QString& key) {
  const QString existing = findFile(path);
  if (existing.isEmpty()) return std::nullopt;
  const auto text = readTextFile(existing);
  if (!text) return std::nullopt;
  const QStringList lines = splitLines(*text);
  const Place place = find(lines, section, key);
  if (place.keyLine < 0) return std::nullopt;
  const QString& line = lines[place.keyLine];
  QString value = line.mid(line.indexOf(u'=') + 1).trimmed();
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == u'"' || value.front() == u'\'');
  return quoted ? value.mid(1, value.size() - 2) : value;
}

}  // namespace

IniFile::IniFile(QString path) : path_(std::move(path)) {}

QString IniFile::getString(const QString& section, const QString& key, const QString& fallback,
                           int size) const {
  const auto value = valueOf(path_, section, key);
  return value ? value->left(size - 1) : fallback;
}

int IniFile::getInt(const QString& section, const QString& key, int fallback) const {
  const auto value = valueOf(path_, section, key);
  if (!value) return fallback;
  qint64 number = 0;
  for (const QChar c : *value) {
    if (c < u'0' || c > u'9') break;
    number = std::min<qint64>(number * 10 + (c.unicode() - u'0'), std::numeric_limits<int>::max());
  }
  return static_cast<int>(number);
}

bool IniFile::writeString(const QString& section, const QString& key, const QString& value) {
  const QString target = placeFor(path_);
  QByteArray raw;
  if (QFile file(target); file.exists()) {
    // What cannot be read must not be replaced.
    if (!file.open(QIODevice::ReadOnly)) return false;
    raw = file.readAll();
  }
  const bool utf8 = raw.startsWith(kUtf8Mark);
  const QString end =
      raw.isEmpty() || raw.contains("\r\n") ? QStringLiteral("\r\n") : QStringLiteral("\n");
  QStringList lines = splitLines(decodeText(raw));
  const Place place = find(lines, section, key);
  if (place.keyLine >= 0) {
    QString& line = lines[place.keyLine];
    line = line.left(line.indexOf(u'=') + 1) + value;
  } else {
    if (!place.sectionFound) lines << u'[' + section + u']';
    lines.insert(place.sectionFound ? place.insertAt : lines.size(), key + u'=' + value);
  }
  const QString text = lines.join(end) + end;
  return writeFileAtomically(target, utf8 ? kUtf8Mark + text.toUtf8() : encodeWindows1252(text));
}

}  // namespace lokari
