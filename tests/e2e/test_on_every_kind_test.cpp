// The communication test in real time: the built command line on the built simulator of every kind.
#include <QFile>

#include "simulator_process.h"

namespace lokari {
namespace {

struct KindRow {
  const char* name;
  const char* output;
};

void PrintTo(const KindRow& row, std::ostream* out) {
  *out << row.name;
}

const KindRow kKinds[] = {
    {"MX1", "MX1 neue Generation\nDCC Datenformat aktiv\nSammelstop ein\n"},
    {"MX1V25", "MX1 neue Generation\nDCC Datenformat aktiv\nSammelstop ein\n"},
    {"MX1BIN",
     "MX1 2000 / HS\nSoftware 1.25.02 vom 14.3.12\nBoot ROM 1.04\nDCC Datenformat aktiv\n"
     "Sammelstop ein\n"},
    {"MX1ULF",
     "MXULF\nSoftware 1.25.02 vom 14.3.12\nBoot ROM 1.04\nSer. Nr. 741959\n"
     "DCC Datenformat aktiv\nSammelstop ein\n"},
    {"LI100",
     "Lenz Zentrale Version 2.3\nProgrammiermodus aus\nStartmodus automatisch\nNotaus aktiv\n"
     "Nothalt aktiv\n"},
    {"LI100V3",
     "Lenz Zentrale Version 3.6\nLZ100\nProgrammiermodus aus\nStartmodus automatisch\n"
     "Notaus aktiv\nNothalt aktiv\n"},
    {"LIUSB",
     "Lenz Zentrale Version 3.6\nProgrammiermodus aus\nStartmodus automatisch\nNotaus aktiv\n"
     "Nothalt aktiv\n"},
    {"LIDP", "Lenz Decoderprogrammer\nStatus OK, Gleisausgang aus\n"},
    {"IBX",
     "IBX SPU Version 1.550 / KPU Version 1.310\nPPU Version 1.4 / LIPU Version 0.9\n"
     "DNG Version 2.A\nIBX Serien-#: 0001234F56\nPower Off Halt aktiv \n"},
    {"TAMSMC", "Tams MC SPU Version 2.14a\nMC Serien-#: 0001E240\nPower Off Halt aktiv \n"},
    {"MX10", "MX10 Ser. Nr. 2147558213\nUSB 0312\nSW Vers. 2.25.1\n"},
    {"MX10IP", "MX10 Ser. Nr. 2147558213\nEthernet 0312\nSW Vers. 2.25.1\n"},
    {"Z21IP", "Roco Z21 Ser. Nr. 123456\nFirmware Vers. 1.43\n"},
};

class TestOnEveryKind : public ::testing::TestWithParam<KindRow> {
 protected:
  TestOnEveryKind() {
    write("LOKARI.INI", QByteArray("[LOKARI]\r\nBaseUnit=") + GetParam().name +
                            "\r\nComPort=4\r\nIPAddr=127.000.000.001\r\nTimeout=1\r\nDelay=0\r\n");
    write("PORTS.INI", "[PORTS]\r\nCOM4=" + port().toLocal8Bit() + "\r\n");
  }

  QString port() const { return folder_.filePath(QStringLiteral("port")); }

  test::ProgramRun cli() const {
    return test::runProgram(QStringLiteral("lokari-cli"), {"test"}, folder_.path());
  }

 private:
  void write(const char* name, const QByteArray& text) const {
    QFile file(folder_.filePath(QString::fromLatin1(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  QTemporaryDir folder_;
};

INSTANTIATE_TEST_SUITE_P(Kinds, TestOnEveryKind, ::testing::ValuesIn(kKinds),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(TestOnEveryKind, TellsTheStationAndItsState) {
  const test::SimulatorProcess station({"--station", QString::fromLatin1(GetParam().name), "--link",
                                        port(), "--state", "off", "--state", "stop"});
  const test::ProgramRun run = cli();
  EXPECT_EQ(run.output, GetParam().output);
  EXPECT_EQ(run.errors, test::switchingNote(GetParam().name, "test", StationUse::Test));
  EXPECT_EQ(run.status, 0);
}

TEST_P(TestOnEveryKind, WithoutAStationTellsWhereToLook) {
  const test::ProgramRun run = cli();
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.output, "");
  EXPECT_TRUE(run.errors.startsWith(test::switchingNote(GetParam().name, "test", StationUse::Test) +
                                    "Kann Kommunikationsschnittstelle nicht öffnen ("));
  EXPECT_TRUE(run.errors.endsWith(" prüfen.\n"));
}

}  // namespace
}  // namespace lokari
