// lokari-cli: the workbench without windows.
#include <QCoreApplication>
#include <QStandardPaths>

#include "base/qt_clock.h"
#include "base/signal_watch.h"
#include "cli/cli.h"
#include "cli/standard_console.h"
#include "link/system_transports.h"

namespace {

using namespace lokari;

/// Where the program lives; the user's own folder is filled from the installation first.
QString prepareAppPath(StandardConsole& console) {
  const QString programs = QCoreApplication::applicationDirPath();
  const QString userData = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  const QString appPath = chooseAppPath(qEnvironmentVariable("LOKARI_APP"), programs, userData);
  if (appPath == userData + QStringLiteral("/lokari")) {
    const QString failure = seedAppPath(appPath, programs + QStringLiteral("/../share/lokari"));
    if (!failure.isEmpty()) console.message(failure);
  }
  return appPath;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  StandardConsole console;
  QtClock clock;
  const QString appPath = prepareAppPath(console);
  SystemTransports transports(appPath, clock);
  Interrupt interrupt;
  const SignalWatch watch([&interrupt] { interrupt.raise(); });
  const CliWorld world{appPath, clock, transports.transports(), console, interrupt};
  return static_cast<int>(runCli(QCoreApplication::arguments().mid(1), world));
}
