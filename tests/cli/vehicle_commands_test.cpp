// vehicle read and vehicle write, on a database and description files of their own.
#include <QSqlDatabase>
#include <QSqlQuery>

#include "vehicle_fixture.h"

namespace lokari {
namespace {

using VehicleCommandsTest = VehicleFixture;

TEST_F(VehicleCommandsTest, ReadsIntoTheRecord) {
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3,49,257:2"), 0);
  EXPECT_EQ(console.results, QStringList({"3\t33\t1", "49\t2\t1", "257 (2)\t77\t1"}));
  EXPECT_TRUE(console.messages.contains("Lese Regler (CV 49)"));
  const CvRecord record = stored();
  EXPECT_EQ(record.recCvValues[0].at(2), 33);
  EXPECT_EQ(record.recCvMarks[0].at(2), '1');
  EXPECT_EQ(record.recCvValues[0].at(1023), 77);
  EXPECT_EQ(record.recDecoder, "AT-ECO");
  EXPECT_EQ(record.recManuf, 97);
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(VehicleCommandsTest, WhatSomebodyElseChangesOnTheRowMeanwhileStays) {
  clock.schedule(1500, [this] {
    store(5, 99);
    Database database(dbPath());
    database.write(QStringLiteral("UPDATE LOCO_DAT SET ST_SNAME = 'Neu'"), {});
  });
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3,49"), 0);
  ASSERT_GT(clock.now(), 1500);
  const CvRecord record = stored();
  EXPECT_EQ(record.recCvValues[0].at(2), 33);
  EXPECT_EQ(record.recCvValues[0].at(48), 2);
  EXPECT_EQ(record.recCvValues[0].at(4), 99);
  Database database(dbPath());
  QString name;
  database.read(QStringLiteral("SELECT ST_SNAME FROM LOCO_DAT"), {},
                [&](const QSqlQuery& row) { name = row.value(0).toString(); });
  EXPECT_EQ(name, "Neu");
}

TEST_F(VehicleCommandsTest, ADatabaseThatIsHeldAtTheEndIsWaitedForAndNoValueIsLost) {
  std::unique_ptr<QSqlQuery> holder;
  {
    QSqlDatabase other =
        QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("holder"));
    other.setDatabaseName(dbPath());
    ASSERT_TRUE(other.open());
    holder = std::make_unique<QSqlQuery>(other);
  }
  clock.schedule(1500, [&] {
    ASSERT_TRUE(holder->exec(QStringLiteral("BEGIN EXCLUSIVE")));
    // The command is at its wait by then.
    clock.schedule(2500, [&] { ASSERT_TRUE(holder->exec(QStringLiteral("COMMIT"))); });
  });
  const auto release = [&] {
    holder.reset();
    QSqlDatabase::removeDatabase(QStringLiteral("holder"));
  };
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3"), 0);
  EXPECT_TRUE(console.messages.join(u'\n').contains("Es wird gewartet"));
  release();
  EXPECT_EQ(stored().recCvValues[0].at(2), 33);
}

TEST_F(VehicleCommandsTest, WithoutAListReadsEverythingOnThePages) {
  EXPECT_EQ(run("vehicle read Anlage 3"), 0);
  EXPECT_EQ(console.results.size(), 3 + 2 + 28 + 1);
  EXPECT_EQ(console.results.first(), "3\t33\t1");
  EXPECT_EQ(console.results.last(), "257 (2)\t77\t1");
}

TEST_F(VehicleCommandsTest, WritesTheSetsValuesVerified) {
  store(49, 3);
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 49"), 0);
  EXPECT_EQ(console.results, QStringList({"49\t3\t1"}));
  EXPECT_EQ(decoder().stored(49), 3);
  EXPECT_EQ(stored().recCvMarks[0].at(48), '1');
}

TEST_F(VehicleCommandsTest, WritesTheAddressOnlyWhenItIsNamed) {
  EXPECT_EQ(run("vehicle write Anlage 3 --yes"), 0);
  EXPECT_FALSE(line_.sent().contains("xPTWD 1,"));
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 1 --yes"), 0);
  EXPECT_TRUE(line_.sent().contains("xPTWD 1, 3"));
  EXPECT_EQ(console.results, QStringList({"1\t3\t1"}));
}

TEST_F(VehicleCommandsTest, WritesOnTheMainTrackWhereTheDescriptionAllowsIt) {
  EXPECT_EQ(run("vehicle write Anlage 3 --main --cv 49"), 2);
  EXPECT_EQ(console.messages.first(), "Auf dem Hauptgleis kann hier nicht geschrieben werden!");
  describe("Adlerton/AT-ECO.dec", "[AT-ECO]\nPROGMAIN=J\nCV_49=Regler,0-3,0,4\n");
  store(49, 1);
  EXPECT_EQ(run("vehicle write Anlage 3 --main --cv 49"), 0);
  EXPECT_EQ(line_.sent(), "xPD 3, 49, 1\r");
  EXPECT_EQ(run("vehicle read Anlage 3 --main --cv 49"), 2);
}

TEST_F(VehicleCommandsTest, AFailedCvIsMarkedAndTheStatusTellsIt) {
  writeIni("LOKARI",
           "BaseUnit=TAMSMC\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\nContinueOnError=1\r\n");
  decoder().present = {{1, 48}};
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3,49"), 1);
  EXPECT_EQ(console.results, QStringList({"3\t33\t1", "49\t0\t2"}));
  EXPECT_EQ(stored().recCvMarks[0].at(48), '2');
}

TEST_F(VehicleCommandsTest, ADeadTrackCostsNoStoredValue) {
  writeIni("LOKARI",
           "BaseUnit=TAMSMC\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\nContinueOnError=1\r\n");
  store(3, 17);
  store(29, 6);
  store(49, 2);
  const QByteArray before = stored().recCvValues[0];
  faults.add({.kind = sim::FaultKind::NoAck, .count = sim::Fault::kAlways});
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3,29,49 --yes"), 1);
  EXPECT_EQ(console.results, QStringList({"3\t17\t2", "29\t6\t2", "49\t2\t2"}));
  const CvRecord record = stored();
  EXPECT_EQ(record.recCvValues[0], before);
  for (const int cv : {3, 29, 49}) EXPECT_EQ(record.recCvMarks[0].at(cv - 1), '2') << cv;
  EXPECT_EQ(record.recCvMarks[0].at(4), '\0') << "CV 5 was not asked for";
}

TEST_F(VehicleCommandsTest, AFailureThatEndsTheRunNamesItsCvAndStoresWhatWasReadBefore) {
  writeIni("LOKARI",
           "BaseUnit=TAMSMC\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\n"
           "ContinueOnError=0\r\nAddressCheck=0\r\nManufacturerCheck=0\r\n");
  store(49, 2);
  decoder().present = {{1, 48}};
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3,49,257:2"), 1);
  EXPECT_EQ(console.results, QStringList({"3\t33\t1", "49\t2\t2"}));
  const qsizetype told = console.messages.indexOf(QStringLiteral("Kein ACK vom Decoder"));
  ASSERT_GE(told, 0);
  EXPECT_EQ(console.messages.value(told + 1), "CV 49");
  EXPECT_EQ(stored().recCvValues[0].at(48), 2);
  EXPECT_EQ(stored().recCvMarks[0].at(48), '2');
  EXPECT_EQ(stored().recCvMarks[0].at(1023), '\0') << "never reached";
}

TEST_F(VehicleCommandsTest, AWriteThatIsCancelledPrintsAndStoresOnlyWhatItDid) {
  store(3, 9);
  store(49, 3);
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways, .skip = 5});
  clock.schedule(3000, [&] { interrupt.raise(); });
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 3,49"), 1);
  EXPECT_EQ(line_.sent().count("xPTWD"), 2);
  EXPECT_EQ(console.results, QStringList({"3\t9\t1"}));
  EXPECT_TRUE(console.messages.contains("CV 3: geschrieben, nicht geprüft!"));
  EXPECT_EQ(stored().recCvMarks[0].at(2), '1');
  EXPECT_EQ(stored().recCvMarks[0].at(48), '\0');
}

