// XpressNet interfaces that follow their maker's documents, in real time: the built command line
// with its messages as they always were and with those of the documents.
#include <QFile>

#include <algorithm>
#include <iterator>
#include <vector>

#include "simulator_process.h"

namespace lokari {
namespace {

struct Row {
  const char* name;
  bool makerForm;
  int funcCount;  ///< -1: as always its vehicles have messages that no document knows
  const char* test;
};

std::string rowName(const Row& row) {
  return std::string(row.name) + (row.makerForm ? "MakerForm" : "");
}

void PrintTo(const Row& row, std::ostream* out) {
  *out << rowName(row);
}

#define OLD_STATION "Lenz Zentrale Version 3.0\nLZ100\nProgrammiermodus aus\nStartmodus manuell\n"
#define NEW_STATION "Lenz Zentrale Version 3.6\nLZ100\nProgrammiermodus aus\nStartmodus manuell\n"
#define USB_STATION "Lenz Zentrale Version 3.6\nProgrammiermodus aus\nStartmodus manuell\n"
#define INTERFACE "Interface Version 3.0\n"

const Row kRows[] = {
    {"LI100", false, -1, OLD_STATION},  {"LI100", true, 12, OLD_STATION INTERFACE},
    {"LI100V3", false, 7, NEW_STATION}, {"LI100V3", true, 28, NEW_STATION INTERFACE},
    {"LIUSB", false, 7, USB_STATION},   {"LIUSB", true, 28, USB_STATION "LZ100\n" INTERFACE},
};

class LenzMakers : public ::testing::TestWithParam<Row> {
 protected:
  LenzMakers() {
    write("LOKARI.INI", QByteArray("[LOKARI]\r\nBaseUnit=") + GetParam().name +
                            "\r\nComPort=4\r\nTimeout=1\r\nDelay=0\r\nLenzV36=0\r\nMakerForm=" +
                            (GetParam().makerForm ? "J" : "N") + "\r\n");
    write("PORTS.INI", "[PORTS]\r\nCOM4=" + path("port").toLocal8Bit() + "\r\n");
    write("probe.txt",
          "[Probe]\naddress=3\nmanufacturer=97\ncvs=1-1024\nCV29=14\nCV255=55\n"
          "[Lang]\naddress=1000\ntrack=main\n");
  }

  QString path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
  QStringList simulator(const QStringList& more = {}) const {
    return QStringList{"--form", "makers",     "--station", QString::fromLatin1(GetParam().name),
                       "--link", path("port"), "--decoder", path("probe.txt")} +
           more;
  }
  test::ProgramRun cli(const QStringList& arguments) const {
    return test::runProgram(QStringLiteral("lokari-cli"), arguments, folder_.path());
  }
  void expectDone(const QStringList& arguments, const QByteArray& output) const {
    const test::ProgramRun run = cli(arguments);
    EXPECT_EQ(run.output, output) << arguments.join(u' ').toStdString();
    EXPECT_EQ(run.status, 0) << run.errors.toStdString();
  }

  QByteArray state(int speed, const char* direction, std::initializer_list<int> on) const {
    QByteArray lines = "Geschwindigkeit\t" + QByteArray::number(speed) + "\nRichtung\t" + direction;
    for (int n = 0; n <= GetParam().funcCount; ++n) {
      const bool isOn = std::find(on.begin(), on.end(), n) != on.end();
      lines += "\nF" + QByteArray::number(n) + (isOn ? "\tein" : "\taus");
    }
    return lines + '\n';
  }

