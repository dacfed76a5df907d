#include "base/settings.h"

#include <gtest/gtest.h>

#include "base/ini_file.h"
#include "support/ini_text.h"

namespace lokari {
namespace {

Settings load(const QByteArray& keys) {
  const test::IniText ini("[LOKARI]\r\n" + keys);
  return loadSettings(IniFile(ini.path()), QStringLiteral("/app"));
}

TEST(Settings, WithoutAFileTheStationIsMx1OnPort1WithTimeout1) {
  const Settings s = loadSettings(IniFile(QStringLiteral("/none")), QStringLiteral("/app"));
  EXPECT_EQ(s.baseUnit, StationKind::Mx1);
  EXPECT_EQ(s.comPort, 1);
  EXPECT_EQ(s.timeoutVal, 1);
  EXPECT_TRUE(s.delayFlag);
  EXPECT_EQ(s.baudrate, 0);
  EXPECT_TRUE(s.lenzV36);
  EXPECT_TRUE(s.canLog);
  EXPECT_EQ(s.resizeMode, 1);
  EXPECT_EQ(s.zimoFunctionCount, 12);
  EXPECT_EQ(s.ipAddr, QStringLiteral("000.000.000.000"));
  EXPECT_EQ(s.dbPath, QStringLiteral("/app/DB/LOKARIV3.MDB"));
  EXPECT_EQ(s.listReport, QStringLiteral("/app/repl_ger.rpt"));
  EXPECT_EQ(s.csvReport, QStringLiteral("/app/repc_ger.rpt"));
}

TEST(Settings, AComPortOutOfRangeLeavesPort2) {
  EXPECT_EQ(load("ComPort=11").comPort, 2);
  EXPECT_EQ(load("ComPort=0").comPort, 2);
  EXPECT_EQ(load("ComPort=10").comPort, 10);
  EXPECT_EQ(load("").comPort, 1);
}

TEST(Settings, ATimeoutOutOfRangeLeaves20) {
  EXPECT_EQ(load("Timeout=1000").timeoutVal, 20);
  EXPECT_EQ(load("Timeout=0").timeoutVal, 20);
  EXPECT_EQ(load("Timeout=999").timeoutVal, 999);
}

TEST(Settings, TheTraceIsOffUnlessItsKeySaysOtherwise) {
  EXPECT_FALSE(load("").trace);
  EXPECT_FALSE(load("Trace=0").trace);
  EXPECT_FALSE(load("Trace=7").trace);
  EXPECT_TRUE(load("Trace=1").trace);
}

TEST(Settings, MessagesFollowTheMakersDocumentsOnlyWhenTheirKeySaysYes) {
  EXPECT_FALSE(load("").makerForm);
  EXPECT_FALSE(load("MakerForm=N").makerForm);
  EXPECT_FALSE(load("MakerForm=1").makerForm);
  EXPECT_TRUE(load("MakerForm=J").makerForm);
  EXPECT_TRUE(load("MakerForm=j").makerForm);
}

TEST(Settings, TheStationIsTheOneOfItsForm) {
  Settings settings;
  settings.baseUnit = StationKind::Z21Ip;
  EXPECT_EQ(&settings.station(), &stationKind(StationKind::Z21Ip));
  settings.makerForm = true;
  EXPECT_EQ(&settings.station(), &stationKind(StationKind::Z21Ip, true));
}

TEST(Settings, AnUnknownResizeModeLeaves1) {
  EXPECT_EQ(load("Resize=2").resizeMode, 1);
  EXPECT_EQ(load("Resize=0").resizeMode, 0);
}

TEST(Settings, TheStationNameIsComparedWithoutRegardToCase) {
  EXPECT_EQ(load("BaseUnit=mx10ip").baseUnit, StationKind::Mx10Ip);
  EXPECT_EQ(load("BaseUnit=MX99").baseUnit, StationKind::Mx1);
  EXPECT_EQ(load("BaseUnit=tamsmc").baseUnit, StationKind::TamsMc);
}

TEST(Settings, LiUsbImpliesProtocol36UntilTheKeySaysOtherwise) {
  EXPECT_FALSE(load("BaseUnit=LIUSB\nLenzV36=0").lenzV36);
  EXPECT_TRUE(load("BaseUnit=LIUSB\nLenzV36=2").lenzV36);
  EXPECT_FALSE(load("BaseUnit=LI100\nLenzV36=2").lenzV36);
}

TEST(Settings, OnlyTheListedRatesAreTaken) {
  EXPECT_EQ(load("Baudrate=115200").baudrate, 0);
  EXPECT_EQ(load("Baudrate=19200").baudrate, 19200);
  EXPECT_EQ(load("Baudrate=19200x").baudrate, 0);
  EXPECT_EQ(load("Baudrate=57600").baudrate, 57600);
}

TEST(Settings, TheAddressIsReadForNetworkStationsOnly) {
  EXPECT_EQ(load("BaseUnit=Z21IP\nIPAddr=192.168.000.111").ipAddr,
            QStringLiteral("192.168.000.111"));
  EXPECT_EQ(load("BaseUnit=Z21IP").ipAddr, QStringLiteral("0"));
  EXPECT_EQ(load("BaseUnit=MX1\nIPAddr=192.168.000.111").ipAddr, QStringLiteral("000.000.000.000"));
}

TEST(Settings, ChecksAreCopiedForTheRun) {
  const Settings s = load("AddressCheck=0\nManufacturerCheck=0\nContinueOnError=0\nDelay=0");
  EXPECT_FALSE(s.addressCheckNow);
  EXPECT_FALSE(s.manufacturerCheckNow);
  EXPECT_FALSE(s.continueOnError);
  EXPECT_FALSE(s.delayFlag);
  EXPECT_TRUE(load("AddressCheck=5").addressCheckNow);
}

TEST(Settings, ZimoFunctionCountIsEightOnlyForZero) {
  EXPECT_EQ(load("Zimo12Functions=0").zimoFunctionCount, 8);
  EXPECT_EQ(load("Zimo12Functions=5").zimoFunctionCount, 12);
}

TEST(Settings, EmptyTextsLeaveTheBuiltInOnes) {
  const Settings s = load("DBPath=\nListReport=\nCSVReport=own.rpt");
  EXPECT_EQ(s.dbPath, QStringLiteral("/app/DB/LOKARIV3.MDB"));
  EXPECT_EQ(s.listReport, QStringLiteral("/app/repl_ger.rpt"));
  EXPECT_EQ(s.csvReport, QStringLiteral("/app/own.rpt"));
}

TEST(Settings, ALongDatabasePathIsCutAt63Characters) {
  EXPECT_EQ(load("DBPath=" + QByteArray(80, 'x')).dbPath.size(), 63);
}

}  // namespace
}  // namespace lokari
