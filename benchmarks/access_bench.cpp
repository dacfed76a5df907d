// Taking an Access file over, set against what mdb-export needs to write the same tables out.
#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include "benchmarks/no_progress.h"
#include "db/access_import.h"
#include "support/places.h"

namespace lokari {
namespace {

const QString kFile = places::accessFile(QStringLiteral("jet4_current.mdb"));
constexpr int kVehicles = 45;

/// Milliseconds of mdb-export for all tables, one call each; below 0 when it fails.
double exportTime() {
  QElapsedTimer timer;
  timer.start();
  for (const char* table :
       {"DCMANUFS", "DECODERS", "MANUFS", "MOTORS", "ERAS", "LINES", "FTYPES", "LOCO_DAT"}) {
    QProcess tool;
    tool.setStandardOutputFile(QProcess::nullDevice());
    tool.start(QStringLiteral("mdb-export"),
               {QStringLiteral("-b"), QStringLiteral("hex"), kFile, QString::fromUtf8(table)});
    if (!tool.waitForFinished() || tool.exitCode() != 0) return -1;
  }
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Milliseconds of the take-over, the new database on disk; below 0 when it fails.
double takeOverTime() {
  const QTemporaryDir folder;
  benchmarks::NoProgress progress;
  QElapsedTimer timer;
  timer.start();
  const auto report =
      takeOverAccess({places::programs() + QStringLiteral("/lokari-access-reader")}, kFile,
                     folder.filePath(QStringLiteral("NEU.MDB")), places::data(), progress);
  if (!report || report->vehicles != kVehicles) return -1;
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void takeOver(benchmark::State& state) {
  double ours = 0;
  double tools = 0;
  for (auto each : state) {
    static_cast<void>(each);
    // One after the other, so that both meet the machine in the same mood.
    const double tool = exportTime();
    const double own = takeOverTime();
    if (tool <= 0 || own <= 0) {
      state.SkipWithError("mdb-export or the take-over failed");
      return;
    }
    tools += tool;
    ours += own;
  }
  const auto times = static_cast<double>(state.iterations());
  state.counters["ms"] = ours / times;
  state.counters["mdb_export_ms"] = tools / times;
  state.counters["ratio"] = ours / tools;
}

BENCHMARK(takeOver)
    ->Name("access/current")
    ->UseRealTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
