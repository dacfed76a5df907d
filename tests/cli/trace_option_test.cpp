// lokari-cli --trace.
#include <QFile>

#include "cli_fixture.h"
#include "support/no_larger_files.h"

namespace lokari {
namespace {

class TraceOptionTest : public CliFixture {
 protected:
  QString text(const char* name = "TRACE.log") const {
    QFile file(folder.filePath(QString::fromLatin1(name)));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  }
  int runWith(const QString& file) {
    return run(("--trace " + file + " cv read 29").toUtf8().constData());
  }
};

TEST_F(TraceOptionTest, WithoutItNothingIsWritten) {
  EXPECT_EQ(run("cv read 29"), 0);
  EXPECT_EQ(text(), "");
  EXPECT_TRUE(console.messages.isEmpty());
}

TEST_F(TraceOptionTest, WithoutAFileItStandsInTheDataFolderAndItsPlaceIsTold) {
  EXPECT_EQ(run("--trace cv read 29"), 0);
  EXPECT_EQ(console.results, QStringList{"29\t14"});
  EXPECT_EQ(console.messages, QStringList{"Die Verbindung wird mitgeschrieben: " +
                                          folder.filePath(QStringLiteral("TRACE.log"))});
  EXPECT_TRUE(text().startsWith("Lokari-Mitschrift: Lokari V"));
  EXPECT_TRUE(text().contains("# Zentrale: TAMSMC an COM3, 2400 Baud, RTS/CTS\n"));
  EXPECT_TRUE(text().contains(" ; Text \"xPTRB 29\"\n")) << qPrintable(text());
  EXPECT_TRUE(text().contains(" ; Text \"14]\"\n")) << qPrintable(text());
}

TEST_F(TraceOptionTest, AFileMayBeNamed) {
  EXPECT_EQ(runWith(folder.filePath("hier.txt")), 0);
  EXPECT_TRUE(text("hier.txt").contains("xPTRB 29"));
  EXPECT_EQ(text(), "");
}

TEST_F(TraceOptionTest, ItStandsBesideTheSettingsInEitherOrder) {
  writeIni("CLUB", "BaseUnit=TAMSMC\r\nComPort=7\r\nDelay=0\r\n");
  EXPECT_EQ(run("--trace --settings CLUB cv read 29"), 0);
  EXPECT_EQ(run("--settings CLUB --trace cv read 29"), 0);
  EXPECT_TRUE(text().contains("# Zentrale: TAMSMC an COM7")) << qPrintable(text());
  EXPECT_EQ(text().count("- öffnet TAMSMC an COM7"), 2) << qPrintable(text());
}

TEST_F(TraceOptionTest, BehindTheCommandItIsAWrongCall) {
  EXPECT_EQ(run("cv read 29 --trace"), 2);
  EXPECT_TRUE(untouched());
  EXPECT_EQ(text(), "");
}

TEST_F(TraceOptionTest, AWrongCallMakesNoFile) {
  EXPECT_EQ(run("--trace"), 2);
  EXPECT_EQ(run("--trace cv lesen 29"), 2);
  EXPECT_EQ(run("--trace tset"), 2);
  EXPECT_EQ(console.messages.first(), "Es fehlt der Befehl!");
  EXPECT_EQ(text(), "");
  EXPECT_FALSE(QFile::exists("tset"));
}

TEST_F(TraceOptionTest, AFileThatCannotBeWrittenIsToldOnceAndTheCommandGoesOn) {
  EXPECT_EQ(runWith(folder.filePath("fehlt/TRACE.log")), 0);
  EXPECT_EQ(console.results, QStringList{"29\t14"});
  ASSERT_EQ(console.messages.size(), 1);
  EXPECT_TRUE(console.messages[0].startsWith("Die Verbindung wird nicht mehr mitgeschrieben!\n"));
}

TEST_F(TraceOptionTest, ADatabaseOfThatNameStaysAsItIs) {
  QFile file(folder.filePath("Bahn.MDB"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("SQLite format 3 und der Rest");
  file.close();
  EXPECT_EQ(runWith(file.fileName()), 0);
  EXPECT_EQ(text("Bahn.MDB"), "SQLite format 3 und der Rest");
  EXPECT_EQ(console.messages.size(), 1);
}

TEST_F(TraceOptionTest, ADiskThatFillsUpIsToldOnceAndTheCommandGoesOn) {
  {
    const test::NoLargerFiles full(400);
    EXPECT_EQ(run("--trace cv read 29 8"), 0);
  }
  EXPECT_EQ(console.results, (QStringList{"29\t14", "8\t97"}));
  ASSERT_EQ(console.messages.size(), 2) << qPrintable(console.messages.join(u'\n'));
  EXPECT_TRUE(console.messages[1].contains("lässt sich nicht weiterschreiben"));
}

TEST_F(TraceOptionTest, TheSettingsFileSwitchesItOnToo) {
  writeIni("LOKARI", "BaseUnit=TAMSMC\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\nTrace=1\r\n");
  EXPECT_EQ(run("cv read 29"), 0);
  EXPECT_TRUE(text().contains("xPTRB 29"));
}

TEST_F(TraceOptionTest, TheHelpNamesIt) {
  EXPECT_EQ(run("--help"), 0);
  EXPECT_EQ(console.results.first(),
            "Aufruf: lokari-cli [--settings STAMM] [--trace [DATEI]] BEFEHL [Argumente] [--yes]");
  EXPECT_EQ(console.results.filter("  --trace [DATEI]").size(), 1);
}

}  // namespace
}  // namespace lokari
