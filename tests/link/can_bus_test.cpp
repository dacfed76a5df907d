// Drivers 1 to 5 on the bus library's virtual interface, in real time: a second device on the same
// interface is the station.
#include "link/can_bus.h"

#include <gtest/gtest.h>

#include <QCanBus>
#include <QTcpServer>

#include "base/qt_clock.h"
#include "link/can_code.h"
#include "link/link_error.h"
#include "link/system_can.h"
#include "support/memory_line.h"
#include "support/memory_socket.h"

namespace lokari {
namespace {

constexpr Millis kPatience = 20'000;
constexpr quint32 kHello = 0x7FF;

/// A port of this process, so that no other one is on its bus. The bus library serves one port in a
/// process.
QString privateBus() {
  static const quint16 kPort = [] {
    QTcpServer finder;
    EXPECT_TRUE(finder.listen(QHostAddress::LocalHost));
    return finder.serverPort();
  }();
  return QStringLiteral("tcp://127.0.0.1:%1/can0").arg(kPort);
}

class CanBusTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(bus_.open(5, 0x031C), 0);
    station_.reset(QCanBus::instance()->createDevice(QStringLiteral("virtualcan"), name_));
    ASSERT_TRUE(station_);
    ASSERT_TRUE(station_->connectDevice());
    // The bus takes its members in at its leisure; what is sent before is lost.
    const auto reachesProgram = [this] {
      CanMessage message;
      station_->writeFrame(QCanBusFrame(kHello, QByteArray()));
      return bus_.read(message) == 0;
    };
    ASSERT_TRUE(clock_.waitUntil(reachesProgram, deadline()));
  }

  void TearDown() override {
    if (station_) station_->disconnectDevice();
  }

  Millis deadline() const { return clock_.now() + kPatience; }

  /// Takes the next message that the program can read; hellos that were late are passed over.
  int read(CanMessage& message) {
    int code = bus_.read(message);
    while (code == 0 && message.ID == kHello) code = bus_.read(message);
    return code;
  }

  /// Waits for it.
  CanMessage next() {
    CanMessage message;
    EXPECT_TRUE(clock_.waitUntil([&] { return read(message) == 0; }, deadline()));
    return message;
  }

  QString name_ = privateBus();
  QtClock clock_;
  CanBus bus_{{{4, QStringLiteral("virtualcan"), QStringLiteral("none")},
               {5, QStringLiteral("nosuchplugin"), QStringLiteral("can0")},
               {5, QStringLiteral("virtualcan"), name_}},
              clock_};
  std::unique_ptr<QCanBusDevice> station_;
};

TEST_F(CanBusTest, SendsALongIdentifierWithItsData) {
  CanMessage message{.ID = 0x0A2986C2, .MSGTYPE = 2, .LEN = 3};
  message.DATA = {0x86, 0xC2, 0x01};
  EXPECT_EQ(bus_.write(message), 0);
  ASSERT_TRUE(clock_.waitUntil([&] { return station_->framesAvailable() > 0; }, deadline()));
  const QCanBusFrame frame = station_->readFrame();
  EXPECT_EQ(frame.frameId(), 0x0A2986C2U);
  EXPECT_TRUE(frame.hasExtendedFrameFormat());
  EXPECT_EQ(frame.payload(), QByteArray("\x86\xC2\x01"));
}

TEST_F(CanBusTest, DeliversMessagesInTheirOrder) {
  station_->writeFrame(QCanBusFrame(0x1623C0A1, QByteArray("\x01\x02\x03\x04\x05\x06\x07\x08")));
  station_->writeFrame(QCanBusFrame(0x123, QByteArray("\x09")));
  const CanMessage first = next();
  EXPECT_EQ(first.ID, 0x1623C0A1U);
  EXPECT_EQ(first.MSGTYPE, 2);
  EXPECT_EQ(first.LEN, 8);
  EXPECT_EQ(first.DATA[7], 8);
  EXPECT_EQ(first.DATA[8], 0);
  const CanMessage second = next();
  EXPECT_EQ(second.ID, 0x123U);
  EXPECT_EQ(second.MSGTYPE, 0);
  EXPECT_EQ(second.LEN, 1);
}

