// An MX1 with the binary protocol in its public form.
#include "makers_fixture.h"
#include "sim/makers/mx1_station.h"

namespace lokari::sim::makers {
namespace {

class MakersMx1 : public MakersFixture {
 protected:
  MakersMx1() : MakersFixture(u"MX1BIN") {}

  /// The frames that the station sends soon after a command.
  QList<Mx1Frame> framesAfter(int sequence, int message, const char* data) {
    answers.clear();
    station->receive(mx1Bytes({sequence, 0x10, message, fromHex(data)}));
    clock.advance(kSoon);
    Mx1Reader reader;
    QList<Mx1Frame> frames;
    for (const Answer& answer : answers) frames += reader.feed(answer.data);
    return frames;
  }
  /// Kind, message and data of the one frame that comes.
  QString replyFrame(int sequence, int message, const char* data) {
    const QList<Mx1Frame> frames = framesAfter(sequence, message, data);
    if (frames.size() != 1) return QStringLiteral("%1 frames").arg(frames.size());
    const Mx1Frame& frame = frames[0];
    return hex(QByteArray(1, static_cast<char>(frame.kind)) +
               QByteArray(1, static_cast<char>(frame.message)) + frame.data);
  }

  Mx1Station& mx1() { return dynamic_cast<Mx1Station&>(*station); }
};

constexpr char kReset[] = "01 01 21 10 30 00 10 21 17";

TEST_F(MakersMx1, TheDocumentedResetHasTheChecksumAndTheMasks) {
  EXPECT_EQ(mx1Bytes({0x21, 0x10, 0x00, {}}), fromHex(kReset));
  Mx1Reader reader;
  EXPECT_EQ(reader.feed(fromHex(kReset)), (QList<Mx1Frame>{{0x21, 0x10, 0x00, {}}}));
}

TEST_F(MakersMx1, AnswersTheResetWithItsSequence) {
  EXPECT_EQ(replyFrame(0x21, 0x00, ""), "40 00 21 00");
}

TEST_F(MakersMx1, DropsAWrongChecksumAndWhatIsNoFrame) {
  EXPECT_EQ(reply("01 01 21 10 30 00 10 20 17"), "");
  EXPECT_EQ(reply("01 01 17 55 17"), "");
  reply("01 01 21 10 01 01 21 10 30 00 10 21 17");
  EXPECT_EQ(answers.size(), 1) << "the first was cut";
}

TEST_F(MakersMx1, TakesAFrameInPieces) {
  EXPECT_EQ(reply("01"), "");
  EXPECT_EQ(reply("01 21 10"), "");
  reply("30 00 10 21 17");
  EXPECT_EQ(answers.size(), 1);
}

TEST_F(MakersMx1, SwitchesTheTrackAndTellsItsState) {
  EXPECT_EQ(replyFrame(5, 0x02, "03"), "40 02 05 00");
  EXPECT_EQ(replyFrame(6, 0x02, "00"), "40 02 06 01");
  EXPECT_TRUE(layout.trackPower());
  EXPECT_EQ(replyFrame(7, 0x02, "01"), "40 02 07 03");
  EXPECT_FALSE(layout.trackPower());
  EXPECT_EQ(replyFrame(8, 0x02, "02"), "40 02 08 00");
}

TEST_F(MakersMx1, DrivesAndTellsAVehicle) {
  EXPECT_EQ(replyFrame(9, 0x03, "80 03 14 38 81 02"), "40 03 09 00");
  EXPECT_EQ(layout.drive(3).steps, 28);
  EXPECT_TRUE(layout.drive(3).backward);
  EXPECT_EQ(layout.drive(3).functions, 1U | 1U << 1 | 1U << 8 | 1U << 10);
  EXPECT_EQ(replyFrame(10, 0x08, "80 03"), "40 08 0a 00 80 03 14 38 81 02");
}

TEST_F(MakersMx1, ABusyStationTakesNoCommand) {
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(replyFrame(9, 0x03, "80 03 14 0C 00 00"), "40 03 09 04");
  EXPECT_EQ(layout.drive(3).speed, 0);
}

TEST_F(MakersMx1, ReadsAndWritesOnBothTracks) {
  EXPECT_EQ(replyFrame(11, 0x13, "80 00 00 08"), "20 13 0b 80 00 00 08 61");
  EXPECT_EQ(replyFrame(12, 0x13, "80 00 00 03 4D"), "20 13 0c 80 00 00 03 4d");
  EXPECT_EQ(layout.onProgrammingTrack()->stored(3), 77);
  EXPECT_EQ(replyFrame(13, 0x13, "83 E8 00 08"), "20 13 0d 83 e8 00 08 91");
}

TEST_F(MakersMx1, AFailedCvHasItsAddressAndAnError) {
  layout.onProgrammingTrack()->present = {{1, 100}};
  const QList<Mx1Frame> frames = framesAfter(14, 0x13, "80 00 00 C8");
  ASSERT_EQ(frames.size(), 1);
  EXPECT_EQ(frames[0].kind, 0x20);
  EXPECT_EQ(frames[0].data.size(), 4);
  EXPECT_TRUE(frames[0].data.startsWith(fromHex("0e 80 00")));
  EXPECT_NE(frames[0].data[3], 0);
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(replyFrame(15, 0x13, "80 00 00 08"), "20 13 0f 80 00 04");
}

TEST_F(MakersMx1, ACvIsUnacknowledgedUntilTheProgramSaysSo) {
  replyFrame(16, 0x13, "80 00 00 08");
  EXPECT_EQ(mx1().unacknowledged(), 1);
  station->receive(mx1Bytes({17, 0x50, 0x13, fromHex("10")}));
  EXPECT_EQ(mx1().unacknowledged(), 0);
}

TEST_F(MakersMx1, RefusesMessagesThatNoDocumentHas) {
  EXPECT_EQ(replyFrame(18, 0x77, ""), "40 77 12 0a");
}

}  // namespace
}  // namespace lokari::sim::makers
