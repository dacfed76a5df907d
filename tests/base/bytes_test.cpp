#include "base/bytes.h"

#include <gtest/gtest.h>

#include <QString>

namespace lokari {
namespace {

TEST(ByteAt, NeverReadsBeyondTheEnd) {
  const QByteArray data = bytes({0x00, 0xFF});
  EXPECT_EQ(byteAt(data, 0), 0);
  EXPECT_EQ(byteAt(data, 1), 255);
  EXPECT_EQ(byteAt(data, 2), -1);
  EXPECT_EQ(byteAt(data, -1), -1);
}

TEST(Bytes, TakeANumberApart) {
  EXPECT_EQ(byteLow(0x12345678), 0x78);
  EXPECT_EQ(byteSecond(0x12345678), 0x56);
  EXPECT_EQ(wordLow(0x12345678), 0x5678);
  EXPECT_EQ(wordLow(0x0A0086C2), static_cast<qint16>(0x86C2));
  EXPECT_EQ(wordHigh(0x12345678), 0x1234);
  EXPECT_EQ(wordHigh(-1), -1);
  EXPECT_EQ(byteLow(-1), 0xFF);
}

TEST(HexDump, ShowsTwoDigitsAByte) {
  EXPECT_EQ(hexDump(bytes({0x01, 0xA0})), QStringLiteral("01 A0"));
  EXPECT_EQ(hexDump({}), QString());
}

}  // namespace
}  // namespace lokari
