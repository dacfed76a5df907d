// XpressNet interfaces in their maker's form. The bytes are the documents'.
#include "makers_fixture.h"
#include "sim/makers/xpressnet_station.h"

namespace lokari::sim::makers {
namespace {

constexpr char kHandedOver[] = "01 04 05";
constexpr char kUnknown[] = "61 82 e3";
constexpr char kServiceMode[] = "61 02 63";
constexpr char kAskResult[] = "21 10 31";

class XpressNetFixture : public MakersFixture {
 protected:
  using MakersFixture::MakersFixture;
  XpressNetStation& lenz() { return dynamic_cast<XpressNetStation&>(*station); }
};
class MakersLi100 : public XpressNetFixture {
 protected:
  MakersLi100() : XpressNetFixture(u"LI100") {}
};
class MakersLi100V3 : public XpressNetFixture {
 protected:
  MakersLi100V3() : XpressNetFixture(u"LI100V3") {}
};
class MakersLiUsb : public XpressNetFixture {
 protected:
  MakersLiUsb() : XpressNetFixture(u"LIUSB") {}
};

TEST_F(MakersLi100, TellsTheVersionsOnce) {
  EXPECT_EQ(reply("21 21 00"), "63 21 30 00 72");
  EXPECT_EQ(reply("F0 F0"), "02 30 01 33");
}

TEST_F(MakersLi100V3, TellsItsStationsVersion) {
  EXPECT_EQ(reply("21 21 00"), "63 21 36 00 74");
}

TEST_F(MakersLi100, RefusesAWrongChecksumAndAnUnknownCommand) {
  EXPECT_EQ(reply("21 21 01"), "61 80 e1");
  EXPECT_EQ(reply("21 7F 5E"), kUnknown);
  EXPECT_EQ(reply("22 15 08 3E"), "61 80 e1");
  EXPECT_FALSE(lenz().inServiceMode());
}

TEST_F(MakersLi100, TakesAMessageInPiecesAndSeveralAtOnce) {
  EXPECT_EQ(reply("21"), "");
  EXPECT_EQ(reply("21 00 21 24"), "63 21 30 00 72");
  EXPECT_EQ(reply("05"), "62 22 00 40");
  EXPECT_EQ(reply("21 21 00 21 24 05"), "63 21 30 00 72 62 22 00 40");
}

TEST_F(MakersLi100, AMessageThatNeverEndsIsReported) {
  reply("22 15");
  clock.advance(60000);
  EXPECT_EQ(sentTo(0), "01 01 00");
  EXPECT_EQ(reply("21 24 05"), "62 22 00 40");
}

TEST_F(MakersLi100, TellsStopAndOffTheWayOfThe2003Document) {
  layout.setStopped(true);
  EXPECT_EQ(reply("21 24 05"), "62 22 02 42");
  layout.setStopped(false);
  layout.setTrackPower(false);
  EXPECT_EQ(reply("21 24 05"), "62 22 01 41");
}

TEST_F(MakersLi100V3, TellsStopAndOffTheWayOfVersion36) {
  layout.setStopped(true);
  EXPECT_EQ(reply("21 24 05"), "62 22 01 41");
  layout.setStopped(false);
  layout.setTrackPower(false);
  EXPECT_EQ(reply("21 24 05"), "62 22 02 42");
  reply("22 15 08 3F");
  EXPECT_EQ(reply("21 24 05"), "62 22 0a 4a");
}

TEST_F(MakersLi100V3, ABroadcastIsTheAnswerToACommandThatBringsItAbout) {
  EXPECT_EQ(reply("21 80 A1"), "61 00 61");
  EXPECT_FALSE(layout.trackPower());
  EXPECT_EQ(reply("21 81 A0"), "61 01 60");
  EXPECT_TRUE(layout.trackPower());
  EXPECT_EQ(reply("80 80"), "81 00 81");
  EXPECT_TRUE(layout.stopped());
  EXPECT_TRUE(layout.trackPower());
}

TEST_F(MakersLi100V3, BroadcastsMayComeThreeTimesInARow) {
  make({.broadcastsInARow = 3});
  EXPECT_EQ(reply("21 81 A0"), "61 01 60 61 01 60 61 01 60");
  EXPECT_EQ(reply("21 21 00"), "63 21 36 00 74");
}

TEST_F(MakersLi100V3, ABroadcastMayStandBesideAConfirmation) {
  make({.confirmation = Confirmation::Ahead});
  EXPECT_EQ(reply("22 15 08 3F"), "01 04 05 61 02 63");
  make({.confirmation = Confirmation::Behind});
  EXPECT_EQ(reply("22 15 08 3F"), "61 02 63 01 04 05");
  EXPECT_EQ(reply("21 21 00"), "63 21 36 00 74");
}

TEST_F(MakersLiUsb, TheStationBehindItMayBeOlder) {
  make({.stationVersion = kXpressNet30});
  EXPECT_EQ(reply("FF FE 21 21 00"), "ff fe 63 21 30 00 72");
  EXPECT_EQ(reply("FF FE E3 09 00 03 E9"), "ff fe 61 82 e3");
  EXPECT_EQ(reply("FF FE 22 19 00 3B"), "ff fe 61 82 e3");
}

TEST_F(MakersLiUsb, FramesAnswersAndBroadcastsDifferently) {
  EXPECT_EQ(reply("FF FE 21 21 00"), "ff fe 63 21 36 00 74");
  EXPECT_EQ(reply("FF FE 21 81 A0"), "ff fd 61 01 60");
  EXPECT_EQ(reply("21 21 00"), "") << "no frame";
  EXPECT_EQ(reply("FF"), "");
  EXPECT_EQ(reply("FE 22 15 08 3F"), "ff fd 61 02 63");
  EXPECT_EQ(reply("FF FE 21 10 31"), "ff fe 63 14 08 61 1e");
}

TEST_F(MakersLi100, GivesAResultWhenAskedOnly) {
  EXPECT_EQ(reply(kAskResult), kUnknown) << "no service mode";
  EXPECT_EQ(reply("22 15 08 3F"), kServiceMode);
  clock.advance(90000);
  EXPECT_EQ(sentTo(0), kServiceMode);
  EXPECT_EQ(reply(kAskResult), "63 14 08 61 1e");
  EXPECT_EQ(reply(kAskResult), "63 14 08 61 1e");
  EXPECT_EQ(reply("22 15 1D 2A"), kHandedOver) << "it is in service mode already";
  EXPECT_EQ(reply(kAskResult), "63 14 1d 0e 64");
  EXPECT_EQ(reply("21 81 A0"), "61 01 60");
  EXPECT_EQ(reply(kAskResult), kUnknown);
}

TEST_F(MakersLi100, HoldsTheResultBackWhileTheTrackWorks) {
  make({.accessTime = 60000});
  reply("22 15 08 3F");
  EXPECT_EQ(reply(kAskResult), "");
  clock.advance(60000);
  EXPECT_EQ(sentTo(0), "63 14 08 61 1e");
}

TEST_F(MakersLi100V3, IsBusyWhileTheTrackWorks) {
  make({.accessTime = 3500});
  reply("22 15 08 3F");
  EXPECT_EQ(reply(kAskResult), "61 1f 7e");
  EXPECT_EQ(reply(kAskResult), "61 1f 7e");
  clock.advance(1000);
  EXPECT_EQ(reply(kAskResult), "63 14 08 61 1e");
}

TEST_F(MakersLi100, RegistersAndPagesHaveMessagesOfTheirOwn) {
  layout.onProgrammingTrack()->store(29, 14);
  reply("22 11 05 36");
  EXPECT_EQ(reply(kAskResult), "63 10 05 0e 78") << "register 5 is CV 29";
  EXPECT_EQ(reply("23 12 01 11 21"), kHandedOver);
  EXPECT_EQ(layout.onProgrammingTrack()->stored(1), 17);
  EXPECT_EQ(reply("22 14 08 3E"), kHandedOver);
  EXPECT_EQ(reply(kAskResult), "63 10 08 61 1a");
  EXPECT_EQ(reply("23 17 03 4D 7A"), kHandedOver);
  EXPECT_EQ(layout.onProgrammingTrack()->stored(3), 77);
  EXPECT_EQ(reply("22 11 09 3A"), kUnknown) << "there are eight";
}

TEST_F(MakersLi100, ADecoderThatKnowsRegistersOnlyAnswersADirectReadWithOne) {
  layout.onProgrammingTrack()->methods = {Method::Register};
  reply("22 15 08 3F");
  EXPECT_EQ(reply(kAskResult), "63 10 08 61 1a");
  reply("22 15 1D 2A");
  EXPECT_EQ(reply(kAskResult), "61 13 72");
}

TEST_F(MakersLi100, TellsWhatWentWrong) {
  layout.onProgrammingTrack()->present = {{1, 100}};
  reply("22 15 C8 FF");
  EXPECT_EQ(reply(kAskResult), "61 13 72");
  faults.add({.kind = FaultKind::ShortCircuit});
  reply("22 15 08 3F");
  EXPECT_EQ(reply(kAskResult), "61 12 73");
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(reply("22 15 08 3F"), "61 81 e0");
}

TEST_F(MakersLi100, ABusyStationAsksForTheCommandAgain) {
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(reply("E4 13 00 03 82 76"), "61 81 e0");
  EXPECT_EQ(layout.drive(3).speed, 0);
  EXPECT_EQ(reply("E4 13 00 03 82 76"), kHandedOver);
}

TEST_F(MakersLi100, NoughtIsCv256AndNothingIsAbove) {
  layout.onProgrammingTrack()->store(256, 77);
  reply("22 15 00 37");
  EXPECT_EQ(reply(kAskResult), "63 14 00 4d 3a");
  EXPECT_EQ(reply("22 19 00 3B"), kUnknown);
  EXPECT_EQ(reply("23 1D 00 01 3F"), kUnknown);
}

TEST_F(MakersLi100V3, NoughtIsCv1024AndTheHigherRangesHaveCodes) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  layout.onProgrammingTrack()->store(1024, 11);
  layout.onProgrammingTrack()->store(256, 22);
  layout.onProgrammingTrack()->store(767, 33);
  reply("22 15 00 37");
  EXPECT_EQ(reply(kAskResult), "63 14 00 0b 7c");
  reply("22 18 00 3A");
  EXPECT_EQ(reply(kAskResult), "63 14 00 0b 7c");
  reply("22 19 00 3B");
  EXPECT_EQ(reply(kAskResult), "63 15 00 16 60");
  reply("22 1A FF C7");
  EXPECT_EQ(reply(kAskResult), "63 16 ff 21 ab");
  reply("23 1F 01 05 38");
  EXPECT_EQ(layout.onProgrammingTrack()->stored(769), 5);
  reply("22 1B 01 38");
  EXPECT_EQ(reply(kAskResult), "63 17 01 05 70");
}

TEST_F(MakersLi100V3, NothingButProgrammingIsPossibleInServiceMode) {
  reply("22 15 08 3F");
  EXPECT_EQ(reply("E4 13 00 03 82 76"), kUnknown);
  EXPECT_EQ(layout.drive(3).speed, 0);
  reply("21 81 A0");
  EXPECT_EQ(reply("E4 13 00 03 82 76"), kHandedOver);
  EXPECT_EQ(layout.drive(3).speed, 1);
}

TEST_F(MakersLi100, DrivesInTheDocumentedCoding) {
  EXPECT_EQ(reply("E4 12 00 03 92 67"), kHandedOver);
  EXPECT_EQ(layout.drive(3), (DriveState{.speed = 2, .steps = 28}));
  EXPECT_EQ(reply("E3 00 00 03 E0"), "e4 02 92 00 00 74");
  reply("E4 11 C3 E8 0F D1");
  EXPECT_EQ(layout.drive(1000), (DriveState{.speed = 27, .steps = 27, .backward = true}));
  EXPECT_EQ(reply("E3 00 C3 E8 C8"), "e4 01 0f 00 00 ea");
  reply("E4 13 00 03 81 75");
  EXPECT_TRUE(news.contains("Fahrzeug 3: Nothalt"));
  EXPECT_EQ(reply("92 C3 E8 B9"), kHandedOver);
  EXPECT_EQ(layout.drive(1000).speed, 0);
}

TEST_F(MakersLi100, SwitchesAndTellsTheFunctionsItKnows) {
  EXPECT_EQ(reply("E4 20 00 03 11 D6"), kHandedOver);
  EXPECT_EQ(reply("E4 21 00 03 09 CF"), kHandedOver);
  EXPECT_EQ(reply("E4 22 00 03 08 CD"), kHandedOver);
  EXPECT_EQ(layout.drive(3).functions, 1U | 1U << 1 | 1U << 5 | 1U << 8 | 1U << 12);
  EXPECT_EQ(reply("E3 00 00 03 E0"), "e4 04 80 11 89 f8");
  EXPECT_EQ(reply("E4 21 00 03 00 C6"), kHandedOver);
  EXPECT_EQ(layout.drive(3).functions, 1U | 1U << 1 | 1U << 12) << "F8 is in the group";
  EXPECT_EQ(reply("E4 23 00 03 01 C5"), kUnknown);
  EXPECT_EQ(reply("E4 28 00 03 01 CE"), kUnknown);
  EXPECT_EQ(reply("E3 09 00 03 E9"), kUnknown);
}

TEST_F(MakersLi100V3, KnowsTheUpperFunctions) {
  EXPECT_EQ(reply("E4 23 00 03 01 C5"), kHandedOver);
  EXPECT_EQ(reply("E4 28 00 03 80 4F"), kHandedOver);
  EXPECT_EQ(layout.drive(3).functions, 1U << 13 | 1U << 28);
  EXPECT_EQ(reply("E3 09 00 03 E9"), "e3 52 01 80 30");
}

TEST_F(MakersLi100, KeepsWhatIsMomentary) {
  EXPECT_EQ(reply("E4 24 00 03 02 C1"), kHandedOver);
  EXPECT_EQ(reply("E3 07 00 03 E7"), "e3 50 02 00 b1");
  EXPECT_EQ(layout.drive(3).functions, 0U);
}

TEST_F(MakersLi100, AnAccessorysOutputStaysOnUntilItIsSwitchedOff) {
  EXPECT_EQ(reply("42 03 80 C1"), "42 03 00 41") << "never switched";
  EXPECT_EQ(reply("52 03 89 D8"), kHandedOver);
  EXPECT_TRUE(lenz().accessories().isOn(13, 1));
  EXPECT_EQ(reply("52 03 81 D0"), kHandedOver);
  EXPECT_FALSE(lenz().accessories().isOn(13, 1));
  reply("52 03 8A DB");
  reply("52 03 8D DC");
  EXPECT_EQ(reply("42 03 80 C1"), "42 03 06 47");
  EXPECT_EQ(reply("42 03 81 C0"), "42 03 12 53");
}

TEST_F(MakersLi100V3, WritesOnTheMainTrackOutsideServiceMode) {
  EXPECT_EQ(reply("E6 30 C3 E8 EC 04 63 76"), kHandedOver);
  EXPECT_EQ(layout.onMainTrack(1000)->stored(5), 99);
  EXPECT_EQ(reply("E6 30 C3 E8 E8 04 FF EE"), kHandedOver);
  EXPECT_EQ(layout.onMainTrack(1000)->stored(5), 99 | 0x80);
  EXPECT_FALSE(lenz().inServiceMode());
}

}  // namespace
}  // namespace lokari::sim::makers
