// New firmware from a file into a simulated MX1, in real time.
#include <QFile>

#include "simulator_process.h"

namespace lokari {
namespace {

class FirmwareOnSimulator : public ::testing::TestWithParam<const char*> {
 protected:
  FirmwareOnSimulator() {
    write("LOKARI.INI", "[LOKARI]\r\nBaseUnit=" + QByteArray(GetParam()) +
                            "\r\nComPort=4\r\nTimeout=1\r\nDelay=0\r\n");
    write("PORTS.INI", "[PORTS]\r\nCOM4=" + path("mx1").toLocal8Bit() + "\r\n");
  }

  QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

  void write(const char* name, const QByteArray& data) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(data);
  }

  QByteArray read(const char* name) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
  }

  /// A file in both banks with a gap, written by objcopy, and what objcopy reads in it.
  void makeFirmware() const {
    QByteArray content;
    for (int i = 0; i < 300; ++i) content.append(static_cast<char>(i * 7));
    content.append(QByteArray(0x8000 - content.size(), '\xFF'));
    for (int i = 0; i < 100; ++i) content.append(static_cast<char>(255 - i));
    write("source", content);
    objcopy({"-I", "binary", "-O", "ihex", "source", "new.hex"});
    // Records for erased memory say nothing: without them the file has a gap.
    QByteArray text;
    for (const QByteArray& line : read("new.hex").split('\n')) {
      if (!line.contains(QByteArray("FF").repeated(16)) && !line.isEmpty()) text += line + '\n';
    }
    write("new.hex", text);
    objcopy({"-I", "ihex", "-O", "binary", "--gap-fill", "0xff", "new.hex", "expected"});
  }

  void objcopy(const QStringList& arguments) const {
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(QStringLiteral("objcopy"), arguments);
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
  }

  QStringList simulator(const QStringList& more = {}) const {
    return QStringList{"--station", GetParam(), "--link", path("mx1"), "--image", path("image")} +
           more;
  }

  QStringList call() const { return {"firmware", path("new.hex"), "--yes"}; }

  QTemporaryDir folder;
};

INSTANTIATE_TEST_SUITE_P(Kinds, FirmwareOnSimulator, ::testing::Values("MX1", "MX1V25"),
                         [](const auto& each) { return std::string(each.param); });

TEST_P(FirmwareOnSimulator, TheStationHoldsWhatObjcopyReadsInTheFile) {
  makeFirmware();
  test::SimulatorProcess station(
      simulator({"--fault", "blockerror:2@3", "--fault", "banklost@9", "--fault", "silence@15"}));
  const test::ProgramRun run =
      test::runProgram(QStringLiteral("lokari-cli"), call(), folder.path());
  // The lost answer leaves a doubt, although the block is there.
  EXPECT_EQ(run.output,
            "Übertragung der Firmware abgeschlossen!\n"
            "1 Block blieb ohne Antwort: bitte noch einmal einspielen.\n")
      << run.errors.constData();
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(run.errors.startsWith("Firmware-Datei new.hex einspielen? [OK]\n"));
  EXPECT_TRUE(station.nextLine().startsWith("Firmware gespeichert: "));
  const QByteArray expected = read("expected");
  EXPECT_EQ(expected.size(), 0x8000 + 100);
  EXPECT_EQ(read("image"), expected + QByteArray(65536 - expected.size(), '\xFF'));
}

TEST_P(FirmwareOnSimulator, CtrlCInTheGreetingAsksForNoBootLoader) {
  makeFirmware();
  test::SimulatorProcess station(simulator({"--log"}));
  test::RunningProgram program(QStringLiteral("lokari-cli"), call(), folder.path());
  EXPECT_TRUE(station.nextLine().startsWith("> 0D"));
  program.interrupt();
  const test::ProgramRun run = program.finish();
  EXPECT_EQ(run.output, "Übertragung der Firmware abgebrochen!\n");
  EXPECT_EQ(run.status, 1);
  station.stop();
  EXPECT_EQ(station.rest().count("> 44 6F 77 6E"), 0) << "no Download";
}

TEST_P(FirmwareOnSimulator, CtrlCBehindTheDownloadSendsTheDots) {
  makeFirmware();
  test::SimulatorProcess station(simulator({"--log", "--fault", "silence:immer"}));
  write("LOKARI.INI", "[LOKARI]\r\nBaseUnit=" + QByteArray(GetParam()) +
                          "\r\nComPort=4\r\nTimeout=999\r\nDelay=0\r\n");
  test::RunningProgram program(QStringLiteral("lokari-cli"), call(), folder.path());
  while (!station.nextLine().startsWith("> 44 6F 77 6E")) {
  }
  program.interrupt();
  const test::ProgramRun run = program.finish();
  EXPECT_EQ(run.output, "Übertragung der Firmware abgebrochen!\n");
  EXPECT_EQ(run.status, 1);
  station.stop();
  const QByteArray rest = station.rest();
  EXPECT_EQ(rest.count("> 44 6F 77 6E"), 0) << rest.constData();
  EXPECT_EQ(rest.count("2E"), 3) << rest.constData();
}

TEST_P(FirmwareOnSimulator, CtrlCLeavesTheBootLoader) {
  makeFirmware();
  test::SimulatorProcess station(simulator({"--log", "--fault", "blockerror:immer"}));
  test::RunningProgram program(QStringLiteral("lokari-cli"), call(), folder.path());
  while (!station.nextLine().startsWith("> 21 00 00 00")) {
  }
  program.interrupt();
  const test::ProgramRun run = program.finish();
  EXPECT_EQ(run.output, "Übertragung der Firmware abgebrochen!\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(read("image"), QByteArray(65536, '\xFF'));
}

TEST_P(FirmwareOnSimulator, AStationThatIsPulledOutEndsTheTransferWithAMessage) {
  makeFirmware();
  const test::SimulatorProcess station(simulator({"--fault", "unplugged@4"}));
  const test::ProgramRun run =
      test::runProgram(QStringLiteral("lokari-cli"), call(), folder.path());
  EXPECT_EQ(run.output, "Die Schnittstelle COM4 (" + path("mx1").toLocal8Bit() +
                            ") ist nicht mehr da!\n"
                            "Bitte Kabel an COM4, Stromversorgung und Baudrate (9600) prüfen.\n");
  EXPECT_EQ(run.status, 1);
}

}  // namespace
}  // namespace lokari
