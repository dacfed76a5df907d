#include "station/send_firm.h"

#include "firm_fixture.h"

namespace lokari {
namespace {

constexpr char kDownload[] = "Download\r\r";
constexpr char kReady[] = "Download...";

class SendFirmTest : public test::FirmFixture {
 protected:
  explicit SendFirmTest(StationKind kind = StationKind::Mx1) : FirmFixture(kind) {
    addBlock(0x0000, 0x42);
  }

  FirmEnd send() { return FirmTransfer(link, view, firmware).SendFirm(); }

  /// What the session says first.
  test::ScriptedLine& expectDownload() { return line.expect("\r").expect(kDownload); }
  test::ScriptedLine& expectBlock() { return line.expect(message(0, 0, 0, 0x42)); }
  void expectDots() { line.expect(".").expect(".").expect("."); }

  /// Each road out leaves the session closed, the flag cleared and the button at "OK".
  void expectEnded(int opens) {
    EXPECT_FALSE(line.isOpen());
    EXPECT_EQ(line.opens, opens);
    EXPECT_EQ(link.commUseCount, 0);
    EXPECT_FALSE(link.cancelRequested);
    EXPECT_EQ(view.captions, (QStringList{"Abbruch", "OK"}));
    EXPECT_EQ(prompt.beeps, 1);
    EXPECT_TRUE(prompt.shown.isEmpty());
  }