TEST_F(VehicleCommandsTest, AnAddressThatTakesCv29WithItSaysSo) {
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 1 --yes"), 0);
  EXPECT_EQ(console.results, QStringList({"1\t3\t1"}));
  const QStringList named =
      console.messages.filter(QStringLiteral("Mit der Adresse ging auch CV 29"));
  EXPECT_EQ(named.size(), 1);
}

TEST_F(VehicleCommandsTest, AnotherAddressStopsTheJobUnlessTheUserSaysYes) {
  decoder().setAddress(47);
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3"), 1);
  EXPECT_TRUE(console.messages.contains("Abweichende Adresse im Empfänger (47)! [Abbruch]"));
  EXPECT_TRUE(console.results.isEmpty()) << "this run read nothing";
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3 --yes"), 0);
  EXPECT_EQ(console.results, QStringList({"3\t33\t1"}));
}

TEST_F(VehicleCommandsTest, AnAddressThatIsReadIsStored) {
  decoder().setAddress(47);
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 1 --yes"), 0);
  EXPECT_EQ(console.results, QStringList({"1\t47\t1"}));
  EXPECT_EQ(stored(47).recDecoder, "AT-ECO");
}

TEST_F(VehicleCommandsTest, AnotherMakerIsNeverStored) {
  decoder().store(8, 131);
  store(49, 3);
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 49 --yes"), 1);
  const CvRecord record = stored();
  EXPECT_EQ(record.recManuf, 97);
  EXPECT_EQ(record.recDecoder, "AT-ECO");
  EXPECT_EQ(record.recCvValues[0].at(48), 3);
}

