// The jobs of the decoder window and the line that they share with cabs: what is asked ahead of the
// line, a stop meanwhile, a job that waits for its turn.
#include <QDialog>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>

#include "decoder/cv_grid.h"
#include "simulated_desk.h"

namespace lokari {
namespace {

class DecoderJobLine : public test::SimulatedDesk,
                       public ::testing::WithParamInterface<StationKindRow> {
 protected:
  DecoderJobLine() : SimulatedDesk(GetParam().kind) {
    QFile file(folder.file(QStringLiteral("Default.dec")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "SPEEDTABLE=N\nPROGMAIN=J\nRAILCOM=J\nEXTADDRESS=J\nCV_3=Zeit,0-255,0\n"
        "CV_40=Zaehler,0-255,256,3\n");
  }

  /// Opens the decoder window of the vehicle on show, without its checks, and runs `look` in it.
  void inDecoderWindow(const std::function<void()>& look) {
    watch_.callOnTimeout([this, look] {
      QWidget* modal = QApplication::activeModalWidget();
      if (modal == nullptr || modal->objectName() != QStringLiteral("frmDecoder")) return;
      watch_.stop();
      frmDecoder = static_cast<QDialog*>(modal);
      click("chkDcAdrChk");
      click("chkDcManufChk");
      looked = true;
      look();
      prompt().whileAsked = nullptr;
      prompt().choices = {0};
      if (frmDecoder->isVisible()) frmDecoder->reject();
    });
    watch_.start(0);
    control<QToolButton>(window.get(), "butProg")->click();
    EXPECT_TRUE(looked);
  }
  void click(const char* name) { control<QAbstractButton>(frmDecoder, name)->click(); }
  QLineEdit* field(const char* name) { return control<QLineEdit>(frmDecoder, name); }
  void type(const char* name, const char* text) {
    field(name)->setFocus();
    field(name)->selectAll();
    QTest::keyClicks(field(name), QString::fromLatin1(text));
  }
  /// The head of the grid ticks what can only be read as well, which a write asks about.
  void tickAllByTheHead() {
    auto* tabs = control<QTabWidget>(frmDecoder, "ssDecoder");
    tabs->setCurrentIndex(tabs->count() - 1);
    QApplication::processEvents();
    QHeaderView* heads = control<QTableView>(frmDecoder, "cvTable")->horizontalHeader();
    const int section = static_cast<int>(GridColumn::Write);
    QTest::mouseClick(
        heads->viewport(), Qt::LeftButton, Qt::NoModifier,
        QPoint(heads->sectionViewportPosition(section) + heads->sectionSize(section) / 2,
               heads->height() / 2));
  }
  qsizetype messages() const { return line->writes.size() + socket->sent.size(); }
  int inDecoder(int cv) { return layout.onProgrammingTrack()->stored(cv); }

  QDialog* frmDecoder = nullptr;
  bool looked = false;

 private:
  QTimer watch_;
};

std::string nameOfKind(const ::testing::TestParamInfo<StationKindRow>& row) {
  return QString::fromUtf16(row.param.name).toStdString();
}
template <typename Fits>
std::vector<StationKindRow> kindsThat(const Fits& fit) {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds)
    if (fit(row)) kinds.push_back(row);
  return kinds;
}

// ---- What is asked ahead of the line ------------------------------------------------------------

INSTANTIATE_TEST_SUITE_P(Kinds, DecoderJobLine, ::testing::ValuesIn(kindsThat([](const auto& row) {
                           return row.cab.available();
                         })),
                         nameOfKind);

TEST_P(DecoderJobLine, AStopWhileAWriteAsksEndsItWhateverTheCabsSendMeanwhile) {
  driving().OpenCab(3, true);
  inDecoderWindow([this] {
    type("txtDcComAccTime", "50");
    tickAllByTheHead();
    prompt().choices = {0};
    prompt().whileAsked = [this] {
      QTest::mouseClick(control<QPushButton>(windowNamed("dlg_comm"), "cmdStop"), Qt::LeftButton);
      ranOnce = false;
      clock().advance(3000);
    };
    const int sessions = link().commUseCount;
    click("cmdDcProg");
    EXPECT_EQ(prompt().asked.size(), 1);
    EXPECT_EQ(inDecoder(3), 12);
    EXPECT_EQ(link().commUseCount, sessions);
    EXPECT_FALSE(link().cancelRequested);
    EXPECT_EQ(windowNamed("dlg_comm"), nullptr);
    EXPECT_TRUE(halted());
    EXPECT_TRUE(stop().isHeld());
    EXPECT_FALSE(ranOnce);
  });
}

using DecoderJobQuestion = DecoderJobLine;

INSTANTIATE_TEST_SUITE_P(Kinds, DecoderJobQuestion,
                         ::testing::ValuesIn(kindsThat([](const auto& row) {
                           return row.cab.timerMs > 0;
                         })),
                         nameOfKind);

TEST_P(DecoderJobQuestion, ACabIsKeptAliveWhileAWriteAsks) {
  driving().OpenCab(3, true);
  qsizetype sent = -1;
  inDecoderWindow([&] {
    tickAllByTheHead();
    prompt().whileAsked = [&] {
      const qsizetype before = messages();
      clock().advance(10000);
      sent = messages() - before;
    };
    click("cmdDcProg");
  });
  EXPECT_GE(sent, 10000 / GetParam().cab.timerMs - 1);
}

// ---- A job that waits for the line --------------------------------------------------------------

using WaitingJob = DecoderJobLine;

INSTANTIATE_TEST_SUITE_P(Kinds, WaitingJob,
                         ::testing::Values(stationKind(StationKind::TamsMc),
                                           stationKind(StationKind::Z21Ip)),
                         nameOfKind);

TEST_P(WaitingJob, SaysThatItWaitsAndIsGivenUpInItsWindowOrByEsc) {
  inDecoderWindow([this] {
    click("chkRd_3");
    const qsizetype before = messages();
    driving().runAlone(this, [this] {
      auto* box = control<QAbstractButton>(frmDecoder, "chkRd_3");
      box->setFocus();
      click("cmdDcRead");
      QWidget* wait = windowNamed("dlg_wait");
      ASSERT_NE(wait, nullptr);
      EXPECT_EQ(control<QLabel>(wait, "lblWait")->text(),
                QStringLiteral("Der Auftrag wartet auf die Digitalzentrale ..."));
      EXPECT_FALSE(box->isEnabled()) << "what it is to do cannot change meanwhile";
      QTest::mouseClick(control<QPushButton>(wait, "cmdCancel"), Qt::LeftButton);
      EXPECT_EQ(windowNamed("dlg_wait"), nullptr);
      EXPECT_TRUE(box->isEnabled());
      EXPECT_EQ(frmDecoder->focusWidget(), box);
      click("cmdDcRead");
      QTest::keyClick(frmDecoder, Qt::Key_Escape);
      EXPECT_EQ(windowNamed("dlg_wait"), nullptr);
      EXPECT_TRUE(box->isEnabled());
    });
    clock().advance(1000);
    EXPECT_TRUE(frmDecoder->isVisible());
    EXPECT_EQ(messages(), before) << "what was given up does not begin";
    driving().runAlone(this, [this] { click("cmdDcRead"); });
    EXPECT_EQ(windowNamed("dlg_wait"), nullptr);
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("12"));
  });
}

TEST_P(WaitingJob, DoesNotHoldTheEndOfTheProgramUp) {
  inDecoderWindow([this] {
    click("chkRd_3");
    driving().runAlone(this, [this] {
      click("cmdDcRead");
      window->endProgram();
      EXPECT_TRUE(QTest::qWaitFor([this] { return !frmDecoder->isVisible(); }));
    });
  });
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
  EXPECT_EQ(prompt().shown, QStringList());
}

// ---- The address on the main track --------------------------------------------------------------

using MainTrackJob = DecoderJobLine;

INSTANTIATE_TEST_SUITE_P(Kinds, MainTrackJob,
                         ::testing::Values(stationKind(StationKind::Z21Ip),
                                           stationKind(StationKind::Mx10),
                                           stationKind(StationKind::Mx10Ip)),
                         nameOfKind);

TEST_P(MainTrackJob, AnAddressThatAnotherVehicleHasAnsweredWithIsStillAskedAbout) {
  inDecoderWindow([this] {
    type("dc_adr", "1000");
    click("chkDcAdrRead");
    click("cmdDcReadMain");
    ASSERT_EQ(prompt().shown, QStringList());
    ASSERT_EQ(field("dc_adr")->palette().color(QPalette::Active, QPalette::Text),
              QColor(0, 0, 255));
    click("chkDcAdrRead");
    click("chkWrt_3");
    const int before = layout.onMainTrack(1000)->stored(3);
    type("txtDcComAccTime", "77");
    click("cmdDcProgMain");
    EXPECT_EQ(prompt().shown,
              QStringList({"Das Fahrzeug mit der Adresse 1000 würde beschrieben, nicht das mit der "
                           "Adresse 3!"}));
    EXPECT_EQ(layout.onMainTrack(1000)->stored(3), before);
  });
}

}  // namespace
}  // namespace lokari
