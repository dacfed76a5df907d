// CV 29: what was read is what is kept, and nothing goes out that nobody has seen.
#include "bench_fixture.h"

namespace lokari {
namespace {

/// A decoder whose description has no group for any of the bits that share a control.
const char* const kPlain = "[X]\nCV_3=Zeit\n";
const char* const kRailCom = "[X]\nRAILCOM=J\nCV_3=Zeit\n";

class ConfigKept : public BenchFixture {
 protected:
  /// Closes the bench with OK and opens it anew on what it handed back.
  void reopen(const char* description, const char* address = "3") {
    bench->cmdOK(record);
    openEco(description, address);
  }
  void readConfig() {
    check("chkRd_29");
    read();
    bench->checkBoxToggled(QStringLiteral("chkRd_29"), false);
  }
  QStringList writes() const { return sent().filter(QStringLiteral("xPTW")); }
};

TEST_F(ConfigKept, AConfigurationThatWasReadIsTheSameAfterReopeningAndIsWrittenSo) {
  decoder().store(29, 10);
  for (const bool checkAddress : {false, true}) {
    settings.addressCheckNow = checkAddress;
    for (const char* description : {kPlain, kRailCom, "[X]\nDETECTPULSE=J\nMANBIT=J\n"}) {
      record.InitDcData();
      openEco(description);
      readConfig();
      EXPECT_EQ(value(29), 10) << description;
      reopen(description);
      EXPECT_EQ(value(29), 10) << description;
      EXPECT_EQ(mark(29), CvMark::Verified) << description;
      check("chkWrt_29");
      write();
      EXPECT_EQ(writes(), QStringList({"xPTWD 29, 10"})) << description;
    }
  }
  EXPECT_TRUE(prompt.shown.isEmpty()) << prompt.shown.join(u'\n').toStdString();
}

TEST_F(ConfigKept, EveryByteThatADecoderHoldsComesBackToItUnchanged) {
  settings.addressCheckNow = true;
  prompt.answers = {};
  for (int byte = 0; byte < 128; ++byte) {
    record.InitDcData();
    decoder().setAddress((byte & 32) != 0 ? 2000 : 3);
    decoder().store(29, byte);
    const char* address = (byte & 32) != 0 ? "2000" : "3";
    openEco("[X]\nANALOGMODE=N\nDIRECTION=N\nSPEEDTABLE=N\nSPEEDSTEPS=14\n", address);
    readConfig();
    EXPECT_EQ(value(29), byte & ~32);
    reopen("[X]\nANALOGMODE=N\nDIRECTION=N\nSPEEDTABLE=N\nSPEEDSTEPS=14\n", address);
    check("chkWrt_29");
    write();
    EXPECT_EQ(writes(), QStringList({QStringLiteral("xPTWD 29, %1").arg(byte)}));
  }
  EXPECT_TRUE(prompt.shown.isEmpty()) << prompt.shown.join(u'\n').toStdString();
}

TEST_F(ConfigKept, RailComThatNobodyClickedIsAskedAboutAndAbbruchSendsNothing) {
  decoder().store(29, 2);
  openEco(kRailCom);
  readConfig();
  EXPECT_TRUE(checked("optDcComRailComYes")) << "without address check it is shown so";
  check("chkWrt_29");
  check("chkWrt_3");
  write();
  ASSERT_EQ(prompt.shown.size(), 1);
  EXPECT_EQ(prompt.shown.first(),
            "CV 29 würde mit 10 statt 2 geschrieben, ohne dass das jemand eingestellt hat!");
  EXPECT_EQ(prompt.below.first(),
            "Bisher 2, neu 10: RailCom ein. OK schreibt 10, Abbruch schreibt nichts.");
  EXPECT_TRUE(writes().isEmpty()) << "asked ahead of everything";
  EXPECT_EQ(bench->jobEnd, JobEnd::Stopped);
  prompt.answers = {Answer::Ok};
  write();
  EXPECT_EQ(writes(), QStringList({"xPTWD 3, 0", "xPTWD 29, 10"}));
  EXPECT_EQ(prompt.shown.size(), 2) << "asked once";
  EXPECT_EQ(value(29), 10);
  EXPECT_EQ(mark(29), CvMark::Verified);
}

TEST_F(ConfigKept, AClickOnAnOptionThatIsShownAsOnSwitchesItsBitOn) {
  decoder().store(29, 2);
  openEco(kRailCom);
  readConfig();
  bench->optionClicked(QStringLiteral("optDcComRailComYes"));
  EXPECT_EQ(value(29), 10);
  EXPECT_EQ(mark(29), CvMark::None);
  check("chkWrt_29");
  write();
  EXPECT_TRUE(prompt.shown.isEmpty()) << "the user has clicked it";
  EXPECT_EQ(writes(), QStringList({"xPTWD 29, 10"}));
}

TEST_F(ConfigKept, AnOptionThatIsHiddenAddsNothing) {
  decoder().store(29, 2);
  openEco(kPlain);
  readConfig();
  EXPECT_TRUE(checked("optDcComRailComYes"));
  check("chkWrt_29");
  write();
  EXPECT_EQ(writes(), QStringList({"xPTWD 29, 2"}));
}

TEST_F(ConfigKept, ABit6ByTheAdditionIsAskedAbout) {
  settings.addressCheckNow = true;
  decoder().setAddress(2000);
  record.recCvValues[0][28] = 34;
  openEco(kPlain, "2000");
  check("chkWrt_29");
  write();
  EXPECT_EQ(prompt.below, QStringList({"Bisher 34, neu 66: lange Adresse aus, Herstellerbit ein. "
                                       "OK schreibt 66, Abbruch schreibt nichts."}));
  EXPECT_TRUE(writes().isEmpty());
}

TEST_F(ConfigKept, AnOldBit5IsAskedAboutBehindAShortAddress) {
  record.recCvValues[0][28] = 34;
  openEco(kPlain, "5");
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(prompt.shown.size(), 1);
  EXPECT_TRUE(writes().isEmpty()) << "neither the address nor the other kind of address";
}

// ---- For the address alone --------------------------------------------------------------------

class ConfigUnknown : public ConfigKept {
 protected:
  /// A read of CV 29 that failed, with the address check on or off behind it.
  void failToRead(const char* address) {
    settings.continueOnError = true;
    decoder().store(29, 10);
    record.recCvValues[0][28] = 6;
    openEco(kPlain, address);
    fault("noack");
    readConfig();
    ASSERT_EQ(value(29), 64);
    ASSERT_EQ(mark(29), CvMark::Failed);
    check("chkDcAdrWrite");
  }
};

TEST_F(ConfigUnknown, TheDecodersOwnConfigurationGoesOutInItsPlace) {
  failToRead("5");
  settings.addressCheckNow = true;
  write();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTWD 1, 5", "xPTWD 29, 10", "xPTWD 29, 10"}));
  EXPECT_EQ(decoder().stored(29), 10);
  EXPECT_EQ(mark(29), CvMark::Failed) << "64 is not what the decoder holds";
  EXPECT_EQ(bench->report().remarks,
            QStringList({"Mit der Adresse ging auch CV 29 an den Decoder: 10, vorher 10."}));
}

TEST_F(ConfigUnknown, WhereNothingIsKnownNothingIsWrittenAndTheEndSaysSo) {
  failToRead("128");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 18, 128", "xPTWD 17, 192"}));
  EXPECT_EQ(mark(29), CvMark::Failed);
  EXPECT_EQ(text("lblReport"), QString());
  EXPECT_EQ(control("lblReport").caption,
            "Die Art der Adresse (kurz oder lang) ist nicht gesetzt: CV 29 ist nicht bekannt und "
            "wurde nicht geschrieben.");
}

TEST_F(ConfigUnknown, TickedItIsWrittenAsItStandsWhereTheUserWantsIt) {
  failToRead("5");
  check("chkWrt_29");
  write();
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(sent(), QStringList()) << "nothing without an answer";
  prompt.choices = {0};
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 1, 5", "xPTWD 29, 64"})) << "asked for, in red, by a tick";
}

TEST_F(ConfigUnknown, AnOptionThatWasClickedDoesNotMakeTheOtherBitsKnown) {
  failToRead("5");
  bench->optionClicked(QStringLiteral("optDcComSteps28"));
  EXPECT_EQ(value(29), 66);
  EXPECT_EQ(mark(29), CvMark::None) << "what is changed by hand has the normal colour";
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 1, 5"})) << "for the address alone nobody knows enough";
  EXPECT_TRUE(control("lblReport").caption.startsWith(QStringLiteral("Die Art der Adresse")));
  settings.addressCheckNow = true;
  decoder().store(29, 12);
  write();
  EXPECT_EQ(writes(), QStringList({"xPTWD 1, 5", "xPTWD 29, 12", "xPTWD 29, 14"}))
      << "the bit that was clicked, and the decoder's others";
}

TEST_F(ConfigUnknown, TickedWithOneOptionClickedTheOthersAreAskedAbout) {
  failToRead("5");
  bench->checkBoxToggled(QStringLiteral("chkDcAdrWrite"), false);
  bench->optionClicked(QStringLiteral("optDcComSteps28"));
  check("chkWrt_29");
  write();
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(prompt.asked[0].more,
            "CV 29: nicht oder nicht ganz gelesen; der Wert stammt von einem misslungenen Lesen.");
  EXPECT_EQ(prompt.asked[0].safe, 2);
  EXPECT_EQ(sent(), QStringList());
}

TEST_F(ConfigKept, AFailedMarkOfARecordIsNotForgottenByAClick) {
  record.recCvValues[0][28] = 6;
  record.recCvMarks[0][28] = '2';
  openEco(kPlain);
  bench->optionClicked(QStringLiteral("optDcComAnalogNo"));
  EXPECT_EQ(mark(29), CvMark::None);
  check("chkWrt_29");
  write();
  EXPECT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(sent(), QStringList());
  readConfig();
  write();
  EXPECT_EQ(prompt.asked.size(), 1) << "read by now";
  EXPECT_EQ(sent().size(), 1);
}

TEST_F(ConfigKept, AWriteThatFailedLeavesTheValueAsKnownAsItWas) {
  decoder().store(29, 2);
  openEco(kPlain);
  readConfig();
  check("chkWrt_29");
  fault("noack");
  write();
  ASSERT_EQ(mark(29), CvMark::Failed);
  bench->optionClicked(QStringLiteral("optDcComDirReverse"));
  write();
  EXPECT_TRUE(prompt.asked.isEmpty());
  EXPECT_EQ(writes(), QStringList({"xPTWD 29, 3"}));
}

TEST_F(ConfigKept, ACv29ThatFailedAheadOfALongAddressIsNoFailedRead) {
  settings.addressCheckNow = true;
  decoder().readOnly.insert(29);
  openEco(kPlain, "1001");
  check("chkDcAdrWrite");
  write();
  ASSERT_EQ(mark(29), CvMark::Failed);
  EXPECT_EQ(bench->sets.unseenBits(CvIndex(29)), 0) << "its value is what somebody wanted";
  bench->sets.setMark(CvIndex(29), CvMark::None);
  EXPECT_FALSE(bench->sets.isDoubtful(CvIndex(29)));
}

TEST_F(ConfigKept, ForTheAddressAloneBitsThatNobodyClickedAreTheDecodersOwn) {
  settings.addressCheckNow = true;
  decoder().store(29, 10);
  record.recCvValues[0][28] = 6;
  record.recCvMarks[0][28] = '1';
  openEco(kRailCom, "5");
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(writes(), QStringList({"xPTWD 1, 5", "xPTWD 29, 10", "xPTWD 29, 10"}));
  EXPECT_EQ(value(29), 6) << "a run leaves the working values";
  EXPECT_EQ(mark(29), CvMark::None) << "6 is not what the decoder holds";
  bench->optionClicked(QStringLiteral("optDcComDirReverse"));
  write();
  EXPECT_EQ(writes(), QStringList({"xPTWD 1, 5", "xPTWD 29, 10", "xPTWD 29, 11"}));
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(ConfigKept, ABitThatWasClickedOnAndOffAgainIsNotClicked) {
  settings.addressCheckNow = true;
  decoder().store(29, 3);
  record.recCvValues[0][28] = 2;
  openEco(kPlain, "5");
  bench->optionClicked(QStringLiteral("optDcComDirReverse"));
  bench->optionClicked(QStringLiteral("optDcComDirNormal"));
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(writes().last(), "xPTWD 29, 3") << "the decoder's own direction";
}

TEST_F(ConfigKept, AClickOffDoesNotExcuseTheSameBitGoingOutOn) {
  decoder().store(29, 2);
  openEco("[X]\nRAILCOM=J\nDETECTPULSE=J\n");
  readConfig();
  bench->optionClicked(QStringLiteral("optDcComRailComYes"));
  bench->optionClicked(QStringLiteral("optDcComDetectPulseNo"));
  EXPECT_EQ(value(29), 2);
  ASSERT_TRUE(checked("optDcComRailComYes")) << "the two groups share the bit";
  check("chkWrt_29");
  write();
  EXPECT_EQ(prompt.shown.size(), 1) << "10 would go out";
  EXPECT_TRUE(writes().isEmpty());
}

TEST_F(ConfigKept, AConfigurationThatTheDecoderDidNotTakeIsNotToldAsTaken) {
  settings.addressCheckNow = true;
  settings.continueOnError = true;
  decoder().setAddress(2000);
  decoder().store(29, 34);
  decoder().readOnly.insert(29);
  openEco(kPlain, "5");
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(control("lblReport").caption,
            "Die Art der Adresse (kurz oder lang) ist nicht gesetzt: CV 29 ist misslungen. Mit der "
            "Adresse sollte auch CV 29 an den Decoder: 2, vorher 34. Der Decoder hat CV 29 nicht "
            "bestätigt.");
}

TEST_F(ConfigKept, AConfigurationThatGoesOutUntickedIsNamedWithItsValueBefore) {
  settings.addressCheckNow = true;
  decoder().setAddress(2000);
  decoder().store(29, 34);
  record.recCvValues[0][28] = 6;
  openEco(kPlain, "5");
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(writes(), QStringList({"xPTWD 1, 5", "xPTWD 29, 2", "xPTWD 29, 2"}));
  EXPECT_EQ(control("lblReport").caption,
            "Mit der Adresse ging auch CV 29 an den Decoder: 2, vorher 34.");
  openEco(kPlain, "128");
  EXPECT_EQ(control("lblReport").caption, "") << "of the vehicle before";
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(control("lblReport").caption,
            "Mit der Adresse ging auch CV 29 an den Decoder: 34, vorher 2.");
  settings.addressCheckNow = false;
  write();
  EXPECT_EQ(control("lblReport").caption,
            "Mit der Adresse ging auch CV 29 an den Decoder: 38, der Wert davor wurde nicht "
            "gelesen.");
}

}  // namespace
}  // namespace lokari
