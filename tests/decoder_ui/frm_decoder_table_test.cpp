// The speed table's boxes and buttons in the decoder window.
#include <QCheckBox>
#include <QGroupBox>

#include "window_fixture.h"

namespace lokari {
namespace {

class FrmDecoderTable : public test::WindowFixture {
 protected:
  FrmDecoderTable() {
    settings.addressCheckNow = false;
    settings.manufacturerCheckNow = false;
    layout.add({}).decoder.setAddress(3);
    for (int cv = 67; cv <= 94; ++cv) setValue(cv, cv);
  }

  void editDrive(const std::function<void()>& script) {
    edit([&] {
      tabs()->setCurrentIndex(1);
      QCoreApplication::processEvents();
      script();
    });
  }

  QStringList sent() const {
    QStringList commands;
    for (const auto& out : line.writes) commands << QString::fromLatin1(out.data).trimmed();
    return commands;
  }
  QString title() { return control<QGroupBox>(QStringLiteral("grpSpeed"))->title(); }
};

TEST_F(FrmDecoderTable, ItsWriteBoxWritesEveryPointOfTheTable) {
  describe("CV_3=Zeit\n");
  editDrive([&] {
    click("chkWrt_Tbl");
    click("cmdDcProg");
  });
  QStringList points;
  for (int cv = 67; cv <= 94; ++cv) points << QStringLiteral("xPTWD %1, %1").arg(cv);
  EXPECT_EQ(sent(), points);
}

TEST_F(FrmDecoderTable, WithoutATableTheWriteBoxIsOffAndWritesNoZeros) {
  describe("SPEEDTABLE=N\nCV_3=Zeit\n");
  editDrive([&] {
    EXPECT_FALSE(button("chkWrt_Tbl")->isEnabled());
    // Neither the buttons that tick many at once, nor a tick that comes all the same.
    click("cmdWriteDrv");
    click("cmdWriteNone");
    bench.checkBoxToggled(QStringLiteral("chkWrt_Tbl"), true);
    tabs()->setCurrentIndex(0);
    click("chkWrt_3");
    click("cmdDcProg");
  });
  EXPECT_EQ(sent(), QStringList({"xPTWD 3, 0"}));
}

TEST_F(FrmDecoderTable, TheWriteBoxLeavesCvsWithARowOfTheirOwnAlone) {
  describe("SPEEDTABLE=N\nCV_67=Wirkung 1,0-255,0,5\nCV_68=Wirkung 2,0-255,0,5\n");
  editDrive([&] {
    bench.checkBoxToggled(QStringLiteral("chkWrt_Tbl"), true);
    bench.rowWriteToggled(1, true);
    click("cmdDcProg");
  });
  EXPECT_EQ(sent(), QStringList({"xPTWD 68, 68"}));
}

TEST_F(FrmDecoderTable, TheBoxesSayWhichCvsTheyMeanWhileTheCurveShowsOthers) {
  describe("CV_2=a\nCV_5=b\nCV_6=c\n");
  setValue(29, 2);
  editDrive([&] {
    EXPECT_EQ(title(), QStringLiteral("Geschwindigkeitskurve (CV 2, 6 und 5)"));
    EXPECT_EQ(label("labTbl")->text(), QStringLiteral("CV 67 bis 94:"));
    EXPECT_EQ(button("chkWrt_Tbl")->accessibleName(),
              QStringLiteral("Geschwindigkeitstabelle (CV 67 bis 94) schreiben"));
    click("optDcDrvSpdTblYes");
    EXPECT_EQ(title(), QStringLiteral("Geschwindigkeitskurve (CV 67 bis 94)"));
    click("optDcDrvSteps14");
    EXPECT_EQ(title(), QStringLiteral("Geschwindigkeitskurve (CV 68 bis 94, jede zweite)"));
    EXPECT_EQ(label("labTbl")->text(), QStringLiteral("CV 67 bis 94:"));
  });
}

TEST_F(FrmDecoderTable, AShortTableSaysItsOwnCvs) {
  describe("FAMILY=1\n");
  editDrive([&] { EXPECT_EQ(label("labTbl")->text(), QStringLiteral("CV 67 bis 81:")); });
}

TEST_F(FrmDecoderTable, SmoothingAsksWhileTheCurveOfThreeCvsIsOnShow) {
  describe("CV_2=a\n");
  setValue(29, 2);
  for (int cv = 67; cv <= 94; ++cv) setValue(cv, cv == 70 ? 200 : 0, '1');
  editDrive([&] {
    click("cmdSmooth");
    EXPECT_EQ(prompt.shown, QStringList({"Geschwindigkeitstabelle glätten?"}));
    EXPECT_TRUE(prompt.below.last().contains(QStringLiteral("CV 67 bis 94")));
    EXPECT_EQ(value(70), 200) << "Abbruch is safe";
    prompt.answers = {Answer::Ok};
    click("cmdSmooth");
    EXPECT_EQ(value(69), 100);
    // With the table on show there is nothing to ask.
    click("optDcDrvSpdTblYes");
    click("cmdSmooth");
    EXPECT_EQ(prompt.shown.size(), 2);
  });
}

TEST_F(FrmDecoderTable, SmoothingIsOffWithoutATable) {
  describe("SPEEDTABLE=N\n");
  editDrive([&] { EXPECT_FALSE(button("cmdSmooth")->isEnabled()); });
}

TEST_F(FrmDecoderTable, TheListSaysWhyItDoesNotComeUp) {
  describe("CV_2=a\n");
  editDrive([&] {
    click("cmdTblList");
    EXPECT_EQ(prompt.shown, QStringList({"Die Geschwindigkeitstabelle ist ausgeschaltet."}));
    EXPECT_TRUE(prompt.below.last().contains(QStringLiteral("Ja")));
  });
}

}  // namespace
}  // namespace lokari