 private:
  void write(const char* name, const QByteArray& text) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  QTemporaryDir folder_;
};

std::vector<Row> rowsWith(bool (*condition)(const Row& row)) {
  std::vector<Row> rows;
  std::copy_if(std::begin(kRows), std::end(kRows), std::back_inserter(rows), condition);
  return rows;
}

std::string testName(const ::testing::TestParamInfo<Row>& row) {
  return rowName(row.param);
}

INSTANTIATE_TEST_SUITE_P(Forms, LenzMakers, ::testing::ValuesIn(kRows), testName);

/// With messages for vehicles that the documents know.
class LenzMakersDrive : public LenzMakers {};
INSTANTIATE_TEST_SUITE_P(Forms, LenzMakersDrive, ::testing::ValuesIn(rowsWith([](const Row& row) {
                           return row.funcCount >= 0;
                         })),
                         testName);

/// In the form of the documents.
class LenzMakersForm : public LenzMakers {};
INSTANTIATE_TEST_SUITE_P(Forms, LenzMakersForm, ::testing::ValuesIn(rowsWith([](const Row& row) {
                           return row.makerForm;
                         })),
                         testName);

/// At a station of before version 3.6.
class LenzMakersOldStation : public LenzMakersForm {};
INSTANTIATE_TEST_SUITE_P(
    Forms, LenzMakersOldStation,
    ::testing::ValuesIn(rowsWith([](const Row& row) { return row.funcCount == 12; })), testName);

TEST_P(LenzMakers, ReadsWritesAndReadsAgain) {
  const test::SimulatorProcess station(simulator());
  expectDone({"cv", "read", "1", "29", "255"}, "1\t3\n29\t14\n255\t55\n");
  expectDone({"cv", "write", "5=99"}, "5\t99\n");
  expectDone({"cv", "read", "5"}, "5\t99\n");
}

TEST_P(LenzMakersForm, ReadsAndWritesInRegisterMode) {
  const test::SimulatorProcess station(simulator());
  expectDone({"cv", "write", "3=7", "--mode", "register"}, "3\t7\n");
  expectDone({"cv", "read", "3", "--mode", "register"}, "3\t7\n");
}

TEST_P(LenzMakers, TheTestNamesWhatAnswers) {
  const test::SimulatorProcess station(simulator());
  const test::ProgramRun run = cli({"test"});
  EXPECT_EQ(run.output, GetParam().test);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.errors.contains("MakerForm=J"), !GetParam().makerForm);
}

TEST_P(LenzMakersDrive, DrivesAndReadsTheStateBack) {
  const test::SimulatorProcess station(simulator());
  expectDone({"drive", "3", "--speed", "64", "--back", "--function", "3=on"},
             state(64, "rückwärts", {3}));
  expectDone({"drive", "3"}, state(64, "rückwärts", {3}));
}

TEST_P(LenzMakersForm, F8StaysWhenF6IsSwitched) {
  const test::SimulatorProcess station(simulator());
  expectDone({"drive", "3", "--function", "8=on", "--function", "12=on"},
             state(0, "vorwärts", {8, 12}));
  expectDone({"drive", "3", "--function", "6=on"}, state(0, "vorwärts", {6, 8, 12}));
}

TEST_P(LenzMakersOldStation, AFunctionThatTheStationHasNotIsNotShownAsDone) {
  const test::SimulatorProcess station(simulator());
  const test::ProgramRun run = cli({"drive", "3", "--function", "13=on"});
  EXPECT_EQ(run.status, 1) << run.output.toStdString() << run.errors.toStdString();
}

TEST_P(LenzMakers, SwitchesAndReadsTheOutputsBack) {
  const test::SimulatorProcess station(simulator());
  for (const QStringList& call : {QStringList{"switch", "5", "1=off", "2=on", "3=off", "4=off"},
                                  QStringList{"switch", "5", "2=on"}}) {
    expectDone(call, "1\taus\n2\tein\n3\taus\n4\taus\n");
  }
}

TEST_P(LenzMakers, BroadcastsMayComeThreeTimesAndTheConfirmationBehindThem) {
  const test::SimulatorProcess station(simulator({"--repeat", "3", "--confirm", "behind"}));
  expectDone({"cv", "read", "29"}, "29\t14\n");
  expectDone({"cv", "write", "5=99"}, "5\t99\n");
}

}  // namespace
}  // namespace lokari
