// What vehicle write and vehicle read print, store and end with, against what the decoder took.
#include "vehicle_fixture.h"

namespace lokari {
namespace {

/// An MX1 tells of a main-track write only at the end, and only when it refuses it.
class VehicleOnMx1Test : public VehicleFixture {
 protected:
  VehicleOnMx1Test() : VehicleFixture(u"MX1") {
    describe("Adlerton/AT-ECO.dec", "[AT-ECO]\nPROGMAIN=J\nCV_3=Zeit\nCV_49=Regler,0-3,0,4\n");
    store(3, 33);
    store(49, 1);
  }
};

TEST_F(VehicleOnMx1Test, AMainTrackWriteThatTheStationRefusesAtTheEndFailed) {
  faults.add({.kind = sim::FaultKind::Busy, .count = sim::Fault::kAlways});
  EXPECT_EQ(run("vehicle write Anlage 3 --main --cv 3,49"), 1);
  EXPECT_TRUE(console.messages.contains("Adresse gesperrt - Programmierung nicht möglich!"));
  EXPECT_EQ(console.results, QStringList({"3\t33\t2", "49\t1\t2"}));
  EXPECT_TRUE(console.messages.filter(QStringLiteral("nicht geprüft")).isEmpty());
  EXPECT_EQ(stored().recCvMarks[0].at(2), '2');
  EXPECT_EQ(stored().recCvMarks[0].at(48), '2');
}

TEST_F(VehicleOnMx1Test, AMainTrackWriteWithoutARefusalIsDone) {
  EXPECT_EQ(run("vehicle write Anlage 3 --main --cv 3,49"), 0);
  EXPECT_EQ(console.results, QStringList({"3\t33\t1", "49\t1\t1"}));
}

// ---- The address and its CV 29 ----------------------------------------------------------------

class VehicleOnLenzTest : public VehicleFixture {
 protected:
  VehicleOnLenzTest() : VehicleFixture(u"LI100V3") { configure("ContinueOnError=1"); }

