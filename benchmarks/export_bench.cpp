// Handing a large database over to other programs.
#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include "base/file_place.h"
#include "benchmarks/no_progress.h"
#include "benchmarks/vehicle_file.h"
#include "db/database.h"
#include "reports/csv_export.h"
#include "reports/rzk_export.h"
#include "reports/rzk_record.h"
#include "support/places.h"
#include "support/scripted_prompt.h"

namespace lokari {
namespace {

constexpr int kVehicles = 10'000;
constexpr int kTableVehicles = 20'000;

/// Into a new file, which takes one record of each address.
void exportRzk(benchmark::State& state) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("RZK_LOCO.DAT"));
  Database database(benchmarks::vehicleFile(kVehicles));
  test::ScriptedPrompt prompt;
  QElapsedTimer timer;
  qint64 spent = 0;
  int runs = 0;
  for (auto each : state) {
    static_cast<void>(each);
    prompt.answers = {Answer::Yes};
    timer.start();
    const bool done = RzkExport({prompt, {}, {}}, database, {}).exportTo(file).has_value();
    spent += timer.nsecsElapsed();
    ++runs;
    const qint64 records = QFile(file).size() / kRzkRecordSize - 1;
    if (!done || records != kVehicles / benchmarks::kCollections || !QFile::remove(file)) {
      state.SkipWithError(prompt.shown.join(u'\n').toUtf8().constData());
      break;
    }
  }
  state.counters["ms"] = static_cast<double>(spent) / 1e6 / runs;
}
BENCHMARK(exportRzk)->Name("export_rzk/many")->UseRealTime()->Unit(benchmark::kMillisecond);

/// Into a table file for a spreadsheet, by the template that is installed.
void exportTable(benchmark::State& state) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("LOKARIV3.CSV"));
  const Database database(benchmarks::vehicleFile(kTableVehicles));
  benchmarks::NoProgress progress;
  QElapsedTimer timer;
  qint64 spent = 0;
  int runs = 0;
  for (auto each : state) {
    static_cast<void>(each);
    timer.start();
    const bool done = exportCsv({.database = database,
                                 .templateFile = places::data() + QStringLiteral("/repc_ger.rpt"),
                                 .formula = {}},
                                FilePlace::ofProgram(file, kCsvFile, {}), progress);
    spent += timer.nsecsElapsed();
    ++runs;
    QFile written(file);
    if (!done || !written.open(QIODevice::ReadOnly) ||
        written.readAll().count('\n') != kTableVehicles + 1) {
      state.SkipWithError("the file does not hold a line for each vehicle");
      break;
    }
  }
  state.counters["ms"] = static_cast<double>(spent) / 1e6 / runs;
}
BENCHMARK(exportTable)->Name("export_csv/many")->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
