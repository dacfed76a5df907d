// The frame of the communication test, on the station with the shortest conversation.
#include "comm_fixture.h"

namespace lokari {
namespace {

class CommTestFrame : public test::CommFixture {
 protected:
  CommTestFrame() : CommFixture(StationKind::Mx1) {}

  /// The port opens.
  void expectGreeting() { line.expect("\r"); }
};

const QString kNoAnswer = QStringLiteral("Keine Antwort vom Basisgerät!");
const QString kLook =
    QStringLiteral("Bitte Kabel an COM3, Stromversorgung und Baudrate (9600) prüfen.");

TEST_F(CommTestFrame, AnAnswerIsShownWhileTheSessionCloses) {
  expectGreeting();
  line.expect("Z\r").answer("ZA2\r");
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::Answered);
  EXPECT_FALSE(result.cancelled);
  EXPECT_EQ(view.statuses, (QStringList{"Beginne Kommunikation ...", "Warten auf Anwort ...",
                                        "MX1 neue Generation\r\nDCC Datenformat aktiv\r\n"
                                        "Fahrspannung eingeschaltet"}));
  EXPECT_EQ(view.captions, (QStringList{"Abbruch", "OK"}));
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(CommTestFrame, TheSessionIsOneForTheMainTrack) {
  expectGreeting();
  line.expect("Z\r").answer("ZA2\r");
  link.progTrack = true;
  run();
  EXPECT_FALSE(link.progTrack);
}

TEST_F(CommTestFrame, SilenceIsAskedASecondTimeAndThenTold) {
  expectGreeting();
  line.expect("Z\r");
  line.expect("Z\r");
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::NoAnswer);
  EXPECT_EQ(result.lines, (QStringList{kNoAnswer, kLook}));
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(CommTestFrame, TheSecondQuestionMayBeAnswered) {
  expectGreeting();
  line.expect("Z\r");
  line.expect("Z\r").answer("Z00\r");
  EXPECT_EQ(run().lines, QStringList{"MX1 alte Generation"});
}

TEST_F(CommTestFrame, ACutAnswerIsNoneAndIsNotAskedForAgain) {
  expectGreeting();
  line.expect("Z\r").answer("Z8");
  EXPECT_EQ(run().lines.first(), kNoAnswer);
  EXPECT_TRUE(line.played());
}

TEST_F(CommTestFrame, WhoAnswersWronglyIsNotSentToHisCables) {
  expectGreeting();
  line.expect("Z\r").answer("\xFF");
  EXPECT_EQ(run().lines,
            (QStringList{kNoAnswer,
                         "An COM3 antwortet etwas, aber nicht so wie MX1. Bitte die eingestellte "
                         "Zentrale und die Baudrate (9600) prüfen."}));
}

TEST_F(CommTestFrame, WithoutAnAnswerTheUserNeedNotWaitForTheFarewell) {
  expectGreeting();
  line.expect("Z\r");
  line.expect("Z\r");
  run();
  EXPECT_EQ(view.captions, (QStringList{"Abbruch", "OK", "OK"}));
}

TEST_F(CommTestFrame, WhatIsNotUnderstoodIsSaid) {
  expectGreeting();
  line.expect("Z\r").answer("????\r");
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::NotUnderstood);
  EXPECT_EQ(result.lines, QStringList{"Unbekannte Antwort!"});
}

TEST_F(CommTestFrame, APortThatDoesNotOpenTellsWhyAndWhereToLook) {
  line.failsToOpen = true;
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::NoSession);
  ASSERT_EQ(result.lines.size(), 3);
  EXPECT_EQ(result.lines[0], "Kann Kommunikationsschnittstelle nicht öffnen (0)!");
  EXPECT_EQ(result.lines[1], link.openFailureReason());
  EXPECT_EQ(result.lines[2], kLook);
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(view.captions, (QStringList{"Abbruch", "OK"}));
}

TEST_F(CommTestFrame, AFailedOpeningLeavesAnotherUsersSessionCounted) {
  line.failsToOpen = true;
  link.commUseCount = 2;
  TestComm(link, settings);
  EXPECT_EQ(link.commUseCount, 2);
  link.commUseCount = 0;
}

TEST_F(CommTestFrame, ASessionThatAnotherHoldsStaysOpen) {
  expectGreeting();
  EXPECT_EQ(link.initComm(true, false, false), "");
  line.expect("Z\r").answer("Z82\r");
  EXPECT_EQ(TestComm(link, settings).outcome, Outcome::Answered);
  EXPECT_EQ(link.commUseCount, 1);
  EXPECT_TRUE(line.isOpen());
  link.FinishComm();
}

TEST_F(CommTestFrame, APortThatVanishesInTheWaitIsNamed) {
  expectGreeting();
  line.expect("Z\r").then([this] { line.vanish(); });
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::NoAnswer);
  ASSERT_EQ(result.lines.size(), 2);
  EXPECT_EQ(result.lines[0], "Die Schnittstelle ist nicht mehr da!");
  EXPECT_EQ(result.lines[1], kLook);
  EXPECT_EQ(prompt.beeps, 1);
}

// ---- Cancel -------------------------------------------------------------------------------------

TEST_F(CommTestFrame, ACancelInTheFirstWaitEndsIt) {
  expectGreeting();
  line.expect("Z\r").then([this] { cancel(); }, 300);
  const CommTestResult result = run();
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(result.outcome, Outcome::NoAnswer);
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(view.statuses, (QStringList{"Beginne Kommunikation ...", "Warten auf Anwort ...",
                                        "Beende Kommunikation ...", kNoAnswer}));
  EXPECT_LT(clock.now(), 3000);
}

TEST_F(CommTestFrame, ACancelInTheSecondWaitEndsIt) {
  expectGreeting();
  line.expect("Z\r");
  line.expect("Z\r").then([this] { cancel(); }, 300);
  EXPECT_TRUE(run().cancelled);
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_F(CommTestFrame, ACancelWhileThePortOpensAsksWithoutWaiting) {
  line.expect("\r").then([this] { cancel(); }, 500);
  line.expect("Z\r");
  EXPECT_TRUE(run().cancelled);
  EXPECT_FALSE(view.statuses.contains("Warten auf Anwort ..."));
  EXPECT_LT(clock.now(), 2500);
}

TEST_F(CommTestFrame, AnAnswerThatCameBeforeTheCancelIsShown) {
  expectGreeting();
  line.expect("Z\r").then([this] { cancel(); }, 100).answer("Z00\r", 0);
  const CommTestResult result = run();
  EXPECT_EQ(result.lines, QStringList{"MX1 alte Generation"});
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(view.statuses.mid(2), (QStringList{"Beende Kommunikation ...", "MX1 alte Generation"}));
}

TEST_F(CommTestFrame, RunsWithoutAView) {
  link.setView(nullptr);
  expectGreeting();
  line.expect("Z\r").answer("Z00\r");
  EXPECT_EQ(TestComm(link, settings).outcome, Outcome::Answered);
}

}  // namespace
}  // namespace lokari
