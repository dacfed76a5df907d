// `main_win`, the main window: menus, buttons, the record form and its navigator.
#pragma once

#include <QDialog>
#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <memory>

#include "app/ui/alt_letters.h"
#include "app/workbench_view.h"
#include "base/ui/immediate_shortcuts.h"
#include "base/ui/pictures.h"
#include "base/ui/window_scale.h"

class QMessageBox;

namespace lokari {

class FrmDecoder;
class FrmEntry;
class HelpKey;
class StopKey;
class MainMenu;
class Navigator;
class RecordBinder;
class RecordPage;
class ToolRow;
class Workbench;

class MainWin final : public QMainWindow, public WorkbenchView {
  Q_OBJECT

 public:
  /// `workbench` must outlive the window.
  explicit MainWin(Workbench& workbench);
  ~MainWin() override;

  /// Start-up; then the window is ready to be shown. False when the program ends at once.
  bool start();

  void setCaption(const QString& caption) override;
  void setHelpAvailable(bool available) override;
  void setUpScaling(int resizeMode) override;
  void showSplash() override;
  void bind(DatabaseSession& session) override;
  std::unique_ptr<SlotWindow> makeCabWindow(std::shared_ptr<Cab> cab) override;
  std::unique_ptr<SlotWindow> makePanelWindow(std::shared_ptr<Panel> panel) override;
  std::unique_ptr<WaitWindow> makeWaitWindow(const QString& text,
                                             std::function<void()> giveUp) override;

  const WindowScale& scale() const { return scale_; }

  /// Ends the program as Beenden does, asked for from outside: dialogs are given up first, each
  /// with its own question, and a job gets its farewell. Vehicles run on without a question.
  /// A dialog that is busy is asked again until it has closed; where the user says no to a dialog's
  /// question, the program goes on.
  void endProgram();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void lookForTheEnd();
  void askToClose(QDialog* dialog);
  void answerForTheEnd(QMessageBox& box);
  void connectMenus();
  void mnuFileQuit();
  void mnuFirmware();
  void mnuHelpInfo();
  /// For Driving::openBeside(): what it opens does not come up over another dialog.
  void openBeside(const void* owner, std::function<void()> open);
  void butProg();
  void openDecoderWindow();
  void offerStop();
  void showBusy(bool busy);

  Workbench& workbench_;
  Pictures pictures_;
  WindowScale scale_;
  ImmediateShortcuts shortcuts_;
  MainMenu* menu_;
  QWidget* contents_;
  ToolRow* tools_;
  RecordPage* page_;
  Navigator* data1_;
  RecordBinder* binder_ = nullptr;
  FrmEntry* frmEntry_ = nullptr;
  FrmDecoder* frmDecoder_ = nullptr;  // while it is open
  std::unique_ptr<HelpKey> helpKey_;
  std::unique_ptr<StopKey> stopKey_;
  AltLetters altLetters_;
  bool started_ = false;
  // While endProgram() closes the window and what has to close first.
  bool ending_ = false;
  QPointer<QDialog> asked_;  // to close, last
  int looks_ = 0;            // since then
  bool asking_ = false;      // it has a question of its own
};

}  // namespace lokari
