// The workbench: who owns what, and the life of the program from the first step to the last. The
// main window shows it; everything here runs without a window.
#pragma once

#include <QDBusConnection>
#include <QStringList>

#include <functional>
#include <memory>

#include "app/external_message.h"
#include "base/app_paths.h"
#include "base/ini_file.h"
#include "base/settings.h"
#include "link/station_link.h"

namespace lokari {

class Clock;
class DatabaseSession;
class Desktop;
class Driving;
class OldFormat;
class Prompt;
class WorkbenchView;
struct HelpQuestion;

/// What reaches outside; all of it must outlive the workbench.
struct WorkbenchParts {
  AppPaths paths;
  Clock& clock;
  Prompt& prompt;
  Desktop& desktop;
  Transports transports;
  OldFormat& oldFormat;
  QDBusConnection bus;  ///< where other programs ask for a cab; may be unconnected
};

class Workbench {
 public:
  explicit Workbench(WorkbenchParts parts);
  ~Workbench();
  Workbench(const Workbench&) = delete;
  Workbench& operator=(const Workbench&) = delete;

  /// Start-up, step by step. False when the database cannot be opened; the program then ends at
  /// once, the user has been told. `view` must outlive the workbench's last operation.
  bool start(WorkbenchView& view);

  /// Ends the work: stores the record, keeps the place of what is then on show, closes the
  /// database's records and then all cabs and panels. False when the record could not be stored:
  /// the program goes on, the user has been told. Only after a successful start().
  bool shutDown();

  /// "<file> - <title>" of the database that is named now.
  void SetCaption();

  /// A program on this machine asks for a cab. Nothing happens while the decoder window is up;
  /// other addresses than 1 to 10239 are ignored.
  void externalMessage(int address);

  void mnuHelpContents();
  void mnuHelpSearch();
  /// Opens the manual where the question is answered.
  void showHelp(const HelpQuestion& question);
  void mnuReadMe();
  void mnuWeb();

  const AppPaths& paths() const { return parts_.paths; }
  Settings& settings() { return settings_; }
  Clock& clock() { return parts_.clock; }
  Prompt& prompt() { return parts_.prompt; }
  // These three exist from the step of start() that opens the database.
  StationLink& link() { return *link_; }
  DatabaseSession& session() { return *session_; }
  Driving& driving() { return *driving_; }
  const QStringList& decTypes() const { return decTypes_; }
  /// Empty when there is none.
  const QString& helpFile() const { return helpFile_; }

  /// True while the decoder window is up.
  std::function<bool()> decoderWindowVisible;

 private:
  void findHelp();
  void findSavedRecord();

  WorkbenchParts parts_;
  IniFile ini_;
  Settings settings_;
  std::unique_ptr<StationLink> link_;
  std::unique_ptr<DatabaseSession> session_;
  std::unique_ptr<Driving> driving_;
  ExternalMessage external_;
  WorkbenchView* view_ = nullptr;
  QString helpFile_;
  QStringList decTypes_;
};

}  // namespace lokari
