#include <QFile>
#include <QFileInfo>

#include "simulator_process.h"

namespace lokari {
namespace {

class CliOnSimulator : public ::testing::Test {
 protected:
  CliOnSimulator() {
    write("LOKARI.INI", "[LOKARI]\r\nBaseUnit=TAMSMC\r\nComPort=4\r\nTimeout=1\r\nDelay=0\r\n");
    write("PORTS.INI", "[PORTS]\r\nCOM4=" + port().toLocal8Bit() + "\r\n");
  }

  QString port() const { return folder.filePath(QStringLiteral("tams")); }

  QStringList simulator(const QStringList& more = {}) const {
    return QStringList{"--station", "TAMSMC", "--link", port()} + more;
  }

  test::ProgramRun cli(const QStringList& arguments) const {
    return test::runProgram(QStringLiteral("lokari-cli"), arguments, folder.path());
  }

  void write(const char* name, const QByteArray& text) const {
    QFile file(folder.filePath(QString::fromLatin1(name)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  QTemporaryDir folder;
};

TEST_F(CliOnSimulator, WritesACvAndReadsItBack) {
  test::SimulatorProcess station(simulator());
  EXPECT_TRUE(station.greeting().startsWith("TAMSMC bereit an " + port().toLocal8Bit()));

  const test::ProgramRun written = cli({"cv", "write", "5=201"});
  EXPECT_EQ(written.status, 0);
  EXPECT_EQ(written.output, "5\t201\n");
  EXPECT_EQ(written.errors, "CV 5: geschrieben, nicht geprüft!\n");

  const test::ProgramRun read = cli({"cv", "read", "8", "5", "700"});
  EXPECT_EQ(read.status, 1);
  EXPECT_EQ(read.output, "8\t97\n5\t201\n700\t-1021\tKein ACK vom Decoder\n");
  EXPECT_EQ(read.errors, "");

  station.stop();
  EXPECT_FALSE(QFileInfo(port()).isSymLink());
}

TEST_F(CliOnSimulator, ASplitReplyIsPutTogether) {
  const test::SimulatorProcess station(simulator({"--fault", "split:immer:30"}));
  const test::ProgramRun read = cli({"cv", "read", "8", "700", "29"});
  EXPECT_EQ(read.output, "8\t97\n700\t-1021\tKein ACK vom Decoder\n29\t14\n");
}

TEST_F(CliOnSimulator, AStationThatIsPulledOutEndsTheJobWithAMessage) {
  const test::SimulatorProcess station(simulator({"--fault", "unplugged@1"}));
  const test::ProgramRun read = cli({"cv", "read", "8", "29"});
  EXPECT_EQ(read.status, 1);
  EXPECT_EQ(read.output, "8\t97\n");
  EXPECT_EQ(read.errors,
            "Die Schnittstelle COM4 (" + port().toLocal8Bit() + ") ist nicht mehr da!\n");
}

TEST_F(CliOnSimulator, CtrlCEndsAWaitOrderly) {
  test::SimulatorProcess station(simulator({"--log", "--fault", "silence:immer"}));
  write("LOKARI.INI", "[LOKARI]\r\nBaseUnit=TAMSMC\r\nComPort=4\r\nTimeout=999\r\nDelay=0\r\n");
  test::RunningProgram program(QStringLiteral("lokari-cli"), {"cv", "read", "8"}, folder.path());
  EXPECT_TRUE(station.nextLine().startsWith("> 78 50 54 52 42 20 38 0D"));
  program.interrupt();
  const test::ProgramRun read = program.finish();
  EXPECT_EQ(read.status, 1);
  EXPECT_EQ(read.output, "8\t-1002\tAbgebrochen\n");
}

TEST_F(CliOnSimulator, CtrlCEndsAGreetingThatNobodyAnswers) {
  test::SimulatorProcess station(
      {"--station", "MX1BIN", "--link", port(), "--log", "--fault", "silence:immer"});
  write("LOKARI.INI", "[LOKARI]\r\nBaseUnit=MX1BIN\r\nComPort=4\r\nTimeout=999\r\nDelay=0\r\n");
  test::RunningProgram program(QStringLiteral("lokari-cli"), {"cv", "read", "8"}, folder.path());
  EXPECT_TRUE(station.nextLine().startsWith("> 01 01 00 10 30 00 3E 17"));
  program.interrupt();
  // Unanswered, the two greetings last longer than a program may run here.
  const test::ProgramRun read = program.finish();
  EXPECT_EQ(read.status, 1);
  EXPECT_EQ(read.output, "");
  EXPECT_TRUE(station.nextLine().startsWith("> 01 01 10 21 10 30 11 04 10 21 B8 17"));
}

TEST_F(CliOnSimulator, CtrlCEndsDrivingAndSwitchingOnASilentStationAtOnce) {
  write("LOKARI.INI", "[LOKARI]\r\nBaseUnit=MX1BIN\r\nComPort=4\r\nTimeout=999\r\nDelay=0\r\n");
  for (const QStringList& call :
       {QStringList{"drive", "3", "--speed", "5"}, QStringList{"switch", "5", "1=on"}}) {
    // The greetings are answered, the question is not.
    test::SimulatorProcess station(
        {"--station", "MX1BIN", "--link", port(), "--log", "--fault", "silence:immer@2"});
    test::RunningProgram program(QStringLiteral("lokari-cli"), call, folder.path());
    const QByteArray question = call[0] == "drive" ? "08 00 03" : "09 00 05";
    while (!station.nextLine().contains(question)) {
    }
    program.interrupt();
    // A second reading alone would last half a minute more, five of them longer than any program
    // may run here.
    const test::ProgramRun run = program.finish();
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    station.stop();
    EXPECT_EQ(station.rest(), "") << "nothing more is sent";
  }
}

TEST_F(CliOnSimulator, AStopIsTheFirstMessageAndTheLastOneWhereReadingSwitchesOn) {
  write("LOKARI.INI", "[LOKARI]\r\nBaseUnit=MX1ULF\r\nComPort=4\r\nTimeout=3\r\nDelay=0\r\n");
  test::SimulatorProcess station({"--station", "MX1ULF", "--link", port(), "--log"});
  const test::ProgramRun run = cli({"drive", "3", "--stop"});
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.output.endsWith("Halt\tein\n"));
  station.stop();
  QList<QByteArray> payloads;
  const auto lines = station.rest().split('\n');
  for (const QByteArray& line : lines) {
    if (line.startsWith("> ")) payloads << line.mid(17).chopped(6);
  }
  EXPECT_EQ(payloads.mid(2), (QList<QByteArray>{"02 00", "02 02", "08 00 03", "02 00"}));
}

TEST_F(CliOnSimulator, AMainTrackWriteThatTheStationRefusesIsAFailure) {
  write("LOKARI.INI", "[LOKARI]\r\nBaseUnit=MX1\r\nComPort=4\r\nTimeout=1\r\nDelay=0\r\n");
  const test::SimulatorProcess station({"--station", "MX1", "--link", port(), "--fault", "busy"});
  const test::ProgramRun run = cli({"cv", "write", "--main", "--address", "3", "5=99"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.output, "5\t-1003\tAdresse gesperrt - Programmierung nicht möglich!\n");
}

TEST_F(CliOnSimulator, SettingsThatAreNotThereReachNoStation) {
  test::SimulatorProcess station(simulator({"--log"}));
  EXPECT_EQ(cli({"--settings", "CLUP", "cv", "read", "8"}).status, 2);
  write("LOKARI.INI", "[LOKARI]\r\nBaseUnit=TAMS\r\nComPort=4\r\n");
  EXPECT_EQ(cli({"cv", "read", "8"}).status, 2);
  station.stop();
  EXPECT_EQ(station.rest(), "");
}

TEST_F(CliOnSimulator, TheProgramWithWindowsHelpsWithoutAScreenUnlessSuchSettingsExist) {
  for (const char* question : {"--help", "-h"}) {
    const test::ProgramRun run =
        test::runProgram(QStringLiteral("lokari"), {QString::fromLatin1(question)}, folder.path());
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.output.startsWith("Aufruf: lokari [STAMM]\n")) << run.errors.constData();
  }
  EXPECT_EQ(test::runProgram(QStringLiteral("lokari"), {"--version"}, folder.path()).output,
            "Lokari V4.11\n");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), (QStringList{"LOKARI.INI", "PORTS.INI"}));
}

TEST_F(CliOnSimulator, ResultsThatCannotBeWrittenEndTheJobBeforeItsNextCv) {
  const test::SimulatorProcess station(simulator());
  test::RunningProgram program(QStringLiteral("lokari-cli"), {"cv", "write", "5=1", "6=2"},
                               folder.path(), QStringLiteral("/dev/full"));
  const test::ProgramRun run = program.finish();
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.errors,
            "Die Ergebnisse lassen sich nicht ausgeben!\nCV 5: geschrieben, nicht geprüft!\n");
  EXPECT_EQ(cli({"cv", "read", "5", "6"}).output, "5\t1\n6\t90\n");
}

TEST_F(CliOnSimulator, AReaderThatGoesAwayDoesNotEndTheProgramInTheMiddleOfASession) {
  const test::SimulatorProcess station(simulator());
  const QString call = QStringLiteral("{ '%1' cv read 8 29; echo Status $? >&2; } | true")
                           .arg(test::programPath(QStringLiteral("lokari-cli")));
  const test::ProgramRun run =
      test::runProgram(QStringLiteral("/bin/sh"), {"-c", call}, folder.path());
  EXPECT_EQ(run.errors, "Die Ergebnisse lassen sich nicht ausgeben!\nStatus 1\n");
}

TEST_F(CliOnSimulator, WithoutAStationThereIsNoSession) {
  const test::ProgramRun read = cli({"cv", "read", "8"});
  EXPECT_EQ(read.status, 2);
  EXPECT_EQ(read.output, "");
  EXPECT_EQ(read.errors,
            "Kann Kommunikationsschnittstelle nicht öffnen (0)!\nDie Schnittstelle COM4 (" +
                port().toLocal8Bit() + ") ist nicht da!\n");
}

}  // namespace
}  // namespace lokari
