#include "base/ini_file.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <limits>
#include <optional>

#include "base/paths.h"
#include "base/text_file.h"

namespace lokari {
namespace {

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

/// The lines of a file byte for byte, each with its end, as splitLines() counts them.
class RawLines {
 public:
  explicit RawLines(const QByteArray& data) {
    qsizetype start = 0;
    for (qsizetype i = 0; i < data.size(); ++i) {
      const bool ends = data[i] == '\n' || (data[i] == '\r' && data.mid(i + 1, 1) != "\n");
      if (!ends) continue;
      lines_ << data.mid(start, i + 1 - start);
      start = i + 1;
    }
    if (start < data.size()) lines_ << data.mid(start);
    if (!lines_.isEmpty() && lines_.first().endsWith('\n') && !lines_.first().endsWith("\r\n")) {
      end_ = "\n";
    }
  }

  qsizetype count() const { return lines_.size(); }

  void setValue(qsizetype index, const QByteArray& value) {
    QByteArray& line = lines_[index];
    const qsizetype textEnd = line.size() - endOf(line).size();
    line = line.left(line.indexOf('=') + 1) + value + line.mid(textEnd);
  }

  void insert(qsizetype index, const QByteArray& line) {
    if (index > 0 && endOf(lines_[index - 1]).isEmpty()) lines_[index - 1] += end_;
    lines_.insert(index, line + end_);
  }

  QByteArray joined() const { return lines_.join(); }

 private:
  static QByteArray endOf(const QByteArray& line) {
    if (line.endsWith("\r\n")) return "\r\n";
    return line.endsWith('\n') || line.endsWith('\r') ? line.right(1) : QByteArray();
  }

  QList<QByteArray> lines_;
  QByteArray end_ = "\r\n";  ///< of new lines: that of the first one
};

/// Sets a key in the bytes of a file.
QByteArray withKey(QByteArray raw, const QString& section, const IniEntry& entry) {
  QString line = entry.value;
  line.replace(u'\r', u' ').replace(u'\n', u' ');
  // A path with letters that the code page lacks must be found again at the next start.
  const bool widens = decodeText(encodeWindows1252(line)) != line && !isMarkedUtf8(raw);
  if (widens) raw = encodeMarkedUtf8(decodeText(raw));
  const bool utf8 = isMarkedUtf8(raw);
  const auto encoded = [utf8](const QString& text) {
    return utf8 ? text.toUtf8() : encodeWindows1252(text);
  };

  const Place place = find(splitLines(decodeText(raw)), section, entry.key);
  RawLines lines(raw);
  if (place.keyLine >= 0) {
    lines.setValue(place.keyLine, encoded(line));
  } else {
    if (!place.sectionFound) lines.insert(lines.count(), encoded(u'[' + section + u']'));
    lines.insert(place.sectionFound ? place.insertAt : lines.count(),
                 encoded(entry.key + u'=' + line));
  }
  return lines.joined();
}

}  // namespace

std::optional<QString> IniState::valueOf(const QString& section, const QString& key) const {
  const Place place = find(lines_, section, key);
  if (place.keyLine < 0) return std::nullopt;
  const QString& line = lines_[place.keyLine];
  QString value = line.mid(line.indexOf(u'=') + 1).trimmed();
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == u'"' || value.front() == u'\'');
  return quoted ? value.mid(1, value.size() - 2) : value;
}

QString IniState::getString(const QString& section, const QString& key, const QString& fallback,
                            int size) const {
  const auto value = valueOf(section, key);
  return value ? value->left(size - 1) : fallback;
}

int IniState::getInt(const QString& section, const QString& key, int fallback) const {
  const auto value = valueOf(section, key);
  if (!value) return fallback;
  qint64 number = 0;
  for (const QChar c : *value) {
    if (c < u'0' || c > u'9') break;
    number = std::min<qint64>(number * 10 + (c.unicode() - u'0'), std::numeric_limits<int>::max());
  }
  return static_cast<int>(number);
}

IniFile::IniFile(QString path) : path_(std::move(path)) {}

IniState IniFile::read() const {
  const QString existing = findFile(path_);
  const auto text = existing.isEmpty() ? std::nullopt : readTextFile(existing);
  return text ? IniState(splitLines(*text)) : IniState();
}

bool IniFile::writeAll(const QString& section, const QList<IniEntry>& entries) {
  const QString target = placeFor(path_);
  QByteArray raw;
  if (QFileInfo::exists(target)) {
    // What cannot be read must not be replaced.
    const auto data = readPlainFile(target);
    if (!data) return false;
    raw = *data;
  }
  for (const IniEntry& entry : entries) raw = withKey(raw, section, entry);
  return writeFileAtomically(target, raw);
}

}  // namespace lokari
