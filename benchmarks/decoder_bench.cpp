// What the decoder window takes from the choice of another decoder type to the page of that type on
// the screen.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTabWidget>

#include "decoder_window.h"

namespace lokari {
namespace {

constexpr int kFirstCv = 30;
constexpr int kLastCv = 1023;
constexpr int kFirstBank = 2;
constexpr int kLastBank = 16;
constexpr int kFirstInBank = 257;
constexpr int kLastInBank = 512;

/// Tabs of `ssDecoder`.
constexpr int kFunctionTab = 2;
constexpr int kGridTab = 34;
/// After this time the window reads the description of the type that was chosen.
constexpr Millis kChoiceTime = 100;

/// A description of `count` CVs on all pages, the plain ones first and then those of the banks, as
/// a big sound decoder has them.
QByteArray description(const QByteArray& word, int count) {
  QByteArray text("[Messung]\nSPEEDTABLE=N\nMAPCVA=31\nMAPCVB=32\n");
  int lines = 0;
  const auto add = [&](const QByteArray& key) {
    if (lines == count) return;
    text += key + "=" + word + " " + QByteArray::number(lines) + ",\"0-99,128-255\",5," +
            QByteArray::number(lines % 4 + 3) + ",Hinweis zum Wert,\"1,Licht,Aus,Ein\"\n";
    ++lines;
  };
  for (int cv = kFirstCv; cv <= kLastCv; ++cv) add("CV_" + QByteArray::number(cv));
  for (int bank = kFirstBank; bank <= kLastBank; ++bank) {
    const QByteArray number = QByteArray::number(bank);
    text += "MAPVALA_" + number + "=16\nMAPVALB_" + number + "=" + number + "\n";
    for (int cv = kFirstInBank; cv <= kLastInBank; ++cv) {
      add("CV_" + QByteArray::number(cv) + "_" + number);
    }
  }
  return text;
}

/// Both types describe `count` CVs; the page on `tab` is on the screen at the end.
void rebuild(benchmark::State& state, int count, int tab) {
  DecoderWindow world;
  world.describe(description("Wert", count));
  world.open([&] {
    auto* ssDecoder = world.window.findChild<QTabWidget*>(QStringLiteral("ssDecoder"));
    double seconds = 0;
    bool other = false;
    for (auto each : state) {
      static_cast<void>(each);
      other = !other;
      const QByteArray word = other ? "Regler" : "Wert";
      world.describe(description(word, count));
      QElapsedTimer timer;
      timer.start();
      world.bench.chooseDecoder({});
      world.station.clock.advance(kChoiceTime);
      ssDecoder->setCurrentIndex(tab);
      QCoreApplication::processEvents();
      world.window.repaint();
      const double passed = static_cast<double>(timer.nsecsElapsed()) / 1e9;
      state.SetIterationTime(passed);
      seconds += passed;
      const CvGrid& grid = world.bench.grid();
      if (grid.rowCount() != count + 1 || ssDecoder->currentIndex() != tab ||
          !world.bench.gridRow(count).name.startsWith(QString::fromLatin1(word))) {
        state.SkipWithError("the window does not show the type");
      }
    }
    state.counters["ms"] = benchmark::Counter(seconds * 1e3, benchmark::Counter::kAvgIterations);
  });
}

BENCHMARK_CAPTURE(rebuild, rows_1000, 1000, kFunctionTab)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(rebuild, grid_4800, 4800, kGridTab)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
