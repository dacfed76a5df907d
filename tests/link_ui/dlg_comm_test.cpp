#include "link/ui/dlg_comm.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <stdexcept>

#include "support/link_fixture.h"

namespace lokari {
namespace {

class DlgCommTest : public test::LinkFixture {
 protected:
  DlgCommTest() : LinkFixture(StationKind::TamsMc) { link.setView(nullptr); }

  template <typename T>
  T* control(const char* name) {
    T* found = dialog_.findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  QPushButton* cmdCancel() { return control<QPushButton>("cmdCancel"); }
  QProgressBar* panProgress() { return control<QProgressBar>("panProgress"); }
  QLabel* lblCommStatus() { return control<QLabel>("lblCommStatus"); }

  QLabel* lblCommDetail() { return control<QLabel>("lblCommDetail"); }

  void press() { QTest::mouseClick(cmdCancel(), Qt::LeftButton); }

  /// For a job that ends with its dialog open: looks at it, then presses the button.
  void whenLeftOpen(std::function<void()> look) {
    QMetaObject::invokeMethod(
        &dialog_,
        [this, look = std::move(look)] {
          look();
          press();
        },
        Qt::QueuedConnection);
  }

  /// Lets a wait run, as ReadCV() and the pauses do.
  void wait(Millis span) {
    clock.waitUntil([this] { return link.cancelRequested; }, clock.now() + span);
  }

  DlgComm dialog_{link};
};

TEST_F(DlgCommTest, TheJobRunsInTheVisibleDialogWithTheCancelFlagCleared) {
  link.cancelRequested = true;
  int runs = 0;
  dialog_.run(CommJob::ReadMain, [&] {
    ++runs;
    EXPECT_TRUE(dialog_.isVisible());
    EXPECT_TRUE(dialog_.isModal());
    EXPECT_TRUE(dialog_.isActiveWindow());
    EXPECT_FALSE(link.cancelRequested);
    EXPECT_EQ(link.commJob, CommJob::ReadMain);
    EXPECT_TRUE(cmdCancel()->isEnabled());
    EXPECT_EQ(cmdCancel()->text(), QStringLiteral("Abbruch"));
    EXPECT_FALSE(panProgress()->isVisible());
    EXPECT_FALSE(panProgress()->isEnabled());
    dialog_.hide();
  });
  EXPECT_EQ(runs, 1);
  EXPECT_FALSE(dialog_.isVisible());
}

TEST_F(DlgCommTest, ComingToTheFrontAgainDoesNotStartTheJobAgain) {
  int runs = 0;
  dialog_.run(CommJob::ReadProgTrack, [&] {
    ++runs;
    QEvent leaves(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(&dialog_, &leaves);
    QEvent comes(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&dialog_, &comes);
    wait(5000);
    dialog_.hide();
  });
  EXPECT_EQ(runs, 1);
}

/// A desktop that refuses the front: the window is never told that it is active.
class FrontRefuser final : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* event) override {
    return event->type() == QEvent::WindowActivate;
  }
};

TEST_F(DlgCommTest, TheJobStartsAllTheSameWhenTheDesktopRefusesTheFront) {
  FrontRefuser refuser;
  dialog_.installEventFilter(&refuser);
  dialog_.findChild<QTimer*>()->setInterval(0);  // no patience
  int runs = 0;
  dialog_.run(CommJob::ReadProgTrack, [&] {
    ++runs;
    dialog_.hide();
  });
  EXPECT_EQ(runs, 1);
}

TEST_F(DlgCommTest, TheDialogIsTheLinksViewWhileTheJobRuns) {
  EXPECT_EQ(link.view(), nullptr);
  dialog_.run(CommJob::ReadProgTrack, [&] {
    EXPECT_EQ(link.view(), &dialog_);
    dialog_.hide();
  });
  EXPECT_EQ(link.view(), nullptr);
}

TEST_F(DlgCommTest, CancelEndsTheWaitAndDisablesTheButtonButLeavesTheDialogOpen) {
  dialog_.run(CommJob::ReadProgTrack, [&] {
    clock.schedule(300, [this] { press(); });
    wait(60000);
    EXPECT_EQ(clock.now(), 300);
    EXPECT_TRUE(link.cancelRequested);
    EXPECT_FALSE(cmdCancel()->isEnabled());
    EXPECT_TRUE(dialog_.isVisible());
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, AJobThatEndsWithOkStaysUntilTheButtonIsPressed) {
  bool looked = false;
  dialog_.run(CommJob::TestComm, [&] {
    dialog_.setStatus(QStringLiteral("Keine Antwort vom Basisgerät"));
    press();
    dialog_.setCancelCaption(QStringLiteral("OK"));
    whenLeftOpen([&] {
      looked = true;
      EXPECT_TRUE(dialog_.isVisible());
      EXPECT_TRUE(cmdCancel()->isEnabled());
      EXPECT_EQ(cmdCancel()->text(), QStringLiteral("OK"));
      EXPECT_EQ(lblCommStatus()->text(), QStringLiteral("Keine Antwort vom Basisgerät"));
    });
  });
  EXPECT_TRUE(looked);
  EXPECT_FALSE(dialog_.isVisible());
  EXPECT_TRUE(link.cancelRequested);
}

TEST_F(DlgCommTest, TheOkOfAJobThatHasEndedCancelsNothing) {
  dialog_.run(CommJob::TestComm, [&] { whenLeftOpen([] {}); });
  EXPECT_FALSE(dialog_.isVisible());
  EXPECT_FALSE(link.cancelRequested);
}

TEST_F(DlgCommTest, TheLineIsLeftToOthersBehindTheJobAndTheirWordsAreNotShown) {
  int aside = 0;
  link.onStepAside = [&aside] {
    ++aside;
    return std::shared_ptr<void>(&aside, [&aside](void*) { --aside; });
  };
  dialog_.run(CommJob::TestComm, [&] {
    EXPECT_EQ(aside, 0);
    whenLeftOpen([&] {
      EXPECT_EQ(aside, 1);
      EXPECT_EQ(link.view(), nullptr);
    });
  });
  EXPECT_EQ(aside, 0);
}

TEST_F(DlgCommTest, AJobWithoutTheStationClosesAtOnceOnCancelAndIsWaitedFor) {
  bool ended = false;
  dialog_.run(CommJob::ProgressOnly, [&] {
    press();
    EXPECT_FALSE(dialog_.isVisible());
    EXPECT_TRUE(link.cancelRequested);
    clock.waitUntil([] { return false; }, clock.now() + 1000);
    ended = true;
  });
  EXPECT_TRUE(ended);
}

TEST_F(DlgCommTest, ClosingTheWindowWhileAJobRunsIsACancel) {
  dialog_.run(CommJob::ReadProgTrack, [&] {
    EXPECT_FALSE(dialog_.close());
    EXPECT_TRUE(link.cancelRequested);
    EXPECT_TRUE(dialog_.isVisible());
    EXPECT_FALSE(cmdCancel()->isEnabled());
    EXPECT_FALSE(dialog_.close());
    EXPECT_TRUE(dialog_.isVisible());
    dialog_.hide();
  });
  EXPECT_FALSE(dialog_.isVisible());
}

TEST_F(DlgCommTest, EscapeWhileAJobRunsIsACancel) {
  dialog_.run(CommJob::WriteProgTrack, [&] {
    QTest::keyClick(&dialog_, Qt::Key_Escape);
    EXPECT_TRUE(link.cancelRequested);
    EXPECT_TRUE(dialog_.isVisible());
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, EnterPressesTheButton) {
  dialog_.run(CommJob::WriteProgTrack, [&] {
    QTest::keyClick(&dialog_, Qt::Key_Return);
    EXPECT_TRUE(link.cancelRequested);
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, ProgressShowsTheWholePartInBarAndCaption) {
  dialog_.run(CommJob::ReadProgTrack, [&] {
    dialog_.setProgressEnabled(true);
    dialog_.setProgress(33.99);
    EXPECT_TRUE(panProgress()->isVisible());
    EXPECT_TRUE(panProgress()->isEnabled());
    EXPECT_EQ(panProgress()->value(), 33);
    EXPECT_EQ(panProgress()->text(), QStringLiteral("33%"));
    dialog_.setProgress(100);
    EXPECT_EQ(panProgress()->value(), 100);
    EXPECT_EQ(panProgress()->text(), QStringLiteral("100%"));
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, MoreStepsThanWereCountedFillTheBarAndShowTheirNumber) {
  dialog_.run(CommJob::ReadProgTrack, [&] {
    dialog_.setProgress(104.7);
    EXPECT_EQ(panProgress()->value(), 100);
    EXPECT_EQ(panProgress()->text(), QStringLiteral("104%"));
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, ResetEmptiesTheBar) {
  dialog_.run(CommJob::ReadProgTrack, [&] {
    dialog_.setProgress(50);
    dialog_.resetProgress();
    EXPECT_EQ(panProgress()->value(), 0);
    EXPECT_EQ(panProgress()->text(), QString());
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, TheDetailStandsBelowTheStatus) {
  dialog_.run(CommJob::SendFirm, [&] {
    dialog_.setStatus(QStringLiteral("Übertragung läuft..."));
    dialog_.setDetail(QStringLiteral("Block 12 von 345"));
    EXPECT_TRUE(lblCommDetail()->isVisible());
    EXPECT_EQ(lblCommDetail()->text(), QStringLiteral("Block 12 von 345"));
    EXPECT_EQ(lblCommStatus()->text(), QStringLiteral("Übertragung läuft..."));
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, TheClosingTextIsTheLastStatus) {
  dialog_.run(CommJob::SendFirm, [&] {
    dialog_.setClosingText(QStringLiteral("Fertig!"));
    EXPECT_EQ(lblCommStatus()->text(), QStringLiteral("Fertig!"));
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, LosingTheFrontHidesTheBarUntilTheNextStep) {
  dialog_.run(CommJob::ReadProgTrack, [&] {
    dialog_.setProgress(10);
    QEvent leaves(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(&dialog_, &leaves);
    EXPECT_FALSE(panProgress()->isVisible());
    dialog_.setProgress(20);
    EXPECT_TRUE(panProgress()->isVisible());
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, TheNextJobBeginsWithACleanDialog) {
  dialog_.run(CommJob::ReadProgTrack, [&] {
    dialog_.setStatus(QStringLiteral("Lese CV 30"));
    dialog_.setDetail(QStringLiteral("Block 1 von 2"));
    dialog_.setProgressEnabled(true);
    dialog_.setProgress(50);
    press();
    dialog_.setCancelCaption(QStringLiteral("OK"));
    dialog_.hide();
  });
  dialog_.run(CommJob::WriteMain, [&] {
    EXPECT_EQ(lblCommStatus()->text(), QString());
    EXPECT_EQ(lblCommDetail()->text(), QString());
    EXPECT_FALSE(panProgress()->isVisible());
    EXPECT_FALSE(panProgress()->isEnabled());
    EXPECT_TRUE(cmdCancel()->isEnabled());
    EXPECT_EQ(cmdCancel()->text(), QStringLiteral("Abbruch"));
    EXPECT_FALSE(link.cancelRequested);
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, AFailureOfTheJobClosesTheDialogAndReachesTheCaller) {
  EXPECT_THROW(dialog_.run(CommJob::ReadProgTrack, [] { throw std::runtime_error("gone"); }),
               std::runtime_error);
  EXPECT_FALSE(dialog_.isVisible());
  EXPECT_EQ(link.view(), nullptr);
}

TEST_F(DlgCommTest, TheTextOfAJobThatHasEndedCanBeCopied) {
  QGuiApplication::clipboard()->clear();
  dialog_.run(CommJob::TestComm, [&] {
    EXPECT_FALSE(control<QPushButton>("cmdCopyText")->isVisible());
    dialog_.setStatus(QStringLiteral("MXULF\r\nBoot ROM 1.04"));
    whenLeftOpen([&] {
      EXPECT_TRUE(control<QPushButton>("cmdCopyText")->isVisible());
      QTest::mouseClick(control<QPushButton>("cmdCopyText"), Qt::LeftButton);
      EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("MXULF\nBoot ROM 1.04"));
      EXPECT_TRUE(dialog_.isVisible());
      EXPECT_TRUE(lblCommStatus()->textInteractionFlags() & Qt::TextSelectableByMouse);
    });
  });
  dialog_.run(CommJob::ReadMain, [&] {
    EXPECT_FALSE(control<QPushButton>("cmdCopyText")->isVisible());
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, GrowsWithAResultOfManyLines) {
  dialog_.run(CommJob::TestComm, [&] {
    const int before = dialog_.height();
    QStringList lines;
    for (int i = 0; i < 12; ++i) lines << QStringLiteral("Zeile %1").arg(i);
    dialog_.setStatus(lines.join(QStringLiteral("\r\n")));
    EXPECT_GT(dialog_.height(), before);
    QCoreApplication::processEvents();
    EXPECT_GE(lblCommStatus()->height(), lblCommStatus()->heightForWidth(lblCommStatus()->width()));
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, WhatGrowsBelowTheScreenMovesUpSoThatItsButtonsStay) {
  dialog_.run(CommJob::TestComm, [&] {
    const QRect room = dialog_.screen()->availableGeometry();
    dialog_.move(room.left() + 30, room.bottom() - dialog_.height());
    QStringList lines;
    for (int i = 0; i < 12; ++i) lines << QStringLiteral("Zeile %1").arg(i);
    dialog_.setStatus(lines.join(u'\n'));
    EXPECT_LE(dialog_.frameGeometry().bottom(), room.bottom());
    EXPECT_GE(dialog_.frameGeometry().top(), room.top());
    EXPECT_EQ(dialog_.frameGeometry().left(), room.left() + 30);
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, AStatusIsNeverTakenForMarkup) {
  dialog_.run(CommJob::ReadProgTrack, [&] {
    EXPECT_EQ(lblCommStatus()->textFormat(), Qt::PlainText);
    dialog_.hide();
  });
}

TEST_F(DlgCommTest, EveryControlIsNamedForScreenReaders) {
  EXPECT_EQ(dialog_.objectName(), QStringLiteral("dlg_comm"));
  EXPECT_FALSE(panProgress()->accessibleName().isEmpty());
}

TEST_F(DlgCommTest, AFarewellShowsItselfAndTheButtonEndsItsWaits) {
  dialog_.run(CommJob::ReadProgTrack, [&] {
    ASSERT_EQ(link.initComm(true, true, true), QString());
    press();
    EXPECT_FALSE(cmdCancel()->isEnabled());
    QString detail;
    clock.schedule(500, [&] {
      detail = lblCommDetail()->text();
      EXPECT_TRUE(cmdCancel()->isEnabled());
      press();
    });
    const Millis took = timeOf([&] { link.endcomm(true, true); });
    EXPECT_EQ(detail, QStringLiteral("Abschied von der Digitalzentrale ... „Abbruch“ beendet das "
                                     "Warten."));
    EXPECT_EQ(lblCommDetail()->text(), QString());
    EXPECT_EQ(took, 500);
    dialog_.hide();
  });
}

}  // namespace
}  // namespace lokari
