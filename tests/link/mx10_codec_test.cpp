#include "link/mx10_codec.h"

#include <gtest/gtest.h>

#include <vector>

namespace lokari {
namespace {

std::vector<int> dataOf(const CanMessage& message) {
  return {message.DATA.begin(), message.DATA.begin() + message.LEN};
}

TEST(Mx10Messages, LogOn) {
  const CanMessage message = mx10::logOn();
  EXPECT_EQ(message.ID, 0x0A2986C2U);
  EXPECT_EQ(message.MSGTYPE, 2);
  EXPECT_EQ(dataOf(message), (std::vector<int>{0x86, 0xC2, 0x01, 0x00, 0x21, 0x00, 0x00, 0x00}));
}

TEST(Mx10Messages, TrackModes) {
  const CanMessage programming = mx10::toProgrammingTrack(qint16(0xC0A1 - 0x10000));
  EXPECT_EQ(programming.ID, 0x060186C2U);
  EXPECT_EQ(dataOf(programming), (std::vector<int>{0xC0, 0xA1, 0x01, 0x04}));
  const CanMessage normal = mx10::toNormal(0x1234);
  EXPECT_EQ(normal.ID, 0x060186C2U);
  EXPECT_EQ(dataOf(normal), (std::vector<int>{0x12, 0x34, 0x01, 0x00}));
}

TEST(Mx10Messages, ReadCv) {
  const auto message = mx10::readCv(0x1234, 0x04D2, 0x0101);
  ASSERT_TRUE(message);
  EXPECT_EQ(message->ID, 0x162186C2U);
  EXPECT_EQ(message->LEN, 8);
  EXPECT_EQ(dataOf(*message), (std::vector<int>{0x12, 0x34, 0xD2, 0x04, 0x01, 0x01, 0x00, 0x00}));
}

TEST(Mx10Messages, WriteCvIsNineBytesLong) {
  const auto message = mx10::writeCv(0x1234, 3, 29, 6);
  ASSERT_TRUE(message);
  EXPECT_EQ(message->ID, 0x162586C2U);
  EXPECT_EQ(message->LEN, 9);
  EXPECT_EQ(dataOf(*message),
            (std::vector<int>{0x12, 0x34, 0x03, 0x00, 0x1D, 0x00, 0x00, 0x00, 0x06}));
}

TEST(Mx10Messages, NoNumberIsCutToFitItsPlace) {
  EXPECT_FALSE(mx10::readCv(1, -1, 1));
  EXPECT_FALSE(mx10::readCv(1, 65536, 1));
  EXPECT_FALSE(mx10::readCv(1, 3, -1));
  EXPECT_FALSE(mx10::readCv(1, 3, 65536));
  EXPECT_FALSE(mx10::writeCv(1, 3, 1, 256));
  EXPECT_FALSE(mx10::writeCv(1, 3, 1, -1));
}

TEST(Mx10Answers, AnIdentifierGreaterByOneToThreeIsAccepted) {
  EXPECT_FALSE(mx10::answers(0x0A00C0A1, 0x0A0086C2));
  EXPECT_TRUE(mx10::answers(0x0A01C0A1, 0x0A0086C2));
  EXPECT_TRUE(mx10::answers(0x0A02C0A1, 0x0A0086C2));
  EXPECT_TRUE(mx10::answers(0x0A03C0A1, 0x0A0086C2));
  EXPECT_FALSE(mx10::answers(0x0A04C0A1, 0x0A0086C2));
  EXPECT_FALSE(mx10::answers(0x09FFC0A1, 0x0A0086C2));
  EXPECT_FALSE(mx10::answers(0, 0));
  EXPECT_TRUE(mx10::answers(0x00010000, 0));
}

TEST(Mx10Answers, SerialNumberHasItsHighByteFirst) {
  EXPECT_EQ(mx10::serialNumber(mx10::message(0x0A02C0A1, {0x80, 0x01, 0x02, 0x03})), 0x80010203U);
  EXPECT_EQ(mx10::serialNumber(mx10::message(0x0A02C0A1, {0x01})), 0x01000000U);
}

TEST(Mx10Answers, TheValueIsTheNinthDataByte) {
  EXPECT_EQ(mx10::cvValue(mx10::message(0x1623C0A1, {0, 0, 3, 0, 29, 0, 0, 0, 0xFE})), 0xFE);
  EXPECT_FALSE(mx10::cvValue(mx10::message(0x1623C0A1, {0, 0, 3, 0, 29, 0, 0, 0})));
}

}  // namespace
}  // namespace lokari
