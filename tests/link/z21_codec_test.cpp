#include "link/z21_codec.h"

#include <gtest/gtest.h>

#include "base/bytes.h"
#include "link/cv_result.h"

namespace lokari {
namespace {

std::string bytesOf(const std::optional<QString>& text) {
  return text ? hexDump(z21::toBytes(*text).value_or("?")).toStdString() : "none";
}

TEST(Z21Send, MakesOneByteOfEachPair) {
  EXPECT_EQ(z21::toBytes(u"07 00 40 00 21 81 A0"),
            bytes({0x07, 0x00, 0x40, 0x00, 0x21, 0x81, 0xA0}));
  EXPECT_EQ(z21::toBytes(u"0700"), bytes({0x07, 0x00}));
  EXPECT_EQ(z21::toBytes(u"04 00 10 00"), bytes({0x04, 0x00, 0x10, 0x00}));
  EXPECT_EQ(z21::toBytes(u"04 00 30 00"), bytes({0x04, 0x00, 0x30, 0x00}));
}

TEST(Z21Send, TakesTrailingBlanksAndNothing) {
  EXPECT_EQ(z21::toBytes(u"2C   "), bytes({0x2C}));
  EXPECT_EQ(z21::toBytes(u""), QByteArray());
  EXPECT_EQ(z21::toBytes(u"  "), QByteArray());
}

TEST(Z21Send, Takes65BytesAndRefuses66) {
  EXPECT_EQ(z21::toBytes(QString(130, u'A')), QByteArray(65, '\xAA'));
  EXPECT_FALSE(z21::toBytes(QString(132, u'A')));
}

TEST(Z21Send, RefusesWhatIsNoPairOfDigits) {
  EXPECT_FALSE(z21::toBytes(u"0G"));
  EXPECT_FALSE(z21::toBytes(u"0 7"));
}

TEST(Z21Xor, CombinesTheCharactersOfTheTextAndNotItsBytes) {
  EXPECT_EQ(z21::z21XOR(u"09 00 40 00 23 11 00 00"), u"2C ");
  EXPECT_EQ(z21::z21XOR(u""), u"00 ");
  EXPECT_EQ(z21::z21XOR(u"A"), u"41 ");
}

TEST(Z21Messages, ReadOnTheProgrammingTrack) {
  EXPECT_EQ(bytesOf(z21::readOnProgTrack(1)), "09 00 40 00 23 11 00 00 2C");
  EXPECT_EQ(bytesOf(z21::readOnProgTrack(29)), "09 00 40 00 23 11 00 1C 5E");
  EXPECT_EQ(bytesOf(z21::readOnProgTrack(256)), "09 00 40 00 23 11 00 FF 2C");
  EXPECT_EQ(bytesOf(z21::readOnProgTrack(257)), "09 00 40 00 23 11 01 00 2D");
  EXPECT_EQ(bytesOf(z21::readOnProgTrack(1024)), "09 00 40 00 23 11 03 FF 2F");
}

TEST(Z21Messages, WriteOnTheProgrammingTrack) {
  EXPECT_EQ(bytesOf(z21::writeOnProgTrack(1, 3)), "0A 00 40 00 24 12 00 00 03 73");
  EXPECT_EQ(bytesOf(z21::writeOnProgTrack(1024, 255)), "0A 00 40 00 24 12 03 FF FF 73");
}

TEST(Z21Messages, ReadOnTheMainTrack) {
  EXPECT_EQ(bytesOf(z21::readOnMain(3, 1)), "0C 00 40 00 E6 30 00 03 E4 00 00 75");
  EXPECT_EQ(bytesOf(z21::readOnMain(1234, 257)), "0C 00 40 00 E6 30 04 D2 E5 00 00 05");
  EXPECT_EQ(bytesOf(z21::readOnMain(3, 1024)), "0C 00 40 00 E6 30 00 03 E7 FF 00 76");
}

TEST(Z21Messages, WriteOnTheMainTrack) {
  EXPECT_EQ(bytesOf(z21::writeOnMain(3, 1, 7)), "0C 00 40 00 E6 30 00 03 EC 00 07 05");
  EXPECT_EQ(bytesOf(z21::writeOnMain(3, 1024, 255)), "0C 00 40 00 E6 30 00 03 EF FF FF 07");
}

TEST(Z21Messages, NoNumberIsCutToFitItsPlace) {
  EXPECT_FALSE(z21::readOnProgTrack(0));
  EXPECT_FALSE(z21::readOnProgTrack(-1));
  EXPECT_FALSE(z21::readOnProgTrack(65537));
  EXPECT_FALSE(z21::readOnMain(3, 1025));
  EXPECT_FALSE(z21::readOnMain(-1, 1));
  EXPECT_FALSE(z21::readOnMain(65536, 1));
  EXPECT_FALSE(z21::writeOnProgTrack(1, 256));
  EXPECT_FALSE(z21::writeOnProgTrack(1, -1));
  EXPECT_FALSE(z21::writeOnMain(3, 1025, 0));
  EXPECT_FALSE(z21::writeOnMain(3, 1, 256));
}

TEST(Z21Replies, TheNinthByteOfAResultIsTheValue) {
  const QByteArray result = bytes({0x0A, 0x00, 0x40, 0x00, 0x64, 0x14, 0x00, 0x1C, 0x0E, 0x62});
  EXPECT_EQ(z21::cvResultValue(result), 14);
  EXPECT_FALSE(z21::cvResultValue(result.left(8)));
  EXPECT_FALSE(z21::cvResultValue(bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x12, 0x73})));
  EXPECT_EQ(z21::cvResultHead(), result.left(6));
  EXPECT_EQ(z21::cvResultHead(29), result.left(8));
  EXPECT_EQ(z21::cvResultHead(257), bytes({0x0A, 0x00, 0x40, 0x00, 0x64, 0x14, 0x01, 0x00}));
}

