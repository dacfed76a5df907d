// The line between cabs and the job of a progress dialog: who has it, what becomes of a stop inside
// a job, and of a line that went away.
#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QToolButton>

#include "link/ui/dlg_comm.h"
#include "simulated_desk.h"
#include "station/comm_test.h"

namespace lokari {
namespace {

constexpr Millis kSoon = 100;

class LineOfAJob : public test::SimulatedDesk,
                   public ::testing::WithParamInterface<StationKindRow> {
 protected:
  LineOfAJob() : SimulatedDesk(GetParam().kind) {
    layout.onChange = [this](const QString&) {
      if (!halted()) {
        if (runsSince_ < 0) runsSince_ = clock().now();
      } else if (runsSince_ >= 0) {
        longestRun = std::max(longestRun, clock().now() - runsSince_);
        runsSince_ = -1;
      }
    };
  }

  QString noticeOf(int address) {
    auto* label = control<QLabel>(cabWindow(address), "labNotice");
    return label->isVisible() ? label->text() : QString();
  }
  void click(int address, const char* name) {
    QTest::mouseClick(control<QWidget>(cabWindow(address), name), Qt::LeftButton);
  }
  qsizetype messages() const { return line->writes.size() + socket->sent.size(); }

  void pull() {
    line->vanish();
    socket->close();
    socket->failsToSend = true;
  }
  void plugIn() {
    line->comeBack();
    socket->failsToSend = false;
  }
  void fault(const char* text) { faults.add(*sim::faultFromText(QString::fromLatin1(text))); }

  /// A job that goes on reading CVs until it is cancelled; `from` runs in it so many milliseconds
  /// behind its start.
  void endlessJob(Millis when, std::function<void()> from) {
    driving().runAlone(this, [&] {
      DlgComm dialog(link(), window.get());
      dialog.run(CommJob::ReadProgTrack, [&] {
        clock().schedule(when, std::move(from));
        opened = link().initComm(true, true, true);
        for (int reads = 0; reads < 5000 && !link().cancelRequested; ++reads) link().ReadCV(8, 3);
        link().cancelRequested = false;
        link().endcomm(true, true);
        dialog.hide();
      });
    });
  }
  void pressStopOfTheDialog() {
    QTest::mouseClick(control<QPushButton>(windowNamed("dlg_comm"), "cmdStop"), Qt::LeftButton);
    longestRun = 0;
    runsSince_ = halted() ? -1 : clock().now();
  }

  QString opened;
  Millis longestRun = 0;  ///< of the layout, since the stop of the dialog

 private:
  Millis runsSince_ = -1;
};

std::vector<StationKindRow> kindsWithCabs() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds)
    if (row.cab.available()) kinds.push_back(row);
  return kinds;
}
std::string nameOfKind(const ::testing::TestParamInfo<StationKindRow>& row) {
  return QString::fromUtf16(row.param.name).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Kinds, LineOfAJob, ::testing::ValuesIn(kindsWithCabs()), nameOfKind);

TEST_P(LineOfAJob, BehindAStopInAJobTheNextCommandTellsOfNoMissingConfirmation) {
  driving().OpenCab(3, true);
  endlessJob(5000, [this] { pressStopOfTheDialog(); });
  clock().advance(3000);
  ASSERT_TRUE(halted());
  click(3, "imgDirBackward");
  clock().advance(30000);
  EXPECT_EQ(noticeOf(3), QString());
  EXPECT_EQ(wordOfStop(cabWindow(3)), QStringLiteral("Los"));
  EXPECT_TRUE(stop().isHeld());
  EXPECT_TRUE(halted());
  EXPECT_EQ(prompt().shown, QStringList());
  EXPECT_EQ(prompt().beeps, 0);
}

