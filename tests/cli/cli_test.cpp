// The frame around the commands.
#include "cli/command.h"
#include "cli/help.h"
#include "cli_fixture.h"
#include "support/places.h"

namespace lokari {
namespace {

using CliTest = CliFixture;

TEST_F(CliTest, HelpIsGermanAndNamesEveryCommand) {
  for (const char* call : {"--help", "help", "cv read --help"}) {
    EXPECT_EQ(run(call), 0) << call;
    EXPECT_TRUE(console.results.first().startsWith("Aufruf: lokari-cli")) << call;
    EXPECT_FALSE(console.results.filter("cv read").isEmpty()) << call;
    EXPECT_FALSE(console.results.filter("cv write").isEmpty()) << call;
  }
  EXPECT_TRUE(untouched());
}

TEST_F(CliTest, AWrongCallIsExplainedAndDoesNothing) {
  EXPECT_EQ(run(""), 2);
  EXPECT_EQ(console.messages, (QStringList{"Es fehlt der Befehl!", "Hilfe: lokari-cli --help"}));
  EXPECT_EQ(run("cv lesen 1"), 2);
  EXPECT_EQ(console.messages.first(), "Den Befehl \"cv lesen 1\" gibt es nicht!");
  EXPECT_EQ(run("--settings"), 2);
  EXPECT_EQ(console.messages.first(), "Hinter --settings fehlt der Stamm!");
  EXPECT_TRUE(untouched());
  EXPECT_TRUE(console.results.isEmpty());
}

TEST_F(CliTest, AnotherSettingsFileMayBeChosen) {
  writeIni("CLUB", "BaseUnit=TAMSMC\r\nComPort=7\r\nDelay=0\r\n");
  EXPECT_EQ(run("--settings CLUB cv read 1"), 0);
  EXPECT_EQ(line_.opened.comPort, 7);
  EXPECT_EQ(run("cv read 1"), 0);
  EXPECT_EQ(line_.opened.comPort, 3);
}

TEST_F(CliTest, TheSettingsOptionCountsInFrontOfTheCommandOnly) {
  EXPECT_EQ(run("cv read 1 --settings CLUB"), 2);
  EXPECT_TRUE(untouched());
}

TEST_F(CliTest, YesMayStandAnywhere) {
  EXPECT_EQ(run("--yes cv read 1"), 0);
  EXPECT_EQ(run("cv --yes read 1"), 0);
  EXPECT_EQ(run("cv read 1 --yes"), 0);
}

TEST_F(CliTest, APortThatIsLostWhileTheSessionOpensIsClosed) {
  clock.schedule(500, [&] { line_.vanish(); });
  EXPECT_EQ(run("cv read 1"), 2);
  EXPECT_EQ(console.messages, (QStringList{"Kann Kommunikationsschnittstelle nicht öffnen (0)!",
                                           "Die Schnittstelle ist nicht mehr da!"}));
  EXPECT_EQ(line_.closes, 1);
}

TEST_F(CliTest, WithoutASessionNothingIsDone) {
  line_.failsToOpen = true;
  EXPECT_EQ(run("cv read 1"), 2);
  EXPECT_EQ(console.messages,
            (QStringList{"Kann Kommunikationsschnittstelle nicht öffnen (0)!", "Kein Gerät!"}));
  EXPECT_TRUE(console.results.isEmpty());
  EXPECT_TRUE(untouched());
}

TEST_F(CliTest, TheHelpOfACommandNamesItsArgumentsAndTheirRange) {
  for (const char* call : {"drive -h", "drive --help", "help drive", "-h drive"}) {
    EXPECT_EQ(run(call), 0) << call;
    EXPECT_EQ(console.results.first(),
              "Aufruf: lokari-cli drive ADRESSE [--speed N] [--forward|--back] [--function "
              "N=on|off]… [--stop|--go] [--json]")
        << call;
    EXPECT_EQ(console.results.filter("0 bis 127").size(), 1) << call;
  }
}

TEST_F(CliTest, TheManualsPageHasEveryCommandAndArgumentAsTheyAre) {
  QFile file(places::source() + "/docs/handbuch/befehlszeile.html");
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString page = QString::fromUtf8(file.readAll()).simplified();
  const auto plain = [](const QString& text) {
    return QString(text).replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;");
  };
  const auto lineOf = [&](const ArgumentRow& row) {
    return "<tr><td><code>" + plain(headOf(row)) + "</code></td><td>" + plain(meaningOf(row)) +
           "</td></tr>";
  };
  const auto sectionAt = [&](qsizetype at) {
    return page.mid(at, page.indexOf("<h2", at + 1) - at);
  };
  // What several commands have stands in one place.
  QHash<QString, int> commands;
  for (const Command& command : commandTable()) {
    for (const ArgumentRow& row : command.arguments) ++commands[lineOf(row)];
  }
  const QString common = sectionAt(page.indexOf("<h2 id=\"gemeinsam\""));
  qsizetype inCommon = 0;
  for (auto each = commands.begin(); each != commands.end(); ++each) {
    const bool isCommon = each.value() > 1;
    inCommon += isCommon ? 1 : 0;
    EXPECT_EQ(common.count(each.key()), isCommon ? 1 : 0) << qPrintable(each.key());
  }
  EXPECT_EQ(common.count("<tr>"), inCommon) << "the page has an argument that there is not";
  qsizetype at = 0;
  for (const Command& command : commandTable()) {
    const QString syntax = "<pre>lokari-cli " + plain(syntaxOf(command)) + "</pre>";
    at = page.indexOf(syntax, at);
    ASSERT_GE(at, 0) << qPrintable(syntax);
    const QString section = sectionAt(at);
    qsizetype own = 0;
    for (const ArgumentRow& row : command.arguments) {
      const QString line = lineOf(row);
      if (commands[line] > 1) continue;
      ++own;
      EXPECT_TRUE(section.contains(line)) << qPrintable(syntax + ": " + line);
    }
    EXPECT_EQ(section.count("<tr>"), own)
        << qPrintable(syntax) << ": the page has an argument that there is not";
  }
  EXPECT_EQ(page.count("<h2"), static_cast<qsizetype>(commandTable().size()) + 1);
}

TEST_F(CliTest, TheVersionIsThatOfTheProgram) {
  EXPECT_EQ(run("--version"), 0);
  EXPECT_EQ(console.results, QStringList{QString::fromUtf16(kTitle)});
}

TEST_F(CliTest, ANamedSettingsFileThatIsMissingReachesNoStation) {
  for (const char* call :
       {"--settings CLUP cv read 1", "--settings CLUP drive 3 --stop", "--settings CLUP test",
        "--settings CLUP switch 5 1=on", "--settings CLUP vehicle read Anlage 3"}) {
    EXPECT_EQ(run(call), 2) << call;
    EXPECT_TRUE(console.messages.first().endsWith("CLUP.INI gibt es nicht!")) << call;
  }
  EXPECT_TRUE(untouched());
}

TEST_F(CliTest, WithoutAStationAMissingSettingsFileIsToldAndTheDefaultsHold) {
  run("--settings CLUP check");
  EXPECT_TRUE(console.messages.first().endsWith("CLUP.INI gibt es nicht! Es gelten die Vorgaben."));
  EXPECT_FALSE(console.messages.last().startsWith("Hilfe"));
}

TEST_F(CliTest, AnUnknownStationReachesNone) {
  writeIni("LOKARI", "BaseUnit=Z21\r\nComPort=3\r\n");
  for (const char* call : {"cv read 1", "drive 3", "test"}) {
    EXPECT_EQ(run(call), 2) << call;
    EXPECT_TRUE(console.messages.first().startsWith(
        "LOKARI.INI: Die Zentrale \"Z21\" gibt es nicht! Möglich sind MX1, "))
        << call;
    EXPECT_TRUE(console.messages.first().contains("Z21IP")) << call;
  }
  EXPECT_TRUE(untouched());
  EXPECT_NE(run("check"), 2) << "no station is needed";
}

TEST_F(CliTest, TheHelpSaysWhichCommandsSwitchAStoppedLayoutOn) {
  EXPECT_EQ(run("--help"), 0);
  EXPECT_TRUE(console.results.contains("  test an LI100, LI100V3, LIUSB, Z21IP"));
  EXPECT_TRUE(console.results.contains("  drive an MX1ULF, Z21IP"));
  EXPECT_TRUE(console.results.contains("  switch an Z21IP"));
}

TEST_F(CliTest, ACallThatIsRefusedIsNotWarnedAbout) {
  writeIni("LOKARI", "BaseUnit=LI100\r\nComPort=3\r\nTimeout=1\r\nDelay=0\r\n");
  for (const char* call : {"test jetzt", "cv read 0", "cv read 2000", "cv read 9-3",
                           "vehicle read Anlage 3 --cv 3-x"}) {
    EXPECT_EQ(run(call), 2) << call;
    EXPECT_FALSE(console.messages.join(u'\n').contains("Achtung")) << call;
  }
  EXPECT_TRUE(untouched());
}

TEST_F(CliTest, StandardErrorSaysThatACommandSwitchesOnBeforeItDoes) {
  writeIni("LOKARI", "BaseUnit=LI100\r\nComPort=3\r\nTimeout=1\r\nDelay=0\r\n");
  line_.failsToOpen = true;
  EXPECT_EQ(run("test"), 2);
  EXPECT_EQ(console.messages.first(),
            "Achtung: test schaltet an LI100 die Anlage ein, auch eine angehaltene.");
}

}  // namespace
}  // namespace lokari
