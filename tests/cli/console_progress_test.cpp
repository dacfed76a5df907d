#include "cli/console_progress.h"

#include <stdexcept>

#include "cli_fixture.h"

namespace lokari {
namespace {

class ConsoleProgressTest : public CliFixture {
 protected:
  AppPaths paths_;
  Settings settings_;
  ConsolePrompt prompt_{console, false, clock, interrupt};
  StationLink link_{settings_, clock, prompt_, {line_, socket, can}};
  CliContext context_{paths_, settings_, clock, prompt_, console, Results(console, false),
                      link_,  interrupt};
};

TEST_F(ConsoleProgressTest, TellsEachTenthOfTheWayAndThenTheResult) {
  consoleProgress(context_)([](Progress& progress) {
    progress.setStatus(QStringLiteral("Importiere Tabelle LOCO_DAT...\r\r"));
    progress.setPercent(0);
    for (int row = 1; row <= 30; ++row) {
      progress.setStatus(QStringLiteral("Satz %1 von 30").arg(row));
      progress.setPercent(row * 100.0 / 30);
      EXPECT_FALSE(progress.cancelled());
    }
    progress.setStatus(QStringLiteral("Import abgeschlossen,\r29 importiert,\r1 nicht"));
  });
  EXPECT_EQ(console.results, (QStringList{"Import abgeschlossen,", "29 importiert,", "1 nicht"}));
  EXPECT_EQ(console.messages.size(), 10);
  EXPECT_EQ(console.messages.first(), QStringLiteral("10% (Satz 3 von 30)"));
  EXPECT_EQ(console.messages.last(), QStringLiteral("100% (Satz 30 von 30)"));
}

TEST_F(ConsoleProgressTest, ControlCAsksTheWorkToStop) {
  consoleProgress(context_)([this](Progress& progress) {
    clock.schedule(0, [this] { interrupt.raise(); });
    EXPECT_TRUE(progress.cancelled());
    progress.setStatus(QStringLiteral("abgebrochen"));
  });
  EXPECT_EQ(console.results, QStringList{"abgebrochen"});
}

TEST_F(ConsoleProgressTest, AFailureHasNoResult) {
  EXPECT_THROW(consoleProgress(context_)([](Progress& progress) {
                 progress.setStatus(QStringLiteral("Satz 1"));
                 throw std::runtime_error("beschädigt");
               }),
               std::runtime_error);
  EXPECT_TRUE(console.results.isEmpty());
}

}  // namespace
}  // namespace lokari
