// What a move of the mouse with a point of the speed curve in hand takes until the curve is drawn.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QTabWidget>

#include "decoder/fixed_fields.h"
#include "decoder/ui/speed_curve.h"
#include "decoder_window.h"

namespace lokari {
namespace {

constexpr int kDriveTab = 1;
/// The point in the middle of a table of 28.
constexpr int kPoint = 14;
/// The mouse goes up and down between these values.
constexpr int kHigh = 200;
constexpr int kLow = 50;

void send(SpeedCurve& picture, QEvent::Type type, QPointF at) {
  const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
  QMouseEvent event(type, at, picture.mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&picture, &event);
}

void curve_drag(benchmark::State& state) {
  DecoderWindow world;
  world.describe("[Messung]\n");
  world.record.recCvValues[0][cv::kConfig - 1] = config_bit::kSpeedTable + config_bit::kSteps;
  world.open([&] {
    world.window.findChild<QTabWidget*>(QStringLiteral("ssDecoder"))->setCurrentIndex(kDriveTab);
    QCoreApplication::processEvents();
    auto& picture = *world.window.findChild<SpeedCurve*>(QStringLiteral("picSpeedTable"));
    const CvIndex cv(cv::kFirstTable - 1 + kPoint);
    const auto placeOf = [&](int value) {
      world.bench.setCvval(value, cv.arrayIndex());
      return picture.positionOf(kPoint);
    };
    const QPointF high = placeOf(kHigh);
    const QPointF low = placeOf(kLow);
    send(picture, QEvent::MouseButtonPress, low);
    double seconds = 0;
    bool up = false;
    for (auto each : state) {
      static_cast<void>(each);
      up = !up;
      QElapsedTimer timer;
      timer.start();
      send(picture, QEvent::MouseMove, up ? high : low);
      picture.repaint();
      const double passed = static_cast<double>(timer.nsecsElapsed()) / 1e9;
      state.SetIterationTime(passed);
      seconds += passed;
      if (world.bench.sets.value(cv) != (up ? kHigh : kLow)) {
        state.SkipWithError("the point does not follow the mouse");
      }
    }
    send(picture, QEvent::MouseButtonRelease, low);
    state.counters["ms"] = benchmark::Counter(seconds * 1e3, benchmark::Counter::kAvgIterations);
  });
}

BENCHMARK(curve_drag)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
