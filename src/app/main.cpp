// The workbench with its windows.
#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "app/installation.h"
#include "app/ui/main_win.h"
#include "app/ui/qt_desktop.h"
#include "app/workbench.h"
#include "base/prompt.h"
#include "base/qt_clock.h"
#include "base/ui/qt_prompt.h"
#include "db/old_format.h"
#include "link/system_transports.h"

namespace {

/// Qt's own texts (context menus, file dialogs) in German, where its translations are installed.
void speakGerman(QTranslator& translator) {
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  if (translator.load(QStringLiteral("qtbase_de"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QApplication::installTranslator(&translator);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("lokari"));
  QApplication::setDesktopFileName(QStringLiteral("lokari"));
  QTranslator translator;
  speakGerman(translator);

  lokari::QtPrompt prompt;
  // The whole command line is the stem of another settings file.
  const lokari::Installation installation =
      lokari::findInstallation(QApplication::arguments().mid(1).join(u' '));
  if (!installation.fault.isEmpty()) {
    prompt.message(installation.fault);
    return 1;
  }

  lokari::QtClock clock;
  lokari::QtDesktop desktop(prompt);
  lokari::SystemTransports transports(installation.paths.appPath, clock);
  lokari::NoOldFormat oldFormat;
  lokari::Workbench workbench({installation.paths, clock, prompt, desktop, transports.transports(),
                               oldFormat, QDBusConnection::sessionBus()});
  workbench.OpenCab = [&prompt](int address) {
    prompt.message(QStringLiteral("Für Adresse %1 wurde ein Fahrpult angefordert.\n"
                                  "Diese Ausgabe von Lokari hat noch keine Fahrpulte.")
                       .arg(address),
                   lokari::Icon::Information);
  };
  lokari::MainWin window(workbench);
  if (!window.start()) return 1;
  window.show();
  return QApplication::exec();
}
