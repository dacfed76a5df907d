// The key on its serial line and in IP mode, by strict scripts in virtual time.
#include <gtest/gtest.h>

#include "base/bytes.h"
#include "link/can_code.h"
#include "link/can_key_ip.h"
#include "link/can_key_serial.h"
#include "link/link_error.h"
#include "support/scripted_line.h"
#include "support/scripted_socket.h"

namespace lokari {
namespace {

const QByteArray kWakeUp = bytes({0x5A, 0x32, 0x32, 0x5A});
const QByteArray kAnswer =
    bytes({0x5A, 0x32, 0x02, 0x16, 0x23, 0xC0, 0xA1, 0x01, 0x02, 0x00, 0x00, 0x32, 0x5A});

class CanKeySerialTest : public ::testing::Test {
 protected:
  Millis timeToOpen() {
    const Millis start = clock.now();
    EXPECT_EQ(key.open(3, 512000), 0);
    return clock.now() - start;
  }

  test::VirtualClock clock;
  test::ScriptedLine line{clock};
  CanKeySerial key{line, clock};
};

TEST_F(CanKeySerialTest, IsWokenOnceWhenItAnswers) {
  line.expect(kWakeUp).answer(kWakeUp, 20);
  EXPECT_EQ(timeToOpen(), 20);
  EXPECT_EQ(line.opened.comPort, 3);
  EXPECT_EQ(line.opened.baudrate, 512000);
}

TEST_F(CanKeySerialTest, IsWokenUpToThreeTimes) {
  line.expect(kWakeUp);
  line.expect(kWakeUp);
  line.expect(kWakeUp);
  EXPECT_EQ(timeToOpen(), 1500);
  EXPECT_TRUE(line.isOpen());
}

TEST_F(CanKeySerialTest, MessagesAreTakenOutOfTheStream) {
  line.expect(kWakeUp).answer(kWakeUp + kAnswer.left(5), 20).answer(kAnswer.mid(5), 40);
  timeToOpen();
  CanMessage message;
  EXPECT_EQ(key.read(message), can_code::kNoMessage);
  clock.advance(50);
  EXPECT_EQ(key.read(message), 0);
  EXPECT_EQ(message.ID, 0x1623C0A1U);
  EXPECT_EQ(message.LEN, 2);
  EXPECT_EQ(key.read(message), can_code::kNoMessage);
}

TEST_F(CanKeySerialTest, WhatWasLeftOverIsForgottenAtTheNextOpening) {
  line.expect(kWakeUp).answer(kAnswer.left(12), 20);
  timeToOpen();
  CanMessage message;
  EXPECT_EQ(key.read(message), can_code::kNoMessage);
  EXPECT_EQ(key.close(), 0);
  EXPECT_FALSE(line.isOpen());
  line.expect(kWakeUp).answer(kAnswer.mid(12), 20);
  timeToOpen();
  EXPECT_EQ(key.read(message), can_code::kNoMessage);
}

TEST_F(CanKeySerialTest, WritesFrames) {
  line.expect(kWakeUp).answer(kWakeUp);
  timeToOpen();
  line.expect(bytes({0x5A, 0x32, 0x01, 0x06, 0x01, 0x86, 0xC2, 0x77, 0x00, 0x00, 0x32, 0x5A}));
  EXPECT_EQ(key.write({.ID = 0x060186C2, .MSGTYPE = 2, .LEN = 1, .DATA = {0x77}}), 0);
  EXPECT_EQ(key.write({.ID = 0x060186C2, .MSGTYPE = 2, .LEN = 17}), can_code::kTooLong);
}

TEST_F(CanKeySerialTest, ThatIsNotThereGivesACodeAndSaysWhy) {
  line.failsToOpen = true;
  EXPECT_EQ(key.open(3, 512000), can_code::kNoDevice);
  EXPECT_EQ(key.fault(), "Kein Gerät!");
}

TEST_F(CanKeySerialTest, ThatVanishesWhileBeingWokenGivesACode) {
  line.expect(kWakeUp).then([&] { line.vanish(); }, 50);
  EXPECT_EQ(key.open(3, 512000), can_code::kNoDevice);
}

TEST_F(CanKeySerialTest, ThatVanishesLaterIsNoticed) {
  line.expect(kWakeUp).answer(kWakeUp);
  timeToOpen();
  line.vanish();
  CanMessage message;
  EXPECT_EQ(key.write({.ID = 0x060186C2, .MSGTYPE = 2}), can_code::kWriteFailed);
  EXPECT_THROW(key.read(message), LinkError);
  EXPECT_EQ(key.close(), 0);
}

class CanKeyIpTest : public ::testing::Test {
 protected:
  const QByteArray opening = bytes({0x00, 0x00, 0x00, 0x00, 0x0A, 0x19, 0x86, 0xC2});
  const QByteArray closing = bytes({0x00, 0x00, 0x00, 0x00, 0x0A, 0x1D, 0x86, 0xC2});
  const QByteArray answer = bytes({0x02, 0x00, 0x00, 0x00, 0x16, 0x23, 0xC0, 0xA1, 0x01, 0x02});
  const QString address = QStringLiteral("192.168.0.111");

