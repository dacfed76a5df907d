#include "decoder/dec_header.h"

#include "base/text_file.h"

namespace lokari {
namespace {

/// Empty when the line is no header.
QString typeIn(const QString& line) {
  const qsizetype end = line.indexOf(u']');
  return line.startsWith(u'[') && end > 0 ? line.mid(1, end - 1).trimmed() : QString();
}

QString makerIn(const QString& line) {
  const QString body = line.trimmed();
  if (!body.startsWith(QLatin1String("MANUFACTURER"), Qt::CaseInsensitive)) return {};
  QString number = digitsAtEnd(body);
  while (number.size() > 1 && number.startsWith(u'0')) number.remove(0, 1);
  return number;
}

}  // namespace

QString digitsAtEnd(const QString& text) {
  qsizetype begin = text.size();
  while (begin > 0 && text[begin - 1] >= u'0' && text[begin - 1] <= u'9') --begin;
  return text.mid(begin);
}

DecHeader readDecHeader(const QString& text) {
  DecHeader header;
  for (const QString& line : splitLines(text)) {
    if (header.type.isEmpty()) header.type = typeIn(line);
    const QString maker = makerIn(line);
    if (!maker.isEmpty()) header.maker = maker;
  }
  return header;
}

}  // namespace lokari
