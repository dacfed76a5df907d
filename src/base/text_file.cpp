#include "base/text_file.h"

#include <QStringConverter>

#include "base/plain_file.h"
#include "base/whole_file.h"

namespace lokari {
namespace {

const QByteArray kUtf8Mark("\xEF\xBB\xBF");

std::optional<QString> decodeMarkedUtf8(const QByteArray& data) {
  if (!data.startsWith(kUtf8Mark)) return std::nullopt;
  QStringDecoder utf8(QStringDecoder::Utf8);
  const QString text = utf8.decode(QByteArrayView(data).sliced(kUtf8Mark.size()));
  if (utf8.hasError()) return std::nullopt;
  return text;
}

}  // namespace

QString decodeText(const QByteArray& data) {
  if (const auto text = decodeMarkedUtf8(data)) return *text;
  QStringDecoder decoder("windows-1252");
  return decoder.decode(data);
}

bool isMarkedUtf8(const QByteArray& data) {
  return decodeMarkedUtf8(data).has_value();
}

QByteArray encodeWindows1252(const QString& text) {
  QByteArray out;
  out.reserve(text.size());
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i].isHighSurrogate()) {
      out.append('?');
      ++i;
      continue;
    }
    // A fresh encoder per character: a failed one would taint those that follow.
    QStringEncoder encoder("windows-1252");
    const QByteArray one = encoder.encode(QStringView(text).mid(i, 1));
    out.append(encoder.hasError() || one.size() != 1 ? QByteArray("?") : one);
  }
  return out;
}

QByteArray encodeMarkedUtf8(const QString& text) {
  return kUtf8Mark + text.toUtf8();
}

QStringList splitLines(const QString& text) {
  QString plain = text;
  plain.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
  if (plain.isEmpty()) return {};
  if (plain.endsWith(u'\n')) plain.chop(1);
  return plain.split(u'\n');
}

std::optional<QString> readTextFile(const QString& path) {
  const auto data = readPlainFile(path);
  if (!data) return std::nullopt;
  return decodeText(*data);
}

std::optional<QByteArray> readPlainFile(const QString& path) {
  PlainFile file(path);
  if (!file.open()) return std::nullopt;
  QByteArray data = file.readAll();
  if (file.error() != QFileDevice::NoError) return std::nullopt;
  return data;
}

QString replaceFile(const QString& path, const QByteArray& data) {
  WholeFile file(path);
  if (file.begin()) file.write(data);
  file.commit();
  return file.fault();
}

bool writeFileAtomically(const QString& path, const QByteArray& data) {
  return replaceFile(path, data).isEmpty();
}

}  // namespace lokari
