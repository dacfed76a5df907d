#include "cli/console_prompt.h"

#include "cli_fixture.h"

namespace lokari {
namespace {

TEST(ConsolePromptTest, TakesTheSafeAnswer) {
  RecordingConsole console;
  ConsolePrompt prompt(console, false);
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
  ConsolePrompt prompt(console, false);
  prompt.ask("Datei nicht gefunden\rNeu anlegen?", Buttons::YesNo, Icon::Question, {});
  EXPECT_EQ(console.messages, QStringList{"Datei nicht gefunden Neu anlegen? [Nein]"});
}

TEST(ConsolePromptTest, AnswersYesWhenTold) {
  RecordingConsole console;
  ConsolePrompt prompt(console, true);
  EXPECT_EQ(prompt.ask("Weiter?", Buttons::OkCancel, Icon::Question, {}), Answer::Ok);
  EXPECT_EQ(prompt.ask("Löschen?", Buttons::YesNo, Icon::Question, {}), Answer::Yes);
  EXPECT_EQ(prompt.ask("Anlegen?", Buttons::YesNoCancel, Icon::Question, {}), Answer::Yes);
}

TEST(ConsolePromptTest, ChoosesNoFile) {
  RecordingConsole console;
  ConsolePrompt prompt(console, true);
  EXPECT_EQ(prompt.openFile({}), "");
  EXPECT_EQ(prompt.saveFile({}), "");
}

}  // namespace
}  // namespace lokari
