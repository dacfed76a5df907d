#include "sim/can_frames.h"

#include <gtest/gtest.h>

#include "base/bytes.h"

namespace lokari::sim {
namespace {

QByteArray readFrame() {
  return bytes({0x5A, 0x32, 0x08, 0x16, 0x21, 0x86, 0xC2, 0xC0, 0xA1, 0x03, 0x00, 0x1D, 0x00, 0x00,
                0x00, 0x00, 0x00, 0x32, 0x5A});
}

void expectRead(const BusMessage& message) {
  EXPECT_EQ(message.group, 0x16);
  EXPECT_EQ(message.command, 8);
  EXPECT_EQ(message.mode, 1);
  EXPECT_EQ(message.node, 0x86C2);
  EXPECT_EQ(message.data, bytes({0xC0, 0xA1, 0x03, 0x00, 0x1D, 0x00, 0x00, 0x00}));
}

BusMessage announcement() {
  return {.group = 0x0A,
          .command = 0,
          .mode = 2,
          .node = 0xC0A1,
          .data = bytes({0x80, 0x01, 0x23, 0x45})};
}

TEST(KeyReader, TakesAFrameInAnyPortions) {
  const QByteArray whole = readFrame();
  for (qsizetype size = 0; size < whole.size(); ++size) {
    KeyReader reader;
    EXPECT_TRUE(reader.feed(whole.left(size)).isEmpty()) << size;
    const auto items = reader.feed(whole.mid(size));
    ASSERT_EQ(items.size(), 1) << size;
    expectRead(items[0].message);
  }
}

TEST(KeyReader, TellsTheWakeUpFromAFrame) {
  KeyReader reader;
  const auto items = reader.feed(bytes({0x5A, 0x32, 0x32, 0x5A}) + readFrame());
  ASSERT_EQ(items.size(), 2);
  EXPECT_TRUE(items[0].wakeUp);
  EXPECT_FALSE(items[1].wakeUp);
  expectRead(items[1].message);
}

TEST(KeyReader, PassesNoiseOver) {
  KeyReader reader;
  const auto items =
      reader.feed(bytes({0x00, 0x5A, 0x33, 0x5A, 0x32, 0xFF}) + readFrame() + bytes({0x17}));
  ASSERT_EQ(items.size(), 1);
  expectRead(items[0].message);
}

TEST(BusFrames, GoldenBytes) {
  EXPECT_EQ(keyFrame(announcement()), bytes({0x5A, 0x32, 0x04, 0x0A, 0x02, 0xC0, 0xA1, 0x80, 0x01,
                                             0x23, 0x45, 0x00, 0x00, 0x32, 0x5A}));
  EXPECT_EQ(ipDatagram(announcement()),
            bytes({0x04, 0x00, 0x00, 0x00, 0x0A, 0x02, 0xC0, 0xA1, 0x80, 0x01, 0x23, 0x45}));
}

TEST(BusFrames, ADatagramIsTakenByItsSize) {
  const QByteArray whole = bytes({0x08, 0x00, 0x00, 0x00, 0x16, 0x21, 0x86, 0xC2, 0xC0, 0xA1, 0x03,
                                  0x00, 0x1D, 0x00, 0x00, 0x00});
  const auto message = fromIpDatagram(whole);
  ASSERT_TRUE(message);
  expectRead(*message);
  for (qsizetype size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(fromIpDatagram(whole.left(size))) << size;
  }
  EXPECT_FALSE(fromIpDatagram(whole + '\x00'));
}

}  // namespace
}  // namespace lokari::sim
