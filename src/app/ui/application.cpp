#include "app/ui/application.h"

#include <QApplication>
#include <QDBusConnection>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "app/installation.h"
#include "app/ui/main_win.h"
#include "app/ui/qt_desktop.h"
#include "app/workbench.h"
#include "base/qt_clock.h"
#include "base/signal_watch.h"
#include "base/ui/passing_note.h"
#include "base/ui/qt_prompt.h"
#include "base/ui/wrapped_tips.h"
#include "db/access_import.h"
#include "db/database_session.h"
#include "link/system_transports.h"
#include "link/ui/progress_dialog.h"

namespace lokari {

struct Application::Parts {
  explicit Parts(const QString& commandLine) : installation(findInstallation(commandLine)) {}

  Installation installation;
  QtPrompt prompt;
  QtClock clock;
  QtDesktop desktop{prompt};
  SystemTransports transports{installation.paths.appPath, clock};
  AccessImport oldFormat{{prompt, installation.paths.appPath, accessReaderIn(installation.programs),
                          [this](const auto& work) {
                            progressDialog(workbench.link(), window.scale(), &window)(work);
                          }}};
  Workbench workbench{{installation.paths, clock, prompt, desktop, transports.transports(),
                       oldFormat, QDBusConnection::sessionBus()}};
  MainWin window{workbench};
  std::unique_ptr<SignalWatch> watch;
};

Application::Application(const QString& commandLine)
    : parts_(std::make_unique<Parts>(commandLine)) {
  parts_->transports.trace().onFailure = [this](const QString& text) {
    showPassingNote(text, &parts_->window);
  };
}

Application::~Application() {
  // The lines close behind the window, and nobody is left to be told then.
  parts_->transports.trace().onFailure = nullptr;
}

bool Application::start() {
  if (!parts_->installation.fault.isEmpty()) {
    parts_->prompt.message(parts_->installation.fault);
    return false;
  }
  qApp->installEventFilter(new WrappedTips(qApp));
  if (!parts_->window.start()) return false;
  parts_->window.show();
  parts_->watch = std::make_unique<SignalWatch>([this] { parts_->window.endProgram(); });
  // The session ends with the user: what can be stored is stored now, the windows close behind it.
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, &parts_->window,
                   [this] { parts_->workbench.session().form().storeIfValid(); });
  return true;
}

MainWin& Application::window() {
  return parts_->window;
}

void speakGerman() {
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  auto* translator = new QTranslator(QCoreApplication::instance());
  if (translator->load(QStringLiteral("qtbase_de"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(translator);
  }
}

}  // namespace lokari