  test::VirtualClock clock;
  test::ScriptedSocket socket{clock};
  CanKeyIp key{socket, clock};
};

TEST_F(CanKeyIpTest, TellsTheStationWhenItOpensAndCloses) {
  socket.expect(opening);
  EXPECT_EQ(key.open(address), 0);
  EXPECT_EQ(socket.openedHost, address);
  socket.expect(closing);
  EXPECT_EQ(key.close(), 0);
  EXPECT_EQ(socket.state(), 0);
  EXPECT_EQ(key.close(), 0);
}

TEST_F(CanKeyIpTest, IsKeptAliveEvery20SecondsOfSilence) {
  socket.expect(opening);
  EXPECT_EQ(key.open(address), 0);
  clock.advance(19'000);
  socket.expect(bytes({0x00, 0x00, 0x00, 0x00, 0x06, 0x01, 0x86, 0xC2}));
  EXPECT_EQ(key.write({.ID = 0x060186C2, .MSGTYPE = 2}), 0);
  clock.advance(19'999);
  socket.expect(opening);
  clock.advance(1);
  socket.expect(opening);
  clock.advance(20'000);
  socket.expect(closing);
  key.close();
  clock.advance(100'000);
}

TEST_F(CanKeyIpTest, IsKeptAliveAgainAfterTheNetworkWasDown) {
  socket.expect(opening);
  EXPECT_EQ(key.open(address), 0);
  socket.close();
  clock.advance(50'000);
  socket.open(address, 14520, 14521);
  socket.expect(opening);
  clock.advance(20'000);
  socket.expect(closing);
}

TEST_F(CanKeyIpTest, MessagesAreQueuedAndOthersDropped) {
  socket.expect(opening);
  EXPECT_EQ(key.open(address), 0);
  socket.arrive(answer.left(9));
  socket.arrive(answer);
  socket.arrive(answer + answer);
  CanMessage message;
  EXPECT_EQ(key.read(message), 0);
  EXPECT_EQ(message.ID, 0x1623C0A1U);
  EXPECT_EQ(key.read(message), can_code::kNoMessage);
  socket.expect(closing);
}

TEST_F(CanKeyIpTest, KeepsTheLastThousandMessages) {
  socket.expect(opening);
  EXPECT_EQ(key.open(address), 0);
  for (int i = 0; i < 1500; ++i) {
    socket.arrive(bytes({0x02, 0x00, 0x00, 0x00, 0x16, 0x23, 0xC0, 0xA1, i / 256, i % 256}));
  }
  CanMessage message;
  int read = 0;
  EXPECT_EQ(key.read(message), 0);
  EXPECT_EQ(message.DATA[0] * 256 + message.DATA[1], 500);
  for (; key.read(message) == 0; ++read) {
  }
  EXPECT_EQ(read, 999);
  socket.expect(closing);
}

TEST_F(CanKeyIpTest, WhatKeepsTheSocketShutIsToldAtOnce) {
  socket.stateAfterOpen = 0;
  socket.faultAfterOpen = QStringLiteral("Der UDP-Port 14521 ist belegt!");
  EXPECT_EQ(key.open(address), can_code::kNoDevice);
  EXPECT_EQ(key.fault(), socket.faultAfterOpen);
  EXPECT_EQ(clock.now(), 0);
}

TEST_F(CanKeyIpTest, ARefusalCountsForWhatWasSentLast) {
  socket.expect(opening);
  EXPECT_EQ(key.open(address), 0);
  EXPECT_FALSE(key.isRefused());
  socket.refuse();
  EXPECT_TRUE(key.isRefused());
  socket.expect(bytes({0x00, 0x00, 0x00, 0x00, 0x06, 0x01, 0x86, 0xC2}));
  EXPECT_EQ(key.write({.ID = 0x060186C2, .MSGTYPE = 2}), 0);
  EXPECT_FALSE(key.isRefused());
  socket.expect(closing);
}

TEST_F(CanKeyIpTest, ASocketThatDoesNotComeUpGivesACode) {
  socket.stateAfterOpen = 0;
  EXPECT_EQ(key.open(address), can_code::kNoDevice);
  EXPECT_EQ(clock.now(), 2000);
}

}  // namespace
}  // namespace lokari
