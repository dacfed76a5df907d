#include "app/workbench.h"

#include <gtest/gtest.h>

#include <QFileInfo>

#include "app/driving.h"
#include "app_folder.h"
#include "recording_workbench_view.h"

namespace lokari {
namespace {

class WorkbenchTest : public ::testing::Test {
 protected:
  /// Starts a workbench on the folder as it is.
  bool start(const QString& commandLine = {}) {
    workbench_.emplace(outside_.parts(folder_, commandLine));
    return workbench_->start(view_);
  }

  RecordForm& form() { return workbench_->session().form(); }
  QString shown(const char16_t* control) { return form().text(QString::fromUtf16(control)); }

  test::AppFolder folder_;
  test::Outside outside_;
  test::RecordingWorkbenchView view_{outside_.prompt};
  std::optional<Workbench> workbench_;
};

const QList<test::Vehicle> kThree{{QStringLiteral(""), 7, QStringLiteral("V7")},
                                  {QStringLiteral("Club"), 3, QStringLiteral("C3")},
                                  {QStringLiteral("Club"), 7, QStringLiteral("C7")}};

TEST_F(WorkbenchTest, TheStartGoesThroughItsStepsInOrder) {
  folder_.add(kThree);
  ASSERT_TRUE(start());
  EXPECT_EQ(view_.steps, QStringList({QStringLiteral("caption Lokari V4.11"),
                                      QStringLiteral("help"), QStringLiteral("scaling 1, boxes 0"),
                                      QStringLiteral("splash"), QStringLiteral("bind 0"),
                                      QStringLiteral("caption LOKARIV3.MDB - Lokari V4.11")}));
  EXPECT_TRUE(outside_.prompt.shown.isEmpty());
}

TEST_F(WorkbenchTest, WithoutAnIniFileTheStationIsAnMx1OnPortOneWithTimeoutOne) {
  ASSERT_TRUE(start());
  EXPECT_EQ(workbench_->settings().baseUnit, StationKind::Mx1);
  EXPECT_EQ(workbench_->settings().comPort, 1);
  EXPECT_EQ(workbench_->settings().timeoutVal, 1);
}

TEST_F(WorkbenchTest, TheCommandLineChoosesAnotherSettingsFile) {
  folder_.write(QStringLiteral("Club.INI"), "[LOKARI]\r\nComPort=9\r\nResize=0\r\n");
  ASSERT_TRUE(start(QStringLiteral("Club")));
  EXPECT_EQ(workbench_->settings().comPort, 9);
  EXPECT_TRUE(view_.steps.contains(QStringLiteral("scaling 0, boxes 0")));
  EXPECT_TRUE(workbench_->shutDown());
  EXPECT_TRUE(folder_.read(QStringLiteral("Club.INI")).contains("DBPos="));
  EXPECT_FALSE(QFile::exists(folder_.file(QStringLiteral("LOKARI.INI"))));
}

TEST_F(WorkbenchTest, AMissingHelpFileIsToldAndTheStartGoesOn) {
  QFile::remove(folder_.file(QStringLiteral("LOKARI.qhc")));
  ASSERT_TRUE(start());
  EXPECT_EQ(outside_.prompt.shown, QStringList(QStringLiteral("Hilfe-Datei nicht gefunden!")));
  EXPECT_TRUE(view_.steps.contains(QStringLiteral("no help")));
  EXPECT_TRUE(view_.steps.contains(QStringLiteral("scaling 1, boxes 1")));
}

TEST_F(WorkbenchTest, TheHelpIsOpenedAtItsContentsAndAtItsSearch) {
  ASSERT_TRUE(start());
  workbench_->mnuHelpContents();
  workbench_->mnuHelpSearch();
  const QString file = folder_.file(QStringLiteral("LOKARI.qhc"));
  EXPECT_EQ(outside_.desktop.log,
            QStringList({QStringLiteral("contents ") + file, QStringLiteral("search ") + file}));
}

TEST_F(WorkbenchTest, TheReadMeAndTheWebPageGoThroughTheDesktop) {
  folder_.write(QStringLiteral("README.TXT"), "Guten Tag");
  ASSERT_TRUE(start());
  workbench_->mnuReadMe();
  workbench_->mnuWeb();
  ASSERT_EQ(outside_.desktop.log.size(), 2);
  EXPECT_EQ(outside_.desktop.log[0],
            QStringLiteral("file ") + folder_.file(QStringLiteral("README.TXT")));
  EXPECT_TRUE(outside_.desktop.log[1].startsWith(QStringLiteral("web https://")));
  EXPECT_TRUE(outside_.prompt.shown.isEmpty());
}

TEST_F(WorkbenchTest, ADesktopThatCannotShowThemIsTold) {
  ASSERT_TRUE(start());
  outside_.desktop.works = false;
  workbench_->mnuReadMe();
  workbench_->mnuWeb();
  EXPECT_EQ(outside_.prompt.shown.size(), 2);
}

TEST_F(WorkbenchTest, ADatabaseThatCannotBeOpenedEndsTheProgram) {
  QFile::remove(folder_.file(test::AppFolder::databaseName()));
  EXPECT_FALSE(start());
  ASSERT_EQ(outside_.prompt.shown.size(), 1);
  EXPECT_TRUE(outside_.prompt.shown[0].startsWith(QStringLiteral("Datenbankdatei ")));
  EXPECT_FALSE(view_.steps.contains(QStringLiteral("caption LOKARIV3.MDB - Lokari V4.11")));
}

TEST_F(WorkbenchTest, AFileThatIsNoDatabaseEndsTheProgramWithItsNameItsFaultAndAdvice) {
  folder_.write(test::AppFolder::databaseName(), "this is no database");
  EXPECT_FALSE(start());
  ASSERT_EQ(outside_.prompt.shown.size(), 1);
  EXPECT_TRUE(outside_.prompt.shown[0].contains(QStringLiteral("LOKARIV3.MDB")));
  EXPECT_TRUE(outside_.prompt.shown[0].contains(QStringLiteral("keine Datenbank")));
  EXPECT_TRUE(outside_.prompt.below[0].contains(QStringLiteral("DBPath")));
}

TEST_F(WorkbenchTest, TheConfiguredDatabaseIsOpened) {
  folder_.copyTemplate(QStringLiteral("DB/ANDERE.MDB"));
  folder_.settings("DBPath=" + folder_.file(QStringLiteral("DB/ANDERE.MDB")).toUtf8() + "\r\n");
  ASSERT_TRUE(start());
  EXPECT_EQ(view_.steps.back(), QStringLiteral("caption ANDERE.MDB - Lokari V4.11"));
}

TEST_F(WorkbenchTest, TheSavedRecordIsFoundAgainByCollectionAndAddress) {
  folder_.add(kThree);
  folder_.settings("DBColl=Club\r\nDBAddr=7\r\n");
  ASSERT_TRUE(start());
  EXPECT_EQ(shown(u"st_sname"), QStringLiteral("C7"));
}

TEST_F(WorkbenchTest, AnAddressAloneFindsTheRecordOfTheEmptyCollectionAndNotThatOfANullOne) {
  folder_.add({{QVariant(), 7, QStringLiteral("Null")},
               {QStringLiteral(""), 3, QStringLiteral("E3")},
               {QStringLiteral(""), 7, QStringLiteral("E7")}});
  folder_.settings("DBAddr=7\r\n");
  ASSERT_TRUE(start());
  EXPECT_EQ(shown(u"st_sname"), QStringLiteral("E7"));
}

TEST_F(WorkbenchTest, ASavedRecordThatIsGoneLeavesTheFirstOneSilently) {
  folder_.add(kThree);
  folder_.settings("DBColl=Club\r\nDBAddr=99\r\n");
  ASSERT_TRUE(start());
  EXPECT_EQ(form().position(), 0);
  EXPECT_TRUE(outside_.prompt.shown.isEmpty());
}

TEST_F(WorkbenchTest, ASavedPlaceThatMakesNoSenseLeavesTheFirstRecordSilently) {
  folder_.add(kThree);
  folder_.settings("DBColl=A\"B\r\nDBAddr=x y\r\n");
  ASSERT_TRUE(start());
  EXPECT_EQ(form().position(), 0);
  EXPECT_TRUE(outside_.prompt.shown.isEmpty());
}

TEST_F(WorkbenchTest, TheDecoderTypeNamesAreLoaded) {
  folder_.write(QStringLiteral("Zimo/DecTypes.txt"), "005=MX64\r\n");
  ASSERT_TRUE(start());
  EXPECT_EQ(workbench_->decTypes()[5], QStringLiteral("MX64"));
}

TEST_F(WorkbenchTest, TheCanLogIsCreatedAnewWhenItIsOnAndClosedAtTheEnd) {
  folder_.write(QStringLiteral("CAN.log"), "old");
  folder_.settings("CANLog=1\r\n");
  ASSERT_TRUE(start());
  EXPECT_EQ(QFileInfo(folder_.file(QStringLiteral("CAN.log"))).size(), 0);
  EXPECT_TRUE(outside_.canLog->isOpen());
  ASSERT_TRUE(workbench_->shutDown());
  EXPECT_FALSE(outside_.canLog->isOpen());
}

TEST_F(WorkbenchTest, TheCanLogIsLeftAloneWhenItIsOff) {
  folder_.write(QStringLiteral("CAN.log"), "old");
  folder_.settings("CANLog=0\r\n");
  ASSERT_TRUE(start());
  EXPECT_EQ(folder_.read(QStringLiteral("CAN.log")), "old");
}

TEST_F(WorkbenchTest, ACanLogThatCannotBeCreatedIsDoneWithout) {
  folder_.write(QStringLiteral("CAN.log/in the way"), "");
  folder_.settings("CANLog=1\r\n");
  EXPECT_TRUE(start());
  EXPECT_TRUE(outside_.prompt.shown.isEmpty());
  EXPECT_TRUE(workbench_->shutDown());
}

TEST_F(WorkbenchTest, ACabIsAskedForOnlyWithAnAddressThatExists) {
  ASSERT_TRUE(start());
  for (const int address : {0, 1, 10239, 10240, -5}) workbench_->externalMessage(address);
  CabFleet& cabs = workbench_->driving().cabs();
  EXPECT_EQ(cabs.cabCount(), 2);
  EXPECT_TRUE(cabs.isOpen(1));
  EXPECT_TRUE(cabs.isOpen(10239));
}

TEST_F(WorkbenchTest, NoCabIsOpenedWhileTheDecoderWindowIsUp) {
  ASSERT_TRUE(start());
  bool visible = true;
  workbench_->decoderWindowVisible = [&] { return visible; };
  workbench_->externalMessage(5);
  visible = false;
  workbench_->externalMessage(6);
  EXPECT_FALSE(workbench_->driving().cabs().isOpen(5));
  EXPECT_TRUE(workbench_->driving().cabs().isOpen(6));
}

TEST_F(WorkbenchTest, TheEndKeepsThePlaceOfTheRecordOnShow) {
  folder_.add(kThree);
  folder_.settings("DBColl=Club\r\nDBAddr=7\r\nCANLog=0\r\n");
  ASSERT_TRUE(start());
  form().MovePrevious();
  ASSERT_TRUE(workbench_->shutDown());
  EXPECT_EQ(folder_.read(QStringLiteral("LOKARI.INI")),
            "[LOKARI]\r\nDBColl=Club\r\nDBAddr=3\r\nCANLog=0\r\nDBPos= 2\r\n");
}

TEST_F(WorkbenchTest, TheEndKeepsThePlaceOfWhatIsStoredAndNotOfAnEditThatIsGivenUp) {
  folder_.add(kThree);
  folder_.settings("DBColl=Club\r\nDBAddr=7\r\nCANLog=0\r\n");
  ASSERT_TRUE(start());
  // Taken by the other one of the collection.
  form().edited(QStringLiteral("dc_adr"), QStringLiteral("3"));
  outside_.prompt.choices = {0};
  ASSERT_TRUE(workbench_->shutDown());
  EXPECT_EQ(outside_.prompt.shown,
            QStringList(QStringLiteral("Datensatz mit dieser Adresse bereits vorhanden!")));
  EXPECT_EQ(folder_.read(QStringLiteral("LOKARI.INI")),
            "[LOKARI]\r\nDBColl=Club\r\nDBAddr=7\r\nCANLog=0\r\nDBPos= 3\r\n");
}

TEST_F(WorkbenchTest, TheEndThatARecordRefusesKeepsNoPlaceOfIt) {
  folder_.add(kThree);
  const QByteArray before = "[LOKARI]\r\nDBColl=Club\r\nDBAddr=7\r\n";
  folder_.write(QStringLiteral("LOKARI.INI"), before);
  ASSERT_TRUE(start());
  form().edited(QStringLiteral("dc_adr"), QStringLiteral("20000"));
  EXPECT_FALSE(workbench_->shutDown());
  EXPECT_EQ(folder_.read(QStringLiteral("LOKARI.INI")), before);
}

TEST_F(WorkbenchTest, ARecordThatCouldNotBeReadIsNoPlace) {
  folder_.add(kThree);
  const QByteArray before = "[LOKARI]\r\nDBColl=Club\r\nDBAddr=3\r\n";
  folder_.write(QStringLiteral("LOKARI.INI"), before);
  ASSERT_TRUE(start());
  {
    Database other(folder_.file(test::AppFolder::databaseName()));
    other.write(QStringLiteral("BEGIN EXCLUSIVE"), {});
    form().MoveNext();
  }
  ASSERT_EQ(shown(u"dc_adr"), QString());
  ASSERT_TRUE(workbench_->shutDown());
  EXPECT_EQ(folder_.read(QStringLiteral("LOKARI.INI")), before);
}

TEST_F(WorkbenchTest, TheEndStoresTheRecordBeingEdited) {
  folder_.add(kThree);
  ASSERT_TRUE(start());
  form().edited(QStringLiteral("fz_lname"), QStringLiteral("Rangierlok"));
  ASSERT_TRUE(workbench_->shutDown());
  EXPECT_EQ(folder_.stored(7, QStringLiteral("FZ_LNAME")).toString(), QStringLiteral("Rangierlok"));
}

TEST_F(WorkbenchTest, ARecordThatIsNotValidKeepsTheProgramOpen) {
  folder_.add(kThree);
  ASSERT_TRUE(start());
  form().edited(QStringLiteral("st_sname"), QString());
  EXPECT_FALSE(workbench_->shutDown());
  EXPECT_EQ(outside_.prompt.shown,
            QStringList(QStringLiteral("Kurzbezeichnung muß eingegeben werden")));
  form().edited(QStringLiteral("st_sname"), QStringLiteral("neu"));
  EXPECT_TRUE(workbench_->shutDown());
  EXPECT_EQ(folder_.stored(7, QStringLiteral("ST_SNAME")).toString(), QStringLiteral("neu"));
}

TEST_F(WorkbenchTest, AnotherDatabaseChangesTheCaptionWhenTheViewAsks) {
  ASSERT_TRUE(start());
  outside_.prompt.fileNames = {folder_.file(QStringLiteral("DB/neu"))};
  workbench_->session().mnuDbNew();
  workbench_->SetCaption();
  EXPECT_EQ(view_.steps.back(), QStringLiteral("caption neu.MDB - Lokari V4.11"));
}

}  // namespace
}  // namespace lokari
