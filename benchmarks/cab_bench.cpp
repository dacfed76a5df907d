// Cabs on a real port and in real time: how soon a moved speed bar is on the line, and how long 32
// cabs that poll keep the windows from living.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QTimer>

#include <algorithm>

#include "cab/ui/speed_bar.h"
#include "cabs.h"

namespace lokari {
namespace {

constexpr int kTimeout = 2;
constexpr int kChanges = 20;
constexpr Millis kPollTime = 5000;

void pressBar(QWidget* bar, double height) {
  const QPointF at(bar->width() / 4.0, height);
  QMouseEvent press(QEvent::MouseButtonPress, at, bar->mapToGlobal(at), Qt::LeftButton,
                    Qt::LeftButton, {});
  QApplication::sendEvent(bar, &press);
  QMouseEvent release(QEvent::MouseButtonRelease, at, bar->mapToGlobal(at), Qt::LeftButton, {}, {});
  QApplication::sendEvent(bar, &release);
}

/// The longest of some changes, each of them once the line is idle.
void cabSpeed(benchmark::State& state, StationKind kind) {
  Cabs cabs(kind, kTimeout);
  FrmCab* window = cabs.open(3);
  if (window == nullptr) {
    state.SkipWithError("the station does not tell the vehicle's state");
    return;
  }
  auto* vsbSpeed = window->findChild<SpeedBar*>(QStringLiteral("vsbSpeed"));
  double longest = 0;
  for (auto each : state) {
    static_cast<void>(each);
    for (int change = 0; change < kChanges; ++change) {
      cabs.station.clock().waitUntil([&] { return !cabs.shared.isBusy(); }, cabs.deadline());
      qint64 first = -1;
      QElapsedTimer timer;
      cabs.station.onReceive = [&] {
        if (first < 0) first = timer.nsecsElapsed();
      };
      timer.start();
      pressBar(vsbSpeed, vsbSpeed->height() * (0.2 + 0.6 * (change % 2)));
      cabs.station.clock().waitUntil([&] { return first >= 0; }, cabs.deadline());
      cabs.station.onReceive = nullptr;
      if (first < 0) {
        state.SkipWithError("nothing has arrived at the station");
        return;
      }
      longest = std::max(longest, static_cast<double>(first) / 1e6);
    }
    state.SetIterationTime(longest / 1e3);
  }
  state.counters["ms"] = longest;
}

BENCHMARK_CAPTURE(cabSpeed, serial, StationKind::TamsMc)
    ->Name("cab_speed/serial")
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(cabSpeed, udp, StationKind::Z21Ip)
    ->Name("cab_speed/udp")
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// The longest time in which no event was served.
void cabPoll(benchmark::State& state) {
  Cabs cabs(StationKind::Z21Ip, kTimeout);
  for (int address = 1; address <= CabFleet::kCabs; ++address) {
    if (cabs.open(address) == nullptr) {
      state.SkipWithError("a cab was not opened");
      return;
    }
  }
  int polls = 0;
  cabs.station.onReceive = [&polls] { ++polls; };
  double longest = 0;
  for (auto each : state) {
    static_cast<void>(each);
    QElapsedTimer sinceLast;
    QTimer pulse;
    pulse.setTimerType(Qt::PreciseTimer);
    QObject::connect(&pulse, &QTimer::timeout, &pulse, [&] {
      longest = std::max(longest, static_cast<double>(sinceLast.nsecsElapsed()) / 1e6);
      sinceLast.start();
    });
    sinceLast.start();
    pulse.start(1);
    cabs.station.clock().waitUntil([] { return false; }, cabs.station.clock().now() + kPollTime);
  }
  cabs.station.onReceive = nullptr;
  if (polls < CabFleet::kCabs) state.SkipWithError("the cabs do not poll");
  state.counters["ms"] = longest;
}

BENCHMARK(cabPoll)->Name("cab_poll")->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
