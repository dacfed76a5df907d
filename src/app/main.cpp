// The workbench with its windows.
#include <QApplication>

#include <cstdio>

#include "app/command_line.h"
#include "app/ui/application.h"

namespace {

/// True when the command line was a question, which needs no screen and has been answered.
bool answers(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  const QString answer =
      lokari::answerTo(QCoreApplication::arguments().mid(1).join(u' '), lokari::dataFolder());
  if (!answer.isEmpty()) std::puts(answer.toUtf8().constData());
  return !answer.isEmpty();
}

}  // namespace

int main(int argc, char** argv) {
  // Only what begins as an option may be one: the others need no second look for their folder.
  if (argc == 2 && argv[1][0] == '-' && answers(argc, argv)) return 0;
  const QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("lokari"));
  QApplication::setDesktopFileName(QStringLiteral("lokari"));
  lokari::speakGerman();
  // The whole command line is the stem of another settings file.
  lokari::Application lokari(QApplication::arguments().mid(1).join(u' '));
  return lokari.start() ? QApplication::exec() : 1;
}
