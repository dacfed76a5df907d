// Stations on a serial line in their makers' form, in real time: the built command line tests them,
// reads and writes CVs, drives and switches, with its messages as told and after the documents.
#include <QFile>

#include "simulator_process.h"

namespace lokari {
namespace {

struct Row {
  const char* name;
  const char* makerForm;
  int funcCount;
  bool switches;         ///< the documents have a message for outputs
  const char* lastLine;  ///< of the communication test
};

std::string rowName(const Row& row) {
  return std::string(row.name) + (*row.makerForm == 'J' ? "AfterTheDocuments" : "AsTold");
}

void PrintTo(const Row& row, std::ostream* out) {
  *out << rowName(row);
}

const Row kRows[] = {
    {"IBX", "N", 7, true, "Power On "},
    {"IBX", "J", 8, true, "Power On "},
    {"TAMSMC", "N", 7, true, "Power On "},
    {"TAMSMC", "J", 28, true, "Power On "},
    {"MX1BIN", "N", 12, false, "Fahrspannung eingeschaltet"},
    {"MX1BIN", "J", 12, false, "Fahrspannung eingeschaltet"},
};

class MakersSerial : public ::testing::TestWithParam<Row> {
 protected:
  MakersSerial() {
    write("LOKARI.INI", QByteArray("[LOKARI]\r\nBaseUnit=") + GetParam().name +
                            "\r\nComPort=4\r\nTimeout=1\r\nDelay=0\r\nMakerForm=" +
                            GetParam().makerForm + "\r\n");
    write("PORTS.INI", "[PORTS]\r\nCOM4=" + path("port").toLocal8Bit() + "\r\n");
  }

  QString path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
  QStringList simulator() const {
    return {"--station", QString::fromLatin1(GetParam().name), "--form", "makers", "--link",
            path("port")};
  }
  test::ProgramRun cli(const QStringList& arguments) const {
    return test::runProgram(QStringLiteral("lokari-cli"), arguments, folder_.path());
  }

 private:
  void write(const char* name, const QByteArray& text) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  QTemporaryDir folder_;
};

INSTANTIATE_TEST_SUITE_P(Kinds, MakersSerial, ::testing::ValuesIn(kRows),
                         [](const auto& row) { return rowName(row.param); });

TEST_P(MakersSerial, TheTestNamesTheStation) {
  const test::SimulatorProcess station(simulator());
  const test::ProgramRun run = cli({"test"});
  EXPECT_EQ(run.status, 0) << run.errors.toStdString();
  EXPECT_TRUE(run.output.contains(GetParam().lastLine)) << run.output.toStdString();
  EXPECT_FALSE((run.output + run.errors).contains("Kabel"));
}

TEST_P(MakersSerial, CvsAreReadAndWritten) {
  const test::SimulatorProcess station(simulator());
  EXPECT_EQ(cli({"cv", "read", "8"}).output, "8\t97\n");
  const test::ProgramRun written = cli({"cv", "write", "3=77"});
  EXPECT_EQ(written.status, 0) << written.errors.toStdString();
  EXPECT_EQ(cli({"cv", "read", "3"}).output, "3\t77\n");
}

TEST_P(MakersSerial, AVehicleIsDrivenAndReadBack) {
  const test::SimulatorProcess station(simulator());
  const test::ProgramRun before = cli({"drive", "3"});
  EXPECT_EQ(before.status, 0) << before.errors.toStdString();
  EXPECT_TRUE(before.output.startsWith("Geschwindigkeit\t0\n"));
  const test::ProgramRun run = cli({"drive", "3", "--speed", "64", "--back", "--function", "3=on"});
  EXPECT_EQ(run.status, 0) << run.errors.toStdString();
  EXPECT_TRUE(run.output.startsWith("Geschwindigkeit\t64\nRichtung\trückwärts\n"))
      << run.output.toStdString();
  EXPECT_TRUE(run.output.contains("\nF3\tein\n"));
  const QByteArray last = "\nF" + QByteArray::number(GetParam().funcCount) + "\taus\n";
  EXPECT_TRUE(run.output.endsWith(last)) << run.output.toStdString();
}

class FirstIntellibox : public MakersSerial {};

INSTANTIATE_TEST_SUITE_P(Kinds, FirstIntellibox, ::testing::Values(kRows[1]),
                         [](const auto& row) { return rowName(row.param); });

TEST_P(FirstIntellibox, AFunctionThatTheStationLacksIsTold) {
  const test::SimulatorProcess station(simulator());
  const test::ProgramRun run = cli({"drive", "3", "--function", "20=on"});
  EXPECT_NE(run.status, 0);
  EXPECT_TRUE(run.errors.contains("F20 kennt die Digitalzentrale nicht!"));
}

TEST_P(MakersSerial, OutputsAreSwitchedAndReadBack) {
  const test::SimulatorProcess station(simulator());
  const test::ProgramRun run = cli({"switch", "13", "1=off", "2=on", "3=off", "4=off"});
  if (GetParam().switches) {
    EXPECT_EQ(run.status, 0) << run.errors.toStdString();
    EXPECT_EQ(cli({"switch", "13", "2=on"}).output, "1\taus\n2\tein\n3\taus\n4\taus\n");
  } else {
    EXPECT_NE(run.status, 0) << "nothing is told as done";
  }
}

}  // namespace
}  // namespace lokari