TEST_F(CanBusTest, HasNothingToReadWhenNothingCame) {
  CanMessage message;
  EXPECT_EQ(read(message), can_code::kNoMessage);
}

TEST_F(CanBusTest, RefusesMoreThan8Bytes) {
  EXPECT_EQ(bus_.write({.ID = 0x162586C2, .MSGTYPE = 2, .LEN = 9}), can_code::kTooLong);
}

TEST_F(CanBusTest, AClosedBusGivesACode) {
  EXPECT_EQ(bus_.close(), 0);
  CanMessage message;
  EXPECT_EQ(bus_.read(message), can_code::kNotOpen);
  EXPECT_EQ(bus_.write({.ID = 0x1, .MSGTYPE = 2}), can_code::kNotOpen);
}

TEST_F(CanBusTest, TheInterfacesOfOtherDriversAreLeftAlone) {
  EXPECT_TRUE(bus_.isPresent(5));
  EXPECT_FALSE(bus_.isPresent(1));
  EXPECT_EQ(bus_.open(1, 0x031C), can_code::kNoDevice);
}

TEST(CanBusRate, FollowsTheBitTimingRegisters) {
  EXPECT_EQ(bitRateOf(0x031C), 125'000);
  EXPECT_EQ(bitRateOf(0x0014), 1'000'000);
  EXPECT_EQ(bitRateOf(0x001C), 500'000);
}

TEST(SystemCan, KnowsItsDrivers) {
  test::VirtualClock clock;
  test::MemoryLine line(clock);
  test::MemorySocket socket(clock);
  const SystemCan can(clock, line, socket, {{2, QStringLiteral("virtualcan"), {}}});
  EXPECT_FALSE(can.isPresent(0));
  EXPECT_FALSE(can.isPresent(1));
  EXPECT_TRUE(can.isPresent(2));
  for (const int key : {6, 7, 8, 9}) EXPECT_TRUE(can.isPresent(key));
  EXPECT_FALSE(can.isPresent(10));
}

TEST(SystemCan, TakesTheOffsetOffTheKeysPort) {
  test::VirtualClock clock;
  test::MemoryLine line(clock);
  test::MemorySocket socket(clock);
  SystemCan can(clock, line, socket, {});
  for (const auto& [driver, p1] : {std::pair{6, 3}, {7, 3}, {8, 23}, {9, 211}}) {
    EXPECT_EQ(can.open({.driver = driver, .btr = 0x031C, .p1 = qint16(p1), .p2 = 8}), 0);
    EXPECT_EQ(line.opened.comPort, 3);
    EXPECT_EQ(can.close(), 0);
    EXPECT_FALSE(line.isOpen());
  }
}

TEST(SystemCan, OnlyTheNinthDriverHasAPlaceForAnAddress) {
  test::VirtualClock clock;
  test::MemoryLine line(clock);
  test::MemorySocket socket(clock);
  SystemCan can(clock, line, socket, {});
  EXPECT_EQ(can.open({.driver = 8, .btr = 0x031C, .p1 = 20, .p2 = 8}), can_code::kBadAddress);
  EXPECT_EQ(can.open({.driver = 9, .btr = 0, .p1 = 208, .p2 = 0}), can_code::kBadAddress);
  EXPECT_EQ(can.open({.driver = 9, .btr = 1, .p1 = 207, .p2 = 1}), can_code::kBadAddress);
  EXPECT_EQ(socket.state(), 0);
  EXPECT_EQ(can.open({.driver = 9, .btr = 0x7F00, .p1 = 208, .p2 = 1}), 0);
  EXPECT_EQ(socket.openedHost, QStringLiteral("127.0.0.1"));
}

TEST(SystemCan, WithNothingOpenGivesACode) {
  test::VirtualClock clock;
  test::MemoryLine line(clock);
  test::MemorySocket socket(clock);
  SystemCan can(clock, line, socket, {});
  CanMessage message;
  EXPECT_EQ(can.read(message), can_code::kNotOpen);
  EXPECT_EQ(can.write(message), can_code::kNotOpen);
  EXPECT_EQ(can.close(), can_code::kNotOpen);
  EXPECT_EQ(can.open({.driver = 3}), can_code::kNoDevice);
}

}  // namespace
}  // namespace lokari
