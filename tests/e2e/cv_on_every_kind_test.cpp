// Every kind of station in real time: the built command line reads, writes and reads again on the
// built simulator.
#include <QFile>

#include "simulator_process.h"

namespace lokari {
namespace {

struct KindRow {
  const char* name;
  int lastReadable;  ///< CVs above it are not offered
  int lastWritable;
  bool writesOnMain;
  bool readsOnMain;
  bool readsBack;             ///< what it has written on the programming track
  const char* variant = "";   ///< part of the test's name
  const char* settings = "";  ///< more lines of the settings file
};

std::string rowName(const KindRow& row) {
  return std::string(row.name) + row.variant;
}

void PrintTo(const KindRow& row, std::ostream* out) {
  *out << rowName(row);
}

const KindRow kKinds[] = {
    {"MX1", 1024, 255, true, false, true},
    {"MX1V25", 1024, 255, true, false, true},
    {"MX1BIN", 1024, 1024, true, false, true},
    {"MX1ULF", 1024, 1024, false, false, true},
    {"MX10", 1024, 1024, true, true, false},
    {"MX10IP", 1024, 1024, true, true, false},
    {"TAMSMC", 1024, 1024, true, false, false},
    {"Z21IP", 1024, 1024, true, true, true},
    {"LI100", 255, 255, false, false, true},
    {"LI100", 1024, 1024, false, false, true, "V36", "LenzV36=1\r\n"},
    {"LI100V3", 255, 255, true, false, true},
    {"LI100V3", 1024, 1024, true, false, true, "V36", "LenzV36=1\r\n"},
    {"LIUSB", 1024, 1024, true, false, true},
    {"LIUSB", 255, 255, true, false, true, "WithoutV36", "LenzV36=0\r\n"},
    {"LIDP", 1024, 1024, false, false, false},
    {"IBX", 1024, 1024, true, false, false},
};

/// CVs at the edges of the numbers' fields, with what the decoder holds.
constexpr int kCvs[][2] = {{1, 3},    {29, 14},  {255, 55}, {256, 56},
                           {257, 57}, {512, 12}, {1024, 24}};

class CvOnEveryKind : public ::testing::TestWithParam<KindRow> {
 protected:
  CvOnEveryKind() {
    write("LOKARI.INI", QByteArray("[LOKARI]\r\nBaseUnit=") + GetParam().name +
                            "\r\nComPort=4\r\nIPAddr=127.000.000.001\r\nTimeout=5\r\nDelay=0\r\n" +
                            GetParam().settings);
    write("PORTS.INI", "[PORTS]\r\nCOM4=" + path("port").toLocal8Bit() + "\r\n");
    QByteArray vehicle("[Probe]\naddress=3\nmanufacturer=97\ncvs=1-1024\n");
    for (const auto& [cv, value] : kCvs) {
      if (cv != 1)
        vehicle += "CV" + QByteArray::number(cv) + "=" + QByteArray::number(value) + "\n";
    }
    write("probe.txt", vehicle + "[Lang]\naddress=1000\ntrack=main\n");
  }

  QString path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }

  QStringList simulator() const {
    return {"--station", QString::fromLatin1(GetParam().name),
            "--link",    path("port"),
            "--decoder", path("probe.txt")};
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

INSTANTIATE_TEST_SUITE_P(Kinds, CvOnEveryKind, ::testing::ValuesIn(kKinds),
                         [](const auto& row) { return rowName(row.param); });

TEST_P(CvOnEveryKind, ReadsWritesAndReadsAgain) {
  const test::SimulatorProcess station(simulator());
  QStringList reads;
  QStringList writes;
  QByteArray before;
  QByteArray written;
  QByteArray after;
  QStringList unproved;
  for (const auto& [cv, value] : kCvs) {
    if (cv > GetParam().lastReadable) continue;
    const bool changes = cv <= GetParam().lastWritable && cv != 1 && cv != 29;
    const int now = changes ? 255 - value : value;
    reads << QString::number(cv);
    before += QByteArray::number(cv) + "\t" + QByteArray::number(value) + "\n";
    after += QByteArray::number(cv) + "\t" + QByteArray::number(now) + "\n";
    if (cv > GetParam().lastWritable) continue;
    writes << QStringLiteral("%1=%2").arg(cv).arg(now);
    if (!GetParam().readsBack) unproved << QString::number(cv);
    written += QByteArray::number(cv) + "\t" + QByteArray::number(now) + "\n";
  }
  for (const auto& [arguments, output] : {std::pair{QStringList{"cv", "read"} + reads, before},
                                          std::pair{QStringList{"cv", "write"} + writes, written},
                                          std::pair{QStringList{"cv", "read"} + reads, after}}) {
    const test::ProgramRun run = cli(arguments);
    EXPECT_EQ(run.output, output);
    const QByteArray command = arguments.mid(0, 2).join(u' ').toLatin1();
    QByteArray told = test::switchingNote(GetParam().name, command.constData(), StationUse::CvJob);
    if (command == "cv write" && !unproved.isEmpty()) {
      told += "CV " + unproved.join(", ").toUtf8() + ": geschrieben, nicht geprüft!\n";
    }
    EXPECT_EQ(run.errors, told);
    EXPECT_EQ(run.status, 0);
  }
}

TEST_P(CvOnEveryKind, WritesOnTheMainTrackWhereItIsOffered) {
  const test::SimulatorProcess station(simulator());
  const test::ProgramRun shortAddress = cli({"cv", "write", "--main", "--address", "3", "5=99"});
  if (!GetParam().writesOnMain) {
    EXPECT_EQ(shortAddress.status, 2);
    EXPECT_EQ(shortAddress.output, "");
    return;
  }
  EXPECT_EQ(shortAddress.status, 0);
  EXPECT_EQ(shortAddress.output, "5\t99\n");
  const test::ProgramRun longAddress = cli({"cv", "write", "--main", "--address", "1000", "5=7"});
  EXPECT_EQ(longAddress.status, 0);
  EXPECT_EQ(longAddress.output, "5\t7\n");
  EXPECT_EQ(cli({"cv", "read", "5"}).output, "5\t99\n");
}

TEST_P(CvOnEveryKind, ReadsOnTheMainTrackWhereItIsOffered) {
  const test::SimulatorProcess station(simulator());
  const test::ProgramRun run = cli({"cv", "read", "--main", "--address", "1000", "17", "18"});
  EXPECT_EQ(run.status, GetParam().readsOnMain ? 0 : 2);
  EXPECT_EQ(run.output, GetParam().readsOnMain ? "17\t195\n18\t232\n" : "");
}

}  // namespace
}  // namespace lokari