TEST_F(VehicleCommandsTest, CtrlCEndsTheJobAndKeepsWhatWasRead) {
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways, .skip = 5});
  clock.schedule(2000, [&] { interrupt.raise(); });
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3,5,49"), 1);
  EXPECT_EQ(console.results, QStringList({"3\t33\t1"}));
  EXPECT_EQ(stored().recCvValues[0].at(2), 33);
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(VehicleCommandsTest, AStationThatCannotBeReachedIsNoSession) {
  line_.failsToOpen = true;
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3"), 2);
  EXPECT_TRUE(console.results.isEmpty());
}

TEST_F(VehicleCommandsTest, WrongCallsTouchNothing) {
  addVehicle("Anlage", 9, 2);
  for (const char* call :
       {"vehicle read", "vehicle read Anlage", "vehicle read Anlage 0", "vehicle read Anlage 10240",
        "vehicle read Anlage x", "vehicle read Anlage 3 4", "vehicle read Anlage 4",
        "vehicle read Werkstatt 3", "vehicle read Anlage 9", "vehicle read Anlage 3 --cv",
        "vehicle read Anlage 3 --cv x", "vehicle read Anlage 3 --cv 9-5",
        "vehicle read Anlage 3 --cv 1:2:3", "vehicle read Anlage 3 --cv 257:17",
        "vehicle read Anlage 3 --cv 52", "vehicle read Anlage 3 --cv 700",
        "vehicle read Anlage 3 --cv 258:2", "vehicle read Anlage 3 --laut"}) {
    EXPECT_EQ(run(call), 2) << call;
    EXPECT_TRUE(console.results.isEmpty()) << call;
  }
  EXPECT_TRUE(untouched());
}

TEST_F(VehicleCommandsTest, ADatabaseThatCannotBeOpenedIsTold) {
  QFile file(dbPath());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("kein Bestand");
  file.close();
  EXPECT_EQ(run("vehicle read Anlage 3"), 1);
  EXPECT_EQ(console.messages.size(), 1);
}

// ---- check ------------------------------------------------------------------------------------
}  // namespace
}  // namespace lokari
