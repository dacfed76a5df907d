// lokari-cli: the workbench without windows.
#include <QCoreApplication>
#include <QStandardPaths>

#include <csignal>

#include "app/installation.h"
#include "base/qt_clock.h"
#include "base/signal_watch.h"
#include "cli/cli.h"
#include "cli/standard_console.h"
#include "link/system_transports.h"

namespace {

using namespace lokari;

/// Seconds until Ctrl-C ends a command that hears nothing, whatever it waits for: more than the
/// busiest machine lets its event loop stand.
constexpr unsigned kPatience = 10;

/// Where the program lives; the first start fills the user's own folder from the installation.
QString prepareData(StandardConsole& console) {
  const QString programs = QCoreApplication::applicationDirPath();
  const QString userData = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  const QString appPath = chooseAppPath(qEnvironmentVariable("LOKARI_APP"), programs, userData);
  if (appPath == userData + QStringLiteral("/lokari")) {
    const QString failure = prepareAppPath(appPath, installedData(programs));
    if (!failure.isEmpty()) console.message(failure);
  }
  return appPath;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  // A reader of the results that has gone must not end the program in the middle of a session.
  std::signal(SIGPIPE, SIG_IGN);
  Interrupt interrupt;
  StandardConsole console([&interrupt] { interrupt.raise(); });
  QtClock clock;
  const QString appPath = prepareData(console);
  SystemTransports transports(appPath, clock);
  const SignalWatch watch([&interrupt] { interrupt.raise(); }, kPatience);
  const CliWorld world{appPath, clock,     transports.transports(),
                       console, interrupt, QCoreApplication::applicationDirPath()};
  const ExitStatus status = runCli(QCoreApplication::arguments().mid(1), world);
  const bool lost = status == ExitStatus::Done && !console.complete();
  return static_cast<int>(lost ? ExitStatus::Failed : status);
}
