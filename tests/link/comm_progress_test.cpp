#include "link/comm_progress.h"

#include "support/link_fixture.h"

namespace lokari {
namespace {

class CommProgressTest : public test::LinkFixture {
 protected:
  CommProgressTest() : LinkFixture(StationKind::TamsMc) {}

  CommProgress progress{link, view};
};

TEST_F(CommProgressTest, ShowsTheFirstWordsAtOnce) {
  progress.setStatus(QStringLiteral("Importiere"));
  EXPECT_EQ(view.statuses, QStringList{"Importiere"});
}

TEST_F(CommProgressTest, ShowsAFewOfManyThousandRowsAndAlwaysTheLastWords) {
  for (int row = 0; row < 1000; ++row) {
    progress.setStatus(QString::number(row));
    progress.setPercent(row / 10.0);
    clock.advance(1);
  }
  // One second, every 40 ms.
  EXPECT_EQ(view.statuses.size(), 25);
  EXPECT_EQ(view.statuses.mid(0, 3), (QStringList{"0", "40", "80"}));
  progress.showLast();
  EXPECT_EQ(view.statuses.last(), QStringLiteral("999"));
  EXPECT_EQ(view.percents.last(), 99.9);
}

TEST_F(CommProgressTest, ShowsNothingTwice) {
  progress.setStatus(QStringLiteral("Fertig"));
  progress.showLast();
  EXPECT_EQ(view.statuses, QStringList{"Fertig"});
  EXPECT_TRUE(view.percents.isEmpty());
}

TEST_F(CommProgressTest, LetsTheButtonWorkAndStaysCancelled) {
  EXPECT_FALSE(progress.cancelled());
  clock.schedule(0, [this] { link.cancelRequested = true; });
  EXPECT_TRUE(progress.cancelled());
  // A cab's exchange clears the flag that it shares.
  link.cancelRequested = false;
  EXPECT_TRUE(progress.cancelled());
}

TEST_F(CommProgressTest, KnowsWhatWasSaidAfterTheCancel) {
  progress.setStatus(QStringLiteral("Satz 1 von 2"));
  EXPECT_FALSE(progress.hasSpokenSinceCancel());
  link.cancelRequested = true;
  EXPECT_FALSE(progress.hasSpokenSinceCancel());
  progress.setStatus(QStringLiteral("Abgebrochen"));
  EXPECT_TRUE(progress.hasSpokenSinceCancel());
  EXPECT_EQ(progress.status(), QStringLiteral("Abgebrochen"));
}

}  // namespace
}  // namespace lokari
