#include "cli/console_prompt.h"

#include "cli_fixture.h"

namespace lokari {
namespace {

TEST(ConsolePromptTest, TakesTheSafeAnswer) {
  RecordingConsole console;
  test::VirtualClock clock;
  Interrupt interrupt;
  ConsolePrompt prompt(console, false, clock, interrupt);
  EXPECT_EQ(prompt.ask("Weiter?", Buttons::OkCancel, Icon::Question, {}), Answer::Cancel);
  EXPECT_EQ(prompt.ask("Löschen?", Buttons::YesNo, Icon::Question, {}), Answer::No);
  EXPECT_EQ(prompt.ask("Anlegen?", Buttons::YesNoCancel, Icon::Question, {}), Answer::Cancel);
  prompt.message("Fertig");
  EXPECT_EQ(console.messages,
            (QStringList{"Weiter? [Abbruch]", "Löschen? [Nein]", "Anlegen? [Abbruch]", "Fertig"}));
  EXPECT_TRUE(console.results.isEmpty());
}

TEST(ConsolePromptTest, TheLinesOfABoxAreOneLineOfTheTerminal) {
  RecordingConsole console;
  test::VirtualClock clock;
  Interrupt interrupt;
  ConsolePrompt prompt(console, false, clock, interrupt);
  prompt.ask("Datei nicht gefunden\rNeu anlegen?", Buttons::YesNo, Icon::Question, {});
  EXPECT_EQ(console.messages, QStringList{"Datei nicht gefunden Neu anlegen? [Nein]"});
}

TEST(ConsolePromptTest, AnswersYesWhenTold) {
  RecordingConsole console;
  test::VirtualClock clock;
  Interrupt interrupt;
  ConsolePrompt prompt(console, true, clock, interrupt);
  EXPECT_EQ(prompt.ask("Weiter?", Buttons::OkCancel, Icon::Question, {}), Answer::Ok);
  EXPECT_EQ(prompt.ask("Löschen?", Buttons::YesNo, Icon::Question, {}), Answer::Yes);
  EXPECT_EQ(prompt.ask("Anlegen?", Buttons::YesNoCancel, Icon::Question, {}), Answer::Yes);
}

TEST(ConsolePromptTest, ChoosesNoFile) {
  RecordingConsole console;
  test::VirtualClock clock;
  Interrupt interrupt;
  ConsolePrompt prompt(console, true, clock, interrupt);
  EXPECT_EQ(prompt.openFile({}), "");
  EXPECT_EQ(prompt.saveFile({}), "");
}

TEST(ConsolePromptTest, WaitsForHalfAMinute) {
  RecordingConsole console;
  test::VirtualClock clock;
  Interrupt interrupt;
  ConsolePrompt prompt(console, false, clock, interrupt);
  EXPECT_FALSE(prompt.waitUntil("Belegt. Es wird gewartet ...", [] { return false; }));
  EXPECT_EQ(clock.now(), 30000);
  EXPECT_EQ(console.messages, QStringList{"Belegt. Es wird gewartet ..."});
  EXPECT_TRUE(prompt.waitUntil("Belegt.", [&] { return clock.now() >= 32000; }));
  EXPECT_LE(clock.now(), 32300);
}

TEST(ConsolePromptTest, CtrlCEndsAWaitAtOnce) {
  RecordingConsole console;
  test::VirtualClock clock;
  Interrupt interrupt;
  ConsolePrompt prompt(console, false, clock, interrupt);
  clock.schedule(1010, [&] { interrupt.raise(); });
  EXPECT_FALSE(prompt.waitUntil("Belegt.", [] { return false; }));
  EXPECT_EQ(clock.now(), 1010);
}

}  // namespace
}  // namespace lokari
