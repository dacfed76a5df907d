#include "app/ui/main_win.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>
#include <utility>

#include "app/driving.h"
#include "app/ui/catalogue_menu.h"
#include "app/ui/dlg_wait.h"
#include "app/ui/frm_about.h"
#include "app/ui/frm_entry.h"
#include "app/ui/help_key.h"
#include "app/ui/list_menu.h"
#include "app/ui/main_menu.h"
#include "app/ui/navigator.h"
#include "app/ui/options_entry.h"
#include "app/ui/record_binder.h"
#include "app/ui/record_field.h"
#include "app/ui/record_page.h"
#include "app/ui/report_menu.h"
#include "app/ui/stop_key.h"
#include "app/ui/tool_row.h"
#include "app/workbench.h"
#include "cab/ui/frm_cab.h"
#include "cab/ui/frm_panel.h"
#include "db/database_session.h"
#include "db/ui/dlg_table.h"
#include "decoder/decoder_bench.h"
#include "decoder/ui/frm_decoder.h"
#include "link/track_stop.h"
#include "link/ui/dlg_comm.h"
#include "station/firmware_file.h"
#include "station/send_firm.h"

namespace lokari {
namespace {

constexpr QSize kDesignSize(980, 590);
/// 800 and 640 twips.
constexpr QPoint kPlace(53, 43);
constexpr QSize kSmallest(480, 320);
constexpr QMargins kMargins(10, 6, 10, 8);
/// Between two looks at the windows that have to close first.
constexpr int kLookAgainMs = 100;
/// A job has this long for its farewell until its dialog is asked once more.
constexpr int kLooksUntilAskedAgain = 10;

QString ownName() {
  return QStringLiteral("main_win");
}

}  // namespace

MainWin::MainWin(Workbench& workbench)
    : workbench_(workbench),
      pictures_(workbench.paths().basePath),
      scale_(workbench.paths().appPath + QStringLiteral("/WINDOW.INI")),
      menu_(new MainMenu(this)),
      contents_(new QWidget),
      tools_(new ToolRow(pictures_, contents_)),
      page_(new RecordPage(pictures_, contents_)),
      data1_(new Navigator(pictures_, contents_)) {
  setObjectName(ownName());
  setWindowIcon(pictures_.icon(QStringLiteral("lokari.bmp")));
  setMenuBar(menu_);
  // On a small screen the form is scrolled instead of cut off.
  auto* view = new QScrollArea;
  view->setFrameShape(QFrame::NoFrame);
  // Its controls have the focus, and bring themselves into view.
  view->setFocusPolicy(Qt::NoFocus);
  view->setWidgetResizable(true);
  view->setWidget(new QWidget);
  setCentralWidget(view);
  auto* rows = new QVBoxLayout(contents_);
  rows->setContentsMargins(kMargins);
  rows->setSpacing(8);
  rows->addWidget(tools_);
  rows->addWidget(page_, 1);
  rows->addWidget(data1_);
  setMinimumSize(kSmallest);
  WindowScale::comeUp(this, kPlace, kDesignSize);
  scale_.begin(kDesignSize);
  workbench_.decoderWindowVisible = [this] {
    return frmDecoder_ != nullptr && frmDecoder_->isVisible();
  };
  connectMenus();
}

MainWin::~MainWin() = default;

void MainWin::connectMenus() {
  menu_->enable(QStringLiteral("mnuFileQuit"), [this] { mnuFileQuit(); });
  menu_->enable(QStringLiteral("mnuHelpContents"), [this] { workbench_.mnuHelpContents(); });
  menu_->enable(QStringLiteral("mnuHelpSearch"), [this] { workbench_.mnuHelpSearch(); });
  helpKey_ = std::make_unique<HelpKey>(
      [this](const HelpQuestion& question) { workbench_.showHelp(question); },
      [this] { workbench_.mnuHelpSearch(); });
  menu_->enable(QStringLiteral("mnuReadMe"), [this] { workbench_.mnuReadMe(); });
  menu_->enable(QStringLiteral("mnuWeb"), [this] { workbench_.mnuWeb(); });
  menu_->enable(QStringLiteral("mnuHelpInfo"), [this] { mnuHelpInfo(); });
}

bool MainWin::start() {
  started_ = workbench_.start(*this);
  if (!started_) return false;
  scale_.restoreSize(ownName(), this);
  page_->field(QStringLiteral("dc_adr")).focus(true);
  return true;
}

void MainWin::setCaption(const QString& caption) {
  setWindowTitle(caption);
}

void MainWin::setHelpAvailable(bool available) {
  menu_->entry(QStringLiteral("mnuHelpContents"))->setEnabled(available);
  menu_->entry(QStringLiteral("mnuHelpSearch"))->setEnabled(available);
}

void MainWin::setUpScaling(int resizeMode) {
  scale_.setResizeMode(resizeMode);
  if (resizeMode == 0) {
    contents_->setFixedSize(kDesignSize - QSize(0, menu_->sizeHint().height()));
  }
  scale_.arrange(static_cast<QScrollArea*>(centralWidget())->widget(), contents_);
}

void MainWin::showSplash() {
  frmEntry_ = new FrmEntry(this, pictures_, workbench_.clock());
  frmEntry_->centre();
  frmEntry_->show();
}

void MainWin::bind(DatabaseSession& session) {
  binder_ = new RecordBinder(session.form(), {*page_, *tools_, *data1_, *menu_}, this);
  connect(tools_->button(QStringLiteral("butTable")), &QToolButton::clicked, this,
          [this] { butTable(workbench_.session().form(), workbench_.prompt(), scale_, this); });
  binder_->offer(QStringLiteral("butTable"));
  connect(tools_->button(QStringLiteral("butProg")), &QToolButton::clicked, this,
          &MainWin::butProg);
  binder_->offer(QStringLiteral("butProg"));
  connect(tools_->button(QStringLiteral("butDrive")), &QToolButton::clicked, this,
          [this] { workbench_.driving().butDrive(); });
  binder_->offer(QStringLiteral("butDrive"));
  connect(tools_->button(QStringLiteral("butSwitch")), &QToolButton::clicked, this,
          [this] { workbench_.driving().butSwitch(); });
  binder_->offer(QStringLiteral("butSwitch"));
  offerStop();
  menu_->enable(QStringLiteral("mnuDbOpen"), [&session] { session.mnuDbOpen(); });
  menu_->enable(QStringLiteral("mnuDbNew"), [&session] { session.mnuDbNew(); });
  offerCatalogue(workbench_, *menu_, scale_, this);
  offerReports(workbench_, *menu_, scale_, this, [this](bool busy) { showBusy(busy); });
  binder_->offer(QStringLiteral("mnuDbPrint"));
  offerLists(workbench_, *menu_, scale_, this);
  menu_->enable(QStringLiteral("mnuParaOptions"),
                [this] { openBeside(menu_, [this] { openOptions(workbench_, scale_, this); }); });
  menu_->enable(QStringLiteral("mnuFirmware"), [this] { mnuFirmware(); });
  connect(&session, &DatabaseSession::opened, this, [this] { workbench_.SetCaption(); });
  connect(&session, &DatabaseSession::busyChanged, this, &MainWin::showBusy);
}

// Whatever the record's buttons are doing: a stop is never off.
void MainWin::offerStop() {
  TrackStop& stop = workbench_.link().trackStop();
  QToolButton* butStop = tools_->button(QStringLiteral("butStop"));
  butStop->setEnabled(true);
  connect(butStop, &QToolButton::clicked, this, [&stop] { stop.pressAndTell(); });
  stopKey_ = std::make_unique<StopKey>(stop);
}

void MainWin::showBusy(bool busy) {
  if (busy) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

void MainWin::mnuFileQuit() {
  scale_.storeSize(ownName(), isMaximized() ? normalGeometry().size() : size());
  close();
}

void MainWin::mnuFirmware() {
  const auto firmware = chosenFirmware(
      workbench_.settings(), workbench_.prompt(), workbench_.paths().appPath,
      [this](bool busy) { showBusy(busy); }, workbench_.driving().openTitles());
  if (!firmware) return;
  // A cab's message among the blocks would spoil them.
  const QAction* owner = menu_->entry(QStringLiteral("mnuFirmware"));
  workbench_.driving().runAlone(owner, [this, image = *firmware] {
    StationLink& link = workbench_.link();
    DlgComm dialog(link, this);
    scale_.ResizeWindow(&dialog);
    dialog.run(CommJob::SendFirm, [&] { FirmTransfer(link, dialog, image).SendFirm(); });
  });
}

void MainWin::mnuHelpInfo() {
  FrmAbout frmAbout(this, pictures_);
  scale_.ResizeWindow(&frmAbout);
  frmAbout.exec();
}

std::unique_ptr<SlotWindow> MainWin::makeCabWindow(std::shared_ptr<Cab> cab) {
  return std::make_unique<FrmCab>(cab, pictures_, scale_);
}

std::unique_ptr<SlotWindow> MainWin::makePanelWindow(std::shared_ptr<Panel> panel) {
  return std::make_unique<FrmPanel>(panel, pictures_, scale_);
}

std::unique_ptr<WaitWindow> MainWin::makeWaitWindow(const QString& text,
                                                    std::function<void()> giveUp) {
  return lokari::makeWaitWindow(text, std::move(giveUp), this);
}

void MainWin::openBeside(const void* owner, std::function<void()> open) {
  workbench_.driving().openBeside(owner, [run = std::move(open)] {
    // Whatever came up while the line was busy is what the user is at by now.
    if (QApplication::activeModalWidget() == nullptr) run();
  });
}

void MainWin::butProg() {
  const auto onShow = [this] {
    const RecordForm& form = workbench_.session().form();
    return std::tuple(form.database(), form.records().bookmark(), form.editMode() == EditMode::Add);
  };
  openBeside(this, [this, onShow, asked = onShow()] {
    // The user may have gone on to another vehicle meanwhile.
    if (onShow() == asked) openDecoderWindow();
  });
}

void MainWin::openDecoderWindow() {
  RecordForm& form = workbench_.session().form();
  // The command line may have stored other values since the record was shown.
  form.refreshCvSets();
  if (!form.prepareProgramming()) return;
  showBusy(true);
  workbench_.clock().pump();
  DecoderBench bench({workbench_.settings(), workbench_.clock(), workbench_.prompt(),
                      workbench_.link(), workbench_.session().catalogue(),
                      workbench_.paths().basePath, workbench_.decTypes(), &form});
  FrmDecoder frmDecoder(bench, workbench_.link(), workbench_.clock(), pictures_, scale_, this);
  // Cabs go on being polled until a job takes the line.
  frmDecoder.alone = [this, &frmDecoder](std::function<void()> job) {
    workbench_.driving().runAlone(&frmDecoder, std::move(job));
  };
  frmDecoder.showWaiting = [&frmDecoder](const QString& text, std::function<void()> giveUp) {
    return std::shared_ptr<void>(lokari::makeWaitWindow(text, std::move(giveUp), &frmDecoder));
  };
  showBusy(false);
  frmDecoder_ = &frmDecoder;
  CvRecord record = form.workingCopy();
  const QString address = form.text(QStringLiteral("dc_adr"));
  const bool success = frmDecoder.edit(record, address,
                                       vehicleLine(form.text(QStringLiteral("st_sname")), address,
                                                   form.text(QStringLiteral("dc_coll"))));
  frmDecoder_ = nullptr;
  workbench_.driving().forget(&frmDecoder);
  if (!success) return;
  form.storeProgrammed(record, bench.controls.at(QStringLiteral("dc_adr")).text,
                       bench.controls.at(QStringLiteral("cbDcManuf")).text);
  // What the decoder holds by now is kept at once; what was only typed waits like every edit.
  if (bench.reachedStation()) form.storeIfValid();
}

void MainWin::endProgram() {
  if (std::exchange(ending_, true)) return;
  asked_ = nullptr;
  // A question of its own gets an answer below, which must not begin it.
  workbench_.link().trackStop().cancelJob();
  lookForTheEnd();
}

void MainWin::lookForTheEnd() {
  if (!ending_) return;
  QWidget* modal = QApplication::activeModalWidget();
  if (modal == nullptr) {
    close();
    ending_ = false;
    return;
  }
  auto* dialog = qobject_cast<QDialog*>(modal);
  auto* box = qobject_cast<QMessageBox*>(modal);
  const bool question = box != nullptr;
  // What the end itself has asked is the user's to answer.
  if (question && !asking_) answerForTheEnd(*box);
  if (dialog != nullptr && !question && !asking_ &&
      (dialog != asked_ || ++looks_ >= kLooksUntilAskedAgain)) {
    asked_ = dialog;
    looks_ = 0;
    // It may run an event loop of its own for its question.
    QTimer::singleShot(0, dialog, [this, dialog] { askToClose(dialog); });
  }
  QTimer::singleShot(kLookAgainMs, this, &MainWin::lookForTheEnd);
}

// Nobody may sit there any more: what only wants to be read has been, and a question gets the
// answer of a closed box. One that can only be given up goes on as long as it has something to wait
// for.
void MainWin::answerForTheEnd(QMessageBox& box) {
  QAbstractButton* safe = box.escapeButton();
  const QList<QAbstractButton*> buttons = box.buttons();
  const bool onlyGivesUp =
      buttons.size() == 1 && box.buttonRole(buttons.front()) == QMessageBox::RejectRole;
  if (safe == nullptr || onlyGivesUp) return;
  // From the event loop: what stands behind the box goes on on this very stack.
  QTimer::singleShot(0, safe, [safe] { safe->click(); });
}

// One that is busy closes later, behind its job's farewell; one that stays behind a question has
// the user's word for it.
void MainWin::askToClose(QDialog* dialog) {
  bool questioned = false;
  QObject within;
  QTimer::singleShot(0, &within, [&questioned] { questioned = true; });
  const QPointer<QDialog> still(dialog);
  asking_ = true;
  dialog->reject();
  asking_ = false;
  if (questioned && still != nullptr && still->isVisible()) ending_ = false;
}

void MainWin::closeEvent(QCloseEvent* event) {
  const auto closeAgain = [self = QPointer<MainWin>(this)] {
    // Whatever came up meanwhile is what the user is at by now.
    if (self && QApplication::activeModalWidget() == nullptr) self->close();
  };
  const bool mayEnd = ending_ || !started_ || workbench_.driving().settleMoving(closeAgain);
  if (!mayEnd || (started_ && !workbench_.shutDown())) {
    event->ignore();
    return;
  }
  started_ = false;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window != this) window->close();
  }
  event->accept();
  QApplication::quit();
}

void MainWin::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  scale_.mainResized(size());
  if (started_ && !isMinimized()) workbench_.SetCaption();
}

void MainWin::paintEvent(QPaintEvent* event) {
  QMainWindow::paintEvent(event);
  if (frmEntry_ != nullptr && frmEntry_->isVisible()) frmEntry_->centre();
}

}  // namespace lokari
