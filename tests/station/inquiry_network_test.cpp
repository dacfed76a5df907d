// The communication test of the stations on the network and on the CAN bus, as strict scripts.
#include "link/mx10_fixture.h"
#include "link/z21_fixture.h"
#include "station/comm_test.h"

namespace lokari {
namespace {

using Outcome = CommTestResult::Outcome;

// ---- Z21 ----------------------------------------------------------------------------------------

class Z21TestComm : public test::Z21Fixture {
 protected:
  Z21TestComm() { z21.commJob = CommJob::TestComm; }

  CommTestResult run() {
    const CommTestResult result = TestComm(z21, settings);
    EXPECT_EQ(z21.commUseCount, 0);
    EXPECT_NE(socket.state(), UdpSocket::kOpen);
    return result;
  }

  const QByteArray askFirmware = bytes({0x07, 0x00, 0x40, 0x00, 0xF1, 0x0A, 0xFB});
  const QByteArray firmware = bytes({0x09, 0x00, 0x40, 0x00, 0xF3, 0x0A, 0x01, 0x43, 0xBB});
  /// Its checksum is the exclusive or over the text.
  const QByteArray askFirstOutput = bytes({0x08, 0x00, 0x40, 0x00, 0x43, 0x00, 0x00, 0x0B});
  const QByteArray firstOutput = bytes({0x09, 0x00, 0x40, 0x00, 0x43, 0x00, 0x00, 0x00, 0x43});
  const QString serialLine = QStringLiteral("Roco Z21 Ser. Nr. 12345");
};

TEST_F(Z21TestComm, AsksForTheSerialNumberAndThenForTheFirmware) {
  expectLogOn();
  socket.expect(askSerialNumber).answer(serialNumber);
  socket.expect(askFirmware).answer(firmware);
  socket.expect(askFirstOutput).answer(firstOutput);
  socket.expect(logOff);
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::Answered);
  EXPECT_EQ(result.lines, (QStringList{serialLine, "Firmware Vers. 1.43"}));
  EXPECT_FALSE(result.wantsMakerForm);
}

TEST_F(Z21TestComm, OneThatTakesNoChecksumOverTheTextWantsItsMakersForm) {
  expectLogOn();
  socket.expect(askSerialNumber).answer(serialNumber);
  socket.expect(askFirmware).answer(firmware);
  socket.expect(askFirstOutput);
  socket.expect(askFirstOutput);
  socket.expect(logOff);
  const CommTestResult result = run();
  EXPECT_EQ(result.lines, (QStringList{serialLine, "Firmware Vers. 1.43"}));
  EXPECT_TRUE(result.wantsMakerForm);
}

TEST_F(Z21TestComm, AnswersOfTheLogonDoNotHoldUpTheOthers) {
  socket.expect(powerOn).answer(powerIsOn);
  socket.expect(askSerialNumber).answer(serialNumber).answer(powerIsOn, 20);
  socket.expect(askSerialNumber).answer(powerIsOn).answer(serialNumber, 20).answer(powerIsOn, 30);
  socket.expect(askFirmware).answer(powerIsOn).answer(firmware, 20);
  socket.expect(askFirstOutput).answer(firstOutput);
  socket.expect(logOff);
  EXPECT_EQ(run().lines, (QStringList{serialLine, "Firmware Vers. 1.43"}));
}

TEST_F(Z21TestComm, WithoutAnAnswerAboutTheFirmwareTheFirstLineStands) {
  expectLogOn();
  socket.expect(askSerialNumber).answer(serialNumber);
  socket.expect(askFirmware);
  socket.expect(logOff);
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::Answered);
  EXPECT_EQ(result.lines, QStringList{serialLine});
}

TEST_F(Z21TestComm, SilenceIsAskedASecondTimeAndThenTold) {
  expectLogOn();
  socket.expect(askSerialNumber);
  socket.expect(askSerialNumber);
  socket.expect(logOff);
  EXPECT_EQ(run().lines,
            (QStringList{"Keine Antwort vom Basisgerät!",
                         "Bitte Netzwerkkabel, Stromversorgung und die Adresse 192.168.000.111 "
                         "prüfen."}));
}

TEST_F(Z21TestComm, AnAddressThatNobodyHasIsNamed) {
  socket.expect(powerOn);
  socket.expect(askSerialNumber);
  socket.expect(logOff);
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::NoSession);
  EXPECT_EQ(result.lines,
            (QStringList{"Kann Kommunikationsschnittstelle nicht öffnen (1)!",
                         "Keine Antwort von der Z21!",
                         "Bitte Netzwerkkabel, Stromversorgung und die Adresse 192.168.000.111 "
                         "prüfen."}));
}

