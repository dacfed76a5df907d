// The link, with the real CAN key, and a simulated station of one kind on its line or its socket;
// all in virtual time, with the built-in vehicles.
#pragma once

#include <gtest/gtest.h>

#include <QDir>

#include <optional>

#include "link/station_link.h"
#include "link/system_can.h"
#include "link/trace.h"
#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"
#include "support/sim_socket.h"

namespace lokari::test {

class NetworkSession : public ::testing::Test {
 protected:
  /// `makers`: the station is in its maker's form, set up like this.
  explicit NetworkSession(StationKind kind, const std::optional<sim::MakersOptions>& makers = {}) {
    settings.baseUnit = kind;
    settings.ipAddr = QStringLiteral("127.000.000.001");
    settings.timeoutVal = 2;
    settings.delayFlag = false;
    EXPECT_EQ(sim::readDecoders(sim::builtInDecoders(), layout), "");
    const sim::StationRow& row = *sim::stationByName(QStringView(stationKind(kind).name));
    const sim::Surroundings surroundings{clock, layout, faults, 20};
    station = makers ? row.makeMakers(surroundings, *makers) : row.make(surroundings);
    if (row.wire == sim::Wire::Serial) {
      line = std::make_unique<SimLine>(clock, *station);
      socket = std::make_unique<MemorySocket>(clock);
    } else {
      line = std::make_unique<MemoryLine>(clock);
      socket = std::make_unique<SimSocket>(clock, *station);
    }
    can = std::make_unique<SystemCan>(clock, *line, *socket, std::vector<CanInterface>{});
    link = std::make_unique<StationLink>(settings, clock, prompt,
                                         Transports{*line, *socket, *can, nullptr, &trace});
  }

  void open(bool progOn) { ASSERT_EQ(link->initComm(true, true, progOn), QString()); }

  void fault(const char* text) { faults.add(*sim::faultFromText(QString::fromLatin1(text))); }
  int write(int cv, int value, int address = 3) { return link->WriteCV(cv, value, address, 0); }
  int read(int cv, int address = 3) { return link->ReadCV(cv, address); }

  VirtualClock clock;
  sim::Layout layout;
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> station;
  Settings settings;
  ScriptedPrompt prompt;
  std::unique_ptr<MemoryLine> line;
  std::unique_ptr<MemorySocket> socket;
  std::unique_ptr<SystemCan> can;
  Trace trace{QDir::tempPath(), clock};
  std::unique_ptr<StationLink> link;
};

}  // namespace lokari::test