TEST(Z21Replies, TellShortCircuitFromNoAcknowledge) {
  EXPECT_EQ(z21::refusalCode(bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x12, 0x73})),
            cv_result::kShortCircuit);
  EXPECT_EQ(z21::refusalCode(bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x13, 0x72})), cv_result::kNoAck);
  EXPECT_EQ(z21::refusalCode(bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x01, 0x60})), cv_result::kNoAck);
  EXPECT_FALSE(z21::refusalCode(bytes({0x07, 0x00, 0x40, 0x00, 0x62, 0x12, 0x70})));
  EXPECT_FALSE(z21::refusalCode(bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x12})));
}

TEST(Z21Replies, NewsOfTheTrackDoNotEndAnOperation) {
  EXPECT_TRUE(z21::endsCvOperation(bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x12, 0x73})));
  EXPECT_TRUE(z21::endsCvOperation(bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x13, 0x72})));
  for (const int news : {0x00, 0x01, 0x02}) {
    EXPECT_FALSE(z21::endsCvOperation(bytes({0x07, 0x00, 0x40, 0x00, 0x61, news, 0x61 ^ news})));
  }
  EXPECT_FALSE(z21::endsCvOperation(bytes({0x08, 0x00, 0x10, 0x00, 0x01, 0x02, 0x03, 0x04})));
}

TEST(Z21Replies, TheStatusIsFoundInItsAnswerAndInTheSystemsState) {
  EXPECT_EQ(z21::statusBits(QByteArray::fromHex("08 00 40 00 62 22 27 67")), 0x27);
  EXPECT_EQ(z21::statusBits(
                QByteArray::fromHex("14 00 84 00 00 00 00 00 00 00 19 00 50 46 00 00 02 00 00 3B")),
            0x02);
  EXPECT_FALSE(z21::statusBits(QByteArray::fromHex("07 00 40 00 61 01 60")));
}

