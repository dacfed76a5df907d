// The program's link to a simulated station, in virtual time, with the built-in vehicles: any kind,
// in either form of messages, on either reading of the kind.
#pragma once

#include <memory>
#include <vector>

#include "base/settings.h"
#include "cab/cab_line.h"
#include "link/station_link.h"
#include "link/system_can.h"
#include "sim/station_table.h"
#include "support/memory_line.h"
#include "support/memory_socket.h"
#include "support/recording_view.h"
#include "support/scripted_prompt.h"

namespace lokari::conformance {

/// Which description the simulated station was made from.
enum class Reading {
  Ours,    ///< the messages as the program has always known them
  Makers,  ///< the makers' documents
};

/// One pairing of the program and a station.
struct Pairing {
  StationKind kind;
  bool makerForm;   ///< what the program sends follows the makers' documents
  Reading station;  ///< the station does
};

/// Whether that station can be simulated.
bool exists(const Pairing& pairing);

/// Every pairing that exists, in the order of the kinds.
std::vector<Pairing> allPairings();

/// "LIUSB wie bisher an makers", for names of tests without the spaces.
QString nameOf(const Pairing& pairing);

class StationBench {
 public:
  explicit StationBench(const Pairing& pairing);
  ~StationBench();
  StationBench(const StationBench&) = delete;
  StationBench& operator=(const StationBench&) = delete;

  const Pairing& pairing() const { return pairing_; }
  const StationKindRow& kind() const { return settings_.station(); }
  Settings& settings() { return settings_; }
  sim::Layout& layout() { return layout_; }
  sim::Station& station() { return *station_; }
  test::VirtualClock& clock() { return clock_; }
  test::ScriptedPrompt& prompt() { return prompt_; }
  StationLink& link() { return *link_; }
  CabLine& line() { return *line_; }

  /// `text` as the simulator's command line has it, such as "split:immer:5".
  void fault(const QString& text);
  /// From now on answers on a serial line come in pieces of that many bytes, `pause` ms apart.
  void cutAnswers(int length, Millis pause);
  /// Another user of the station, such as a cab, opens the session ahead of what follows.
  void openBeside();
  /// The program runs out of time no later than this: whatever waits then is given up.
  static constexpr Millis kLongest = 3'600'000;

 private:
  Pairing pairing_;
  test::VirtualClock clock_;
  sim::Layout layout_;
  sim::FaultPlan faults_;
  Settings settings_;
  test::ScriptedPrompt prompt_;
  std::unique_ptr<sim::Station> station_;
  std::unique_ptr<test::MemoryLine> serial_;
  std::unique_ptr<test::MemorySocket> socket_;
  std::unique_ptr<SystemCan> can_;
  std::unique_ptr<StationLink> link_;
  std::unique_ptr<CabLine> line_;
  std::unique_ptr<Clock::Alarm> end_;
  std::vector<std::unique_ptr<Clock::Alarm>> pieces_;
  Millis lastPieceAt_ = 0;
};

}  // namespace lokari::conformance
