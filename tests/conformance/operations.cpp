#include "operations.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <set>
#include <utility>

#include "cab/cab_table.h"
#include "sim/decoder.h"
#include "station/comm_test.h"
#include "station/send_firm.h"

namespace lokari::conformance {
namespace {

constexpr int kAddress = 3;
constexpr int kUnit = 5;
constexpr int kCv = 5;
constexpr int kCvValue = 180;  // of the vehicle with that address
constexpr int kOther = 77;

/// A job of its own: opens the session and says goodbye.
class Job {
 public:
  Job(StationBench& bench, CommJob job, bool progOn) : link_(bench.link()), progOn_(progOn) {
    link_.commJob = job;
    link_.pomAddr = kAddress;
    failure_ = link_.openForJob(progOn);
  }
  ~Job() { close(); }
  Job(const Job&) = delete;
  Job& operator=(const Job&) = delete;

  const QString& failure() const { return failure_; }
  /// What the farewell has to refuse.
  QString close() {
    if (std::exchange(closed_, true) || !failure_.isEmpty()) return {};
    link_.endcomm(true, progOn_);
    return link_.lateRefusal;
  }

 private:
  StationLink& link_;
  bool progOn_;
  bool closed_ = false;
  QString failure_;
};

QString code(int result) {
  return QStringLiteral("code %1").arg(result);
}

Outcome readCv(StationBench& bench, CommJob work, bool progOn) {
  Job job(bench, work, progOn);
  if (!job.failure().isEmpty()) return Outcome::failed(job.failure());
  const int value = bench.link().ReadCV(kCv, kAddress);
  return value == kCvValue ? Outcome{} : Outcome::failed(code(value));
}

Outcome writeCv(StationBench& bench, CommJob work, bool progOn) {
  const sim::Decoder* decoder =
      progOn ? bench.layout().onProgrammingTrack() : bench.layout().onMainTrack(kAddress);
  Job job(bench, work, progOn);
  if (!job.failure().isEmpty()) return Outcome::failed(job.failure());
  const int told = bench.link().WriteCV(kCv, kOther, kAddress, 0);
  const QString refusal = job.close();
  if (told < 0) return Outcome::failed(code(told));
  if (!refusal.isEmpty()) return Outcome::failed(refusal);
  const int stored = decoder->stored(kCv);
  return stored == kOther ? Outcome{}
                          : Outcome::failed(QStringLiteral("the decoder holds %1").arg(stored));
}

Outcome testStation(StationBench& bench) {
  bench.link().commJob = CommJob::TestComm;
  const CommTestResult result = TestComm(bench.link(), bench.settings());
  if (result.outcome == CommTestResult::Outcome::Answered) return {};
  return Outcome::failed(result.lines.join(QStringLiteral(" / ")));
}

Outcome readOnProgrammingTrack(StationBench& bench) {
  return readCv(bench, CommJob::ReadProgTrack, true);
}

Outcome writeOnProgrammingTrack(StationBench& bench) {
  return writeCv(bench, CommJob::WriteProgTrack, true);
}

Outcome readOnMainTrack(StationBench& bench) {
  if (!bench.kind().readsOnMain) return Outcome::notOffered();
  return readCv(bench, CommJob::ReadMain, false);
}

Outcome writeOnMainTrack(StationBench& bench) {
  if (!bench.kind().programsOnMain) return Outcome::notOffered();
  return writeCv(bench, CommJob::WriteMain, false);
}

/// One vehicle, as a cab drives it.
class Throttle {
 public:
  explicit Throttle(StationBench& bench) : bench_(bench) {
    failure_ = bench.link().openForJob(false);
    state_.address = kAddress;
    state_.funcCount = bench.kind().cab.funcCount;
    protocol_ = makeCabProtocol(bench.kind().family, bench.line(), state_,
                                {.stateArrived = [this](FunctionMask mask) { take(mask); },
                                 .stopFailed = [this](bool, StopFault) { stopFailed_ = true; }});
    if (!failure_.isEmpty()) return;
    std::optional<FunctionMask> mask;
    exchange([&] { mask = protocol_->readState(); });
    if (mask) {
      take(*mask);
    } else {
      failure_ = QStringLiteral("the vehicle's state is not read");
    }
  }
  ~Throttle() {
    protocol_.reset();
    bench_.link().FinishComm();
  }
  Throttle(const Throttle&) = delete;
  Throttle& operator=(const Throttle&) = delete;

