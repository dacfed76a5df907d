#include "app/workbench.h"

#include "app/dec_types.h"
#include "app/driving.h"
#include "app/help_file.h"
#include "app/help_places.h"
#include "app/saved_place.h"
#include "app/workbench_view.h"
#include "base/desktop.h"
#include "base/paths.h"
#include "base/prompt.h"
#include "db/database_session.h"
#include "db/form_names.h"
#include "link/can_log.h"

namespace lokari {
Workbench::Workbench(WorkbenchParts parts)
    : parts_(std::move(parts)),
      ini_(parts_.paths.iniFile),
      external_([this](int address) { externalMessage(address); }) {}

Workbench::~Workbench() = default;

bool Workbench::start(WorkbenchView& view) {
  view_ = &view;
  view.setCaption(QString::fromUtf16(kTitle));
  findHelp();
  settings_ = loadSettings(ini_, parts_.paths.appPath);
  view.setUpScaling(settings_.resizeMode);
  view.showSplash();
  link_ = std::make_unique<StationLink>(settings_, parts_.clock, parts_.prompt, parts_.transports);
  session_ = std::make_unique<DatabaseSession>(
      RecordFormParts{parts_.prompt, parts_.desktop, ini_, parts_.paths.appPath}, settings_.dbPath,
      parts_.oldFormat);
  driving_ = std::make_unique<Driving>(
      *link_, *session_, parts_.prompt, parts_.paths.basePath,
      DrivingWindows{
          [this](std::shared_ptr<Cab> cab) { return view_->makeCabWindow(std::move(cab)); },
          [this](std::shared_ptr<Panel> panel) { return view_->makePanelWindow(std::move(panel)); },
          [this](const QString& text, std::function<void()> giveUp) {
            return view_->makeWaitWindow(text, std::move(giveUp));
          }});
  view.bind(*session_);
  if (session_->InitDB() > 0) {
    session_->tellRefusal();
    return false;
  }
  findSavedRecord();
  decTypes_ = loadDecTypes(parts_.paths.appPath);
  SetCaption();
  external_.listen(parts_.bus);
  return true;
}

void Workbench::findHelp() {
  helpFile_ = findHelpFile(parts_.paths.basePath);
  view_->setHelpAvailable(!helpFile_.isEmpty());
  if (helpFile_.isEmpty()) parts_.prompt.message(QStringLiteral("Hilfe-Datei nicht gefunden!"));
}

void Workbench::findSavedRecord() {
  const QString condition = savedPlaceCondition(ini_);
  // Not found, or not understood: the first record stays.
  if (session_->form().position() >= 0 && !condition.isEmpty()) {
    session_->form().FindFirst(condition);
  }
}

bool Workbench::shutDown() {
  RecordForm& form = session_->form();
  const int position = form.position();
  // A query is no place, and an edit is one where it is stored: else the record behind it is.
  if (!form.storeEdit()) return false;
  if (form.isRead()) {
    savePlace(ini_, position, form.text(QStringLiteral("dc_coll")),
              form.text(QStringLiteral("dc_adr")));
  }
  if (!form.close()) return false;
  if (parts_.transports.canLog != nullptr) parts_.transports.canLog->end();
  external_.stop();
  driving_->closeAll();
  return true;
}

void Workbench::SetCaption() {
  view_->setCaption(fileNameOf(session_->dbPath()) + QStringLiteral(" - ") +
                    QString::fromUtf16(kTitle));
}

void Workbench::externalMessage(int address) {
  if (decoderWindowVisible && decoderWindowVisible()) return;
  if (address >= form::kLowestAddress && address <= form::kHighestAddress)
    driving_->OpenCab(address, true);
}

void Workbench::mnuHelpContents() {
  parts_.desktop.showHelpContents(helpFile_);
}

void Workbench::mnuHelpSearch() {
  parts_.desktop.showHelpSearch(helpFile_);
}

void Workbench::showHelp(const HelpQuestion& question) {
  if (helpFile_.isEmpty()) return;
  HelpQuestion asked = question;
  // While the form asks for conditions the main window is another one.
  const bool ofMainWindow = asked.page == helpPlaceOf(QStringLiteral("main_win"));
  if (ofMainWindow && session_ != nullptr && session_->form().isSearching()) {
    asked.page = searchFormPage();
  }
  parts_.desktop.showHelp(helpFile_, asked);
}

void Workbench::mnuReadMe() {
  const QString path = placeFor(parts_.paths.appPath + QStringLiteral("/Readme.txt"));
  if (!parts_.desktop.openFile(path)) {
    parts_.prompt.message(QStringLiteral("Datei %1 kann nicht angezeigt werden!").arg(path));
  }
}

void Workbench::mnuWeb() {
  const QString page = QStringLiteral(LOKARI_WEB_PAGE);
  if (!parts_.desktop.openWebPage(page)) {
    parts_.prompt.message(QStringLiteral("Webseite %1 kann nicht angezeigt werden!").arg(page));
  }
}

}  // namespace lokari
