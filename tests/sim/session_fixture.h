// The link and a simulated station of one kind, both in virtual time, with the built-in vehicles.
#pragma once

#include <gtest/gtest.h>

#include <QDir>

#include "link/station_link.h"
#include "link/trace.h"
#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"

namespace lokari::test {

class SerialSession : public ::testing::Test {
 protected:
  explicit SerialSession(StationKind kind) {
    settings.baseUnit = kind;
    settings.timeoutVal = 2;
    settings.delayFlag = false;
    EXPECT_EQ(sim::readDecoders(sim::builtInDecoders(), layout), "");
    station =
        sim::stationByName(QStringView(stationKind(kind).name))->make({clock, layout, faults, 20});
    line = std::make_unique<SimLine>(clock, *station);
    link = std::make_unique<StationLink>(settings, clock, prompt,
                                         Transports{*line, socket, can, nullptr, &trace});
    EXPECT_EQ(link->initComm(true, true, true), "");
    link->commJob = CommJob::WriteProgTrack;
  }

  void fault(const char* text) { faults.add(*sim::faultFromText(QString::fromLatin1(text))); }

  int write(int cv, int value, int address = 3) { return link->WriteCV(cv, value, address, 0); }
  int read(int cv) { return link->ReadCV(cv, 3); }

  VirtualClock clock;
  sim::Layout layout;
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> station;
  Settings settings;
  ScriptedPrompt prompt;
  std::unique_ptr<SimLine> line;
  MemorySocket socket{clock};
  MemoryCan can;
  Trace trace{QDir::tempPath(), clock};
  std::unique_ptr<StationLink> link;
};

}  // namespace lokari::test
