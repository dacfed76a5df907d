#include "link/can_key_codec.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/bytes.h"

namespace lokari {
namespace {

CanMessage message(quint32 id, const std::vector<quint8>& data) {
  CanMessage made;
  made.ID = id;
  made.MSGTYPE = 2;
  for (const quint8 byte : data) made.DATA[made.LEN++] = byte;
  return made;
}

CanMessage logOn() {
  return message(0x0A2986C2, {0x86, 0xC2, 0x01, 0x00, 0x21, 0x00, 0x00, 0x00});
}

QByteArray logOnFrame() {
  return bytes({0x5A, 0x32, 0x08, 0x0A, 0x29, 0x86, 0xC2, 0x86, 0xC2, 0x01, 0x00, 0x21, 0x00, 0x00,
                0x00, 0x00, 0x00, 0x32, 0x5A});
}

QByteArray answerFrame() {
  return bytes({0x5A, 0x32, 0x09, 0x16, 0x23, 0xC0, 0xA1, 0xC0, 0xA1, 0x03,
                0x00, 0x1D, 0x00, 0x00, 0x00, 0x0E, 0x00, 0x00, 0x32, 0x5A});
}

void expectAnswer(const std::optional<CanMessage>& got) {
  ASSERT_TRUE(got);
  EXPECT_EQ(got->ID, 0x1623C0A1U);
  EXPECT_EQ(got->MSGTYPE, 2);
  EXPECT_EQ(got->LEN, 9);
  EXPECT_EQ(got->DATA[4], 0x1D);
  EXPECT_EQ(got->DATA[8], 0x0E);
}

std::optional<CanMessage> firstOf(const QByteArray& stream) {
  can_key::FrameReader reader;
  reader.feed(stream);
  return reader.next();
}

TEST(CanKeyFrame, GoldenBytes) {
  EXPECT_EQ(can_key::opening(), bytes({0x5A, 0x32, 0x32, 0x5A}));
  EXPECT_EQ(can_key::frame(logOn()), logOnFrame());
  EXPECT_EQ(can_key::frame(message(0x0A1986C2, {})),
            bytes({0x5A, 0x32, 0x00, 0x0A, 0x19, 0x86, 0xC2, 0x00, 0x00, 0x32, 0x5A}));
  EXPECT_EQ(
      can_key::frame(message(0x162586C2, {0xC0, 0xA1, 0x03, 0x00, 0x1D, 0x00, 0x00, 0x00, 0x06})),
      bytes({0x5A, 0x32, 0x09, 0x16, 0x25, 0x86, 0xC2, 0xC0, 0xA1, 0x03,
             0x00, 0x1D, 0x00, 0x00, 0x00, 0x06, 0x00, 0x00, 0x32, 0x5A}));
}

TEST(CanKeyFrame, RefusesMoreThan16DataBytes) {
  CanMessage long17 = logOn();
  long17.LEN = 17;
  EXPECT_FALSE(can_key::frame(long17));
  EXPECT_FALSE(can_key::datagram(long17));
}

TEST(CanKeyFrame, IsFoundBetweenNoise) {
  expectAnswer(firstOf(bytes({0x00, 0x5A, 0x5A, 0x32, 0x01}) + answerFrame()));
  expectAnswer(firstOf(bytes({0x5A}) + answerFrame() + bytes({0x17, 0x5A})));
}

TEST(CanKeyFrame, WaitsForItsLastByte) {
  const QByteArray whole = answerFrame();
  for (qsizetype size = 0; size < whole.size(); ++size) {
    can_key::FrameReader reader;
    reader.feed(whole.left(size));
    EXPECT_FALSE(reader.next()) << size;
    reader.feed(whole.mid(size));
    expectAnswer(reader.next());
    EXPECT_FALSE(reader.next());
  }
}

TEST(CanKeyFrame, TwoAtOnceComeOneAfterTheOther) {
  can_key::FrameReader reader;
  reader.feed(logOnFrame() + answerFrame());
  const auto first = reader.next();
  ASSERT_TRUE(first);
  EXPECT_EQ(first->ID, 0x0A2986C2U);
  expectAnswer(reader.next());
}

TEST(CanKeyFrame, TheKeysOwnWordsAreSkipped) {
  expectAnswer(firstOf(can_key::opening() + answerFrame()));
}

TEST(CanKeyFrame, ACutFrameDoesNotSwallowTheNextOne) {
  const QByteArray whole = answerFrame();
  for (qsizetype size = 0; size < whole.size(); ++size) {
    can_key::FrameReader reader;
    reader.feed(whole.left(size) + answerFrame() + answerFrame());
    expectAnswer(reader.next());
  }
}

TEST(CanKeyFrame, AWrongEndOrIdentifierIsNoFrame) {
  QByteArray wrongEnd = answerFrame();
  wrongEnd[wrongEnd.size() - 1] = '\x5B';
  EXPECT_FALSE(firstOf(wrongEnd));
  QByteArray wrongId = answerFrame();
  wrongId[3] = '\x20';
  EXPECT_FALSE(firstOf(wrongId));
}

TEST(CanKeyDatagram, GoldenBytes) {
  EXPECT_EQ(can_key::datagram(message(0x0A1986C2, {})),
            bytes({0x00, 0x00, 0x00, 0x00, 0x0A, 0x19, 0x86, 0xC2}));
  EXPECT_EQ(can_key::datagram(message(0x0A1D86C2, {})),
            bytes({0x00, 0x00, 0x00, 0x00, 0x0A, 0x1D, 0x86, 0xC2}));
  EXPECT_EQ(can_key::datagram(logOn()), bytes({0x08, 0x00, 0x00, 0x00, 0x0A, 0x29, 0x86, 0xC2, 0x86,
                                               0xC2, 0x01, 0x00, 0x21, 0x00, 0x00, 0x00}));
}

TEST(CanKeyDatagram, GivesItsMessage) {
  expectAnswer(can_key::fromDatagram(bytes({0x09, 0x00, 0x00, 0x00, 0x16, 0x23, 0xC0, 0xA1, 0xC0,
                                            0xA1, 0x03, 0x00, 0x1D, 0x00, 0x00, 0x00, 0x0E})));
}

TEST(CanKeyDatagram, IsRejectedWhenItsSizeIsNotThatOfItsData) {
  const QByteArray whole = bytes({0x09, 0x00, 0x00, 0x00, 0x16, 0x23, 0xC0, 0xA1, 0xC0, 0xA1, 0x03,
                                  0x00, 0x1D, 0x00, 0x00, 0x00, 0x0E});
  for (qsizetype size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(can_key::fromDatagram(whole.left(size))) << size;
  }
  EXPECT_FALSE(can_key::fromDatagram(whole + '\x00'));
  QByteArray notZero = whole;
  notZero[2] = '\x01';
  EXPECT_FALSE(can_key::fromDatagram(notZero));
  QByteArray wrongId = whole;
  wrongId[4] = '\x20';
  EXPECT_FALSE(can_key::fromDatagram(wrongId));
  QByteArray tooLong = bytes({0x11, 0x00, 0x00, 0x00, 0x16, 0x23, 0xC0, 0xA1});
  tooLong += QByteArray(17, '\x01');
  EXPECT_FALSE(can_key::fromDatagram(tooLong));
}

}  // namespace
}  // namespace lokari
