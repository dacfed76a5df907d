#include <QFile>
#include <QTemporaryDir>

#include <array>

#include "link/can_log.h"
#include "link/cv_result.h"
#include "link/mx10_fixture.h"

namespace lokari {
namespace {

QString failure(int step) {
  return QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (%1)!").arg(step);
}

class Mx10Session : public test::Mx10Fixture {};

class Mx10IpSession : public test::Mx10Fixture {
 protected:
  Mx10IpSession() : Mx10Fixture(StationKind::Mx10Ip) {
    settings.ipAddr = QStringLiteral("192.168.000.111");
  }
};

TEST_F(Mx10Session, OpensTheKeyOnItsComPort) {
  openSession(false);
  ASSERT_EQ(can.openCalls.size(), 1);
  EXPECT_EQ(can.openCalls[0].driver, 9);
  EXPECT_EQ(can.openCalls[0].btr, 0x031C);
  EXPECT_EQ(can.openCalls[0].p1, 3 + 208);
  EXPECT_EQ(can.openCalls[0].p2, 8);
}

TEST_F(Mx10IpSession, OpensTheIpModeWithTheAddressInTheArguments) {
  openSession(false);
  ASSERT_EQ(can.openCalls.size(), 1);
  EXPECT_EQ(can.openCalls[0].driver, 9);
  EXPECT_EQ(can.openCalls[0].btr, 0xC0A8 - 0x10000);
  EXPECT_EQ(can.openCalls[0].p1, 208);
  EXPECT_EQ(can.openCalls[0].p2, 0x6F);
}

TEST_F(Mx10IpSession, WithoutTheKeysSecondGenerationTheAddressIsNotUsed) {
  can.present.erase(9);
  openSession(false);
  ASSERT_EQ(can.openCalls.size(), 1);
  EXPECT_EQ(can.openCalls[0].driver, 8);
  EXPECT_EQ(can.openCalls[0].btr, 0x031C);
  EXPECT_EQ(can.openCalls[0].p1, 20);
  EXPECT_EQ(can.openCalls[0].p2, 8);
}

TEST_F(Mx10Session, LogsItsTrafficOnlyWhenTheSettingIsOn) {
  const QTemporaryDir folder;
  CanLog log(folder.filePath(QStringLiteral("CAN.log")), clock);
  for (const bool on : {false, true}) {
    settings.canLog = on;
    StationLink logging(settings, clock, prompt, {line, socket, can, &log});
    EXPECT_EQ(log.isOpen(), on);
    announceIn(50);
    expectLogOn();
    EXPECT_EQ(logging.initComm(true, true, false), QString());
    logging.FinishComm();
  }
  QFile file(folder.filePath(QStringLiteral("CAN.log")));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(),
            "10:00:00.150 CAN port opened.\r\n"
            "10:00:00.200 < 0A 2 02 C0A1 Len: 8 Data: 80 01 02 03 00 00 00 00\r\n"
            "10:00:00.300 > 0A 2 29 86C2 Len: 8 Data: 86 C2 01 00 21 00 00 00\r\n"
            "10:00:00.300 CAN port closed.\r\n");
}

TEST_F(Mx10Session, OpensTheKeyAtTheRateOfTheSettings) {
  settings.baudrate = 115200;
  openSession(false);
  EXPECT_EQ(can.openCalls[0].baudrate, 115200);
}

TEST_F(Mx10Session, TakesNodeAndSerialNumberFromTheAnnouncement) {
  link.lastCvFailed = true;
  openSession(false);
  EXPECT_EQ(station().mx10Nid, qint16(0xC0A1 - 0x10000));
  EXPECT_EQ(station().mx10Serial, 0x80010203U);
  EXPECT_FALSE(link.lastCvFailed);
}

TEST_F(Mx10Session, LogsOnAShortPauseAfterTheAnnouncement) {
  EXPECT_EQ(timeOf([&] { openSession(false); }), 50 + 100);
}

TEST_F(Mx10Session, SwitchesToTheProgrammingTrackAndPausesTwoSeconds) {
  EXPECT_EQ(timeOf([&] { openSession(true); }), 50 + 100 + 10 + 2000);
}

TEST_F(Mx10Session, TheDriverIsTriedThreeTimesAndItsCodeIsTheStep) {
  can.openResult = 512;
  QString text;
  EXPECT_EQ(timeOf([&] { text = link.initComm(true, true, true); }), 2000);
  EXPECT_EQ(text, failure(512));
  EXPECT_EQ(can.openCalls.size(), 3);
  EXPECT_EQ(link.commUseCount, 1);
}

TEST_F(Mx10Session, ACancelEndsTheTrying) {
  can.openResult = 512;
  clock.schedule(300, [&] { link.cancelRequested = true; });
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.initComm(true, true, true), failure(512)); }), 1000);
  EXPECT_EQ(can.openCalls.size(), 1);
}