TEST_P(LineOfAJob, AfterItsStopTheLayoutNeverRunsForMoreThan100Ms) {
  for (const bool silent : {false, true}) {
    if (silent && GetParam().family == ProtocolFamily::ZimoBinary) break;
    driving().OpenCab(3, true);
    endlessJob(5000, [&] {
      if (silent) fault("silence:immer");
      pressStopOfTheDialog();
    });
    clock().advance(60000);
    EXPECT_TRUE(halted()) << silent;
    EXPECT_LE(longestRun, kSoon) << silent;
    EXPECT_TRUE(stop().isHeld() || silent);
    if (!silent) {
      click(3, "imgStop");
      clock().advance(1000);
    }
  }
}

TEST_P(LineOfAJob, AJobOpensALineThatCameBackAndEveryCabShowsIt) {
  driving().OpenCab(3, true);
  pull();
  click(3, "imgDirBackward");
  clock().advance(20000);
  ASSERT_FALSE(noticeOf(3).isEmpty());
  plugIn();
  Millis pressedAt = 0;
  Millis haltedAt = -1;
  endlessJob(8000, [&] {
    EXPECT_EQ(noticeOf(3), QString());
    layout.onChange = [&](const QString&) {
      if (halted() && haltedAt < 0) haltedAt = clock().now();
    };
    pressedAt = clock().now();
    pressStopOfTheDialog();
  });
  clock().advance(5000);
  EXPECT_EQ(opened, QString());
  ASSERT_GE(haltedAt, 0);
  EXPECT_LE(haltedAt - pressedAt, kSoon);
  EXPECT_TRUE(halted());
  EXPECT_EQ(link().commUseCount, 1);
  click(3, "cmdFunc_2");
  clock().advance(3000);
  EXPECT_NE(layout.drive(3).functions & 4U, 0U) << "the cab's session is one of the new line";
}

TEST_P(LineOfAJob, AStopThatWaitsForAReopeningThatFailsIsToldAsNotSent) {
  if (GetParam().transport == Transport::Serial) return;  // opens or fails at once
  driving().OpenCab(3, true);
  pull();
  click(3, "imgDirBackward");
  clock().advance(20000);
  socket->failsToSend = false;
  if (auto* udp = dynamic_cast<test::SimSocket*>(socket.get())) udp->unplug();
  clock().schedule(300, [this] {
    QTest::mouseClick(control<QToolButton>(window.get(), "butStop"), Qt::LeftButton);
    EXPECT_TRUE(noticeOf(3).startsWith(QStringLiteral("Halt ist noch nicht gesendet")))
        << qPrintable(noticeOf(3));
    EXPECT_EQ(wordOfStop(cabWindow(3)), QStringLiteral("Halt"));
    EXPECT_EQ(prompt().shown, QStringList());
  });
  const Millis begun = clock().now();
  click(3, "imgDirForward");
  const Millis took = clock().now() - begun;
  clock().advance(20000);
  EXPECT_EQ(prompt().shown,
            QStringList{QStringLiteral(
                "Halt nicht gesendet: Die Verbindung zur Digitalzentrale ist weg!")});
  EXPECT_EQ(wordOfStop(cabWindow(3)), QStringLiteral("Halt"));
  EXPECT_TRUE(noticeOf(3).startsWith(QStringLiteral("Keine Verbindung zur Zentrale.")));
  EXPECT_FALSE(stop().isHeld());
  EXPECT_FALSE(halted());
  EXPECT_LE(took, 12000) << "one reopening, not one for each that waits";
}

TEST_P(LineOfAJob, AStopThatWaitsForAReopeningGoesOutWithItsLine) {
  if (GetParam().transport == Transport::Serial) return;
  driving().OpenCab(3, true);
  pull();
  click(3, "imgDirBackward");
  clock().advance(20000);
  plugIn();
  clock().schedule(10, [this] {
    QTest::mouseClick(control<QToolButton>(window.get(), "butStop"), Qt::LeftButton);
    EXPECT_EQ(wordOfStop(cabWindow(3)), QStringLiteral("Halt"));
    EXPECT_FALSE(stop().isHeld());
  });
  click(3, "imgDirForward");
  clock().advance(5000);
  EXPECT_TRUE(halted());
  EXPECT_EQ(wordOfStop(cabWindow(3)), QStringLiteral("Los"));
  EXPECT_EQ(noticeOf(3), QString());
  EXPECT_EQ(prompt().shown, QStringList());
}

