// What a wait for a station that does not answer costs: processor time against wall time, over a
// real port and in real time.
#include <benchmark/benchmark.h>

#include <QElapsedTimer>

#include <ctime>

#include "real_station.h"

namespace lokari {
namespace {

constexpr int kWaitSeconds = 3;
/// No station ever sends that many bytes, and none answers to this CAN identifier.
constexpr qint32 kNeverComes = 0x7F000000;

double processorSeconds() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void waiting(benchmark::State& state, StationKind kind) {
  RealStation station(stationKind(kind), kWaitSeconds);
  station.open(true);
  if (!station.fault().isEmpty()) {
    state.SkipWithError(station.fault().toUtf8().constData());
    return;
  }
  double busy = 0;
  double wall = 0;
  for (auto each : state) {
    static_cast<void>(each);
    QElapsedTimer timer;
    timer.start();
    const double before = processorSeconds();
    station.link().WaitForData(kNeverComes);
    busy += processorSeconds() - before;
    wall += static_cast<double>(timer.nsecsElapsed()) / 1e9;
  }
  state.counters["core_percent"] = 100 * busy / wall;
}

BENCHMARK_CAPTURE(waiting, serial, StationKind::TamsMc)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(waiting, can_key, StationKind::Mx10)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(waiting, udp, StationKind::Z21Ip)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
