#include "link/mod_can.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "link/can_log.h"
#include "link/can_message_text.h"
#include "support/memory_can.h"
#include "support/virtual_clock.h"

namespace lokari {
namespace {

const KeySettings kKey{.ipAddr = QStringLiteral("192.168.000.111"), .baudrate = 115200};

struct Numbering {
  int asked;
  int used;
  int p1;
};

class ModCanNumbering : public ::testing::TestWithParam<Numbering> {};

TEST_P(ModCanNumbering, OpensTheDriverWithItsArguments) {
  test::MemoryCan driver;
  ModCan can(driver, nullptr);
  EXPECT_EQ(can.canOpen(GetParam().asked, 3, 8, 0x031C, kKey), 0);
  EXPECT_EQ(can.canDriver(), GetParam().used);
  ASSERT_EQ(driver.openCalls.size(), 1);
  EXPECT_EQ(driver.openCalls[0].driver, GetParam().used);
  EXPECT_EQ(driver.openCalls[0].btr, 0x031C);
  EXPECT_EQ(driver.openCalls[0].p1, GetParam().p1);
  EXPECT_EQ(driver.openCalls[0].p2, 8);
  EXPECT_EQ(driver.openCalls[0].baudrate, 115200);
}

INSTANTIATE_TEST_SUITE_P(AllNumbers, ModCanNumbering,
                         ::testing::Values(Numbering{1, 1, 3}, Numbering{2, 2, 3},
                                           Numbering{3, 3, 3}, Numbering{4, 4, 3},
                                           Numbering{5, 5, 3}, Numbering{6, 7, 3},
                                           Numbering{7, 9, 211}, Numbering{8, 9, 211}));

class ModCanTest : public ::testing::Test {
 protected:
  ModCanTest() { log_.begin(); }

  QByteArray logText() const {
    QFile file(path_);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("CAN.log"));
  test::VirtualClock clock_;
  test::MemoryCan driver_;
  CanLog log_{path_, clock_};
  ModCan can_{driver_, &log_};
};

TEST_F(ModCanTest, WithoutTheKeysSecondGenerationTheFirstOneIsTaken) {
  driver_.present = {1, 2, 3, 4, 5, 6, 8};
  EXPECT_EQ(can_.canOpen(7, 3, 8, 0x031C, kKey), 0);
  EXPECT_EQ(driver_.openCalls[0].driver, 8);
  EXPECT_EQ(driver_.openCalls[0].p1, 23);
  can_.canClose();
  EXPECT_EQ(can_.canOpen(6, 3, 8, 0x031C, kKey), 0);
  EXPECT_EQ(driver_.openCalls[1].driver, 6);
  EXPECT_EQ(driver_.openCalls[1].p1, 3);
}

TEST_F(ModCanTest, ADriverOutside1To8IsAnErrorAndNoneIsCalled) {
  EXPECT_EQ(can_.canOpen(0, 3, 8, 0x031C, kKey), 0x1000);
  EXPECT_EQ(can_.canOpen(9, 3, 8, 0x031C, kKey), 0x1000);
  EXPECT_EQ(can_.canOpen(-1, 3, 8, 0x031C, kKey), 0x1000);
  EXPECT_TRUE(driver_.openCalls.isEmpty());
  EXPECT_EQ(driver_.closeCalls, 0);
}

TEST_F(ModCanTest, TheIpAddressIsPackedIntoTwoSignedNumbers) {
  EXPECT_EQ(can_.canOpen(7, 0, 8, 0x031C, kKey), 0);
  EXPECT_EQ(driver_.openCalls[0].btr, -16216);
  EXPECT_EQ(driver_.openCalls[0].p2, 111);
  EXPECT_EQ(driver_.openCalls[0].p1, 208);
}

TEST_F(ModCanTest, AnAddressThatIsNoneIsPackedAsNothing) {
  for (const char* text : {"", "0", "1.2.3", "1.2.3.256", "1.2.3.x", "1.2.3.4.5"}) {
    const PackedAddress packed = packAddress(QString::fromLatin1(text));
    EXPECT_EQ(packed.btr, 0) << text;
    EXPECT_EQ(packed.p2, 0) << text;
  }
  EXPECT_EQ(packAddress(QStringLiteral("127.0.0.1")).btr, 0x7F00);
  EXPECT_EQ(packAddress(QStringLiteral("010.011.128.255")).btr, 0x0A0B);
  EXPECT_EQ(packAddress(QStringLiteral("010.011.128.255")).p2, qint16(0x80FF - 0x10000));
}

TEST_F(ModCanTest, CountsItsUsersAndClosesAfterTheLastOne) {
  EXPECT_EQ(can_.canOpen(7, 3, 8, 0x031C, kKey), 0);
  EXPECT_EQ(can_.canOpen(7, 3, 8, 0x031C, kKey), -1);
  EXPECT_EQ(driver_.openCalls.size(), 1);
  EXPECT_EQ(can_.canClose(), 0);
  EXPECT_TRUE(driver_.isOpen);
  EXPECT_EQ(can_.canClose(), 0);
  EXPECT_FALSE(driver_.isOpen);
  EXPECT_EQ(driver_.closeCalls, 1);
  EXPECT_EQ(can_.canOpen(7, 3, 8, 0x031C, kKey), 0);
}

TEST_F(ModCanTest, AnErrorCodeOf10HexadecimalCountsAsSuccess) {
  driver_.openResult = 0x10;
  EXPECT_EQ(can_.canOpen(7, 3, 8, 0x031C, kKey), 0);
  EXPECT_TRUE(can_.isOpen());
  EXPECT_EQ(logText(), "10:00:00.000 CAN port opened.\r\n");
}

TEST_F(ModCanTest, AFailedOpenClosesTheDriverAndGivesItsCode) {
  driver_.openResult = 0x200;
  EXPECT_EQ(can_.canOpen(7, 3, 8, 0x031C, kKey), 0x200);
  EXPECT_FALSE(can_.isOpen());
  EXPECT_EQ(driver_.closeCalls, 1);
  EXPECT_EQ(logText(),
            "10:00:00.000 CAN port closed.\r\n"
            "10:00:00.000 CAN port open failed!\r\n");
}

TEST_F(ModCanTest, TheLogHasEveryMessageOfBothDirectionsAndTheStatusLines) {
  can_.canOpen(7, 3, 8, 0x031C, kKey);
  clock_.advance(1'250);
  CanMessage logOn{.ID = 0x0A2986C2, .MSGTYPE = 2, .LEN = 8};
  logOn.DATA = {0x86, 0xC2, 0x01, 0x00, 0x21, 0x00, 0x00, 0x00};
  can_.canWrite(logOn);
  CanMessage got;
  EXPECT_NE(can_.canRead(got), 0);
  driver_.arrive({.ID = 0x0A02C0A1, .MSGTYPE = 2, .LEN = 2, .DATA = {0x80, 0x01}});
  clock_.advance(60'000);
  EXPECT_EQ(can_.canRead(got), 0);
  can_.canClose();
  EXPECT_EQ(logText(),
            "10:00:00.000 CAN port opened.\r\n"
            "10:00:01.250 > 0A 2 29 86C2 Len: 8 Data: 86 C2 01 00 21 00 00 00\r\n"
            "10:01:01.250 < 0A 2 02 C0A1 Len: 2 Data: 80 01\r\n"
            "10:01:01.250 CAN port closed.\r\n");
}

TEST_F(ModCanTest, EachLineCanBeReadWhileTheLogIsOpen) {
  can_.canOpen(7, 3, 8, 0x031C, kKey);
  EXPECT_EQ(logText(), "10:00:00.000 CAN port opened.\r\n");
  can_.canClose();
  EXPECT_TRUE(logText().endsWith("10:00:00.000 CAN port closed.\r\n"));
}

TEST_F(ModCanTest, ADriverLeftOpenIsClosedWithItsOwner) {
  {
    ModCan other(driver_, nullptr);
    other.canOpen(7, 3, 8, 0x031C, kKey);
  }
  EXPECT_FALSE(driver_.isOpen);
}

TEST(CanLogFile, ReplacesTheOneOfTheLastRun) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("CAN.log"));
  const test::VirtualClock clock;
  {
    CanLog old(path, clock);
    old.begin();
    old.write(QStringLiteral("alt"));
  }
  CanLog log(path, clock);
  log.begin();
  log.write(QStringLiteral("neu"));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "10:00:00.000 neu\r\n");
}

TEST(CanLogFile, IsNotThereBeforeItBegins) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("CAN.log"));
  const test::VirtualClock clock;
  CanLog log(path, clock);
  log.write(QStringLiteral("nichts"));
  EXPECT_FALSE(QFile::exists(path));
}

