// A StationLink in virtual time on a scripted line, for the tests of sessions and protocols.
#pragma once

#include <gtest/gtest.h>

#include <QDir>

#include "link/station_link.h"
#include "link/trace.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/recording_view.h"
#include "support/scripted_line.h"
#include "support/scripted_prompt.h"
#include "support/virtual_clock.h"

namespace lokari::test {

class LinkFixture : public ::testing::Test {
 protected:
  explicit LinkFixture(StationKind kind) {
    settings.baseUnit = kind;
    settings.comPort = 3;
    settings.timeoutVal = 2;
    settings.delayFlag = false;
    link.setView(&view);
  }

  /// Milliseconds that `action` takes.
  template <class Action>
  Millis timeOf(Action action) {
    const Millis start = clock.now();
    action();
    return clock.now() - start;
  }

  VirtualClock clock;
  Settings settings;
  ScriptedPrompt prompt;
  RecordingView view;
  ScriptedLine line{clock};
  MemorySocket socket{clock};
  MemoryCan can;
  Trace trace{QDir::tempPath(), clock};  // off: nobody may notice what stands around the lines
  StationLink link{settings, clock, prompt, {line, socket, can, nullptr, &trace}};
};

}  // namespace lokari::test
