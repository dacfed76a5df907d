// The decoder window without a description: it says so, and no job runs.
#include "choice_fixture.h"

namespace lokari {
namespace {

const char* const kJobs[] = {"cmdDcRead", "cmdDcProg", "cmdDcProgMain"};

class FrmDecoderEmpty : public test::ChoiceFixture {
 protected:
  FrmDecoderEmpty() {
    settings.addressCheckNow = false;
    settings.manufacturerCheckNow = false;
    layout.add({}).decoder.setAddress(3);
  }

  /// Every box that there is, and then every job.
  void tickAllAndRunEveryJob() {
    prompt.shown.clear();
    prompt.below.clear();
    click("cmdReadAll");
    click("cmdWriteAll");
    for (const char* job : kJobs) {
      EXPECT_TRUE(button(job)->isEnabled()) << job;
      click(job);
    }
    ASSERT_EQ(prompt.shown.size(), std::size(kJobs));
    EXPECT_TRUE(line.writes.isEmpty());
    EXPECT_FALSE(line.isOpen());
  }

  void expectEmpty(const QString& why) {
    EXPECT_TRUE(label("labNoDescription")->isVisible());
    EXPECT_EQ(label("labNoDescription")->text(), why);
    EXPECT_FALSE(tabs()->isEnabled());
    EXPECT_EQ(grid()->model()->rowCount(), 0);
    for (int tab = 2; tab < kGridTab; ++tab) EXPECT_FALSE(tabs()->isTabVisible(tab)) << tab;
    EXPECT_EQ(label("labDcComAccTime")->text(), QStringLiteral("Beschleunigungszeit:"));
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("0"));
  }
};

const QString kNoFile = QStringLiteral(
    "Keine CVs: Zu diesem Decodertyp gibt es keine Beschreibung, und die Datei Default.dec fehlt.");

TEST_F(FrmDecoderEmpty, WithoutAnyFileEachJobNamesItAndSendsNothing) {
  edit([&] {
    const QString told = prompt.shown.value(0);
    EXPECT_TRUE(told.contains(QStringLiteral("Default.dec nicht gefunden"))) << told.toStdString();
    expectEmpty(kNoFile);
    tickAllAndRunEveryJob();
    EXPECT_EQ(prompt.shown, QStringList({told, told, told}));
    EXPECT_TRUE(prompt.below.last().contains(QStringLiteral("Eins.dec")));
  });
}

TEST_F(FrmDecoderEmpty, AFileThatCannotBeParsedIsNamedWithItsLineAndSendsNothing) {
  describeType("Adler/Eins.dec", "CV_3=Zeit\nCV_33=Licht,0-255,1,3\nTYPE=40000\nCV_34=Pfiff\n");
  edit([&] {
    EXPECT_TRUE(prompt.shown.isEmpty()) << "loading stays silent";
    expectEmpty(
        QStringLiteral("Keine CVs: Die Decoderdatei Eins.dec hat in Zeile 3 einen Fehler."));
    tickAllAndRunEveryJob();
    for (const QString& text : std::as_const(prompt.shown)) {
      EXPECT_TRUE(text.contains(QStringLiteral("/Adler/Eins.dec"))) << text.toStdString();
    }
    EXPECT_TRUE(prompt.below.last().contains(QStringLiteral("Zeile 3")));
  });
}

TEST_F(FrmDecoderEmpty, ATypeWithoutFileShowsNothingOfTheTypeBefore) {
  describeType("Adler/Eins.dec",
               "MAXADDRESS=99\nRAILCOM=J\nCV_3=Zeit,0-255,5\n" + cvLines(100, 25, 3));
  edit([&] {
    click("cmdWriteAll");
    tabs()->setCurrentIndex(2);
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    expectEmpty(kNoFile);
    EXPECT_EQ(label("labAdr")->text(), QStringLiteral("Adresse:"));
    EXPECT_FALSE(button("chkDcAdrWrite")->isChecked());
    EXPECT_FALSE(button("chkWrt_Tbl")->isChecked());
    EXPECT_FALSE(button("optDcComRailComYes")->isVisibleTo(tabs()->widget(0)));
    tickAllAndRunEveryJob();
  });
}

TEST_F(FrmDecoderEmpty, ATypeWithAFileBringsEverythingBack) {
  describeType("Adler/Zwei.dec", "CV_3=Zeit,0-255,5\n");
  edit([&] {
    expectEmpty(kNoFile);
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    EXPECT_FALSE(label("labNoDescription")->isVisible());
    EXPECT_TRUE(tabs()->isEnabled());
    click("chkWrt_3");
    click("cmdDcProg");
  });
  EXPECT_EQ(sent(), QStringList({"xPTWD 3, 5"}));
}

}  // namespace
}  // namespace lokari
