// Function unit 13 on every kind of station, in both forms of messages.
#include "cab/unit_addresses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "link/station_link.h"
#include "support/memory_can.h"
#include "support/memory_line.h"
#include "support/memory_socket.h"
#include "support/scripted_prompt.h"
#include "support/virtual_clock.h"

namespace lokari {
namespace {

static_assert(unitOutput(1, 0) == 1 && unitOutput(1, 3) == 4);
static_assert(unitOutput(13, 0) == 49 && unitOutput(13, 3) == 52);
static_assert(unitOutputFromNumber(13, 0) == 13 && unitOutputFromNumber(13, 3) == 16);
static_assert(unitPlace(13) == 12);

/// How the first question about unit 13 begins.
struct Row {
  StationKind kind;
  const char* told;
  const char* makers;
};

// clang-format off
constexpr std::array kRows{
    Row{StationKind::Mx1,     "41 57 4E 30 44 0D",       "41 57 4E 30 44 0D"},        // "AWN0D"
    Row{StationKind::Mx1V25,  "41 57 4E 30 44 0D",       "41 57 4E 30 44 0D"},
    Row{StationKind::Li100,   "42 0C 80 CE",             "42 0C 80 CE"},              // 48 >> 2
    Row{StationKind::Li100V3, "42 0C 80 CE",             "42 0C 80 CE"},
    Row{StationKind::LiUsb,   "FF FE 42 0C 80 CE",       "FF FE 42 0C 80 CE"},
    Row{StationKind::Ibx,     "78 95 07",                "78 95 07"},                 // 49 to 56
    Row{StationKind::TamsMc,  "78 95 07",                "78 95 07"},
    Row{StationKind::Mx1Bin,  "01 01 00 10 30 09 00 0D", "01 01 00 10 30 09 00 0D"},
    Row{StationKind::Mx1Ulf,  "01 01 00 10 30 09 00 0D", "01 01 00 10 30 09 00 0D"},
    Row{StationKind::Mx10,    "0D 00",                   "0D 00"},
    Row{StationKind::Mx10Ip,  "0D 00",                   "0D 00"},
    Row{StationKind::Z21Ip,   "08 00 40 00 43 00 0C",    "08 00 40 00 43 00 30"},     // 12, 48
};
// clang-format on

class UnitAddresses : public ::testing::TestWithParam<Row> {
 protected:
  UnitAddresses() {
    settings.baseUnit = GetParam().kind;
    settings.timeoutVal = 1;
    settings.ipAddr = QStringLiteral("192.168.000.111");
    serial.open({});
    socket.open(settings.ipAddr, 1);
    state.address = 13;
    if (settings.station().transport == Transport::Can) openBus();
  }

  /// A bus takes messages of an open session only.
  void openBus() {
    clock.schedule(10, [this] {
      CanMessage announcement;
      announcement.ID = 0x0A02C0A1;
      announcement.MSGTYPE = 2;
      announcement.LEN = 8;
      can.arrive(announcement);
    });
    EXPECT_EQ(link.initComm(true, false, false), "");
  }

  /// How what the panel sends first begins, as far as `expected` goes.
  QByteArray firstOf(const char* expected) {
    cabLine.exchange(this, 0, [this] {
      makePanelProtocol(settings.station().family, cabLine, state)->readState();
    });
    return sent().left(QByteArray::fromHex(expected).size()).toHex(' ').toUpper();
  }

  QByteArray sent() const {
    QByteArray all = serial.sent();
    if (!socket.sent.isEmpty()) all += socket.sent.first();
    for (const CanMessage& each : can.sent) {
      if (each.ID == 0x010886C2) return QByteArray(1, char(each.DATA[0])) + char(each.DATA[1]);
    }
    return all;
  }

  test::VirtualClock clock;
  Settings settings;
  test::ScriptedPrompt prompt;
  test::MemoryLine serial{clock};
  test::MemorySocket socket{clock};
  test::MemoryCan can;
  StationLink link{settings, clock, prompt, {serial, socket, can}};
  CabLine cabLine{link};
  PanelState state;
};

INSTANTIATE_TEST_SUITE_P(EveryKind, UnitAddresses, ::testing::ValuesIn(kRows), [](const auto& row) {
  return QString::fromUtf16(stationKind(row.param.kind).name).toStdString();
});

TEST_P(UnitAddresses, UnitThirteenIsAskedForAsTold) {
  EXPECT_EQ(firstOf(GetParam().told), GetParam().told);
}

TEST_P(UnitAddresses, UnitThirteenHasTheAddresses49To52ByTheMakersDocuments) {
  settings.makerForm = true;
  EXPECT_EQ(firstOf(GetParam().makers), GetParam().makers);
}

/// A Z21 alone is told other addresses with the setting.
class UnitOnZ21 : public UnitAddresses {
 protected:
  QByteArray fourthOutput() {
    cabLine.exchange(this, 0, [this] {
      makePanelProtocol(settings.station().family, cabLine, state)->sendOutput(3);
    });
    return socket.sent.first().left(7).toHex(' ').toUpper();
  }
};

INSTANTIATE_TEST_SUITE_P(Z21, UnitOnZ21, ::testing::Values(kRows.back()));

TEST_P(UnitOnZ21, TheFourthOutputIs16AsTold) {
  EXPECT_EQ(fourthOutput(), "09 00 40 00 53 00 0F");
}

TEST_P(UnitOnZ21, TheFourthOutputIs52ByTheMakersDocuments) {
  settings.makerForm = true;
  EXPECT_EQ(fourthOutput(), "09 00 40 00 53 00 33");
}

TEST_P(UnitAddresses, EveryKindWithPanelsIsHere) {
  for (const StationKindRow& kind : kStationKinds) {
    if (!kind.cab.available()) continue;
    EXPECT_TRUE(std::any_of(kRows.begin(), kRows.end(), [&](const Row& row) {
      return row.kind == kind.kind;
    })) << QString::fromUtf16(kind.name).toStdString();
  }
}

}  // namespace
}  // namespace lokari
