#include "cli/standard_console.h"

#include <cstdio>

namespace lokari {
namespace {

bool print(std::FILE* file, const QString& line) {
  const bool taken = std::fputs((line + QLatin1Char('\n')).toUtf8().constData(), file) >= 0;
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
