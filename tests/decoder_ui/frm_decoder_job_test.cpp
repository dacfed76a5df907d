// Whole reads and writes from the decoder window, through the progress dialog, on a simulated
// station, in virtual time.
#include <QProgressBar>

#include "job_fixture.h"

namespace lokari {
namespace {

const QColor kBlue(0, 0, 255);
const QColor kRed(255, 0, 0);

class FrmDecoderJob : public test::JobFixture {
 protected:
  FrmDecoderJob() {
    describe(
        "MAPCVA=31\nMAPCVB=32\nMAPVALA_2=16\nMAPVALB_2=0\n"
        "CV_3=Beschleunigung,0-255,5\n"
        "CV_33=Licht,0-255,1,3\nCV_34=Pfiff,0-255,2,3\n"
        "CV_257_2=Motorton,0-128,100,6\n");
    decoder.store(8, 13);
    decoder.store(3, 12);
    decoder.store(33, 4);
    decoder.store(34, 8);
    decoder.store(29, 6);
    decoder.banks = {{{16, 0}, {{257, 77}}}};
  }
};

TEST_F(FrmDecoderJob, ReadsEveryMarkedCvIntoFieldsRowsAndGrid) {
  edit([&] {
    click("cmdReadAll");
    click("cmdDcRead");
    EXPECT_EQ(link.commJob, CommJob::ReadProgTrack);
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("12"));
    EXPECT_EQ(test::textColourOf(field("txtDcComAccTime")), kBlue);
    EXPECT_TRUE(button("optDcComSteps28")->isChecked());
    EXPECT_TRUE(button("optDcComAnalogYes")->isChecked());
    tabs()->setCurrentIndex(2);
    EXPECT_EQ(field("txtFunc_1")->text(), QStringLiteral("4"));
    EXPECT_EQ(field("txtFunc_2")->text(), QStringLiteral("8"));
    EXPECT_EQ(test::textColourOf(field("txtFunc_2")), kBlue);
    tabs()->setCurrentIndex(5);
    EXPECT_EQ(field("txtSound_1")->text(), QStringLiteral("77"));
    const QModelIndexList found =
        grid()->model()->match(grid()->model()->index(0, 0), Qt::DisplayRole, QStringLiteral("34"));
    ASSERT_EQ(found.size(), 1);
    const QModelIndex cell = found.first().siblingAtColumn(static_cast<int>(GridColumn::Value));
    EXPECT_EQ(cell.data().toString(), QStringLiteral("8"));
    EXPECT_EQ(cell.data(Qt::ForegroundRole).value<QColor>(), kBlue);
  });
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_FALSE(line.isOpen());
}

TEST_F(FrmDecoderJob, ARowBeyondTheTabsIsReadIntoItsCellOfTheGrid) {
  describe("SPEEDTABLE=N\nMAXTABS=6\n" + cvLines(100, 21, 3));
  decoder.store(120, 55);
  edit([&] {
    const QModelIndex last = grid()->model()->index(20, static_cast<int>(GridColumn::Value));
    ASSERT_EQ(last.siblingAtColumn(0).data().toString(), QStringLiteral("120"));
    bench.gridClicked(21, GridColumn::Read);
    click("cmdDcRead");
    EXPECT_EQ(last.data().toString(), QStringLiteral("55"));
    EXPECT_EQ(last.data(Qt::ForegroundRole).value<QColor>(), kBlue);
  });
}

TEST_F(FrmDecoderJob, WritesChangedValuesVerifiedAndHandsThemBack) {
  decoder.readOnly = {34};
  settings.continueOnError = true;
  EXPECT_TRUE(edit([&] {
    type(field("txtDcComAccTime"), QStringLiteral("50"));
    click("chkWrt_3");
    tabs()->setCurrentIndex(2);
    type(field("txtFunc_2"), QStringLiteral("9"));
    click("chkFuncWrt_2");
    click("cmdDcProg");
    EXPECT_EQ(link.commJob, CommJob::WriteProgTrack);
    EXPECT_EQ(decoder.stored(3), 50);
    EXPECT_EQ(decoder.stored(34), 8);
    EXPECT_EQ(decoder.stored(33), 4);
    EXPECT_EQ(test::textColourOf(field("txtFunc_2")), kRed);
    EXPECT_EQ(field("txtFunc_2")->text(), QStringLiteral("9"));
    tabs()->setCurrentIndex(0);
    EXPECT_EQ(test::textColourOf(field("txtDcComAccTime")), kBlue);
    click("cmdOK");
  }));
  EXPECT_EQ(record.recCvValues[0][2], 50);
  EXPECT_EQ(record.recCvMarks[0][2], '1');
  EXPECT_EQ(record.recCvValues[0][33], 9);
  EXPECT_EQ(record.recCvMarks[0][33], '2');
}

TEST_F(FrmDecoderJob, AnotherAddressAsksAndCancelLeavesEverything) {
  decoder.setAddress(77);
  prompt.answers = {Answer::Cancel};
  edit([&] {
    click("chkRd_3");
    click("cmdDcRead");
    EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Abweichende Adresse im Empfänger (77)!")});
    EXPECT_EQ(value(3), 0);
    EXPECT_EQ(test::textColourOf(field("dc_adr")), kRed);
  });
  EXPECT_FALSE(line.isOpen());
}

TEST_F(FrmDecoderJob, WhileAJobWaitsForTheLineNothingCanBeChangedAndEscGivesItUp) {
  std::function<void()> waiting;
  window.alone = [&](std::function<void()> job) { waiting = std::move(job); };
  std::weak_ptr<bool> shown;
  QString said;
  window.showWaiting = [&](const QString& text, const std::function<void()>&) {
    said = text;
    const auto box = std::make_shared<bool>();
    shown = box;
    return box;
  };
  edit([&] {
    click("chkRd_3");
    for (const bool byKey : {true, false}) {
      click("cmdDcRead");
      ASSERT_TRUE(waiting);
      EXPECT_EQ(said, QStringLiteral("Der Auftrag wartet auf die Digitalzentrale ..."));
      EXPECT_FALSE(shown.expired());
      click("chkRd_3");
      EXPECT_TRUE(button("chkRd_3")->isChecked()) << "a click changes nothing";
      byKey ? QTest::keyClick(&window, Qt::Key_Escape) : void(window.close());
      EXPECT_TRUE(shown.expired());
      EXPECT_TRUE(window.isVisible());
      EXPECT_TRUE(button("chkRd_3")->isEnabled());
      EXPECT_EQ(window.focusWidget(), button("cmdDcRead"));
      waiting();
      EXPECT_TRUE(line.writes.isEmpty()) << "what was given up does not begin";
    }
    click("cmdDcRead");
    waiting();
    EXPECT_TRUE(shown.expired());
    EXPECT_EQ(value(3), 12);
    EXPECT_EQ(window.focusWidget(), button("cmdDcRead"));
  });
}

TEST_F(FrmDecoderJob, TheKeyboardStaysAtTheButtonThatStartedTheJob) {
  window.alone = [](const std::function<void()>& job) { job(); };
  edit([&] {
    click("chkRd_3");
    button("cmdDcRead")->setFocus();
    QTest::keyClick(button("cmdDcRead"), Qt::Key_Space);
    EXPECT_EQ(value(3), 12);
    EXPECT_EQ(window.focusWidget(), button("cmdDcRead"));
  });
}

TEST_F(FrmDecoderJob, AFailureStandsInTheDialogUntilItIsConfirmed) {
  settings.continueOnError = false;
  faults.add({.kind = sim::FaultKind::NoDecoder, .count = sim::Fault::kAlways});
  confirmTheEnd();
  edit([&] {
    click("chkRd_3");
    click("cmdDcRead");
    EXPECT_FALSE(lastStatus.isEmpty());
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(value(3), 0);
  });
  EXPECT_FALSE(line.isOpen());
}

TEST_F(FrmDecoderJob, NothingMarkedIsToldAndTheStationIsLeftAlone) {
  edit([&] {
    click("cmdDcRead");
    EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Keine Daten zum Lesen ausgewählt!")});
  });
  EXPECT_TRUE(line.writes.isEmpty());
}

TEST_F(FrmDecoderJob, CancelEndsTheRunKeepsWhatWasReadAndClosesTheSession) {
  faults.add({.kind = sim::FaultKind::Late, .amount = 60000, .skip = 5});
  settings.timeoutVal = 999;
  int shownPercent = -1;
  clock.schedule(20000, [&] {
    ASSERT_NE(dialog(), nullptr);
    shownPercent = dialog()->findChild<QProgressBar*>(QStringLiteral("panProgress"))->value();
    dialog()->findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
  });
  edit([&] {
    click("chkRd_3");
    tabs()->setCurrentIndex(2);
    click("cmdReadFunc_1");
    click("cmdDcRead");
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_GT(shownPercent, 0);
    EXPECT_LT(shownPercent, 100);
    EXPECT_EQ(value(3), 12);
    EXPECT_EQ(value(34), 0);
  });
  EXPECT_LT(clock.now(), 40000);
  EXPECT_FALSE(line.isOpen());
}

TEST_F(FrmDecoderJob, AVanishedPortEndsTheRunAndTheWindowLives) {
  faults.add({.kind = sim::FaultKind::Unplugged, .skip = 4});
  confirmTheEnd();
  edit([&] {
    click("cmdReadAll");
    click("cmdDcRead");
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(button("cmdDcRead")->isEnabled());
  });
  EXPECT_FALSE(line.isOpen());
  EXPECT_FALSE(lastStatus.isEmpty() && prompt.shown.isEmpty());
}

TEST_F(FrmDecoderJob, WritingOnTheMainTrackUsesTheAddressOfTheWindow) {
  describe("PROGMAIN=J\nCV_3=Beschleunigung,0-255,5\n");
  edit([&] {
    type(field("txtDcComAccTime"), QStringLiteral("33"));
    click("chkWrt_3");
    click("cmdDcProgMain");
    EXPECT_EQ(link.commJob, CommJob::WriteMain);
    EXPECT_EQ(decoder.stored(3), 33);
  });
  EXPECT_TRUE(line.sent().contains("xPD 3, 3, 33\r")) << line.sent().toStdString();
}

}  // namespace
}  // namespace lokari
