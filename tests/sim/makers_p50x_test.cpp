// An Intellibox and a Tams MC with the P50Xb protocol in its public form.
#include "makers_fixture.h"
#include "sim/makers/p50x_station.h"

namespace lokari::sim::makers {
namespace {

class P50xFixture : public MakersFixture {
 protected:
  using MakersFixture::MakersFixture;
  P50xStation& box() { return dynamic_cast<P50xStation&>(*station); }
};
class MakersIntellibox : public P50xFixture {
 protected:
  MakersIntellibox() : P50xFixture(u"IBX") {}
};
class MakersTams : public P50xFixture {
 protected:
  MakersTams() : P50xFixture(u"TAMSMC") {}
};

/// The lengths of a list of versions, up to its closing 00; empty when it has none or more behind.
QList<int> lengths(const QByteArray& list) {
  QList<int> found;
  qsizetype at = 0;
  while (at < list.size() && list[at] != 0) {
    found << list[at];
    at += 1 + list[at];
  }
  return at == list.size() - 1 ? found : QList<int>();
}

TEST_F(MakersIntellibox, TellsItsVersionsUpToTheClosingNought) {
  reply("78 A0");
  ASSERT_EQ(answers.size(), 1);
  EXPECT_EQ(answers[0].data.size(), 19);
  EXPECT_EQ(lengths(answers[0].data), (QList{2, 2, 1, 1, 1, 5}));
}

TEST_F(MakersTams, TellsItsVersionsUpToTheClosingNought) {
  reply("78 A0");
  ASSERT_EQ(answers.size(), 1);
  EXPECT_EQ(answers[0].data.size(), 10);
  EXPECT_EQ(lengths(answers[0].data), (QList{3, 4}));
}

TEST_F(MakersIntellibox, AListOfVersionsMayBeShort) {
  make({.fewVersions = true});
  reply("78 A0");
  ASSERT_EQ(answers.size(), 1);
  EXPECT_EQ(answers[0].data.size(), 6);
  EXPECT_FALSE(lengths(answers[0].data).isEmpty());
}

TEST_F(MakersIntellibox, TakesBothLettersAndNoCommandWithout) {
  EXPECT_EQ(reply("78 A2"), "08");
  EXPECT_EQ(reply("58 A2"), "08");
  EXPECT_EQ(reply("A2"), "");
  EXPECT_EQ(reply("78"), "");
  EXPECT_EQ(reply("A2 78 A2"), "08 08");
}

TEST_F(MakersIntellibox, AfterZzA1ItTakesCommandsWithoutALetter) {
  EXPECT_EQ(reply("58 5A 7A 41 31 0D"), "");
  EXPECT_EQ(reply("A2"), "08");
  EXPECT_EQ(reply("78"), "");
}

TEST_F(MakersTams, DoesNotAnswerText) {
  EXPECT_EQ(reply("78 41 42 0D 78 A2"), "08");
}

TEST_F(MakersIntellibox, AnUnknownCommandIsRefusedAndTheNextIsUnderstood) {
  EXPECT_EQ(reply("78 BB"), "01");
  EXPECT_EQ(reply("78 89 03 00 01"), "01") << "the first one has no F9";
  EXPECT_EQ(reply("78 DA 03 00 08 00"), "01");
  EXPECT_EQ(reply("78 A2"), "08");
}

TEST_F(MakersIntellibox, ACommandThatBreaksOffIsForgotten) {
  reply("78 80 03 00");
  clock.advance(2000);
  EXPECT_EQ(reply("78 A2"), "08");
}

TEST_F(MakersIntellibox, TellsPowerHaltAndHeat) {
  EXPECT_EQ(reply("78 A5"), "00");
  EXPECT_EQ(reply("78 A2"), "18");
  EXPECT_EQ(reply("78 A7"), "00");
  EXPECT_EQ(reply("78 A6"), "00");
  EXPECT_EQ(reply("78 A2"), "00");
  layout.setOverloaded(true);
  EXPECT_EQ(reply("78 A7"), "06");
  EXPECT_EQ(reply("78 A2"), "04");
}

TEST_F(MakersIntellibox, AVehicleInNoSlotHasNoData) {
  EXPECT_EQ(reply("78 84 03 00"), "0a");
  EXPECT_EQ(reply("78 8C 03 00"), "0a");
  EXPECT_EQ(reply("78 85 03 00"), "0a");
}

TEST_F(MakersIntellibox, DrivesWithOneAsTheEmergencyStop) {
  EXPECT_EQ(reply("78 80 03 00 7F B9"), "00");
  EXPECT_EQ(layout.drive(3), (DriveState{.speed = 126, .functions = 1U | 1U << 1 | 1U << 4}));
  EXPECT_TRUE(reply("78 84 03 00").startsWith("00 7f 39"));
  EXPECT_EQ(reply("78 80 03 00 02 00"), "00") << "F1 to F4 are not taken";
  EXPECT_EQ(layout.drive(3),
            (DriveState{.speed = 1, .backward = true, .functions = 1U << 1 | 1U << 4}));
  EXPECT_FALSE(news.contains("Fahrzeug 3: Nothalt"));
  reply("78 80 03 00 01 20");
  EXPECT_EQ(layout.drive(3).speed, 0);
  EXPECT_TRUE(news.contains("Fahrzeug 3: Nothalt"));
  EXPECT_EQ(reply("78 80 00 00 10 20"), "0c");
}

TEST_F(MakersIntellibox, WarnsThatNothingMoves) {
  layout.setStopped(true);
  EXPECT_EQ(reply("78 80 03 00 10 20"), "41");
  layout.setTrackPower(false);
  EXPECT_EQ(reply("78 80 03 00 11 20"), "42");
  EXPECT_EQ(layout.drive(3).speed, 16) << "both were taken";
}

TEST_F(MakersIntellibox, FullQueuesTakeNothing) {
  faults.add({.kind = FaultKind::Busy, .count = 2});
  EXPECT_EQ(reply("78 80 03 00 10 20"), "08");
  EXPECT_EQ(layout.drive(3).speed, 0);
  EXPECT_EQ(reply("78 90 0D C0"), "09");
  EXPECT_FALSE(box().accessories().isOn(13, 1));
  EXPECT_EQ(reply("78 80 03 00 10 20"), "00");
}

TEST_F(MakersIntellibox, TheStationsNameTheFormatDifferently) {
  reply("78 80 03 00 10 20");
  const QString format = reply("78 85 03 00");
  EXPECT_TRUE(format.startsWith("00 02")) << format.toStdString();
  EXPECT_TRUE(format.endsWith("ff ff"));
}

TEST_F(MakersTams, TheStationsNameTheFormatDifferently) {
  reply("78 80 03 00 10 20");
  EXPECT_TRUE(reply("78 85 03 00").startsWith("00 03"));
}

TEST_F(MakersIntellibox, SwitchesF1ToF8AndLeavesTheLight) {
  reply("78 80 03 00 10 30");
  EXPECT_EQ(reply("78 88 03 00 81"), "00");
  EXPECT_EQ(layout.drive(3).functions, 1U | 1U << 1 | 1U << 8);
  EXPECT_EQ(reply("78 8C 03 00"), "00 81");
}

TEST_F(MakersTams, SwitchesTheUpperFunctions) {
  EXPECT_EQ(reply("78 89 03 00 81"), "00");
  EXPECT_EQ(reply("78 8A 03 00 01 42"), "00");
  EXPECT_EQ(layout.drive(3).functions, 1U << 9 | 1U << 16 | 1U << 17 | 1U << 26 | 1U << 31);
  EXPECT_EQ(reply("78 8D 03 00"), "00 81");
  EXPECT_EQ(reply("78 8E 03 00"), "00 01 42");
}

TEST_F(MakersIntellibox, ATurnoutsOutputStaysOnUntilItIsSwitchedOff) {
  EXPECT_EQ(reply("78 90 0D C0"), "00");
  EXPECT_TRUE(box().accessories().isOn(13, 1));
  EXPECT_EQ(reply("78 94 0D 00"), "00 05");
  EXPECT_EQ(reply("78 90 0D 80"), "00");
  EXPECT_FALSE(box().accessories().isOn(13, 1));
  EXPECT_EQ(reply("78 90 0D 50"), "00") << "not to be switched";
  EXPECT_EQ(reply("78 95 02"), "00 10 00");
  reply("78 90 0D 40");
  EXPECT_EQ(reply("78 95 02"), "00 00 00");
  EXPECT_EQ(reply("78 90 01 C1"), "00");
  EXPECT_TRUE(layout.output(257));
  EXPECT_EQ(reply("78 90 00 C0"), "02");
}

TEST_F(MakersIntellibox, TellsContactsAndThatNothingHappened) {
  EXPECT_EQ(reply("78 98 01"), "00 00 00");
  EXPECT_EQ(reply("78 99"), "00");
  reply("78 80 03 00 10 20");
  EXPECT_EQ(reply("78 C8"), "00") << "the own command is no event";
  EXPECT_EQ(reply("78 C9"), "80");
  EXPECT_EQ(reply("78 CA"), "00");
  EXPECT_EQ(reply("78 CB"), "00");
}

TEST_F(MakersIntellibox, ReadsAndTellsTheResultOnce) {
  make({.accessTime = 1500});
  EXPECT_EQ(reply("78 E1"), "00");
  EXPECT_EQ(reply("78 F0 08 00"), "00");
  EXPECT_EQ(reply("78 F0 08 00"), "80");
  EXPECT_EQ(reply("78 CE"), "02 00 61");
  EXPECT_EQ(reply("78 CE"), "f5");
  EXPECT_EQ(reply("78 E2"), "00");
}

TEST_F(MakersIntellibox, AnEventTellsOfAResultUntilItIsFetched) {
  reply("78 F2 08 00");
  EXPECT_EQ(reply("78 C8"), "80 80 01");
  EXPECT_EQ(reply("78 CE"), "02 00 61");
  EXPECT_EQ(reply("78 C8"), "00");
}

TEST_F(MakersIntellibox, EveryMethodHasItsCommands) {
  layout.onProgrammingTrack()->store(29, 14);
  for (const char* command : {"78 EC 05 00", "78 EE 1D 00", "78 F0 1D 00", "78 F2 1D 00"}) {
    EXPECT_EQ(reply(command), "00") << command;
    EXPECT_EQ(reply("78 CE"), "02 00 0e") << command;
  }
  const QList<std::pair<const char*, int>> writes{{"78 ED 03 00 07", 7},
                                                  {"78 EF 03 00 08", 8},
                                                  {"78 F1 03 00 09", 9},
                                                  {"78 F3 03 00 02 01", 13}};
  for (const auto& [command, value] : writes) {
    EXPECT_EQ(reply(command), "00") << command;
    EXPECT_EQ(reply("78 CE"), "01 00") << command;
    EXPECT_EQ(layout.onProgrammingTrack()->stored(3), value) << command;
  }
  EXPECT_EQ(reply("78 F0 00 00"), "02");
  EXPECT_EQ(reply("78 EC 09 00"), "02");
}

TEST_F(MakersIntellibox, TellsWhatWentWrong) {
  const QList<std::pair<FaultKind, const char*>> rows{{FaultKind::NoAck, "01 fe"},
                                                      {FaultKind::ShortCircuit, "01 fd"},
                                                      {FaultKind::NoDecoder, "01 fc"}};
  for (const auto& [kind, result] : rows) {
    faults.add({.kind = kind});
    EXPECT_EQ(reply("78 F0 08 00"), "00");
    EXPECT_EQ(reply("78 CE"), result);
  }
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(reply("78 F0 08 00"), "80");
}

TEST_F(MakersIntellibox, WritesOnTheMainTrack) {
  EXPECT_EQ(reply("78 DE E8 03 05 00 63"), "00");
  EXPECT_EQ(reply("78 CE"), "01 00");
  EXPECT_EQ(layout.onMainTrack(1000)->stored(5), 99);
}

TEST_F(MakersTams, ReadsOnTheMainTrack) {
  EXPECT_EQ(reply("78 DA E8 03 08 00"), "00");
  EXPECT_EQ(reply("78 CE"), "02 00 91");
}

}  // namespace
}  // namespace lokari::sim::makers