// ---- A stopped layout and a line that did not come back ----------------------------------------

TEST_P(LineOfAJob, ASecondCabBehindAFailedReopeningSwitchesNothingOn) {
  if (GetParam().switchesOn.cab) return;  // its question is another test's
  driving().OpenCab(3, true);
  click(3, "imgStop");
  clock().advance(500);
  ASSERT_TRUE(halted());
  pull();
  click(3, "cmdFunc_1");
  clock().advance(20000);
  socket->failsToSend = false;
  auto* udp = dynamic_cast<test::SimSocket*>(socket.get());
  if (udp != nullptr) udp->unplug();
  click(3, "cmdFunc_1");
  clock().advance(60000);
  plugIn();
  if (udp != nullptr) udp->plugIn();
  ranOnce = false;
  layout.onChange = [this](const QString&) {
    if (!halted()) ranOnce = true;
  };
  clock().schedule(150, [this] {
    QTest::mouseClick(control<QToolButton>(window.get(), "butStop"), Qt::LeftButton);
  });
  driving().OpenCab(100, true);
  clock().advance(20000);
  EXPECT_FALSE(ranOnce);
  EXPECT_TRUE(halted());
  EXPECT_EQ(prompt().asked.size(), 0);
  EXPECT_EQ(prompt().shown, QStringList());
  EXPECT_TRUE(stop().isHeld());
}

// ---- What is done while nothing needs the line -------------------------------------------------

using IdleJobWindow = LineOfAJob;

std::vector<StationKindRow> kindsWithATimer() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds)
    if (row.cab.timerMs > 0) kinds.push_back(row);
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, IdleJobWindow, ::testing::ValuesIn(kindsWithATimer()), nameOfKind);

TEST_P(IdleJobWindow, ACabIsKeptAliveWhileAFinishedTestShowsItsResult) {
  driving().OpenCab(3, true);
  qsizetype sent = -1;
  driving().runAlone(this, [&] {
    DlgComm dialog(link(), window.get());
    dialog.run(CommJob::TestComm, [&] {
      TestComm(link(), workbench->settings());
      clock().schedule(1000, [&] {
        ASSERT_EQ(control<QPushButton>(&dialog, "cmdCancel")->text(), QStringLiteral("OK"));
        const qsizetype before = messages();
        clock().advance(10000);
        sent = messages() - before;
        QTest::mouseClick(control<QPushButton>(&dialog, "cmdCancel"), Qt::LeftButton);
        EXPECT_FALSE(link().cancelRequested) << "nothing ran that could be cancelled";
      });
      // The dialog's own event loop does not know the test's clock.
      QTimer::singleShot(0, &dialog, [this] { clock().advance(1500); });
    });
  });
  EXPECT_GE(sent, 10000 / GetParam().cab.timerMs - 1);
  EXPECT_FALSE(link().cancelRequested);
}

TEST_P(IdleJobWindow, ACabIsKeptAliveWhileAQuestionIsOpen) {
  if (!GetParam().switchesOn.cvJob) return;
  driving().OpenCab(3, true);
  click(3, "imgStop");
  clock().advance(500);
  qsizetype sent = -1;
  prompt().whileAsked = [&] {
    const qsizetype before = messages();
    clock().advance(10000);
    sent = messages() - before;
  };
  endlessJob(1000, [] {});
  ASSERT_EQ(prompt().asked.size(), 1);
  EXPECT_GE(sent, 10000 / GetParam().cab.timerMs - 1);
}

}  // namespace
}  // namespace lokari
