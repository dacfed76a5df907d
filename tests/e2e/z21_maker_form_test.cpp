// The built command line on the built simulator of a Z21 in its maker's form, in real time.
#include <QFile>

#include "simulator_process.h"

namespace lokari {
namespace {

struct Form {
  const char* name;
  QStringList options;
};
void PrintTo(const Form& form, std::ostream* out) {
  *out << form.name;
}

class MakersZ21 : public ::testing::TestWithParam<Form> {
 protected:
  /// `form` is the value of MakerForm.
  void use(const char* form) {
    QFile file(folder_.filePath(QStringLiteral("LOKARI.INI")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("[LOKARI]\r\nBaseUnit=Z21IP\r\nIPAddr=127.000.000.001\r\n"
                          "Timeout=1\r\nDelay=0\r\nMakerForm=") +
               form + "\r\n");
  }

  static QStringList simulator() {
    return QStringList{"--station", "Z21IP", "--form", "makers"} + GetParam().options;
  }
  test::ProgramRun cli(const QStringList& arguments) const {
    return test::runProgram(QStringLiteral("lokari-cli"), arguments, folder_.path());
  }

  static QByteArray functions(int on) {
    QByteArray lines;
    for (int n = 0; n <= 28; ++n) {
      lines += "F" + QByteArray::number(n) + (n == on ? "\tein\n" : "\taus\n");
    }
    return lines;
  }

 private:
  QTemporaryDir folder_;
};

const Form kForms[] = {{"AnyIP", {}},
                       {"SubscribersIP", {"--subscribers"}},
                       {"BundledIP", {"--subscribers", "--bundle"}}};

// The names end in IP: such tests share the port and run one at a time.
INSTANTIATE_TEST_SUITE_P(Forms, MakersZ21, ::testing::ValuesIn(kForms),
                         [](const auto& form) { return std::string(form.param.name); });

TEST_P(MakersZ21, IsTestedReadWrittenDrivenAndSwitchedAfterItsDocuments) {
  use("J");
  test::SimulatorProcess station(simulator());

  const test::ProgramRun tested = cli({"test"});
  EXPECT_EQ(tested.output,
            "Roco Z21 Ser. Nr. 123456\nFirmware Vers. 1.43\nGerät: Z21, Version 1.43\n"
            "Gleisspannung ein\n");
  EXPECT_EQ(tested.errors, "");

  const test::ProgramRun written = cli({"cv", "write", "3=77"});
  EXPECT_EQ(written.output, "3\t77\n");
  EXPECT_EQ(written.errors, "") << "nothing is switched on";
  const test::ProgramRun read = cli({"cv", "read", "8", "3"});
  EXPECT_EQ(read.output, "8\t97\n3\t77\n");
  EXPECT_EQ(read.status, 0);

  for (const QStringList& call :
       {QStringList{"drive", "3", "--speed", "64", "--back", "--function", "3=on"},
        QStringList{"drive", "3"}}) {
    const test::ProgramRun driven = cli(call);
    EXPECT_EQ(driven.output, "Geschwindigkeit\t64\nRichtung\trückwärts\n" + functions(3));
    EXPECT_EQ(driven.errors, "");
    EXPECT_EQ(driven.status, 0);
  }

  const test::ProgramRun switched = cli({"switch", "13", "1=on", "2=off"});
  EXPECT_EQ(switched.output, "1\tein\n2\taus\n3\tein\n4\tein\n");
  EXPECT_EQ(switched.status, 0);
  station.stop();
  const QByteArray told = station.rest();
  EXPECT_TRUE(told.contains("Weiche 49: Spule 0 aus\n")) << told.toStdString();
  EXPECT_TRUE(told.contains("Weiche 50: Spule 1 aus\n")) << told.toStdString();
  EXPECT_FALSE(told.contains("Nothalt")) << told.toStdString();
}

TEST_P(MakersZ21, AStopIsConfirmedAndALayoutThatStandsIsTold) {
  use("J");
  const test::SimulatorProcess station(simulator());
  const test::ProgramRun stopped = cli({"drive", "3", "--stop"});
  EXPECT_TRUE(stopped.output.endsWith("Halt\tein\n")) << stopped.output.toStdString();
  EXPECT_EQ(stopped.status, 0);
  const test::ProgramRun driven = cli({"drive", "3", "--speed", "20"});
  EXPECT_EQ(driven.errors,
            "Die Zentrale hat den Befehl angenommen, aber die Anlage ist angehalten.\n");
  const test::ProgramRun going = cli({"drive", "3", "--go"});
  EXPECT_EQ(going.errors, "");
  EXPECT_TRUE(going.output.endsWith("Halt\taus\n")) << going.output.toStdString();
}

TEST_P(MakersZ21, AsAlwaysItIsFoundAndNotUnderstood) {
  use("N");
  const test::SimulatorProcess station(simulator());
  const test::ProgramRun tested = cli({"test"});
  EXPECT_EQ(tested.output, "Roco Z21 Ser. Nr. 123456\nFirmware Vers. 1.43\n");
  const test::ProgramRun driven = cli({"drive", "3", "--speed", "64"});
  EXPECT_EQ(driven.status, 1);
  EXPECT_TRUE(driven.errors.endsWith("Keine Daten von Digitalzentrale erhalten\n"));
}

}  // namespace
}  // namespace lokari
