// What each station says about itself and about the track.
#include "sim/station_table.h"
#include "station_fixture.h"

namespace lokari::sim {
namespace {

/// A station of any kind; `name` may change from question to question.
class StatusTest : public StationFixture {
 protected:
  StatusTest() : StationFixture(u"MX1") {}

  void become(QStringView name) {
    station = stationByName(name)->make({clock, layout, faults, 20});
    station->onAnswer = [this](const QByteArray& data) { answers.append({clock.now(), data}); };
  }

  QByteArray reply(const char* hex) { return replyTo(QByteArray::fromHex(hex)).toHex(' '); }

  /// Opens the MX10's network; its first announcement is over.
  void open() {
    station->receive(QByteArray::fromHex("00 00 00 00 0A 19 86 C2"));
    clock.advance(100);
    answers.clear();
  }

  void stop() {
    layout.setTrackPower(false);
    layout.setStopped(true);
    layout.setOverloaded(true);
  }
};

TEST_F(StatusTest, Mx1) {
  EXPECT_EQ(replyTo("Z\r"), "ZA2\r");
  stop();
  EXPECT_EQ(replyTo("Z\r"), "ZA5\r");
}

TEST_F(StatusTest, Mx1Bin) {
  become(u"MX1BIN");
  EXPECT_EQ(reply("01 01 00 10 30 0D 00 28 17").left(33), "01 01 00 50 0d 00 00 00 10 21 00 ");
  // Behind it, escaped: 00 00 00, 1.25 of 14.3.12, build 2, boot ROM 1.4, number 741959.
  EXPECT_TRUE(reply("01 01 02 10 30 0D 00 2F 17")
                  .contains("00 00 00 10 21 19 0e 03 0c 02 00 00 10 21 04 00 00 00 0b 52 47"));
}

TEST_F(StatusTest, Mx1BinTellsTheTrack) {
  become(u"MX1BIN");
  EXPECT_TRUE(reply("01 01 00 10 30 02 03 D2 17").contains("02 00 03 82"));
  stop();
  EXPECT_TRUE(reply("01 01 00 10 30 02 03 D2 17").contains("02 00 03 85"));
}

TEST_F(StatusTest, Mx1UlfIsAnMxulf) {
  become(u"MX1ULF");
  EXPECT_EQ(reply("01 01 00 10 30 0D 00 28 17").left(33), "01 01 00 d0 0d 00 00 00 00 04 00 ");
}

TEST_F(StatusTest, Li100) {
  become(u"LI100");
  EXPECT_EQ(replyTo(QByteArray::fromHex("21 21 00")),
            QByteArray::fromHex("62 21 23 60").repeated(5));
  EXPECT_EQ(replyTo(QByteArray::fromHex("21 24 05")),
            QByteArray::fromHex("62 22 04 44").repeated(5));
}

TEST_F(StatusTest, Li100V3) {
  become(u"LI100V3");
  EXPECT_EQ(reply("21 21 00"), "63 21 36 00 74");
  EXPECT_EQ(reply("21 24 05"), "62 22 04 44");
  stop();
  EXPECT_EQ(reply("21 24 05"), "62 22 07 47");
  reply("22 15 08 3F");
  EXPECT_EQ(reply("21 24 05"), "62 22 0f 4f");
}

TEST_F(StatusTest, LiUsb) {
  become(u"LIUSB");
  EXPECT_EQ(reply("FF FE 21 21 00"), "ff fe 63 21 36 00 74");
  EXPECT_EQ(reply("FF FE 21 24 05"), "ff fe 62 22 04 44");
}

TEST_F(StatusTest, Lidp) {
  become(u"LIDP");
  EXPECT_EQ(replyTo("01\r"), "OK\r\n");
  stop();
  EXPECT_EQ(replyTo("01\r"), "X3\r\n");
}

TEST_F(StatusTest, Intellibox) {
  become(u"IBX");
  EXPECT_EQ(reply("78 A0"), "02 50 15 02 10 13 01 14 01 09 01 2a 05 00 01 23 4f 56 00");
  EXPECT_EQ(reply("78 A2"), "08");
  stop();
  EXPECT_EQ(reply("78 A2"), "14");
}

TEST_F(StatusTest, TamsMcTakesTheQuestionsBetweenItsLines) {
  become(u"TAMSMC");
  EXPECT_EQ(reply("78 A0"), "04 02 01 04 61 00 01 e2 40 00");
  EXPECT_EQ(reply("78 A2"), "08");
  EXPECT_EQ(replyTo("xPTRB 8\r"), "97]\r");
  stop();
  EXPECT_EQ(replyTo(QByteArray("x\xA2") + "xPTRB 8\r"), QByteArray("\x14") + "97]\r");
}

TEST_F(StatusTest, Z21) {
  become(u"Z21IP");
  EXPECT_EQ(reply("04 00 10 00"), "08 00 10 00 40 e2 01 00");
  EXPECT_EQ(reply("07 00 40 00 F1 0A FB"), "09 00 40 00 f3 0a 01 43 bb");
}

TEST_F(StatusTest, Mx10) {
  become(u"MX10IP");
  open();
  station->receive(QByteArray::fromHex("04 00 00 00 08 20 86 C2 A1 C0 02 00"));
  clock.advance(10);
  ASSERT_EQ(answers.size(), 1);
  EXPECT_EQ(answers[0].data.toHex(' '), "08 00 00 00 08 23 c0 a1 a1 c0 02 00 38 01 19 02");
}

TEST_F(StatusTest, AnMx10LeavesAQuestionToAnotherNodeAlone) {
  become(u"MX10IP");
  open();
  station->receive(QByteArray::fromHex("04 00 00 00 08 20 86 C2 C0 A1 02 00"));
  clock.advance(10);
  EXPECT_TRUE(answers.isEmpty());
}

}  // namespace
}  // namespace lokari::sim
