// Driving and switching in real time, once per transport and way of speaking: the built command
// line drives on the built simulator, and reads back what the station has kept.
#include <QFile>

#include "simulator_process.h"

namespace lokari {
namespace {

struct KindRow {
  const char* name;
  bool manual;
  int funcCount;
};

void PrintTo(const KindRow& row, std::ostream* out) {
  *out << row.name;
}

const KindRow kKinds[] = {
    {"MX1", true, 12},  {"MX1ULF", true, 12}, {"LIUSB", false, 7},  {"TAMSMC", false, 7},
    {"MX10", true, 28}, {"MX10IP", true, 28}, {"Z21IP", false, 28},
};

class DriveOnSimulator : public ::testing::TestWithParam<KindRow> {
 protected:
  DriveOnSimulator() {
    write("LOKARI.INI", QByteArray("[LOKARI]\r\nBaseUnit=") + GetParam().name +
                            "\r\nComPort=4\r\nIPAddr=127.000.000.001\r\nTimeout=3\r\nDelay=0\r\n");
    write("PORTS.INI", "[PORTS]\r\nCOM4=" + path("port").toLocal8Bit() + "\r\n");
  }

  QString path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
  QStringList simulator() const {
    return {"--station", QString::fromLatin1(GetParam().name), "--link", path("port")};
  }
  test::ProgramRun cli(const QStringList& arguments) const {
    return test::runProgram(QStringLiteral("lokari-cli"), arguments, folder_.path());
  }

  QByteArray state(int speed, const char* direction, int functionOn) const {
    QByteArray lines = "Geschwindigkeit\t" + QByteArray::number(speed) + "\nRichtung\t" + direction;
    if (GetParam().manual) lines += "\nHandbetrieb\taus";
    for (int n = 0; n <= GetParam().funcCount; ++n) {
      lines += "\nF" + QByteArray::number(n) + (n == functionOn ? "\tein" : "\taus");
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

INSTANTIATE_TEST_SUITE_P(Kinds, DriveOnSimulator, ::testing::ValuesIn(kKinds),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(DriveOnSimulator, DrivesAndReadsTheStateBack) {
  const test::SimulatorProcess station(simulator());
  for (const QStringList& call :
       {QStringList{"drive", "3", "--speed", "64", "--back", "--function", "3=on"},
        QStringList{"drive", "3"}}) {
    const test::ProgramRun run = cli(call);
    EXPECT_EQ(run.output, state(64, "rückwärts", 3));
    EXPECT_EQ(run.errors, test::switchingNote(GetParam().name, "drive", StationUse::Cab));
    EXPECT_EQ(run.status, 0);
  }
}

TEST_P(DriveOnSimulator, SwitchesAndReadsTheOutputsBack) {
  const test::SimulatorProcess station(simulator());
  for (const QStringList& call : {QStringList{"switch", "5", "1=off", "2=on", "3=off", "4=off"},
                                  QStringList{"switch", "5", "2=on"}}) {
    const test::ProgramRun run = cli(call);
    EXPECT_EQ(run.output, "1\taus\n2\tein\n3\taus\n4\taus\n");
    EXPECT_EQ(run.errors, test::switchingNote(GetParam().name, "switch", StationUse::Panel));
    EXPECT_EQ(run.status, 0);
  }
}

}  // namespace
}  // namespace lokari