TEST(CanLogFile, ThatCannotBeCreatedIsNotWritten) {
  const QTemporaryDir folder;
  const test::VirtualClock clock;
  CanLog log(folder.filePath(QStringLiteral("none/CAN.log")), clock);
  log.begin();
  EXPECT_FALSE(log.isOpen());
  log.write(QStringLiteral("nothing"));
  EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("none/CAN.log"))));
}

TEST(CanMessageText, SplitsALongIdentifier) {
  EXPECT_EQ(canMessageText({.ID = 0x162586C2, .MSGTYPE = 2, .LEN = 9, .DATA = {0xC0, 0xA1}}),
            QStringLiteral("16 2 25 86C2 Len: 9 Data: C0 A1 00 00 00 00 00 00 00"));
  EXPECT_EQ(canMessageText({.ID = 0x020986C2, .MSGTYPE = 3, .LEN = 0}),
            QStringLiteral("02 2 09 86C2 Len: 0 Data: "));
}

TEST(CanMessageText, DoesNotDivideAnIdentifierThatBeginsWithF) {
  EXPECT_EQ(canMessageText({.ID = 0xF12986C2, .MSGTYPE = 2, .LEN = 1, .DATA = {0x05}}),
            QStringLiteral("F1 29 86C2 Len: 1 Data: 05"));
}

TEST(CanMessageText, ShowsTheLowThreeBitsOfAShortIdentifier) {
  EXPECT_EQ(canMessageText({.ID = 0x123, .MSGTYPE = 0, .LEN = 1, .DATA = {0xAB}}),
            QStringLiteral("00123 03 Len: 1 Data: AB"));
}

TEST(CanMessageText, ShowsUpTo16Bytes) {
  EXPECT_EQ(
      canMessageText({.ID = 0x7FF, .MSGTYPE = 0, .LEN = 17}),
      QStringLiteral("007FF 07 Len: 17 Data: 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"));
}

}  // namespace
}  // namespace lokari
