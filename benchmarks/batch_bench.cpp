// What reading 500 CVs costs beyond the pauses and the station's own time. Time is virtual, so what
// passes on the wall is the program's own work, and with it the little that the simulated station
// takes.
#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QElapsedTimer>

#include "decoder_window.h"

namespace lokari {
namespace {

constexpr int kFirstCv = 100;
constexpr int kLastCv = 599;
constexpr int kCvCount = kLastCv - kFirstCv + 1;

int contentOf(int cv) {
  return cv % 251;
}

/// The decoder on the programming track holds them all.
void fill(VirtualStation& station) {
  for (int cv = kFirstCv; cv <= kLastCv; ++cv) station.decoder.store(cv, contentOf(cv));
}

/// Measures jobs that handle all the CVs.
class Stopwatch {
 public:
  explicit Stopwatch(benchmark::State& state) : state_(state) {}
  ~Stopwatch() {
    state_.counters["us_per_cv"] =
        benchmark::Counter(seconds_ * 1e6 / kCvCount, benchmark::Counter::kAvgIterations);
  }
  Stopwatch(const Stopwatch&) = delete;
  Stopwatch& operator=(const Stopwatch&) = delete;

  template <class Job>
  void measure(const Job& job) {
    QElapsedTimer timer;
    timer.start();
    job();
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    state_.SetIterationTime(seconds);
    seconds_ += seconds;
  }

 private:
  benchmark::State& state_;
  double seconds_ = 0;
};

/// One session that reads the CVs one after the other.
void batch_link(benchmark::State& state) {
  VirtualStation world;
  fill(world);
  Stopwatch stopwatch(state);
  for (auto each : state) {
    static_cast<void>(each);
    int right = 0;
    stopwatch.measure([&] {
      world.link.initComm(true, true, true);
      for (int cv = kFirstCv; cv <= kLastCv; ++cv) {
        if (world.link.ReadCV(cv, 3) == contentOf(cv)) ++right;
      }
      world.link.endcomm(true, true);
    });
    if (right != kCvCount) state.SkipWithError("a CV was read wrongly");
  }
}

QByteArray description() {
  QByteArray text("[Messung]\n");
  for (int cv = kFirstCv; cv <= kLastCv; ++cv) {
    const QByteArray number = QByteArray::number(cv);
    text +=
        "CV_" + number + "=Wert " + number + ",0-255,0," + QByteArray::number(3 + cv % 4) + "\n";
  }
  return text;
}

/// Whether every CV has been read.
bool complete(const CvSets& sets) {
  for (int cv = kFirstCv; cv <= kLastCv; ++cv) {
    if (sets.mark(CvIndex(cv)) != CvMark::Verified) return false;
    if (sets.value(CvIndex(cv)) != contentOf(cv)) return false;
  }
  return true;
}

/// The whole job as the user starts it: decoder window and progress dialog on show.
void batch_window(benchmark::State& state) {
  Stopwatch stopwatch(state);
  for (auto each : state) {
    static_cast<void>(each);
    DecoderWindow world;
    fill(world.station);
    world.describe(description());
    world.open([&] {
      for (size_t row = 0; row < world.bench.rows().size(); ++row) {
        world.bench.rowReadToggled(static_cast<int>(row), true);
      }
      auto* cmdDcRead = world.window.findChild<QAbstractButton*>(QStringLiteral("cmdDcRead"));
      stopwatch.measure([&] { cmdDcRead->click(); });
    });
    if (!complete(world.bench.sets)) state.SkipWithError("a CV was not read");
  }
}

BENCHMARK(batch_link)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(batch_window)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
