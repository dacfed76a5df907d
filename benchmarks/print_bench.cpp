// Paper: the list of vehicles as a PDF file, and previews on the screen.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>

#include "base/file_place.h"
#include "base/ui/window_scale.h"
#include "benchmarks/no_progress.h"
#include "benchmarks/vehicle_file.h"
#include "db/database.h"
#include "reports/decoder_sheets.h"
#include "reports/list_document.h"
#include "reports/pdf_file.h"
#include "reports/ui/dlg_preview.h"
#include "support/places.h"

namespace lokari {
namespace {

constexpr int kListed = 2'000;

void printList(benchmark::State& state) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("Liste.pdf"));
  const Database database(benchmarks::vehicleFile(kListed));
  benchmarks::NoProgress progress;
  QElapsedTimer timer;
  qint64 spent = 0;
  int runs = 0;
  for (auto each : state) {
    static_cast<void>(each);
    timer.start();
    ListDocument list({.database = database,
                       .templateFile = places::data() + QStringLiteral("/repl_ger.rpt"),
                       .formula = {}});
    const auto job = pdfFileJob(FilePlace::ofProgram(file, kPdfFile, {}), list.title(),
                                printLayout(QPageSize(QPageSize::A4)));
    const bool done = list.paint(job->paper(), progress);
    job->finish(progress);
    spent += timer.nsecsElapsed();
    ++runs;
    if (!done || QFileInfo(file).size() == 0 || !QFile::remove(file)) {
      state.SkipWithError("no list was printed");
      break;
    }
  }
  state.counters["ms"] = static_cast<double>(spent) / 1e6 / runs;
}
BENCHMARK(printList)->Name("print_list/pdf")->UseRealTime()->Unit(benchmark::kMillisecond);

/// The preview of so many vehicles: how long it takes, and the longest time for which the window
/// stands still meanwhile.
constexpr int kPreviewed = 1'000;

class Heartbeat {
 public:
  Heartbeat() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { beat(); });
    since_.start();
    timer_.start(0);
  }
  void beat() {
    longest_ = std::max(longest_, since_.nsecsElapsed());
    since_.restart();
  }
  double longestMs() const { return static_cast<double>(longest_) / 1e6; }

 private:
  QTimer timer_;
  QElapsedTimer since_;
  qint64 longest_ = 0;
};

void preview(benchmark::State& state, PrintDocument& document) {
  const WindowScale scale{QDir::tempPath() + QStringLiteral("/gibt-es-nicht/WINDOW.INI")};
  QElapsedTimer timer;
  qint64 spent = 0;
  double longest = 0;
  int runs = 0;
  for (auto each : state) {
    static_cast<void>(each);
    DlgPreview window(document, printLayout(QPageSize(QPageSize::A4)), scale, nullptr);
    window.show();
    QCoreApplication::processEvents();
    Heartbeat heart;
    timer.start();
    window.load();
    spent += timer.nsecsElapsed();
    heart.beat();
    longest = std::max(longest, heart.longestMs());
    ++runs;
  }
  state.counters["ms"] = static_cast<double>(spent) / 1e6 / runs;
  state.counters["still_ms"] = longest;
}

void previewList(benchmark::State& state) {
  const Database database(benchmarks::vehicleFile(kPreviewed));
  ListDocument list({.database = database,
                     .templateFile = places::data() + QStringLiteral("/repl_ger.rpt"),
                     .formula = {}});
  preview(state, list);
}
BENCHMARK(previewList)
    ->Name("print_list/preview")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

void previewSheets(benchmark::State& state) {
  Database database(benchmarks::vehicleFile(kPreviewed));
  DecoderSheets sheets({.database = database,
                        .query = QStringLiteral("SELECT * FROM LOCO_DAT"),
                        .folders = {places::data()},
                        .date = QDate::currentDate(),
                        .printing = {}});
  preview(state, sheets);
}
BENCHMARK(previewSheets)
    ->Name("print_sheets/preview")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace
}  // namespace lokari
