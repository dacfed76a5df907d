// The workbench with its windows.
#include <QApplication>

#include "app/ui/application.h"

int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("lokari"));
  QApplication::setDesktopFileName(QStringLiteral("lokari"));
  lokari::speakGerman();
  // The whole command line is the stem of another settings file.
  lokari::Application lokari(QApplication::arguments().mid(1).join(u' '));
  return lokari.start() ? QApplication::exec() : 1;
}
