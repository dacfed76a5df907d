// The address in the window: blue when the decoder has all its parts, CV 29 among them.
#include "bench_fixture.h"

namespace lokari {
namespace {

const char* const kPlain = "[X]\nPROGMAIN=J\nCV_3=Zeit\nCV_4=Bremse\n";

class AddressParts : public BenchFixture {
 protected:
  explicit AddressParts(StationKind kind = StationKind::TamsMc) : BenchFixture(kind) {}

  void openAndType(const char* address) {
    openEco(kPlain);
    bench->fieldEdited(QStringLiteral("dc_adr"), QString::fromUtf8(address));
    check("chkDcAdrWrite");
  }
  TextColour addressColour() const { return control("dc_adr").colour; }
  QString told() const { return control("lblReport").caption; }
};

TEST_F(AddressParts, AnAddressWhoseCv29NeverWentOutIsRed) {
  openAndType("1001");
  check("chkWrt_3");
  decoder().readOnly.insert(3);
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 18, 233", "xPTWD 17, 195", "xPTWD 3, 0"}));
  EXPECT_EQ(addressColour(), TextColour::Red);
  EXPECT_EQ(told(),
            "Die Art der Adresse (kurz oder lang) ist nicht gesetzt: CV 29 wurde nicht mehr "
            "geschrieben.");
  decoder().readOnly.erase(3);
  write();
  EXPECT_EQ(addressColour(), TextColour::Blue);
}

TEST_F(AddressParts, ACv29BehindWhichThePortVanishedIsNotToldAsNeverWritten) {
  openAndType("1001");
  fault("unplugged@2");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 18, 233", "xPTWD 17, 195", "xPTWD 29, 32"}));
  EXPECT_EQ(addressColour(), TextColour::Red);
  EXPECT_EQ(mark(29), CvMark::Failed);
  EXPECT_EQ(told(),
            "Die Art der Adresse (kurz oder lang) ist nicht gesetzt: CV 29 ist misslungen. Mit der "
            "Adresse sollte auch CV 29 an den Decoder: 32, der Wert davor wurde nicht gelesen. Der "
            "Decoder hat CV 29 nicht bestätigt.");
}

TEST_F(AddressParts, ACancelAheadOfCv29LeavesTheAddressRed) {
  openAndType("1001");
  check("chkWrt_3");
  fault("late:1:5000@2");
  clock.schedule(3000, [this] { link.cancelRequested = true; });
  write();
  EXPECT_EQ(sent().size(), 3);
  EXPECT_EQ(bench->jobEnd, JobEnd::Stopped);
  EXPECT_EQ(addressColour(), TextColour::Red);
  EXPECT_TRUE(told().startsWith(QStringLiteral("Die Art der Adresse")));
}

TEST_F(AddressParts, AShortAddressWhoseCv29FailedIsRed) {
  settings.addressCheckNow = true;
  settings.continueOnError = true;
  decoder().setAddress(2000);
  decoder().readOnly.insert(29);
  openAndType("5");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTWD 1, 5", "xPTWD 29, 0", "xPTWD 29, 0"}));
  EXPECT_EQ(addressColour(), TextColour::Red);
  EXPECT_EQ(mark(29), CvMark::Failed);
}

TEST_F(AddressParts, ALongAddressThatTheDecoderRefusesIsRedAlthoughItWasBlue) {
  settings.addressCheckNow = true;
  settings.continueOnError = true;
  record.recCvMarks[0][16] = record.recCvMarks[0][17] = '1';
  decoder().readOnly.insert(29);
  openEco(kPlain, "1001");
  ASSERT_EQ(addressColour(), TextColour::Blue);
  check("chkDcAdrWrite");
  prompt.answers = {Answer::Ok};
  write();
  EXPECT_EQ(addressColour(), TextColour::Red);
}

TEST_F(AddressParts, AnotherAddressInTheDecoderMakesALongOneRed) {
  settings.addressCheckNow = true;
  record.recCvMarks[0][16] = record.recCvMarks[0][17] = '1';
  openEco(kPlain, "1001");
  ASSERT_EQ(addressColour(), TextColour::Blue);
  check("chkWrt_3");
  write();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichende Adresse im Empfänger (3)!"}));
  EXPECT_EQ(addressColour(), TextColour::Red);
}

TEST_F(AddressParts, ALongAddressThatIsReadBehindThatIsBlueAgain) {
  settings.addressCheckNow = true;
  openEco(kPlain, "1001");
  check("chkWrt_3");
  write();
  ASSERT_EQ(addressColour(), TextColour::Red);
  decoder().setAddress(1002);
  check("chkDcAdrRead");
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(text("dc_adr"), "1002");
  EXPECT_EQ(addressColour(), TextColour::Blue);
}

TEST_F(AddressParts, AnAddressThatNobodyHasIsNotTakenOver) {
  decoder().store(1, 0);
  openEco(kPlain, "7");
  check("chkDcAdrRead");
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(text("dc_adr"), "7");
  EXPECT_EQ(addressColour(), TextColour::Red);
  EXPECT_EQ(told(), "Die gelesene Adresse 0 kann kein Fahrzeug haben: nichts übernommen.");
}

// ---- A refusal that comes behind the run ------------------------------------------------------

class AddressPartsMx1 : public AddressParts {
 protected:
  AddressPartsMx1() : AddressParts(StationKind::Mx1) {}
};

TEST_F(AddressPartsMx1, WhatTheStationRefusesAtTheEndIsRed) {
  openAndType("3");
  check("chkWrt_4");
  fault("busy:immer");
  runJob(CommJob::WriteMain);
  EXPECT_EQ(prompt.shown, QStringList({"Adresse gesperrt - Programmierung nicht möglich!"}));
  EXPECT_EQ(mark(4), CvMark::Failed);
  EXPECT_EQ(control("txtDcComDecTime").colour, TextColour::Red);
  EXPECT_EQ(mark(29), CvMark::Failed);
  EXPECT_EQ(addressColour(), TextColour::Red);
  EXPECT_FALSE(told().contains(QStringLiteral("ging auch CV 29")));
  EXPECT_EQ(control("lblLegend").caption, "Blau: gelesen oder geprüft. Rot: misslungen.");
}

TEST_F(AddressPartsMx1, AnAddressThatTheStationRefusesAtTheEndIsNotTheVehicles) {
  openEco(kPlain, "64");
  bench->fieldEdited(QStringLiteral("dc_adr"), QStringLiteral("60"));
  check("chkDcAdrWrite");
  fault("busy:immer");
  for (int times = 0; times < 2; ++times) {
    prompt.shown.clear();
    prompt.answers = {Answer::Ok};
    runJob(CommJob::WriteMain);
    EXPECT_EQ(addressColour(), TextColour::Red);
    EXPECT_EQ(bench->report().of(CvIndex(1))->deed, CvDeed::Failed);
    EXPECT_EQ(bench->report().of(CvIndex(1))->reason,
              "Adresse gesperrt - Programmierung nicht möglich!");
    EXPECT_EQ(prompt.shown.value(0),
              "Das Fahrzeug mit der Adresse 60 würde beschrieben, nicht das mit der Adresse 64!");
  }
}

}  // namespace
}  // namespace lokari
