// Paper: the list of vehicles as a PDF file.
#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include "base/file_place.h"
#include "benchmarks/no_progress.h"
#include "benchmarks/vehicle_file.h"
#include "db/database.h"
#include "reports/list_document.h"
#include "reports/pdf_file.h"
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

}  // namespace
}  // namespace lokari
