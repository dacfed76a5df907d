#include "decoder/spd_file.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/paths.h"
#include "base/plain_file.h"
#include "base/text_file.h"
#include "decoder/dec_fields.h"

namespace lokari {
namespace {

/// More than any table needs, and little enough to read a wrong choice without a pause.
constexpr qint64 kMostBytes = 65536;

/// No text file has a control character but a tab, and the end mark of old ones.
bool isForeign(QChar c) {
  return c < u' ' && c != u'\t' && c != u'\x1A';
}

QString damaged(const QString& path, const QString& reason) {
  return QStringLiteral(
             "Datei %1 ist beschädigt: %2 Die Geschwindigkeitstabelle bleibt unverändert.")
      .arg(path, reason);
}

}  // namespace

SpdFile readSpdFile(const QString& path, int highest) {
  PlainFile file(path);
  if (!file.open()) {
    return {{}, QStringLiteral("Datei %1 kann nicht geöffnet werden!").arg(path)};
  }
  const QStringList lines = splitLines(decodeText(file.read(kMostBytes)));
  if (file.error() != QFileDevice::NoError) {
    return {{}, QStringLiteral("Datei %1 kann nicht gelesen werden!").arg(path)};
  }
  const QString line = lines.value(0);
  if (std::any_of(line.begin(), line.end(), isForeign)) {
    return {{}, damaged(path, QStringLiteral("Sie ist keine Textdatei."))};
  }
  SpdFile content{numberList(line, highest), {}};
  if (content.values.empty()) {
    content.fault = damaged(path, QStringLiteral("Ihre erste Zeile enthält keine Zahl."));
  }
  return content;
}

QByteArray spdLine(const std::vector<int>& values) {
  QByteArray line;
  for (const int value : values) {
    if (!line.isEmpty()) line += ',';
    line += QByteArray::number(value);
  }
  return line + "\r\n";
}

QString freeSpdName(const QString& folder) {
  for (int number = 1;; ++number) {
    const QString name = QStringLiteral("Tab%1.spd").arg(printed(number).trimmed());
    if (findFile(folder + u'/' + name).isEmpty()) return name;
  }
}

QString withSpdExtension(const QString& path) {
  return fileNameOf(path).contains(u'.') ? path : path + QStringLiteral(".spd");
}

}  // namespace lokari
