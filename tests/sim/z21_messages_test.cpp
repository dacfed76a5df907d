#include "sim/z21_messages.h"

#include <gtest/gtest.h>

#include "base/bytes.h"

namespace lokari::sim {
namespace {

TEST(Z21Messages, TakesADatagramApart) {
  const QList<Z21Message> messages =
      splitZ21Datagram(bytes({0x04, 0x00, 0x10, 0x00, 0x07, 0x00, 0x40, 0x00, 0x21, 0x81, 0xA0}));
  ASSERT_EQ(messages.size(), 2);
  EXPECT_EQ(messages[0].kind, 0x10);
  EXPECT_EQ(messages[0].data, QByteArray());
  EXPECT_EQ(messages[1].kind, 0x40);
  EXPECT_EQ(messages[1].data, bytes({0x21, 0x81}));
}

TEST(Z21Messages, StopsAtABrokenOne) {
  EXPECT_TRUE(splitZ21Datagram({}).isEmpty());
  EXPECT_TRUE(splitZ21Datagram(bytes({0x00, 0x00, 0x00, 0x00})).isEmpty());
  EXPECT_TRUE(splitZ21Datagram(bytes({0x03, 0x00, 0x10, 0x00})).isEmpty());
  EXPECT_TRUE(splitZ21Datagram(bytes({0x05, 0x00, 0x10, 0x00})).isEmpty());
  EXPECT_TRUE(splitZ21Datagram(bytes({0x04, 0x00, 0x40, 0x00})).isEmpty());
  EXPECT_TRUE(splitZ21Datagram(bytes({0x07, 0x00, 0x40, 0x00, 0x21, 0x81, 0xA1})).isEmpty());
}

TEST(Z21Messages, TakesTheChecksumOfTheText) {
  const QList<Z21Message> messages =
      splitZ21Datagram(bytes({0x09, 0x00, 0x40, 0x00, 0x23, 0x11, 0x00, 0x00, 0x2C}));
  ASSERT_EQ(messages.size(), 1);
  EXPECT_EQ(messages[0].data, bytes({0x23, 0x11, 0x00, 0x00}));
}

TEST(Z21Messages, AnswersCarryLengthAndChecksum) {
  EXPECT_EQ(z21Bytes({0x40, bytes({0x61, 0x12})}),
            bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x12, 0x73}));
  EXPECT_EQ(z21Bytes({0x10, bytes({0x40, 0xE2, 0x01, 0x00})}),
            bytes({0x08, 0x00, 0x10, 0x00, 0x40, 0xE2, 0x01, 0x00}));
}

TEST(Z21Messages, CvCommandsOfTheProgrammingTrack) {
  const auto read = z21CvCommand(bytes({0x23, 0x11, 0x03, 0xFF}));
  ASSERT_TRUE(read);
  EXPECT_FALSE(read->main);
  EXPECT_FALSE(read->write);
  EXPECT_EQ(read->cv, 1024);
  const auto write = z21CvCommand(bytes({0x24, 0x12, 0x00, 0x1C, 0x06}));
  ASSERT_TRUE(write);
  EXPECT_TRUE(write->write);
  EXPECT_EQ(write->cv, 29);
  EXPECT_EQ(write->value, 6);
}

TEST(Z21Messages, CvCommandsOfTheMainTrack) {
  const auto read = z21CvCommand(bytes({0xE6, 0x30, 0x04, 0xD2, 0xE5, 0x00, 0x00}));
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->main);
  EXPECT_FALSE(read->write);
  EXPECT_EQ(read->address, 1234);
  EXPECT_EQ(read->cv, 257);
  const auto write = z21CvCommand(bytes({0xE6, 0x30, 0xC4, 0xD2, 0xEF, 0xFF, 0x63}));
  ASSERT_TRUE(write);
  EXPECT_TRUE(write->write);
  EXPECT_EQ(write->address, 1234);
  EXPECT_EQ(write->cv, 1024);
  EXPECT_EQ(write->value, 99);
}

TEST(Z21Messages, OtherCommandsAreNone) {
  EXPECT_FALSE(z21CvCommand({}));
  EXPECT_FALSE(z21CvCommand(bytes({0x23, 0x11, 0x00})));
  EXPECT_FALSE(z21CvCommand(bytes({0x24, 0x12, 0x00, 0x00})));
  EXPECT_FALSE(z21CvCommand(bytes({0xE6, 0x30, 0x00, 0x03, 0xE8, 0x00, 0x00})));
  EXPECT_FALSE(z21CvCommand(bytes({0xE6, 0x31, 0x00, 0x03, 0xE4, 0x00, 0x00})));
  EXPECT_FALSE(z21CvCommand(bytes({0xE6, 0x30, 0x00, 0x03, 0xE4, 0x00})));
}

}  // namespace
}  // namespace lokari::sim