  const QString& failure() const { return failure_; }
  /// The station has it.
  bool hasFunction(int n) const { return n <= state_.funcCount; }
  int highestFunction() const { return state_.funcCount; }
  void speed(int position) {
    state_.speed = position;
    exchange([this] { protocol_->sendSpeed(); });
  }
  void direction(bool backward) {
    state_.backward = backward;
    exchange([this] { protocol_->sendDirection(); });
  }
  void function(int n, bool on) {
    state_.funcOn.at(static_cast<size_t>(n)) = on;
    exchange([this, n] { protocol_->sendFunction(n); });
  }
  /// False when it is told as failed or as not confirmed.
  bool stop(bool stopped) {
    state_.stopped = stopped;
    stopFailed_ = false;
    bench_.line().urgent([this] { protocol_->sendStopped(); });
    settle();
    return !stopFailed_;
  }
  const sim::DriveState& driven() const { return bench_.layout().drive(kAddress); }

 private:
  /// Longer than a stop waits for the station's word.
  static constexpr Millis kSettled = 5000;

  void take(FunctionMask mask) {
    for (int n = 0; n <= CabState::kHighestFunction; ++n) {
      state_.funcOn.at(static_cast<size_t>(n)) = (mask >> n & 1U) != 0;
    }
  }
  void exchange(const std::function<void()>& run) {
    bench_.line().exchange(this, 0, run);
    settle();
  }
  /// What is on its way arrives.
  void settle() { bench_.clock().advance(kSettled); }

  StationBench& bench_;
  CabState state_;
  std::unique_ptr<CabProtocol> protocol_;
  bool stopFailed_ = false;
  QString failure_;
};

/// Whether a station's steps are those of a position of the bar.
bool isAt(const sim::DriveState& state, int position) {
  if (position == 0) return state.speed == 0;
  const double share = static_cast<double>(position) / CabState::kHighestSpeed;
  // Of 128 steps two are the stop and the emergency stop; 1024 end at 1008.
  const int highest = state.steps == 128 ? 126 : std::min(state.steps, 1008);
  return std::abs(state.speed - share * highest) <= 1.0 + highest / 128.0;
}

Outcome drive(StationBench& bench) {
  if (!bench.kind().cab.available()) return Outcome::notOffered();
  Throttle throttle(bench);
  if (!throttle.failure().isEmpty()) return Outcome::failed(throttle.failure());
  for (const bool backward : {true, false}) {
    throttle.direction(backward);
    for (const int position : {64, 127, 5, 0}) {
      throttle.speed(position);
      const sim::DriveState& state = throttle.driven();
      if (isAt(state, position) && state.backward == backward) continue;
      return Outcome::failed(
          QStringLiteral("position %1 is step %2 of %3 %4")
              .arg(position)
              .arg(state.speed)
              .arg(state.steps)
              .arg(state.backward ? QStringLiteral("backward") : QStringLiteral("forward")));
    }
  }
  return {};
}

/// Every function of a range, on and off, and none beside it.
Outcome switchFunctions(StationBench& bench, int first, int last) {
  if (bench.kind().cab.funcCount < first) return Outcome::notOffered();
  Throttle throttle(bench);
  if (!throttle.failure().isEmpty()) return Outcome::failed(throttle.failure());
  if (!throttle.hasFunction(first)) return Outcome::notOffered();
  for (int n = first; n <= last && throttle.hasFunction(n); ++n) {
    for (const bool on : {true, false}) {
      const quint32 before = throttle.driven().functions;
      throttle.function(n, on);
      const quint32 after = throttle.driven().functions;
      if (after == (on ? before | 1U << n : before & ~(1U << n))) continue;
      return Outcome::failed(QStringLiteral("F%1 %2: %3 became %4")
                                 .arg(n)
                                 .arg(on ? QStringLiteral("on") : QStringLiteral("off"))
                                 .arg(before, 0, 16)
                                 .arg(after, 0, 16));
    }
  }
  const int highest = throttle.highestFunction();
  if (highest >= last) return {};
  return {.limit = QStringLiteral("to F%1").arg(highest)};
}

template <int First, int Last>
Outcome functions(StationBench& bench) {
  return switchFunctions(bench, First, Last);
}

/// Counts the coils that have power.
class Coils {
 public:
  explicit Coils(sim::Layout& layout) : layout_(layout) {
    layout.onChange = [this](const QString& line) {
      if (!line.contains(QStringLiteral(": Spule "))) return;
      powered_ += line.endsWith(QStringLiteral(" ein")) ? 1 : -1;
    };
  }
  ~Coils() { layout_.onChange = nullptr; }
  Coils(const Coils&) = delete;
  Coils& operator=(const Coils&) = delete;

