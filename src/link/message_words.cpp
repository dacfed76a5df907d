#include "link/message_words.h"

#include "base/bytes.h"

namespace lokari {
namespace {

bool hasHead(const QByteArray& hexDigits, const char* head) {
  qsizetype at = 0;
  for (const char* digit = head; *digit != '\0'; ++digit) {
    if (*digit == ' ') continue;
    if (at == hexDigits.size()) return false;
    if (*digit != '.' && *digit != hexDigits[at]) return false;
    ++at;
  }
  return true;
}

QString numberIn(const QByteArray& message, const WordsPart& part) {
  if (part.at + part.bytes > message.size()) return QStringLiteral("?");
  int number = byteAt(message, part.at);
  if (part.bytes == 2) {
    const int second = byteAt(message, part.at + 1);
    number = part.lowFirst ? second * 256 + number : number * 256 + second;
  }
  return QString::number((number & part.mask) + part.plus);
}

bool isLineEnd(char c) {
  return c == '\r' || c == '\n';
}

}  // namespace

QString wordsOf(std::span<const WordsRow> rows, const QByteArray& message) {
  const QByteArray digits = message.toHex().toUpper();
  for (const WordsRow& row : rows) {
    if (!hasHead(digits, row.head)) continue;
    QString words = QString::fromUtf16(row.words);
    for (const WordsPart& part : row.parts) {
      if (part.at >= 0) words = words.arg(numberIn(message, part));
    }
    return words;
  }
  return {};
}

QString quoted(const QByteArray& text) {
  QString shown;
  for (const char c : text) {
    if (c >= ' ' && c <= '~') shown += QLatin1Char(c);
  }
  return u'"' + shown + u'"';
}

qsizetype lineLength(const QByteArray& text) {
  qsizetype at = 0;
  while (at < text.size() && isLineEnd(text[at])) ++at;
  if (at == text.size()) return at;
  while (at < text.size() && !isLineEnd(text[at])) ++at;
  if (at == text.size()) return 0;
  while (at < text.size() && isLineEnd(text[at])) ++at;
  return at;
}

}  // namespace lokari