TEST_F(Mx10Session, TheDriverMayComeUpAtTheThirdTry) {
  can.openResult = 512;
  clock.schedule(1500, [&] { can.openResult = 0; });
  announceIn(2050);
  expectLogOn();
  EXPECT_EQ(link.initComm(true, true, false), QString());
  EXPECT_EQ(can.openCalls.size(), 3);
}

TEST_F(Mx10Session, WithoutAStationOnTheBusStep1901FailsAndTheDriverIsClosed) {
  EXPECT_EQ(link.initComm(true, true, true), failure(1901));
  EXPECT_FALSE(can.isOpen);
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(Mx10Session, ADeviceThatVanishesWhileOpeningIsOpenedAnewAtTheNextTry) {
  clock.schedule(20, [] { throw LinkError(QStringLiteral("weg")); });
  EXPECT_EQ(link.initComm(true, true, false), failure(1904));
  EXPECT_FALSE(can.isOpen);
  openSession(false);
  EXPECT_EQ(can.openCalls.size(), 2);
  EXPECT_EQ(station().mx10Nid, qint16(0xC0A1 - 0x10000));
}

TEST_F(Mx10Session, AnAnnouncementOfAnEarlierSessionIsNoAnnouncement) {
  openSession(false);
  link.FinishComm();
  EXPECT_EQ(link.initComm(true, true, true), failure(1901));
}

TEST_F(Mx10Session, AMessageWithoutDataIsNoAnnouncement) {
  clock.schedule(20, [&] { can.arrive(message(0x0A02C0A1, {})); });
  EXPECT_EQ(link.initComm(true, true, true), failure(1901));
}

TEST_F(Mx10Session, AHighWordEqualToTheAwaitedOneIsDroppedAndOneGreaterByThreeAccepted) {
  clock.schedule(20, [&] { can.arrive(message(0x0A00C0A1, {1, 1, 1, 1})); });
  clock.schedule(30, [&] { can.arrive(message(0x0A04C0A1, {1, 1, 1, 1})); });
  clock.schedule(40, [&] { can.arrive(message(0x0A03C0A2, {0, 0, 0, 7})); });
  expectLogOn();
  EXPECT_EQ(link.initComm(true, true, false), QString());
  EXPECT_EQ(station().mx10Nid, qint16(0xC0A2 - 0x10000));
  EXPECT_EQ(station().mx10Serial, 7U);
}

TEST_F(Mx10Session, AFailedLogOnIsNotReported) {
  announceIn(50);
  expectLogOn();
  can.writeResult = 5;
  EXPECT_EQ(link.initComm(true, true, true), QString());
  EXPECT_TRUE(can.isOpen);
}

TEST_F(Mx10Session, ARefusedSwitchToTheProgrammingTrackFailsWithStep1902) {
  announceIn(50);
  expectLogOn();
  expectProgrammingTrack();
  expectNormal();
  // The log-on is the message that still goes through.
  can.onWrite = [this, compare = can.onWrite](const CanMessage& sent) {
    compare(sent);
    can.writeResult = sent.ID == 0x0A2986C2 ? 0 : 5;
  };
  EXPECT_EQ(link.initComm(true, true, true), failure(1902));
  EXPECT_FALSE(can.isOpen);
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(Mx10Session, AnUnansweredSwitchFailsWithStep1922) {
  announceIn(50);
  expectLogOn();
  expectProgrammingTrack();
  EXPECT_EQ(link.initComm(true, true, true), failure(1922));
  EXPECT_FALSE(can.isOpen);
}

TEST_F(Mx10Session, ASecondSessionSkipsTheSequenceUpToTheProgrammingSwitch) {
  openSession(false);
  expectProgrammingTrack().answer(0x1602C0A1, {0xC0, 0xA1, 0x01, 0x04});
  EXPECT_EQ(link.initComm(true, true, true), QString());
  EXPECT_EQ(can.openCalls.size(), 1);
  EXPECT_EQ(link.commUseCount, 2);
  link.FinishComm();
  EXPECT_TRUE(can.isOpen);
  EXPECT_EQ(station().mx10Nid, qint16(0xC0A1 - 0x10000));
  link.FinishComm();
  EXPECT_FALSE(can.isOpen);
  EXPECT_EQ(station().mx10Nid, 0);
  EXPECT_EQ(station().mx10Serial, 0U);
}

TEST_F(Mx10Session, ASecondSessionWithoutTheProgrammingTrackSendsNothing) {
  openSession(false);
  EXPECT_EQ(link.initComm(true, true, false), QString());
}

TEST_F(Mx10Session, TheFarewellGoesBackToNormal) {
  openSession(true);
  expectNormal().answer(0x1602C0A1, {0xC0, 0xA1, 0x01, 0x00}, 40);
  EXPECT_EQ(timeOf([&] { link.endcomm(true, true); }), 1000 + 40 + 1000);
  EXPECT_FALSE(can.isOpen);
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(Mx10Session, TheMainTrackNeedsNoFarewell) {
  openSession(false);
  EXPECT_EQ(timeOf([&] { link.endcomm(true, false); }), 1000);
  EXPECT_FALSE(can.isOpen);
}

TEST_F(Mx10Session, AFarewellThatFailsIsNotRepeated) {
  openSession(true);
  expectNormal();
  can.writeResult = 5;
  link.endcomm(true, true);
  EXPECT_FALSE(can.isOpen);
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(Mx10Session, AFarewellThatNobodyAnswersIsNotRepeated) {
  openSession(true);
  expectNormal();
  const Millis taken = timeOf([&] { link.endcomm(true, true); });
  EXPECT_LE(taken, 1000 + 3000);
  EXPECT_FALSE(can.isOpen);
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(Mx10Session, GetDataCopiesOneByteMoreThanTheLength) {
  openSession(false);
  clock.schedule(5, [&] {
    CanMessage eight = message(0x0209C0A1, {1, 2, 3, 4, 5, 6, 7, 8});
    eight.DATA[8] = 9;
    eight.DATA[9] = 10;
    can.arrive(eight);
  });
  link.WaitForData(0x020886C2);
  std::array<quint8, 17> data{};
  EXPECT_EQ(station().getData(data.data()), 8);
  EXPECT_EQ(data, (std::array<quint8, 17>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_F(Mx10Session, GetDataGivesNothingWithoutAMessage) {
  openSession(false);
  link.WaitForData(0x020886C2);
  std::array<quint8, 17> data{0x55};
  EXPECT_EQ(station().getData(data.data()), 0);
  EXPECT_EQ(data[0], 0x55);
}

TEST_F(Mx10Session, GetDataNeverCopiesMoreThanAMessageHolds) {
  openSession(false);
  station().canRxMsg = message(0x0209C0A1, {1});
  station().canRxMsg.LEN = 255;
  std::array<quint8, 17> data{};
  EXPECT_EQ(station().getData(data.data()), 255);
}

}  // namespace
}  // namespace lokari
