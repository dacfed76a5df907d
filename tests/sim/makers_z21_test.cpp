// A Z21 in its maker's form. The bytes are the documents'; checksums were worked out by hand.
#include "makers_fixture.h"
#include "sim/makers/z21_station.h"

namespace lokari::sim::makers {
namespace {

constexpr char kBroadcastFlag[] = "08 00 50 00 01 00 00 00";
constexpr char kReadCv8[] = "09 00 40 00 23 11 00 07 35";
constexpr char kCv8Is97[] = "0a 00 40 00 64 14 00 07 61 16";
constexpr char kProgrammingMode[] = "07 00 40 00 61 02 63";

class MakersZ21 : public MakersFixture {
 protected:
  MakersZ21() : MakersFixture(u"Z21IP") {}

  Z21Station& z21() { return dynamic_cast<Z21Station&>(*station); }
};

TEST_F(MakersZ21, TellsWhoItIs) {
  EXPECT_EQ(reply("04 00 10 00"), "08 00 10 00 40 e2 01 00");
  EXPECT_EQ(reply("04 00 18 00"), "05 00 18 00 00");
  EXPECT_EQ(reply("04 00 1A 00"), "0c 00 1a 00 01 02 00 00 43 01 00 00");
  EXPECT_EQ(reply("07 00 40 00 21 21 00"), "09 00 40 00 63 21 30 12 60");
  EXPECT_EQ(reply("07 00 40 00 F1 0A FB"), "09 00 40 00 f3 0a 01 43 bb");
}

TEST_F(MakersZ21, DropsAWrongChecksum) {
  EXPECT_EQ(reply("07 00 40 00 21 21 01"), "");
  EXPECT_EQ(reply("09 00 40 00 23 11 00 00 33"), "") << "made over the text of the message";
  EXPECT_FALSE(z21().inProgrammingMode());
}

TEST_F(MakersZ21, TakesSeveralRecordsOfADatagram) {
  EXPECT_EQ(reply("07 00 40 00 21 21 01 04 00 18 00 07 00 40 00 F1 0A FB"),
            "05 00 18 00 00 09 00 40 00 f3 0a 01 43 bb");
  EXPECT_EQ(reply("04 00 18 00 03 00 18 00 04 00 18 00"), "05 00 18 00 00");
  EXPECT_EQ(reply("05 00 18 00"), "");
}

TEST_F(MakersZ21, RefusesInvalidXBusMessagesAndIsSilentAboutUnknownRecords) {
  EXPECT_EQ(reply("07 00 40 00 21 77 56"), "07 00 40 00 61 82 e3");
  EXPECT_EQ(reply("08 00 40 00 21 21 00 00"), "07 00 40 00 61 82 e3");
  EXPECT_EQ(reply("0A 00 40 00 E4 11 00 03 82 74"), "07 00 40 00 61 82 e3");
  EXPECT_EQ(reply("04 00 99 00"), "");
}

TEST_F(MakersZ21, TellsItsStatus) {
  EXPECT_EQ(reply("07 00 40 00 21 24 05"), "08 00 40 00 62 22 00 40");
  layout.setStopped(true);
  EXPECT_EQ(reply("07 00 40 00 21 24 05"), "08 00 40 00 62 22 01 41");
  layout.setTrackPower(false);
  layout.setOverloaded(true);
  reply(kReadCv8);
  EXPECT_EQ(reply("07 00 40 00 21 24 05"), "08 00 40 00 62 22 27 67");
}

TEST_F(MakersZ21, SwitchesTheTrackAndStopsWithTheVoltageOn) {
  EXPECT_EQ(reply("07 00 40 00 21 80 A1"), "07 00 40 00 61 00 61");
  EXPECT_FALSE(layout.trackPower());
  EXPECT_EQ(reply("07 00 40 00 21 81 A0"), "07 00 40 00 61 01 60");
  EXPECT_TRUE(layout.trackPower());
  EXPECT_EQ(reply("06 00 40 00 80 80"), "07 00 40 00 81 00 81");
  EXPECT_TRUE(layout.stopped());
  EXPECT_TRUE(layout.trackPower());
  EXPECT_EQ(reply("06 00 40 00 80 0A"), "");
  reply("07 00 40 00 21 81 A0");
  EXPECT_FALSE(layout.stopped());
}

TEST_F(MakersZ21, KeepsAClientsFlagsUntilItLeavesOrIsSilentForAMinute) {
  EXPECT_EQ(reply(kBroadcastFlag), "");
  EXPECT_EQ(reply("04 00 51 00"), "08 00 51 00 01 00 00 00");
  EXPECT_EQ(replyTo(1, "04 00 51 00"), "08 00 51 00 00 00 00 00");
  clock.advance(57999);
  EXPECT_EQ(reply("04 00 51 00"), "08 00 51 00 01 00 00 00");
  clock.advance(59500);
  EXPECT_EQ(reply("04 00 51 00"), "08 00 51 00 00 00 00 00");
  reply(kBroadcastFlag);
  EXPECT_EQ(reply("04 00 30 00"), "");
  EXPECT_FALSE(z21().clients().knows(0));
  EXPECT_EQ(reply("04 00 51 00"), "08 00 51 00 00 00 00 00");
}

TEST_F(MakersZ21, TellsBroadcastsToClientsWithTheFlag) {
  replyTo(1, kBroadcastFlag);
  replyTo(2, "04 00 10 00");
  EXPECT_EQ(reply("07 00 40 00 21 80 A1"), "07 00 40 00 61 00 61") << "it was its own command";
  EXPECT_EQ(sentTo(1), "07 00 40 00 61 00 61");
  EXPECT_EQ(sentTo(2), "");
}

TEST_F(MakersZ21, WithSubscribersOnlyNobodyElseHearsBroadcastsAndResults) {
  make({.subscribersOnly = true});
  EXPECT_EQ(reply("07 00 40 00 21 80 A1"), "");
  EXPECT_EQ(reply(kReadCv8), "");
  EXPECT_EQ(reply("07 00 40 00 21 24 05"), "08 00 40 00 62 22 22 62") << "an answer is none";
  replyTo(1, kBroadcastFlag);
  EXPECT_EQ(reply(kReadCv8), "");
  EXPECT_EQ(sentTo(1), kCv8Is97);
}

TEST_F(MakersZ21, BundledAnswersComeInOneDatagramForEachClient) {
  const char* twoQuestions = "04 00 18 00 07 00 40 00 21 24 05";
  EXPECT_EQ(reply(twoQuestions), "05 00 18 00 00 08 00 40 00 62 22 00 40");
  EXPECT_EQ(answers.size(), 2);
  make({.bundled = true});
  EXPECT_EQ(reply(twoQuestions), "05 00 18 00 00 08 00 40 00 62 22 00 40");
  EXPECT_EQ(answers.size(), 1);
  replyTo(1, kBroadcastFlag);
  reply(kReadCv8);
  EXPECT_EQ(sentTo(1), kProgrammingMode);
  EXPECT_EQ(sentTo(0), QString("%1 %2").arg(kProgrammingMode, kCv8Is97));
  EXPECT_EQ(answers.size(), 3) << "the result comes later, by itself";
}

TEST_F(MakersZ21, AVehiclesStateIsAsLongAsItsFirmwareMakesIt) {
  layout.setDrive(1000, {.speed = 28,
                         .steps = 28,
                         .functions = 1U | 1U << 5 | 1U << 12 | 1U << 20 | 1U << 21 | 1U << 30});
  EXPECT_EQ(reply("09 00 40 00 E3 F0 C3 E8 38"), "0f 00 40 00 ef c3 e8 02 9f 10 81 80 01 02 4b");
  make({.stateSize = 14});
  EXPECT_EQ(reply("09 00 40 00 E3 F0 C3 E8 38"), "0e 00 40 00 ef c3 e8 02 9f 10 81 80 01 49");
  make({.stateSize = 21});
  EXPECT_EQ(reply("09 00 40 00 E3 F0 C3 E8 38"),
            "15 00 40 00 ef c3 e8 02 9f 10 81 80 01 02 00 00 00 00 00 00 4b");
}

TEST_F(MakersZ21, AFirmwareWithShortStatesKnowsLess) {
  make({.stateSize = 14});
  EXPECT_EQ(reply("07 00 40 00 F1 0A FB"), "09 00 40 00 f3 0a 01 41 b9");
  EXPECT_EQ(reply("08 00 40 00 92 00 03 91"), "07 00 40 00 61 82 e3");
  EXPECT_EQ(reply("0A 00 40 00 E4 F8 00 03 5D 42"), "07 00 40 00 61 82 e3") << "F29";
  EXPECT_EQ(reply("0A 00 40 00 E4 F8 00 03 5C 43"), "") << "F28";
}

TEST_F(MakersZ21, AVehicleThatNeverRanHas128StepsAndStandsForward) {
  EXPECT_EQ(reply("09 00 40 00 E3 F0 00 03 10"), "0f 00 40 00 ef 00 03 04 80 00 00 00 00 00 68");
}

TEST_F(MakersZ21, DrivesInTheDocumentedCoding) {
  EXPECT_EQ(reply("0A 00 40 00 E4 12 00 03 92 67"), "");
  EXPECT_EQ(layout.drive(3), (DriveState{.speed = 2, .steps = 28}));
  reply("0A 00 40 00 E4 13 00 03 7F 8B");
  EXPECT_EQ(layout.drive(3), (DriveState{.speed = 126, .backward = true}));
  reply("0A 00 40 00 E4 10 C3 E8 8F 50");
  EXPECT_EQ(layout.drive(1000), (DriveState{.speed = 14, .steps = 14}));
  EXPECT_FALSE(news.contains("Fahrzeug 3: Nothalt"));
  reply("0A 00 40 00 E4 13 00 03 81 75");
  EXPECT_EQ(layout.drive(3).speed, 0);
  EXPECT_TRUE(news.contains("Fahrzeug 3: Nothalt"));
}

TEST_F(MakersZ21, StopsOneVehicle) {
  layout.setDrive(3, {.speed = 50});
  EXPECT_EQ(reply("08 00 40 00 92 00 03 91"), "");
  EXPECT_EQ(layout.drive(3).speed, 0);
}

TEST_F(MakersZ21, SwitchesFunctionsOneByOneAndInGroups) {
  reply("0A 00 40 00 E4 F8 00 03 40 5F");
  EXPECT_EQ(layout.drive(3).functions, 1U);
  reply("0A 00 40 00 E4 F8 00 03 9F 80");
  EXPECT_EQ(layout.drive(3).functions, 1U | 1U << 31);
  reply("0A 00 40 00 E4 F8 00 03 9F 80");
  reply("0A 00 40 00 E4 F8 00 03 00 1F");
  EXPECT_EQ(layout.drive(3).functions, 0U);
  reply("0A 00 40 00 E4 21 00 03 09 CF");
  reply("0A 00 40 00 E4 28 00 03 01 CE");
  EXPECT_EQ(layout.drive(3).functions, 1U << 5 | 1U << 8 | 1U << 21);
}

TEST_F(MakersZ21, TellsAVehiclesChangeToThoseWhoAskedForItAndHaveTheFlag) {
  reply(kBroadcastFlag);
  reply("09 00 40 00 E3 F0 00 03 10");
  replyTo(1, "09 00 40 00 E3 F0 00 03 10");
  replyTo(2, "08 00 50 00 00 00 01 00");
  const char* state = "0f 00 40 00 ef 00 03 04 82 00 00 00 00 00 6a";
  EXPECT_EQ(replyTo(3, "0A 00 40 00 E4 13 00 03 82 76"), "");
  EXPECT_EQ(sentTo(0), state);
  EXPECT_EQ(sentTo(1), "") << "no flag";
  EXPECT_EQ(sentTo(2), state) << "wants all vehicles";
}

TEST_F(MakersZ21, TheSeventeenthVehiclePushesTheFirstOut) {
  Z21Clients clients(clock);
  clients.spoke(0);
  clients.setFlags(0, kZ21Broadcasts);
  for (int address = 1; address <= 16; ++address) clients.subscribe(0, address);
  EXPECT_EQ(clients.interestedIn(1), std::vector{0});
  clients.subscribe(0, 17);
  EXPECT_TRUE(clients.interestedIn(1).empty());
  EXPECT_EQ(clients.interestedIn(2), std::vector{0});
  EXPECT_EQ(clients.interestedIn(17), std::vector{0});
}

TEST_F(MakersZ21, ATurnoutsOutputStaysOnUntilItIsSwitchedOff) {
  EXPECT_EQ(reply("08 00 40 00 43 00 0C 4F"), "09 00 40 00 43 00 0c 00 4f");
  reply(kBroadcastFlag);
  EXPECT_EQ(reply("09 00 40 00 53 00 0C A9 F6"), "09 00 40 00 43 00 0c 02 4d");
  EXPECT_TRUE(z21().accessories().isOn(13, 1));
  EXPECT_TRUE(layout.output(13));
  reply("09 00 40 00 53 00 0C A1 FE");
  EXPECT_FALSE(z21().accessories().isOn(13, 1));
  reply("09 00 40 00 53 00 0C 88 D7");
  EXPECT_TRUE(z21().accessories().isOn(13, 0));
  EXPECT_EQ(reply("08 00 40 00 43 00 0C 4F"), "09 00 40 00 43 00 0c 01 4e");
  reply("09 00 40 00 53 00 0C 80 DF");
  EXPECT_FALSE(z21().accessories().isOn(13, 0));
  EXPECT_EQ(reply("09 00 40 00 53 00 0C 0A 55"), "07 00 40 00 61 82 e3");
}

TEST_F(MakersZ21, ReadsAndWritesOnTheProgrammingTrack) {
  EXPECT_EQ(reply(kReadCv8), QString("%1 %2").arg(kProgrammingMode, kCv8Is97));
  EXPECT_EQ(reply(kReadCv8), kCv8Is97) << "it is in programming mode already";
  EXPECT_EQ(reply("0A 00 40 00 24 12 00 02 4D 79"), "0a 00 40 00 64 14 00 02 4d 3f");
  EXPECT_EQ(layout.onProgrammingTrack()->stored(3), 77);
  EXPECT_EQ(reply("09 00 40 00 23 11 03 FF CE"), "07 00 40 00 61 13 72");
  faults.add({.kind = FaultKind::ShortCircuit});
  EXPECT_EQ(reply(kReadCv8), "07 00 40 00 61 12 73");
  EXPECT_TRUE(z21().inProgrammingMode());
  reply("07 00 40 00 21 81 A0");
  EXPECT_FALSE(z21().inProgrammingMode());
}

TEST_F(MakersZ21, TellsItsStatusWhileTheTrackWorks) {
  make({.accessTime = 60000});
  EXPECT_EQ(reply(kReadCv8), kProgrammingMode);
  EXPECT_EQ(reply("07 00 40 00 21 24 05"), "08 00 40 00 62 22 20 60");
  clock.advance(60000);
  EXPECT_TRUE(sentTo(0).endsWith(kCv8Is97));
}

TEST_F(MakersZ21, TheMainTrackAnswersReadsOnlyAndIsNoProgrammingMode) {
  EXPECT_EQ(reply("0C 00 40 00 E6 30 C3 E8 EC 02 4D 5E"), "");
  EXPECT_EQ(layout.onMainTrack(1000)->stored(3), 77);
  EXPECT_EQ(reply("0C 00 40 00 E6 30 C3 E8 E8 02 0F 18"), "");
  EXPECT_EQ(layout.onMainTrack(1000)->stored(3), 77 | 0x80);
  EXPECT_EQ(reply("0C 00 40 00 E6 30 C3 E8 E4 07 00 1E"), "0a 00 40 00 64 14 00 07 91 e6");
  EXPECT_EQ(reply("0C 00 40 00 E6 30 00 63 E4 07 00 56"), "07 00 40 00 61 13 72");
  EXPECT_FALSE(z21().inProgrammingMode());
}

TEST_F(MakersZ21, TellsTheSystemsStateToThoseWhoWantIt) {
  EXPECT_EQ(reply("04 00 85 00"), "14 00 84 00 00 00 00 00 00 00 19 00 50 46 80 3e 00 00 00 3b");
  replyTo(1, "08 00 50 00 00 01 00 00");
  reply("07 00 40 00 21 80 A1");
  EXPECT_EQ(sentTo(1), "14 00 84 00 00 00 00 00 00 00 19 00 50 46 00 00 02 00 00 3b");
}

TEST_F(MakersZ21, KeepsAnAddressesFormat) {
  EXPECT_EQ(reply("06 00 60 00 00 48"), "07 00 60 00 00 48 00");
  EXPECT_EQ(reply("07 00 61 00 00 48 01"), "");
  EXPECT_EQ(reply("06 00 60 00 00 48"), "07 00 60 00 00 48 01");
}

}  // namespace
}  // namespace lokari::sim::makers
