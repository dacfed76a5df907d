#include <gtest/gtest.h>

#include "sim/makers/xbus.h"

namespace lokari::sim::makers {
namespace {

TEST(MakersXBus, TheChecksumIsTheExclusiveOrOfTheBytes) {
  EXPECT_EQ(withXor(QByteArray::fromHex("2121")), QByteArray::fromHex("212100"));
  EXPECT_EQ(withXor(QByteArray::fromHex("F10A")), QByteArray::fromHex("F10AFB"));
  EXPECT_TRUE(endsInItsXor(QByteArray::fromHex("61 82 E3")));
  EXPECT_FALSE(endsInItsXor(QByteArray::fromHex("61 82 E2")));
  EXPECT_FALSE(endsInItsXor({}));
}

TEST(MakersXBus, AddressesLeaveTheMarkOfLongOnesOut) {
  EXPECT_EQ(xBusAddress(QByteArray::fromHex("E3F0C3E8"), 2), 1000);
  EXPECT_EQ(xBusAddress(QByteArray::fromHex("E3F00003"), 2), 3);
}

TEST(MakersXBus, TheLightIsTheHighestOfTheFirstGroup) {
  const FunctionGroup& first = *functionGroup(0x20);
  EXPECT_EQ(withGroup(0, first, 0x10), 0x01U);
  EXPECT_EQ(withGroup(0, first, 0x01), 0x02U);
  EXPECT_EQ(withGroup(0xFFFFFFFFU, first, 0x08), 0xFFFFFFF0U);
  EXPECT_EQ(groupBits(0x11, 0x20), 0x18);
}

TEST(MakersXBus, GroupsHaveTheirLowestFunctionInBit0) {
  EXPECT_EQ(withGroup(0, *functionGroup(0x21), 0x08), 1U << 8);
  EXPECT_EQ(withGroup(0, *functionGroup(0x22), 0x01), 1U << 9);
  EXPECT_EQ(withGroup(0, *functionGroup(0x23), 0x80), 1U << 20);
  EXPECT_EQ(withGroup(0, *functionGroup(0x28), 0x81), 1U << 21 | 1U << 28);
  EXPECT_EQ(withGroup(0, *functionGroup(0x29), 0x05), 1U << 29 | 1U << 31);
  EXPECT_EQ(groupBits(1U << 13, 0x23), 0x01);
  EXPECT_EQ(functionGroup(0x24), nullptr);
}

TEST(MakersXBus, MainTrackAccessesTellReadBitAndByteApart) {
  const auto write = mainTrackAccess(QByteArray::fromHex("E630C3E8EC0463"));
  ASSERT_TRUE(write);
  EXPECT_EQ(write->kind, MainTrackAccess::Kind::WriteByte);
  EXPECT_EQ(write->address, 1000);
  EXPECT_EQ(write->cv, 5);
  EXPECT_EQ(write->written(7), 0x63);
  const auto bit = mainTrackAccess(QByteArray::fromHex("E6300003E91D0B"));
  ASSERT_TRUE(bit);
  EXPECT_EQ(bit->cv, 256 + 0x1D + 1);
  EXPECT_EQ(bit->written(0x80), 0x88);
  EXPECT_EQ(mainTrackAccess(QByteArray::fromHex("E6300003E81DF3"))->written(0x88), 0x80);
  EXPECT_EQ(mainTrackAccess(QByteArray::fromHex("E6300003E71D00"))->cv, 3 * 256 + 0x1D + 1);
  EXPECT_FALSE(mainTrackAccess(QByteArray::fromHex("E6300003E01D00")));
  EXPECT_FALSE(mainTrackAccess(QByteArray::fromHex("E6310003EC1D00")));
}

}  // namespace
}  // namespace lokari::sim::makers
