#include "station/options.h"

#include <gtest/gtest.h>

#include "base/ini_file.h"
#include "base/settings.h"
#include "support/ini_text.h"

namespace lokari {
namespace {

using Parts = std::array<QString, 4>;

/// A form that differs from the settings' initial values everywhere.
OptionsForm otherForm() {
  return {.station = {StationKind::TamsMc, false},
          .comPort = 9,
          .timeout = QStringLiteral("7"),
          .baudrate = QStringLiteral("19200"),
          .dbPath = QStringLiteral("/home/a/Bahn.MDB"),
          .address = {QStringLiteral("10"), QStringLiteral("0"), QStringLiteral("1"),
                      QStringLiteral("255")},
          .delay = false,
          .addressCheck = false,
          .manufacturerCheck = false,
          .continueOnError = false};
}

// ---- The fourteen choices -----------------------------------------------------------------------

TEST(StationChoices, FourteenRadiosForThirteenKinds) {
  const std::pair<const char*, StationChoice> rows[] = {
      {"optComTypeZimo", {StationKind::Mx1, false}},
      {"optComTypeLenzV2", {StationKind::Li100, false}},
      {"optComTypeLenzV3", {StationKind::Li100V3, false}},
      {"optComTypeIBX", {StationKind::Ibx, false}},
      {"optComTypeZimo2", {StationKind::Mx1V25, false}},
      {"optComTypeLenzUSB", {StationKind::LiUsb, false}},
      {"optComTypeLenzV36", {StationKind::LiUsb, true}},
      {"optComTypeTams", {StationKind::TamsMc, false}},
      {"optComTypeZimo3", {StationKind::Mx1Bin, false}},
      {"optComTypeZimo4", {StationKind::Mx1Ulf, false}},
      {"optComTypeLenzDecProg", {StationKind::LiDp, false}},
      {"optComTypeZimo5", {StationKind::Mx10, false}},
      {"optComTypeZimo6", {StationKind::Mx10Ip, false}},
      {"optComTypeZ21", {StationKind::Z21Ip, false}},
  };
  EXPECT_EQ(std::size(rows), kStationChoices.size());
  for (const auto& [control, choice] : rows) {
    EXPECT_EQ(QString::fromUtf16(stationChoice(choice.kind, choice.lenzV36).control), control);
  }
}

TEST(StationChoices, ProtocolV36CountsForTheUsbInterfaceAlone) {
  EXPECT_EQ(stationChoice(StationKind::Li100, true).choice,
            (StationChoice{StationKind::Li100, false}));
  EXPECT_EQ(stationChoice(StationKind::Mx1, true).choice, (StationChoice{StationKind::Mx1, false}));
}

// ---- The form -----------------------------------------------------------------------------------

TEST(OptionsForm, ShowsTheSettings) {
  Settings settings;
  settings.baseUnit = StationKind::LiUsb;
  settings.lenzV36 = true;
  settings.comPort = 10;
  settings.timeoutVal = 5;
  settings.baudrate = 38400;
  settings.dbPath = QStringLiteral("/a/B.MDB");
  settings.ipAddr = QStringLiteral("192.168.001.010");
  settings.delayFlag = false;
  settings.addressCheck = false;
  const OptionsForm form = formOf(settings);
  EXPECT_EQ(form.station, (StationChoice{StationKind::LiUsb, true}));
  EXPECT_EQ(form.comPort, 10);
  EXPECT_EQ(form.timeout, "5");
  EXPECT_EQ(form.baudrate, "38400");
  EXPECT_EQ(form.dbPath, "/a/B.MDB");
  EXPECT_EQ(form.address, (Parts{"192", "168", "001", "010"}));
  EXPECT_FALSE(form.delay);
  EXPECT_FALSE(form.addressCheck);
  EXPECT_TRUE(form.manufacturerCheck);
  EXPECT_TRUE(form.continueOnError);
}

TEST(OptionsForm, TheStationsOwnRateIsAnEmptyField) {
  EXPECT_EQ(formOf(Settings()).baudrate, "");
}

TEST(OptionsForm, AMissingAddressIsZeros) {
  Settings settings;
  settings.ipAddr = QStringLiteral("0");
  EXPECT_EQ(formOf(settings).address, (Parts{"000", "000", "000", "000"}));
}

TEST(OptionsForm, AnAddressEditedByHandIsPadded) {
  Settings settings;
  settings.ipAddr = QStringLiteral("192.168.0.111");
  EXPECT_EQ(formOf(settings).address, (Parts{"192", "168", "000", "111"}));
  settings.ipAddr = QStringLiteral("z21.300..7");
  EXPECT_EQ(formOf(settings).address, (Parts{"000", "000", "000", "007"}));
}

TEST(OptionsForm, GoodEntriesHaveNoFault) {
  EXPECT_FALSE(faultIn(otherForm()));
  EXPECT_FALSE(faultIn(formOf(Settings())));
}

TEST(OptionsForm, AddressPartsGoFrom0To255) {
  for (const char* good : {"0", "00", "000", "1", "010", "255"}) EXPECT_TRUE(isAddressPart(good));
  for (const char* bad : {"", "256", "999", "-1", "+1", " 1", "1a", " "})
    EXPECT_FALSE(isAddressPart(bad));
  OptionsForm form = otherForm();
  form.address[2] = QStringLiteral("256");
  ASSERT_TRUE(faultIn(form));
  EXPECT_EQ(faultIn(form)->control, "txtIP3");
  EXPECT_EQ(faultIn(form)->text, "Jeder Teil der IP-Adresse muss eine Zahl von 0 bis 255 sein!");
}

TEST(OptionsForm, TheTimeOutGoesFrom1To999) {
  OptionsForm form = otherForm();
  for (const char* good : {"1", "999"}) {
    form.timeout = QString::fromLatin1(good);
    EXPECT_FALSE(faultIn(form)) << good;
  }
  for (const char* bad : {"", "0", "1000", "x", "1.5"}) {
    form.timeout = QString::fromLatin1(bad);
    ASSERT_TRUE(faultIn(form)) << bad;
    EXPECT_EQ(faultIn(form)->control, "txtComTimeout");
  }
}

TEST(OptionsForm, ARateIsOneOfTheListOrNone) {
  OptionsForm form = otherForm();
  for (const char16_t* entry : kBaudrateEntries) {
    form.baudrate = QString::fromUtf16(entry);
    EXPECT_FALSE(faultIn(form));
  }
  form.baudrate.clear();
  EXPECT_FALSE(faultIn(form));
  form.baudrate = QStringLiteral("115200");
  ASSERT_TRUE(faultIn(form));
  EXPECT_EQ(faultIn(form)->text, "Die Baudrate 115200 gibt es nicht!");
}

TEST(OptionsForm, ADefaultAddressFillsZerosOnly) {
  const StationChoiceRow& z21 = stationChoice(StationKind::Z21Ip, false);
  const StationChoiceRow& mx10 = stationChoice(StationKind::Mx10Ip, false);
  const Parts none{"000", "000", "000", "000"};
  const Parts z21Default{"192", "168", "000", "111"};
  EXPECT_EQ(addressFor(z21, none), z21Default);
  EXPECT_EQ(addressFor(mx10, none), (Parts{"192", "168", "001", "010"}));
  EXPECT_EQ(addressFor(mx10, z21Default), z21Default);
  EXPECT_EQ(addressFor(stationChoice(StationKind::Mx1, false), none), none);
}

TEST(OptionsForm, TheFirstAndTheLastPartTellThatNoAddressIsSet) {
  const StationChoiceRow& z21 = stationChoice(StationKind::Z21Ip, false);
  EXPECT_EQ(addressFor(z21, {"000", "168", "001", "000"})[0], "192");
  EXPECT_EQ(addressFor(z21, {"010", "000", "000", "000"})[0], "010");
  EXPECT_EQ(addressFor(z21, {"000", "000", "000", "001"})[0], "000");
  EXPECT_EQ(addressFor(z21, {"0", "000", "000", "0"})[0], "0");
}

// ---- OK -----------------------------------------------------------------------------------------

TEST(TakeForm, EverySettingFollowsItsControl) {
  Settings settings;
  settings.lenzV36 = true;
  takeForm(otherForm(), settings);
  EXPECT_EQ(settings.baseUnit, StationKind::TamsMc);
  EXPECT_FALSE(settings.lenzV36);
  EXPECT_EQ(settings.comPort, 9);
  EXPECT_EQ(settings.timeoutVal, 7);
  EXPECT_EQ(settings.baudrate, 19200);
  EXPECT_EQ(settings.dbPath, "/home/a/Bahn.MDB");
  EXPECT_EQ(settings.ipAddr, "010.000.001.255");
  EXPECT_FALSE(settings.delayFlag);
  EXPECT_FALSE(settings.addressCheck);
  EXPECT_FALSE(settings.manufacturerCheck);
  EXPECT_FALSE(settings.continueOnError);
}

TEST(TakeForm, TheWorkingCopiesOfTheChecksAreReplaced) {
  Settings settings;
  settings.addressCheckNow = true;
  takeForm(otherForm(), settings);
  EXPECT_FALSE(settings.addressCheckNow);
  EXPECT_FALSE(settings.manufacturerCheckNow);
  OptionsForm form = otherForm();
  form.addressCheck = true;
  takeForm(form, settings);
  EXPECT_TRUE(settings.addressCheckNow);
  EXPECT_FALSE(settings.manufacturerCheckNow);
}

TEST(WriteOptions, TheKeysGoOutInTheirOrder) {
  Settings settings;
  takeForm(otherForm(), settings);
  QStringList written;
  for (const IniEntry& entry : optionEntries(settings)) written << entry.key + u'=' + entry.value;
  EXPECT_EQ(written.join(u' '),
            "DBPath=/home/a/Bahn.MDB BaseUnit=TAMSMC LenzV36=0 ComPort=9 Timeout=7 Baudrate=19200 "
            "Delay=0 AddressCheck=0 ManufacturerCheck=0 ContinueOnError=0 IPAddr=010.000.001.255");
}

TEST(WriteOptions, APathThatAStartWouldCutIsNotWritten) {
  Settings settings;
  settings.dbPath = QString(63, u'x');
  EXPECT_EQ(optionEntries(settings).first().key, "DBPath");
  settings.dbPath = QString(64, u'x');
  EXPECT_EQ(optionEntries(settings).first().key, "BaseUnit");
  EXPECT_EQ(optionEntries(settings).size(), 10);
}

TEST(WriteOptions, WhatIsWrittenIsReadAgain) {
  for (const StationChoiceRow& row : kStationChoices) {
    const test::IniText file("[LOKARI]\r\n; bleibt\r\nResize=0\r\n");
    IniFile ini(file.path());
    OptionsForm form = otherForm();
    form.station = row.choice;
    Settings settings;
    takeForm(form, settings);
    EXPECT_TRUE(ini.writeAll(QStringLiteral("LOKARI"), optionEntries(settings)));
    const Settings read = loadSettings(ini, QStringLiteral("/nirgends"));
    EXPECT_EQ(formOf(read).station, row.choice);
    EXPECT_EQ(read.comPort, 9);
    EXPECT_EQ(read.timeoutVal, 7);
    EXPECT_EQ(read.baudrate, 19200);
    EXPECT_EQ(read.dbPath, "/home/a/Bahn.MDB");
    EXPECT_FALSE(read.continueOnError);
    EXPECT_EQ(read.resizeMode, 0);
    if (read.station().usesIpAddress) {
      EXPECT_EQ(read.ipAddr, "010.000.001.255");
    }
  }
}

// ---- The test -----------------------------------------------------------------------------------

TEST(BorrowedLink, ATestUsesTheFormOfTheMessagesAndGivesItBack) {
  Settings settings;
  OptionsForm form = formOf(settings);
  form.makerForm = true;
  {
    const BorrowedLink lent(form, settings);
    EXPECT_TRUE(settings.makerForm);
  }
  EXPECT_FALSE(settings.makerForm);
}

TEST(BorrowedLink, StationPortAndAddressAreGivenBackRateAndProtocolStay) {
  Settings settings;
  settings.baseUnit = StationKind::Mx1;
  settings.comPort = 2;
  settings.ipAddr = QStringLiteral("000.000.000.000");
  settings.timeoutVal = 20;
  OptionsForm form = otherForm();
  form.station = {StationKind::LiUsb, true};
  {
    const BorrowedLink lent(form, settings);
    EXPECT_EQ(settings.baseUnit, StationKind::LiUsb);
    EXPECT_TRUE(settings.lenzV36);
    EXPECT_EQ(settings.comPort, 9);
    EXPECT_EQ(settings.baudrate, 19200);
    EXPECT_EQ(settings.ipAddr, "010.000.001.255");
    EXPECT_EQ(settings.timeoutVal, 20);
    EXPECT_TRUE(settings.delayFlag);
    settings.baseUnit = StationKind::Li100;  // as a test corrects it
  }
  EXPECT_EQ(settings.baseUnit, StationKind::Mx1);
  EXPECT_EQ(settings.comPort, 2);
  EXPECT_EQ(settings.ipAddr, "000.000.000.000");
  EXPECT_TRUE(settings.lenzV36);
  EXPECT_EQ(settings.baudrate, 19200);
}

TEST(SameLine, StationPortAndRateOrAddressTell) {
  Settings settings;
  settings.baseUnit = StationKind::TamsMc;
  settings.comPort = 9;
  settings.baudrate = 19200;
  EXPECT_TRUE(sameLine(otherForm(), settings));
  settings.comPort = 8;
  EXPECT_FALSE(sameLine(otherForm(), settings));
  settings.comPort = 9;
  settings.baudrate = 0;
  EXPECT_FALSE(sameLine(otherForm(), settings));
  settings.baseUnit = StationKind::Ibx;
  EXPECT_FALSE(sameLine(otherForm(), settings));

  OptionsForm form = otherForm();
  form.station.kind = settings.baseUnit = StationKind::Z21Ip;
  settings.ipAddr = QStringLiteral("10.0.1.255");
  EXPECT_TRUE(sameLine(form, settings));
  settings.ipAddr = QStringLiteral("010.000.001.254");
  EXPECT_FALSE(sameLine(form, settings));
  settings.ipAddr = QStringLiteral("010.000.001.255");
  settings.makerForm = true;
  EXPECT_FALSE(sameLine(form, settings)) << "open cabs go on speaking as they began";
}

// ---- Ports --------------------------------------------------------------------------------------

TEST(PortList, NamesEachPresentPort) {
  const QString text = portListText({{3, QStringLiteral("/dev/ttyUSB0")}, {5, "/dev/ttyS0"}});
  EXPECT_EQ(text, "COM3=/dev/ttyUSB0:COM5=/dev/ttyS0:");
  EXPECT_EQ(portsIn(text), (QList<int>{3, 5}));
}

TEST(PortList, AMachineWithOnlyCom3ShowsJustOne) {
  EXPECT_EQ(portsIn(portListText({{3, QStringLiteral("/dev/ttyUSB0")}})), QList<int>{3});
}

TEST(PortList, WithoutAnyAllTenAreOffered) {
  EXPECT_EQ(portListText({}), "COM1:COM2:COM3:COM4:COM5:COM6:COM7:COM8:COM9:COM10:");
  EXPECT_EQ(portsIn(portListText({})).size(), 10);
}

TEST(PortList, ASearchForCom1AlsoFindsCom10) {
  EXPECT_EQ(portsIn(portListText({{10, QStringLiteral("/dev/ttyUSB9")}})), (QList<int>{1, 10}));
}

}  // namespace
}  // namespace lokari