  int powered() const { return powered_; }

 private:
  sim::Layout& layout_;
  int powered_ = 0;
};

/// The turnouts that are on, of those that a small layout has.
std::set<int> turnoutsOn(const sim::Layout& layout) {
  constexpr int kLast = 100;
  std::set<int> on;
  for (int number = 1; number <= kLast; ++number) {
    if (layout.output(number)) on.insert(number);
  }
  return on;
}

/// One unit, as a panel switches it.
class Switcher {
 public:
  explicit Switcher(StationBench& bench) : bench_(bench) {
    failure_ = bench.link().openForJob(false);
    state_.address = kUnit;
    protocol_ = makePanelProtocol(bench.kind().family, bench.line(), state_);
    if (!failure_.isEmpty()) return;
    std::optional<quint8> mask;
    bench.line().exchange(this, 0, [&] { mask = protocol_->readState(); });
    if (!mask) failure_ = QStringLiteral("the unit is not read");
  }
  ~Switcher() {
    protocol_.reset();
    bench_.link().FinishComm();
  }
  Switcher(const Switcher&) = delete;
  Switcher& operator=(const Switcher&) = delete;

  const QString& failure() const { return failure_; }
  /// What is on then.
  std::set<int> after(int n, bool on) {
    state_.outOn.at(static_cast<size_t>(n)) = on;
    bench_.line().exchange(this, n, [this, n] { protocol_->sendOutput(n); });
    bench_.clock().advance(2000);
    return turnoutsOn(bench_.layout());
  }

