// What reading 500 CVs costs beyond the pauses and the station's own time. Time is virtual, so what
// passes on the wall is the program's own work, and with it the little that the simulated station
// takes.
#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include "base/ui/pictures.h"
#include "base/ui/window_scale.h"
#include "db/catalogue.h"
#include "db/cv_record.h"
#include "decoder/decoder_bench.h"
#include "decoder/ui/frm_decoder.h"
#include "link/station_link.h"
#include "sim/station_table.h"
#include "support/activation_hook.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"

namespace lokari {
namespace {

constexpr int kFirstCv = 100;
constexpr int kLastCv = 599;
constexpr int kCvCount = kLastCv - kFirstCv + 1;

int contentOf(int cv) {
  return cv % 251;
}

/// A simulated Tams MC with one decoder in virtual time, and the link to it.
struct VirtualStation {
  VirtualStation() {
    settings.baseUnit = StationKind::TamsMc;
    settings.delayFlag = false;
    settings.addressCheckNow = false;
    settings.manufacturerCheckNow = false;
    sim::Decoder& decoder = layout.add({}).decoder;
    for (int cv = kFirstCv; cv <= kLastCv; ++cv) decoder.store(cv, contentOf(cv));
  }

  test::VirtualClock clock;
  Settings settings;
  test::ScriptedPrompt prompt;
  sim::Layout layout;
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> station =
      sim::stationByName(u"TAMSMC")->make({clock, layout, faults, 20});
  test::SimLine line{clock, *station};
  test::MemorySocket socket{clock};
  test::MemoryCan can;
  StationLink link{settings, clock, prompt, {line, socket, can}};
};

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

/// The decoder window with all CVs described on its pages and marked for reading.
class MarkedWindow {
 public:
  MarkedWindow() {
    QFile file(folder_.filePath(QStringLiteral("Default.dec")));
    if (file.open(QIODevice::WriteOnly)) file.write(description());
    record_.InitDcData();
  }

  /// Opens the window, runs `script` in it, and closes it.
  void open(const std::function<void()>& script) {
    test::ActivationHook hook([&] {
      for (size_t row = 0; row < bench_.rows().size(); ++row) {
        bench_.rowReadToggled(static_cast<int>(row), true);
      }
      script();
      window_.reject();
    });
    window_.installEventFilter(&hook);
    window_.edit(record_, QStringLiteral("3"));
  }

  /// The button of the window that reads what is marked.
  QAbstractButton& readButton() {
    return *window_.findChild<QAbstractButton*>(QStringLiteral("cmdDcRead"));
  }

  /// Whether every CV has been read.
  bool complete() const {
    for (int cv = kFirstCv; cv <= kLastCv; ++cv) {
      if (bench_.sets.mark(CvIndex(cv)) != CvMark::Verified) return false;
      if (bench_.sets.value(CvIndex(cv)) != contentOf(cv)) return false;
    }
    return true;
  }

 private:
  static QByteArray description() {
    QByteArray text("[Messung]\n");
    for (int cv = kFirstCv; cv <= kLastCv; ++cv) {
      const QByteArray number = QByteArray::number(cv);
      text +=
          "CV_" + number + "=Wert " + number + ",0-255,0," + QByteArray::number(3 + cv % 4) + "\n";
    }
    return text;
  }

  VirtualStation world_;
  QTemporaryDir folder_;
  Catalogue catalogue_;
  WindowScale scale_{folder_.filePath(QStringLiteral("WINDOW.INI"))};
  CvRecord record_;
  DecoderBench bench_{{world_.settings, world_.clock, world_.prompt, world_.link, catalogue_,
                       folder_.path(), QStringList(256)}};
  FrmDecoder window_{bench_, world_.link, world_.clock, Pictures(folder_.path()), scale_};
};

/// The whole job as the user starts it: decoder window and progress dialog on show.
void batch_window(benchmark::State& state) {
  Stopwatch stopwatch(state);
  for (auto each : state) {
    static_cast<void>(each);
    MarkedWindow window;
    window.open([&] { stopwatch.measure([&] { window.readButton().click(); }); });
    if (!window.complete()) state.SkipWithError("a CV was not read");
  }
}

BENCHMARK(batch_link)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(batch_window)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
