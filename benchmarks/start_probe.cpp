// Starts the workbench as its main() does, tells on standard output when its main window can be
// used, and how many kilobytes of memory that took at most, and ends. Not installed: the start is
// measured with it.
#include <QApplication>
#include <QWindow>

#include <cstdio>
#include <sys/resource.h>

#include "app/ui/application.h"
#include "app/ui/main_win.h"

int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  lokari::speakGerman();
  lokari::Application lokari{QString()};
  if (!lokari.start()) return 1;
  // On show, painted, and nothing left that a click would have to wait for.
  QWindow* window = lokari.window().windowHandle();
  while (!window->isExposed()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  QApplication::processEvents();
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("%ld\n", usage.ru_maxrss);
  return 0;
}
