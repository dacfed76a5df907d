// The communication test against the simulated station of every kind, in virtual time.
#include <gtest/gtest.h>

#include "link/station_link.h"
#include "link/system_can.h"
#include "sim/station_table.h"
#include "station/comm_test.h"
#include "support/recording_view.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"
#include "support/sim_socket.h"

namespace lokari {
namespace {

using Outcome = CommTestResult::Outcome;

struct Row {
  QStringList lines;
  StationKind kind;
  bool hasHead = true;  ///< an answer is recognised by what it begins with
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << QString::fromUtf16(stationKind(row.kind).name).toStdString();
}

const QStringList kMx1{"MX1 neue Generation", "DCC Datenformat aktiv",
                       "Fahrspannung eingeschaltet"};
const QStringList kNewLenz{"Lenz Zentrale Version 3.6", "LZ100", "Programmiermodus aus",
                           "Startmodus automatisch"};
const QString kZimoSoftware = QStringLiteral("Software 1.25.02 vom 14.3.12");

const Row kRows[] = {
    {kMx1, StationKind::Mx1},
    {{"Lenz Zentrale Version 2.3", "Programmiermodus aus", "Startmodus automatisch"},
     StationKind::Li100},
    {kNewLenz, StationKind::Li100V3},
    {{"IBX SPU Version 1.550 / KPU Version 1.310", "PPU Version 1.4 / LIPU Version 0.9",
      "DNG Version 2.A", "IBX Serien-#: 0001234F56", "Power On "},
     StationKind::Ibx,
     false},
    {kMx1, StationKind::Mx1V25},
    {{"Lenz Zentrale Version 3.6", "Programmiermodus aus", "Startmodus automatisch"},
     StationKind::LiUsb},
    {{"Tams MC SPU Version 2.14a", "MC Serien-#: 0001E240", "Power On "},
     StationKind::TamsMc,
     false},
    {{"MX1 2000 / HS", kZimoSoftware, "Boot ROM 1.04", "DCC Datenformat aktiv",
      "Fahrspannung eingeschaltet"},
     StationKind::Mx1Bin},
    {{"MXULF", kZimoSoftware, "Boot ROM 1.04", "Ser. Nr. 741959", "DCC Datenformat aktiv",
      "Fahrspannung eingeschaltet"},
     StationKind::Mx1Ulf},
    {{"Lenz Decoderprogrammer", "Status OK, Gleisausgang aus"}, StationKind::LiDp},
    {{"MX10 Ser. Nr. 2147558213", "USB 0312", "SW Vers. 2.25.1"}, StationKind::Mx10},
    {{"MX10 Ser. Nr. 2147558213", "Ethernet 0312", "SW Vers. 2.25.1"}, StationKind::Mx10Ip},
    {{"Roco Z21 Ser. Nr. 123456", "Firmware Vers. 1.43"}, StationKind::Z21Ip},
};

class EveryStation : public ::testing::TestWithParam<Row> {
 protected:
  EveryStation() {
    settings.baseUnit = GetParam().kind;
    settings.ipAddr = QStringLiteral("127.000.000.001");
    settings.timeoutVal = 2;
    const sim::StationRow& row =
        *sim::stationByName(QStringView(stationKind(GetParam().kind).name));
    station = row.make({clock, layout, faults, 20});
    if (row.wire == sim::Wire::Serial) {
      line = std::make_unique<test::SimLine>(clock, *station);
      socket = std::make_unique<test::MemorySocket>(clock);
    } else {
      line = std::make_unique<test::MemoryLine>(clock);
      socket = std::make_unique<test::SimSocket>(clock, *station);
    }
    can = std::make_unique<SystemCan>(clock, *line, *socket, std::vector<CanInterface>{});
    link = std::make_unique<StationLink>(settings, clock, prompt, Transports{*line, *socket, *can});
    link->commJob = CommJob::TestComm;
  }

  void fault(const char* text) { faults.add(*sim::faultFromText(QString::fromLatin1(text))); }

  CommTestResult run() {
    const CommTestResult result = TestComm(*link, settings);
    EXPECT_EQ(link->commUseCount, 0);
    return result;
  }

  test::VirtualClock clock;
  sim::Layout layout;
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> station;
  Settings settings;
  test::ScriptedPrompt prompt;
  std::unique_ptr<test::MemoryLine> line;
  std::unique_ptr<test::MemorySocket> socket;
  std::unique_ptr<SystemCan> can;
  std::unique_ptr<StationLink> link;
};

INSTANTIATE_TEST_SUITE_P(Kinds, EveryStation, ::testing::ValuesIn(kRows), [](const auto& row) {
  return QString::fromUtf16(stationKind(row.param.kind).name).toStdString();
});

TEST_P(EveryStation, TellsWhoItIs) {
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::Answered);
  EXPECT_EQ(result.lines, GetParam().lines);
  EXPECT_EQ(settings.baseUnit, GetParam().kind);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(EveryStation, TellsTheSameASecondTime) {
  run();
  EXPECT_EQ(run().lines, GetParam().lines);
}

TEST_P(EveryStation, AnAnswerByteByByteIsPutTogether) {
  fault("split:immer:5");
  const CommTestResult result = run();
  // A datagram and a message of the bus do not come apart, and half of one is none.
  if (stationKind(GetParam().kind).transport == Transport::Serial) {
    EXPECT_EQ(result.lines, GetParam().lines);
  }
}

TEST_P(EveryStation, ASilentOneEndsInASentenceAndWhereToLook) {
  fault("silence:immer");
  const CommTestResult result = run();
  EXPECT_NE(result.outcome, Outcome::Answered);
  ASSERT_GE(result.lines.size(), 2);
  EXPECT_TRUE(result.lines.last().startsWith("Bitte "));
}

TEST_P(EveryStation, NoiseIsNoAnswerWhereAnAnswerHasAHead) {
  fault("garbage:immer");
  EXPECT_EQ(run().outcome == Outcome::Answered, !GetParam().hasHead);
}

TEST_P(EveryStation, OneThatIsPulledOutEndsTheTest) {
  fault("unplugged");
  EXPECT_NE(run().outcome, Outcome::Answered);
}

}  // namespace
}  // namespace lokari