 private:
  StationBench& bench_;
  PanelState state_;
  std::unique_ptr<PanelProtocol> protocol_;
  QString failure_;
};

/// The one turnout in which two states differ, 0 for none or several.
int changedOne(const std::set<int>& before, const std::set<int>& after) {
  std::vector<int> changed;
  std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(),
                                std::back_inserter(changed));
  return changed.size() == 1 ? changed.front() : 0;
}

/// Of Zimo's binary protocol no document tells how turnouts are switched.
bool tellsOfTurnouts(const Pairing& pairing) {
  return pairing.station == Reading::Ours || pairing.kind != StationKind::Mx1Bin;
}

/// Four neighbours follow, each alone, and no coil keeps its power. Which of its two ends a turnout
/// takes for "on" is each station's own matter.
Outcome switchOutputs(StationBench& bench) {
  if (!bench.kind().cab.available()) return Outcome::notOffered();
  if (!tellsOfTurnouts(bench.pairing())) return {Outcome::Kind::NotTold, {}};
  Switcher unit(bench);
  if (!unit.failure().isEmpty()) return Outcome::failed(unit.failure());
  const Coils coils(bench.layout());
  // As before, some stations have a numbering of their own.
  int first = bench.settings().makerForm ? (kUnit - 1) * PanelState::kOutputs + 1 : 0;
  for (int n = 0; n < PanelState::kOutputs; ++n) {
    const std::set<int> on = unit.after(n, true);
    const std::set<int> off = unit.after(n, false);
    if (n == 0 && first == 0) first = changedOne(on, off);
    if (changedOne(on, off) != first + n || unit.after(n, true) != on) {
      return Outcome::failed(QStringLiteral("output %1 does not follow alone").arg(n + 1));
    }
  }
  if (coils.powered() == 0) return {};
  return Outcome::failed(QStringLiteral("%1 coils stay under power").arg(coils.powered()));
}

/// Nothing runs: some stations take the power off, others stop every vehicle.
bool isHalted(StationBench& bench) {
  return !bench.layout().trackPower() || bench.layout().stopped();
}

Outcome stop(StationBench& bench) {
  if (!bench.kind().cab.available()) return Outcome::notOffered();
  Throttle throttle(bench);
  if (!throttle.failure().isEmpty()) return Outcome::failed(throttle.failure());
  for (const bool stopped : {true, false}) {
    const bool confirmed = throttle.stop(stopped);
    const QString order = stopped ? QStringLiteral("stop") : QStringLiteral("go");
    if (isHalted(bench) != stopped)
      return Outcome::failed(order + QStringLiteral(" has no effect"));
    if (!confirmed) return Outcome::failed(order + QStringLiteral(" is not confirmed"));
  }
  return {};
}

Outcome loadFirmware(StationBench& bench) {
  if (!bench.kind().takesFirmware) return Outcome::notOffered();
  QByteArray received;
  bench.station().onFirmware = [&received](const QByteArray& memory) { received = memory; };
  Firmware firmware;
  for (int i = 0; i < 16; ++i) firmware.firmImage[0x8000 + i] = static_cast<char>(i * 7);
  firmware.firmBlocks = 1;
  bench.link().commJob = CommJob::SendFirm;
  test::RecordingView view;
  const FirmEnd end = FirmTransfer(bench.link(), view, firmware).SendFirm();
  if (end != FirmEnd::Complete) return Outcome::failed(view.statuses.last());
  return received == firmware.firmImage
             ? Outcome{}
             : Outcome::failed(QStringLiteral("the station holds another image"));
}

constexpr std::array kOperations{
    Operation{"Test", "test", testStation},
    Operation{"Read", "read", readOnProgrammingTrack},
    Operation{"Write", "write", writeOnProgrammingTrack},
    Operation{"MainRead", "main read", readOnMainTrack},
    Operation{"MainWrite", "main write", writeOnMainTrack},
    Operation{"Drive", "drive", drive},
    Operation{"F0ToF4", "F0-F4", functions<0, 4>},
    Operation{"F5ToF8", "F5-F8", functions<5, 8>},
    Operation{"F9ToF12", "F9-F12", functions<9, 12>},
    Operation{"F13ToF20", "F13-F20", functions<13, 20>},
    Operation{"F21ToF28", "F21-F28", functions<21, 28>},
    Operation{"Switch", "switch", switchOutputs},
    Operation{"Stop", "stop", stop},
    Operation{"Firmware", "firmware", loadFirmware},
};

}  // namespace

std::span<const Operation> operations() {
  return kOperations;
}

Outcome run(const Operation& operation, const Pairing& pairing, Opening opening,
            const std::function<void(StationBench& bench)>& prepare) {
  StationBench bench(pairing);
  if (prepare) prepare(bench);
  if (opening == Opening::Beside) bench.openBeside();
  return operation.run(bench);
}

}  // namespace lokari::conformance