  void configure(const QByteArray& keys) {
    writeIni("LOKARI",
             "BaseUnit=LI100V3\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\n"
             "LenzV36=0\r\nManufacturerCheck=0\r\n" +
                 keys + "\r\n");
  }
  void storeMark(int cv, char mark) {
    Database database(dbPath());
    RecordSet records;
    records.open(database, QStringLiteral("SELECT * FROM LOCO_DAT"));
    CvRecord record;
    loadCvRecord(records, record);
    record.recCvMarks[0][cv - 1] = mark;
    records.Edit();
    assignCvRecord(records, record);
    records.Update();
  }
  char markOf(int cv, int address = 3) { return stored(address).recCvMarks[0].at(cv - 1); }
  bool sent(const QByteArray& message) const { return line_.sent().contains(message); }
};

TEST_F(VehicleOnLenzTest, AnAddressWhoseCv29IsRefusedIsNotDone) {
  configure("AddressCheck=1\r\nContinueOnError=1");
  decoder().setAddress(1001);
  decoder().store(29, 42);
  decoder().readOnly.insert(29);
  store(29, 10);
  storeMark(29, '1');
  storeMark(1, '1');
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 1 --yes"), 1);
  EXPECT_EQ(decoder().stored(1), 3);
  EXPECT_EQ(console.results, QStringList({"1\t3\t2", "29\t10\t2"}));
  EXPECT_EQ(markOf(1), '2');
  EXPECT_EQ(markOf(29), '2');
  const QString told = console.messages.join(u'\n');
  EXPECT_FALSE(told.contains("ging auch CV 29 an den Decoder"));
  EXPECT_TRUE(told.contains("Die Art der Adresse (kurz oder lang) ist nicht gesetzt"));
}

TEST_F(VehicleOnLenzTest, AConfigurationThatReadsBackOtherwiseIsAFailure) {
  configure("AddressCheck=1\r\nContinueOnError=1");
  addVehicle("Lang", 1001, 1);
  decoder().store(29, 10);
  faults.add({.kind = sim::FaultKind::WrongValue, .amount = 47, .skip = 1});
  EXPECT_EQ(run("vehicle write Lang 1001 --cv 1 --yes"), 1);
  EXPECT_TRUE(console.messages.contains("Wert  42 nicht programmiert (gelesen: 43)!"))
      << console.messages.join(u'\n').toStdString();
  EXPECT_EQ(console.results, QStringList({"1\t1001\t2", "29\t0\t2"}));
  EXPECT_EQ(markOf(29, 1001), '2');
  EXPECT_EQ(decoder().address(), 1001) << "the decoder listens to it: it got the whole number";
}

TEST_F(VehicleOnLenzTest, AnAddressWhoseCv29WasNotReachedIsNotDone) {
  configure("AddressCheck=0\r\nContinueOnError=0");
  addVehicle("Lang", 1001, 1);
  decoder().readOnly.insert(3);
  EXPECT_EQ(run("vehicle write Lang 1001 --cv 1,3"), 1);
  EXPECT_EQ(console.results, QStringList({"1\t1001\t2", "3\t0\t2"}));
  for (const int cv : {17, 18}) EXPECT_EQ(markOf(cv, 1001), '2') << cv;
  EXPECT_TRUE(console.messages.contains(
      "Die Art der Adresse (kurz oder lang) ist nicht gesetzt: CV 29 wurde nicht mehr "
      "geschrieben."));
}

// ---- What the wire cannot send ----------------------------------------------------------------

TEST_F(VehicleOnLenzTest, WithoutARegisterMethodTheTopSpeedIsNotTheConfiguration) {
  configure("AddressCheck=1\r\nContinueOnError=1");
  describe("Adlerton/AT-ECO.dec", "[AT-ECO]\nPROGMODE=2\nCV_3=Zeit\n");
  decoder().store(5, 255);
  decoder().store(29, 6);
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 1 --yes"), 0);
  EXPECT_EQ(decoder().stored(5), 255);
  EXPECT_EQ(decoder().stored(29), 6);
  EXPECT_EQ(decoder().stored(1), 3);
}

TEST_F(VehicleOnLenzTest, ACvThatNoMessageWritesIsNeitherWrittenNorProved) {
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 257:2"), 1);
  EXPECT_TRUE(line_.writes.isEmpty()) << "asked ahead of the session";
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 257:2 --yes"), 1);
  EXPECT_EQ(console.results, QStringList({"257 (2)\t0\t2"}));
  EXPECT_FALSE(sent(QByteArray::fromHex("2316"))) << "no bank is selected for it";
  EXPECT_EQ(markOf(1024), '2');
}

// ---- Checks that could not be made ------------------------------------------------------------

TEST_F(VehicleOnLenzTest, AMakerThatCouldNotBeReadIsAskedAbout) {
  writeIni("LOKARI",
           "BaseUnit=LI100V3\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\nLenzV36=0\r\n"
           "AddressCheck=0\r\nManufacturerCheck=1\r\nContinueOnError=1\r\n");
  decoder().present = {{1, 7}, {9, 1024}};
  decoder().store(3, 1);
  store(3, 44);
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 3"), 1);
  EXPECT_EQ(decoder().stored(3), 1);
  EXPECT_FALSE(
      console.messages.filter(QStringLiteral("Der Hersteller des Decoders ließ sich nicht prüfen!"))
          .isEmpty());
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 3 --yes"), 1) << "a check that was asked for failed";
  EXPECT_EQ(decoder().stored(3), 44);
  EXPECT_EQ(console.results, QStringList({"3\t44\t1"}));
}

// ---- Addresses that nobody has ----------------------------------------------------------------

TEST_F(VehicleOnLenzTest, AnAddressThatNobodyHasIsNotStored) {
  decoder().store(29, 0);
  decoder().store(1, 0);
  storeMark(1, '1');
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 1 --yes"), 1);
  EXPECT_EQ(console.results, QStringList({"1\t3\t2"}));
  EXPECT_TRUE(console.messages.contains(
      "Die gelesene Adresse 0 kann kein Fahrzeug haben: nichts übernommen."));
  EXPECT_EQ(markOf(1), '2');
  decoder().store(29, 32);
  decoder().store(17, 192 + 40);
  decoder().store(18, 60);
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 1 --yes"), 1);
  EXPECT_EQ(markOf(1), '2') << "and the vehicle is still 3";
}

// ---- Two programs -----------------------------------------------------------------------------

TEST_F(VehicleOnLenzTest, AValueThatAnotherProgramStoredMeanwhileIsNamed) {
  configure("AddressCheck=0\r\nContinueOnError=1");
  store(3, 8);
  clock.schedule(1200, [this] { store(3, 77); });
  EXPECT_EQ(run("vehicle write Anlage 3 --cv 3"), 0);
  EXPECT_EQ(stored().recCvValues[0].at(2), 8) << "the decoder holds it";
  EXPECT_TRUE(console.messages.contains(
      "Ein anderes Programm hat inzwischen dieselben CVs geändert; gespeichert ist, was der "
      "Decoder hat: CV 3: 8 statt 77."));
}

TEST_F(VehicleOnLenzTest, ValuesOfAnOldTypeAreNotStoredUnderANewOne) {
  configure("AddressCheck=0\r\nContinueOnError=1");
  store(3, 8);
  clock.schedule(1200, [this] {
    Database database(dbPath());
    database.write(QStringLiteral("UPDATE LOCO_DAT SET DC_DECODER = 'AT-SND16'"), {});
  });
  EXPECT_EQ(run("vehicle read Anlage 3 --cv 3"), 1);
  EXPECT_EQ(stored().recCvValues[0].at(2), 8);
  EXPECT_EQ(stored().recCvMarks[0].at(2), '\0');
  EXPECT_FALSE(console.messages.filter(QStringLiteral("nichts gespeichert!")).isEmpty());
}

}  // namespace
}  // namespace lokari
