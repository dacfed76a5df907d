// The stop that every window has: the key Pause, the tool row, the progress dialog.
#include <QAction>
#include <QDialog>
#include <QToolButton>

#include "link/ui/dlg_comm.h"
#include "simulated_desk.h"

namespace lokari {
namespace {

class StopEverywhere : public test::SimulatedDesk,
                       public ::testing::WithParamInterface<StationKindRow> {
 protected:
  StopEverywhere() : SimulatedDesk(GetParam().kind) {}

  void openCabs() {
    driving().OpenCab(3, true);
    driving().OpenCab(100, true);
    ASSERT_EQ(prompt().shown, QStringList());
    ASSERT_FALSE(halted());
  }
  void pressPause() {
    QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr) focus = QApplication::activeModalWidget();
    if (focus == nullptr) focus = window.get();
    QTest::keyClick(focus, Qt::Key_Pause);
  }
  void expectStopped() {
    EXPECT_TRUE(halted());
    EXPECT_TRUE(stop().isHeld());
    for (const int address : {3, 100}) {
      if (QWidget* cab = cabWindow(address)) {
        EXPECT_EQ(wordOfStop(cab), QStringLiteral("Los")) << address;
      }
    }
  }
  /// Runs `look` in the modal window of that name.
  void inWindow(const char* name, const std::function<void(QWidget&)>& look) {
    watch_.callOnTimeout([this, name = QString::fromLatin1(name), look] {
      QWidget* modal = QApplication::activeModalWidget();
      if (modal == nullptr || modal->objectName() != name) return;
      watch_.stop();
      look(*modal);
    });
    watch_.start(0);
  }
  /// A job that goes on reading CVs until it is cancelled.
  void endlessJob() {
    driving().runAlone(this, [this] {
      DlgComm dialog(link(), window.get());
      dialog.run(CommJob::ReadProgTrack, [&] {
        EXPECT_EQ(link().initComm(true, true, true), QString());
        for (int reads = 0; reads < 5000 && !link().cancelRequested; ++reads) link().ReadCV(8, 3);
        cancelled_ = link().cancelRequested;
        link().cancelRequested = false;
        link().endcomm(true, true);
        dialog.hide();
      });
    });
  }

  QTimer watch_;
  bool cancelled_ = false;
};

std::vector<StationKindRow> kindsWithCabs() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds)
    if (row.cab.available()) kinds.push_back(row);
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, StopEverywhere, ::testing::ValuesIn(kindsWithCabs()),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

TEST_P(StopEverywhere, TheButtonOfTheToolRowStopsAndNeverReleases) {
  openCabs();
  auto* butStop = control<QToolButton>(window.get(), "butStop");
  for (int presses = 0; presses < 2; ++presses) {
    QTest::mouseClick(butStop, Qt::LeftButton);
    clock().advance(1000);
    expectStopped();
  }
  QTest::mouseClick(control<QWidget>(cabWindow(100), "imgStop"), Qt::LeftButton);
  clock().advance(1000);
  EXPECT_FALSE(halted());
  EXPECT_EQ(wordOfStop(cabWindow(3)), QStringLiteral("Halt"));
  EXPECT_EQ(prompt().shown, QStringList());
}

TEST_P(StopEverywhere, TheKeyPauseStopsAlsoInAModalWindow) {
  openCabs();
  bool wasModal = false;
  inWindow("dlgOptions", [&](QWidget& dialog) {
    wasModal = true;
    pressPause();
    pressPause();
    clock().advance(1000);
    expectStopped();
    static_cast<QDialog&>(dialog).reject();
  });
  window->findChild<QAction*>(QStringLiteral("mnuParaOptions"))->trigger();
  EXPECT_TRUE(wasModal);
  clock().advance(1000);
  expectStopped();
}

TEST_P(StopEverywhere, WithAPanelAloneItStopsAsWell) {
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=5")), FindResult::Found);
  driving().butSwitch();
  pressPause();
  clock().advance(1000);
  expectStopped();
}

TEST_P(StopEverywhere, TheButtonOfTheProgressDialogEndsTheJobAndTheLayoutStaysStopped) {
  for (const bool withCab : {true, false}) {
    if (withCab) driving().OpenCab(3, true);
    bool stoppedInTheJob = false;
    clock().schedule(5000, [&] {
      QWidget* dialog = windowNamed("dlg_comm");
      ASSERT_NE(dialog, nullptr);
      QTest::mouseClick(control<QPushButton>(dialog, "cmdStop"), Qt::LeftButton);
      clock().schedule(200, [&] { stoppedInTheJob = halted(); });
    });
    endlessJob();
    EXPECT_TRUE(cancelled_);
    EXPECT_TRUE(stoppedInTheJob);
    clock().advance(3000);
    expectStopped();
    EXPECT_EQ(prompt().shown, QStringList());
    if (!withCab) break;
    QTest::mouseClick(control<QWidget>(cabWindow(3), "imgStop"), Qt::LeftButton);
    clock().advance(1000);
    ASSERT_FALSE(halted());
    cabWindow(3)->close();
    clock().advance(1000);
  }
}

TEST_P(StopEverywhere, WithoutASessionItSaysThatNothingWasSent) {
  pressPause();
  EXPECT_EQ(prompt().shown,
            QStringList{QStringLiteral(
                "Halt nicht gesendet: Keine Verbindung zur Digitalzentrale ist offen!")});
  EXPECT_FALSE(stop().isHeld());
  EXPECT_EQ(line->writes.size(), 0);
  EXPECT_EQ(socket->sent.size(), 0);
}

TEST_P(StopEverywhere, DuringAFirmwareTransferNothingIsSent) {
  driving().OpenCab(3, true);
  driving().runAlone(this, [&] {
    DlgComm dialog(link(), window.get());
    dialog.run(CommJob::SendFirm, [&] {
      EXPECT_FALSE(control<QPushButton>(&dialog, "cmdStop")->isEnabled());
      const auto before = line->writes.size() + socket->sent.size();
      QTest::keyClick(&dialog, Qt::Key_Pause);
      EXPECT_EQ(line->writes.size() + socket->sent.size(), before);
      EXPECT_FALSE(link().cancelRequested);
      dialog.hide();
    });
  });
  EXPECT_EQ(prompt().beeps, 1);
  EXPECT_FALSE(halted());
}

}  // namespace
}  // namespace lokari