  /// When the n-th write of the job went out, in ms.
  Millis timeOfWrite(int n) const { return line.writes[n].at; }
};

const QString kRunning = QStringLiteral("Übertragung läuft...\nMX1 und PC jetzt nicht abschalten!");
const QString kLook =
    QStringLiteral("Bitte Kabel an COM3, Stromversorgung und Baudrate (9600) prüfen.");
const QString kComplete = QStringLiteral("Übertragung der Firmware abgeschlossen!");
const QString kCancelled = QStringLiteral("Übertragung der Firmware abgebrochen!");
const QString kFailed =
    QStringLiteral("Übertragungsfehler, Einspielen der Firmware nicht möglich!");

TEST_F(SendFirmTest, AStationThatUnderstandsInTheSessionGetsItsBlocks) {
  expectDownload().answer(kReady);
  expectBlock().answer("?");
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(view.statuses, (QStringList{"Beginne Kommunikation ...", "Warten auf Basisgerät ...",
                                        kRunning, kComplete}));
  EXPECT_EQ(view.percents, (QList<double>{0, 100}));
  EXPECT_EQ(view.details.last(), "");
  expectEnded(2);
}

TEST_F(SendFirmTest, KeepsItsPauses) {
  expectDownload().answer(kReady);
  expectBlock().answer("?");
  expectDots();
  send();
  EXPECT_EQ(timeOfWrite(1), 1000);              // behind the session's second
  EXPECT_EQ(timeOfWrite(2), 1010 + 400 + 400);  // the answer, and two pauses
  EXPECT_EQ(timeOfWrite(3), 1810 + 20 + 500);   // one try for the answer
  EXPECT_EQ(timeOfWrite(5), timeOfWrite(3));
  EXPECT_EQ(clock.now(), timeOfWrite(5) + 55);
}

TEST_F(SendFirmTest, WhatWaitsInTheInputIsDroppedFirst) {
  line.expect("\r").answer("Download", 999);
  line.expect(kDownload).answer(kReady);
  expectBlock().answer("?");
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(SendFirmTest, AnAnswerBelowSevenBytesIsDroppedAndTheStationAskedAgain) {
  expectDownload().answer("load..");
  line.expect(kDownload).answer(kReady);
  expectBlock().answer("?");
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
  // two seconds of time-out, a little over, and the pause
  EXPECT_EQ(timeOfWrite(2), 4000 + 400);
}

TEST_F(SendFirmTest, SevenBytesAreAnAnswer) {
  expectDownload().answer("load...");
  expectBlock().answer("?");
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(SendFirmTest, AnAnswerThatEndsOtherwiseLeadsToTheHandle) {
  expectDownload().answer("load...\r\n??");
  line.expect(kDownload).answer(kReady);
  line.expect(kDownload);
  expectBlock().answer("?");
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
  expectEnded(2);
}

TEST_F(SendFirmTest, OnTheHandleTheAnswerOfARoundIsFoundInTheNext) {
  expectDownload();
  line.expect(kDownload);
  line.expect(kDownload).answer("Down").answer("load...", 400);
  line.expect(kDownload).answer(kReady);
  expectBlock().answer("?");
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(timeOfWrite(4) - timeOfWrite(3), 500);
}

TEST_F(SendFirmTest, OnTheHandleTheAnswerMayComeInPiecesAcrossTheRounds) {
  expectDownload();
  line.expect(kDownload);
  line.expect(kDownload).answer("Download");
  line.expect(kDownload).answer("...", 100);
  line.expect(kDownload);
  expectBlock().answer("?");
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(SendFirmTest, AfterThreeRoundsWithoutAnAnswerTheTransferEnds) {
  expectDownload();
  line.expect(kDownload);
  for (int i = 0; i < 3; ++i) line.expect(kDownload);
  expectDots();
  EXPECT_EQ(send(), FirmEnd::NoAnswer);
  EXPECT_EQ(view.statuses.last(), "Keine Antwort vom Basisgerät!");
  EXPECT_TRUE(view.percents.isEmpty());
  expectEnded(2);
}

TEST_F(SendFirmTest, TheHandleHasTheSessionsLineWithBothHandshakeLinesLowered) {
  settings.baudrate = 19200;
  expectDownload().answer(kReady);
  expectBlock().answer("?").then([this] {
    EXPECT_EQ(line.opened.comPort, 3);
    EXPECT_EQ(line.opened.baudrate, 19200);
    EXPECT_EQ(line.opened.handshaking, Handshaking::None);
    EXPECT_EQ(line.rtsChanges, QList<bool>{false});
    EXPECT_EQ(line.dtrChanges, QList<bool>{false});
  });
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
}

class SendFirmV25Test : public SendFirmTest {
 protected:
  SendFirmV25Test() : SendFirmTest(StationKind::Mx1V25) {}
};

TEST_F(SendFirmV25Test, TheHandshakingIsThatOfTheSession) {
  expectDownload().answer(kReady);
  expectBlock().answer("?").then([this] {
    EXPECT_EQ(line.opened.baudrate, 9600);
    EXPECT_EQ(line.opened.handshaking, Handshaking::RequestToSend);
    EXPECT_EQ(line.rtsChanges, QList<bool>{false});
  });
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(SendFirmTest, AnEmptyImageSucceedsWithoutABlock) {
  firmware = Firmware();
  expectDownload().answer(kReady);
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(view.percents, (QList<double>{0, 100}));
}

TEST_F(SendFirmTest, WithoutASessionNothingIsSent) {
  line.failsToOpen = true;
  EXPECT_EQ(send(), FirmEnd::NoSession);
  EXPECT_EQ(
      view.statuses,
      (QStringList{"Beginne Kommunikation ...",
                   "Kann Kommunikationsschnittstelle nicht öffnen (0)!\nKein Gerät!\n" + kLook}));
  EXPECT_EQ(link.commUseCount, 0);
  EXPECT_EQ(view.captions, (QStringList{"Abbruch", "OK"}));
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_TRUE(line.writes.isEmpty());
}

TEST_F(SendFirmTest, TwentyBlocksWithoutAnAnswerEndTheTransferWithTheDots) {
  for (int i = 1; i < 20; ++i) addBlock(i * 16, i);
  expectDownload().answer(kReady);
  expectBlock();
  for (int i = 1; i < 20; ++i) line.expect(message(0, i / 16, i % 16 * 16, i));
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Failed);
  EXPECT_EQ(view.statuses.last(), kFailed + "\n20 Blöcke blieben ohne Antwort.");
  expectEnded(2);
}

// ---- Cancel -----------------------------------------------------------------------------------

TEST_F(SendFirmTest, ACancelInTheGreetingAsksForNoBootLoader) {
  line.expect("\r").then([this] { link.cancelRequested = true; }, 300);
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  EXPECT_EQ(line.sent(), "\r");
  EXPECT_EQ(view.statuses.last(), kCancelled);
  expectEnded(1);
}

TEST_F(SendFirmTest, ACancelBehindTheDownloadSendsTheDots) {
  expectDownload().then([this] { link.cancelRequested = true; }, 700);
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  EXPECT_EQ(timeOfWrite(2), 1700 + 500);
  EXPECT_EQ(clock.now(), 1700 + 500 + 55);
  EXPECT_EQ(view.statuses.last(), kCancelled);
  expectEnded(2);
}

TEST_F(SendFirmTest, ACancelInThePauseBeforeTheSecondDownloadSendsNoSecondOne) {
  expectDownload().then([this] { link.cancelRequested = true; }, 3200);
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  EXPECT_EQ(line.sent(), "\rDownload\r\r...");
  expectEnded(2);
}

TEST_F(SendFirmTest, ACancelInTheSecondWaitSendsTheDotsToo) {
  expectDownload();
  line.expect(kDownload).then([this] { link.cancelRequested = true; }, 100);
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  expectEnded(2);
}

TEST_F(SendFirmTest, ACancelBetweenSessionAndHandleSendsNoFurtherDownload) {
  // 7 bytes that are no answer; the cancel comes in the pause behind the session.
  expectDownload().answer("load??\r").then([this] { link.cancelRequested = true; }, 200);
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  EXPECT_EQ(line.sent(), "\rDownload\r\r...");
  EXPECT_EQ(view.statuses.last(), kCancelled);
  expectEnded(2);
}

TEST_F(SendFirmTest, ACancelOnTheHandleSendsNoFurtherDownload) {
  expectDownload();
  line.expect(kDownload);
  line.expect(kDownload).then([this] { link.cancelRequested = true; }, 100);
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  EXPECT_EQ(view.statuses.last(), kCancelled);
  expectEnded(2);
}

TEST_F(SendFirmTest, ACancelBeforeTheFirstBlockLeavesTheOldFirmwareAlone) {
  expectDownload().answer(kReady).then([this] { link.cancelRequested = true; }, 300);
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  EXPECT_EQ(view.statuses.last(), kCancelled);
  expectEnded(2);
}

TEST_F(SendFirmTest, ACancelAmongTheBlocksSendsTheDots) {
  addBlock(0x0010, 0x43);
  expectDownload().answer(kReady);
  expectBlock().then([this] { link.cancelRequested = true; });
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  EXPECT_EQ(view.statuses.last(), kCancelled);
  expectEnded(2);
}

// ---- A device that vanishes -------------------------------------------------------------------

TEST_F(SendFirmTest, ADeviceThatVanishesInTheSessionEndsTheTransfer) {
  expectDownload().then([this] { line.vanish(); }, 100);
  EXPECT_EQ(send(), FirmEnd::Failed);
  EXPECT_EQ(view.statuses.last(), "Die Schnittstelle ist nicht mehr da!\n" + kLook);
  expectEnded(1);
}

TEST_F(SendFirmTest, ADeviceThatIsGoneWhenTheHandleOpensEndsTheTransfer) {
  expectDownload().answer(kReady).then([this] { line.vanish(); }, 100);
  EXPECT_EQ(send(), FirmEnd::Failed);
  EXPECT_EQ(view.statuses.last(), "Kein Gerät!\n" + kLook);
  expectEnded(1);
}

TEST_F(SendFirmTest, ADeviceThatVanishesAmongTheBlocksEndsTheTransferAtOnce) {
  expectDownload().answer(kReady);
  expectBlock().then([this] { line.vanish(); }, 30);
  EXPECT_EQ(send(), FirmEnd::Failed);
  EXPECT_EQ(view.statuses.last(), "Die Schnittstelle ist nicht mehr da!\n" + kLook);
  EXPECT_LT(clock.now(), timeOfWrite(2) + 100);
  expectEnded(2);
}

TEST_F(SendFirmTest, ADeviceThatVanishesBeforeTheDotsIsLetGo) {
  expectDownload().answer(kReady);
  expectBlock().answer("?").then([this] { line.vanish(); }, 300);
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_FALSE(line.isOpen());
}

// ---- Blocks without an answer -----------------------------------------------------------------

TEST_F(SendFirmTest, BlocksWithoutAnAnswerAreCountedBelowTheClosingText) {
  addBlock(0x0010, 0x43);
  addBlock(0x0020, 0x44);
  expectDownload().answer(kReady);
  expectBlock();
  line.expect(message(0, 0, 0x10, 0x43)).answer("?");
  line.expect(message(0, 0, 0x20, 0x44));
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Unconfirmed);
  EXPECT_EQ(view.statuses.last(),
            kComplete + "\n2 Blöcke blieben ohne Antwort: bitte noch einmal einspielen.");
  expectEnded(2);
}

TEST_F(SendFirmTest, ABlockThatIsAnsweredInTheEndIsNotCounted) {
  expectDownload().answer(kReady);
  addBlock(0x0010, 0x43);
  expectBlock();
  line.expect(message(0, 0, 0x10, 0x43)).answer("b");
  expectBlock().answer("?");
  line.expect(message(0, 0, 0x10, 0x43)).answer("?");
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(view.statuses.last(), kComplete);
}

TEST_F(SendFirmTest, ACancelledTransferCountsThemToo) {
  addBlock(0x0010, 0x43);
  expectDownload().answer(kReady);
  expectBlock();
  line.expect(message(0, 0, 0x10, 0x43)).then([this] { link.cancelRequested = true; });
  expectDots();
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  EXPECT_EQ(view.statuses.last(), kCancelled + "\n1 Block blieb ohne Antwort.");
}

// ---- A port that cabs share -------------------------------------------------------------------

TEST_F(SendFirmTest, WhoSharedThePortFindsItOpenAgain) {
  line.expect("\r");
  EXPECT_EQ(link.initComm(true, false, false), "");
  line.expect(kDownload).answer(kReady);
  expectBlock().answer("?");
  expectDots();
  line.expect("\r");
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(link.commUseCount, 1);
  EXPECT_TRUE(line.isOpen());
  link.FinishComm();
}

TEST_F(SendFirmTest, WhoSharedThePortFindsItOpenAfterACancelToo) {
  line.expect("\r");
  EXPECT_EQ(link.initComm(true, false, false), "");
  line.expect(kDownload).then([this] { link.cancelRequested = true; }, 100);
  expectDots();
  line.expect("\r");
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  EXPECT_EQ(link.commUseCount, 1);
  EXPECT_TRUE(line.isOpen());
  link.FinishComm();
}

TEST_F(SendFirmTest, AVanishedPortIsNotOpenedAgainForWhoSharedIt) {
  line.expect("\r");
  EXPECT_EQ(link.initComm(true, false, false), "");
  line.expect(kDownload).answer(kReady);
  expectBlock().then([this] { line.vanish(); }, 30);
  EXPECT_EQ(send(), FirmEnd::Failed);
  EXPECT_EQ(link.commUseCount, 1);
  EXPECT_FALSE(line.isOpen());
  link.FinishComm();
}

}  // namespace
}  // namespace lokari
