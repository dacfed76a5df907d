// The stop behind a dragged speed bar, on every kind of station: real time, a real port, and bytes
// that reach the station no faster than its line carries them.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QTimer>

#include <algorithm>

#include "cab/ui/picture_button.h"
#include "cab/ui/speed_bar.h"
#include "cabs.h"
#include "link/can_key_serial.h"

namespace lokari {
namespace {

constexpr int kTimeout = 2;
constexpr int kStops = 5;
constexpr Millis kDrag = 600;
/// A hand that presses at another moment of the bar's messages each time.
constexpr Millis kShift = 13;
constexpr Millis kMouseGoesOn = 300;
constexpr int kMargin = 20;  // pixels

void mouse(QWidget* widget, QEvent::Type type, const QPointF& at) {
  const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
  const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
  QMouseEvent event(type, at, widget->mapToGlobal(at), button, held, {});
  QApplication::sendEvent(widget, &event);
}

/// The grip goes up and down, a position a millisecond, until end(). While it moves, the bar's
/// messages follow each other inside the same wait: whatever ends it must come from the event loop.
class Drag {
 public:
  explicit Drag(QWidget* bar) : bar_(bar) {
    mouse(bar_, QEvent::MouseButtonPress, at(bar_->height() - kMargin / 2.0));
    pulse_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&pulse_, &QTimer::timeout, &pulse_, [this] { move(); });
    pulse_.start(1);
  }
  Drag(const Drag&) = delete;
  Drag& operator=(const Drag&) = delete;
  void end() {
    if (!pulse_.isActive()) return;
    pulse_.stop();
    mouse(bar_, QEvent::MouseButtonRelease, at(bar_->height() / 2.0));
  }

 private:
  static QPointF at(double y) { return {kMargin, y}; }
  void move() {
    const int way = bar_->height() - 2 * kMargin;
    const int along = ++moves_ % (2 * way);
    mouse(bar_, QEvent::MouseMove, at(kMargin + (along < way ? along : 2 * way - along)));
  }

  QWidget* bar_;
  QTimer pulse_;
  int moves_ = 0;
};

/// Bits per second on the station's line; 0 where there is none.
int lineSpeed(const StationKindRow& kind) {
  if (kind.defaultRate > 0) return kind.defaultRate;
  return kind.transport == Transport::Can && !kind.usesIpAddress ? CanKeySerial::kDefaultRate : 0;
}

/// The longest of some stops, from the press to the moment when the station has all of it.
void stopBehindDrag(benchmark::State& state, StationKind kind) {
  Cabs cabs(kind, kTimeout);
  FrmCab* window = cabs.open(3);
  if (window == nullptr) {
    state.SkipWithError("the station does not tell the vehicle's state");
    return;
  }
  cabs.station.receiveAtLineSpeed(lineSpeed(stationKind(kind)));
  Clock& clock = cabs.station.clock();
  sim::Layout& layout = cabs.station.layout();
  auto* vsbSpeed = window->findChild<SpeedBar*>(QStringLiteral("vsbSpeed"));
  auto* imgStop = window->findChild<PictureButton*>(QStringLiteral("imgStop"));
  const auto halted = [&layout] { return !layout.trackPower() || layout.stopped(); };
  const auto press = [imgStop] {
    mouse(imgStop, QEvent::MouseButtonPress, imgStop->rect().center());
    mouse(imgStop, QEvent::MouseButtonRelease, imgStop->rect().center());
  };
  double longest = 0;
  int drives = 0;
  for (auto each : state) {
    static_cast<void>(each);
    for (int stop = 0; stop < kStops; ++stop) {
      qint64 haltedAt = -1;
      QElapsedTimer sincePress;
      layout.onChange = [&](const QString&) {
        ++drives;
        if (haltedAt < 0 && sincePress.isValid() && halted()) haltedAt = sincePress.nsecsElapsed();
      };
      {
        Drag drag(vsbSpeed);
        const auto pressing = clock.after(kDrag + stop * kShift, [&] {
          sincePress.start();
          press();
        });
        const auto ending = clock.after(kDrag + stop * kShift + kMouseGoesOn, [&] { drag.end(); });
        clock.waitUntil([&] { return haltedAt >= 0; }, cabs.deadline());
      }
      if (haltedAt < 0) {
        state.SkipWithError("the stop has not arrived at the station");
        return;
      }
      longest = std::max(longest, static_cast<double>(haltedAt) / 1e6);
      clock.waitUntil([&] { return !cabs.shared.isBusy(); }, cabs.deadline());
      press();
      clock.waitUntil([&] { return !halted(); }, cabs.deadline());
      layout.onChange = nullptr;
    }
    state.SetIterationTime(longest / 1e3);
  }
  // Without messages of the bar there was nothing for the stop to stand behind.
  if (drives < 3 * kStops) state.SkipWithError("the bar has sent nothing");
  state.counters["ms"] = longest;
}

const bool kRegistered = [] {
  for (const StationKindRow& kind : kStationKinds) {
    if (!kind.cab.available()) continue;
    const std::string name =
        "stop_behind_drag/" + QString::fromUtf16(kind.name).toLower().toStdString();
    benchmark::RegisterBenchmark(name.c_str(), stopBehindDrag, kind.kind)
        ->Iterations(1)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}();

}  // namespace
}  // namespace lokari