TEST(Z21Replies, WhatStandsAndWhatGoesOnIsToldByNewsAndStatus) {
  struct Row {
    const char* message;
    bool off, noPower, on;
  };
  const Row rows[] = {
      {"07 00 40 00 61 00 61", true, true, false},
      {"07 00 40 00 61 08 69", true, true, false},
      {"07 00 40 00 81 00 81", true, false, false},
      {"07 00 40 00 61 01 60", false, false, true},
      {"07 00 40 00 61 02 63", false, false, false},
      {"08 00 40 00 62 22 00 40", false, false, true},
      {"08 00 40 00 62 22 01 41", true, false, false},
      {"08 00 40 00 62 22 02 42", true, true, false},
      {"08 00 40 00 62 22 04 44", true, true, false},
      {"08 00 40 00 62 22 20 60", false, false, false},
  };
  for (const Row& row : rows) {
    const QByteArray message = QByteArray::fromHex(row.message);
    EXPECT_EQ(z21::tellsOff(message), row.off) << row.message;
    EXPECT_EQ(z21::tellsNoPower(message), row.noPower) << row.message;
    EXPECT_EQ(z21::tellsOn(message), row.on) << row.message;
  }
}

TEST(Z21Replies, AnAwaitedMessageMayBeLongerThanItsHeadSays) {
  const QByteArray firmware = QByteArray::fromHex("09 00 40 00 F3 0A");
  EXPECT_TRUE(z21::answers(firmware, QByteArray::fromHex("09 00 40 00 F3 0A 01 43 BB")));
  EXPECT_TRUE(z21::answers(firmware, QByteArray::fromHex("0A 00 40 00 F3 0A 01 43 00 BB")));
  EXPECT_FALSE(z21::answers(firmware, QByteArray::fromHex("08 00 40 00 F3 0A 01 43")));
  EXPECT_FALSE(z21::answers(firmware, QByteArray::fromHex("09 00 40 00 63 21 30 12 60")));
  EXPECT_FALSE(z21::answers(z21::stateHead(), QByteArray::fromHex("09 00 40 00 43 00 0C 01 4E")))
      << "a state message is known by its length";
}

TEST(Z21Messages, TheChecksumOfTheBytesTakesThePlaceOfTheOther) {
  EXPECT_EQ(z21::withByteChecksum(QByteArray::fromHex("09 00 40 00 23 11 00 1C 5E")),
            QByteArray::fromHex("09 00 40 00 23 11 00 1C 2E"));
  EXPECT_EQ(z21::withByteChecksum(QByteArray::fromHex("06 00 40 00 80 0A")),
            QByteArray::fromHex("06 00 40 00 80 80"));
  const QByteArray subscribe = QByteArray::fromHex("08 00 50 00 01 00 00 00");
  EXPECT_EQ(z21::withByteChecksum(subscribe), subscribe) << "it has none";
}

TEST(Z21Datagram, IsTakenApartByTheLengthOfEachMessage) {
  z21::DatagramReader reader(bytes({0x04, 0x00, 0x10, 0x00,  //
                                    0x07, 0x00, 0x40, 0x00, 0x61, 0x01, 0x60}));
  EXPECT_EQ(reader.next(), bytes({0x04, 0x00, 0x10, 0x00}));
  EXPECT_EQ(reader.next(), bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x01, 0x60}));
  EXPECT_FALSE(reader.next());
}

TEST(Z21Datagram, EndsAtALengthOfNothingOrBeyondItsEnd) {
  z21::DatagramReader zero(bytes({0x00, 0x00, 0x40, 0x00}));
  EXPECT_FALSE(zero.next());
  EXPECT_FALSE(zero.next());
  z21::DatagramReader beyond(bytes({0x04, 0x00, 0x10, 0x00, 0x05, 0x00, 0x10, 0x00}));
  EXPECT_TRUE(beyond.next());
  EXPECT_FALSE(beyond.next());
  z21::DatagramReader empty{QByteArray()};
  EXPECT_FALSE(empty.next());
}

}  // namespace
}  // namespace lokari
