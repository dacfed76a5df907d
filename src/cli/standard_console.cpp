#include "cli/standard_console.h"

#include <cstdio>

namespace lokari {
namespace {

void print(std::FILE* file, const QString& line) {
  std::fputs((line + QLatin1Char('\n')).toUtf8().constData(), file);
  std::fflush(file);
}

}  // namespace

void StandardConsole::result(const QString& line) {
  print(stdout, line);
}

void StandardConsole::message(const QString& line) {
  print(stderr, line);
}

}  // namespace lokari
