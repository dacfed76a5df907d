#include "cli/standard_console.h"

#include <cstdio>

namespace lokari {
namespace {

/// What a database holds may have any character: none of them ends the line or speaks to the
/// terminal.
QString printable(QString line) {
  for (QChar& sign : line) {
    const bool layout = sign == u'\t' || sign == u'\n' || sign == u'\r';
    if (sign.category() == QChar::Other_Control && !layout) sign = u' ';
  }
  return line;
}

bool print(std::FILE* file, const QString& line) {
  const QByteArray bytes = printable(line).toUtf8() + '\n';
  const auto size = static_cast<std::size_t>(bytes.size());
  const bool taken = std::fwrite(bytes.constData(), 1, size, file) == size;
  return std::fflush(file) == 0 && taken;
}

}  // namespace

void StandardConsole::result(const QString& line) {
  if (print(stdout, line) || !complete_) return;
  complete_ = false;
  message(QStringLiteral("Die Ergebnisse lassen sich nicht ausgeben!"));
  onLost_();
}

void StandardConsole::message(const QString& line) {
  print(stderr, line);
}

}  // namespace lokari