TEST_F(Z21TestComm, ACancelInTheQuestionForTheFirmwareKeepsTheFirstLine) {
  expectLogOn();
  socket.expect(askSerialNumber).answer(serialNumber);
  socket.expect(askFirmware).then([this] { z21.cancelRequested = true; }, 500);
  socket.expect(logOff);
  const CommTestResult result = run();
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(result.lines, QStringList{serialLine});
  EXPECT_EQ(prompt.beeps, 1);
}

// ---- MX10 ---------------------------------------------------------------------------------------

class Mx10TestComm : public test::Mx10Fixture {
 protected:
  explicit Mx10TestComm(StationKind kind = StationKind::Mx10) : Mx10Fixture(kind) {
    link.commJob = CommJob::TestComm;
    announceIn(50);
    expectLogOn();
  }

  Mx10Fixture& expectQuestion() { return expect(0x082086C2, {0xA1, 0xC0, 0x02, 0x00}); }
  void expectFourQuestions() {
    for (int i = 0; i < 4; ++i) expectQuestion();
  }

  CommTestResult run() {
    const CommTestResult result = TestComm(link, settings);
    EXPECT_EQ(link.commUseCount, 0);
    EXPECT_FALSE(can.isOpen);
    return result;
  }

  const Data versions{0xA1, 0xC0, 0x02, 0x00, 0x38, 0x01, 0x19, 0x02};
};

class Mx10IpTestComm : public Mx10TestComm {
 protected:
  Mx10IpTestComm() : Mx10TestComm(StationKind::Mx10Ip) {
    settings.ipAddr = QStringLiteral("192.168.001.010");
  }
};

TEST_F(Mx10TestComm, AsksFourTimesAndTakesTheFirstAnswer) {
  for (int i = 0; i < 3; ++i) expectQuestion();
  expectQuestion().answer(0x0823C0A1, versions).answer(0x0823C0A1, {0, 0, 0, 0, 0, 0, 0, 0}, 30);
  EXPECT_EQ(run().lines, (QStringList{"MX10 Ser. Nr. 2147549699", "USB 0312", "SW Vers. 2.25.1"}));
}

TEST_F(Mx10TestComm, AnAnswerToTheFirstQuestionWaitsForTheFourth) {
  expectQuestion().answer(0x0821C0A1, versions);
  for (int i = 0; i < 3; ++i) expectQuestion();
  EXPECT_EQ(run().outcome, Outcome::Answered);
}

TEST_F(Mx10IpTestComm, OverTheNetworkItIsEthernet) {
  for (int i = 0; i < 3; ++i) expectQuestion();
  expectQuestion().answer(0x0822C0A1, versions);
  EXPECT_EQ(run().lines.at(1), "Ethernet 0312");
}

TEST_F(Mx10TestComm, SilenceIsAskedFourTimesMoreAndThenTold) {
  expectFourQuestions();
  expectFourQuestions();
  EXPECT_EQ(run().lines, (QStringList{"Keine Antwort vom Basisgerät!",
                                      "Bitte Kabel an COM3 und Stromversorgung prüfen."}));
}

TEST_F(Mx10TestComm, MessagesOfOtherGroupsAreNoAnswer) {
  for (int i = 0; i < 3; ++i) expectQuestion();
  expectQuestion().answer(0x0820C0A1, versions).answer(0x0824C0A1, versions);
  expectQuestion().answer(0x0A02C0A1, versions);
  for (int i = 0; i < 3; ++i) expectQuestion();
  EXPECT_EQ(run().outcome, Outcome::NoAnswer);
}

TEST_F(Mx10TestComm, AShortAnswerGivesTheLinesItCan) {
  for (int i = 0; i < 3; ++i) expectQuestion();
  expectQuestion().answer(0x0823C0A1, {0xA1, 0xC0, 0x02, 0x00});
  EXPECT_EQ(run().lines, QStringList{"MX10 Ser. Nr. 2147549699"});
}

class Mx10AloneTestComm : public test::Mx10Fixture {
 protected:
  Mx10AloneTestComm() { settings.comPort = 4; }
};

TEST_F(Mx10AloneTestComm, NoMx10OnTheBusIsTold) {
  const CommTestResult result = TestComm(link, settings);
  EXPECT_EQ(result.outcome, Outcome::NoSession);
  EXPECT_EQ(result.lines, (QStringList{"Kann Kommunikationsschnittstelle nicht öffnen (1901)!",
                                       "Keine Verbindung zum MX10!",
                                       "Bitte Kabel an COM4 und Stromversorgung prüfen."}));
  EXPECT_EQ(link.commUseCount, 0);
}

}  // namespace
}  // namespace lokari
