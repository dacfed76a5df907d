// lokari-cli --trace and LOKARI_TRACE in real time on the simulator: the file that a user sends.
#include <QFile>
#include <QRegularExpression>

#include "simulator_process.h"

namespace lokari {
namespace {

class TraceOnSimulator : public ::testing::Test {
 protected:
  ~TraceOnSimulator() override { qunsetenv("LOKARI_TRACE"); }

  QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

  void write(const char* name, const QByteArray& text) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }
  void settings(const char* kind) const {
    write("LOKARI.INI", QByteArray("[LOKARI]\r\nBaseUnit=") + kind +
                            "\r\nComPort=4\r\nIPAddr=127.000.000.001\r\nTimeout=2\r\nDelay=0\r\n");
    write("PORTS.INI", "[PORTS]\r\nCOM4=" + path("port").toLocal8Bit() + "\r\n");
  }
  test::ProgramRun cli(const QStringList& arguments) const {
    return test::runProgram(QStringLiteral("lokari-cli"), arguments, folder.path());
  }
  /// The lines of a trace, each time replaced by "TIME".
  QStringList lines(const char* name = "TRACE.log") const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(file.readAll());
    static const QRegularExpression time(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d "),
                                         QRegularExpression::MultilineOption);
    QStringList found =
        text.replace(time, QStringLiteral("TIME ")).split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : found) line = line.simplified();
    return found;
  }

  QTemporaryDir folder;
};

TEST_F(TraceOnSimulator, ATamsMcReadsACv) {
  settings("TAMSMC");
  const test::SimulatorProcess station({"--station", "TAMSMC", "--link", path("port")});
  const test::ProgramRun run = cli({"--trace", "cv", "read", "29"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output, "29\t14\n");
  EXPECT_EQ(run.errors,
            "Die Verbindung wird mitgeschrieben: " + path("TRACE.log").toLocal8Bit() + "\n");
  const QStringList found = lines();
  EXPECT_TRUE(found[0].startsWith("Lokari-Mitschrift: Lokari V"));
  EXPECT_EQ(found[1], "# Zentrale: TAMSMC an COM4, 2400 Baud, RTS/CTS");
  EXPECT_TRUE(found[2].startsWith("# Einstellungen: Timeout=2 Delay=0"));
  EXPECT_EQ(found.mid(4),
            (QStringList{"TIME - öffnet TAMSMC an COM4, 2400 Baud, RTS/CTS",
                         "TIME > 78 50 54 52 42 20 32 39 0D ; Text \"xPTRB 29\"",
                         "TIME < 31 34 5D 0D ; Text \"14]\"", "TIME - schließt die Schnittstelle"}))
      << qPrintable(found.join(u'\n'));
}

TEST_F(TraceOnSimulator, ReadsACvOnAZ21IP) {
  settings("Z21IP");
  const test::SimulatorProcess station({"--station", "Z21IP"});
  const QString file = path("z21.txt");
  const test::ProgramRun run = cli({"--trace", file, "cv", "read", "29"});
  EXPECT_EQ(run.status, 0);
  const QStringList found = lines("z21.txt");
  EXPECT_TRUE(found.contains("# Zentrale: Z21IP an 127.000.000.001"));
  for (const char* line :
       {"TIME - öffnet Z21IP an 127.000.000.001, UDP-Port 21105",
        "TIME > 07 00 40 00 21 81 A0 ; Gleis ein", "TIME > 04 00 30 00 ; meldet sich ab",
        "TIME - schließt die Verbindung"}) {
    EXPECT_TRUE(found.contains(QString::fromUtf8(line))) << line << '\n'
                                                         << qPrintable(found.join(u'\n'));
  }
  EXPECT_EQ(found.filter("; liest CV 29").size(), 1);
  EXPECT_EQ(found.filter("; Ergebnis: CV 29 hat 14").size(), 1);
}

TEST_F(TraceOnSimulator, TheEnvironmentSwitchesItOn) {
  settings("TAMSMC");
  const test::SimulatorProcess station({"--station", "TAMSMC", "--link", path("port")});
  qputenv("LOKARI_TRACE", QFile::encodeName(path("umgebung.log")));
  EXPECT_EQ(cli({"cv", "read", "29"}).status, 0);
  EXPECT_EQ(lines("umgebung.log").filter("xPTRB 29").size(), 1);
  EXPECT_FALSE(QFile::exists(path("TRACE.log")));
}

TEST_F(TraceOnSimulator, NothingOfItsOwnerStandsInTheFile) {
  settings("TAMSMC");
  // Nobody answers: there is no device, and its path is in the message.
  EXPECT_EQ(cli({"--trace", "cv", "read", "29"}).status, 2);
  const QString text = lines().join(u'\n');
  EXPECT_TRUE(text.contains("Die Schnittstelle COM4")) << qPrintable(text);
  EXPECT_FALSE(text.contains(QDir::homePath() + u'/')) << qPrintable(text);
  EXPECT_FALSE(text.contains("MDB"));
}

}  // namespace
}  // namespace lokari
