#include "app/dec_types.h"

#include "base/numbers.h"
#include "base/paths.h"
#include "base/text_file.h"

namespace lokari {

QStringList loadDecTypes(const QString& appPath) {
  QStringList types(256);
  const QString path = findFile(appPath + QStringLiteral("/Zimo/DecTypes.txt"));
  if (path.isEmpty()) return types;
  for (const QString& line : splitLines(readTextFile(path).value_or(QString()))) {
    const double code = numericPrefix(QStringView(line).left(3));
    const qsizetype equals = line.indexOf(u'=');
    if (code < 1 || code > 255 || equals < 0) continue;
    types[toInt16(code)] = line.mid(equals + 1);
  }
  return types;
}

}  // namespace lokari
