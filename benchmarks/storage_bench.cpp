// A database of many vehicles: what the user waits for when it is opened, when the navigator moves,
// when a vehicle is looked for and when one is stored. Each is measured a second time on a database
// of twenty vehicles, like which it must feel.
#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

#include "base/ini_file.h"
#include "benchmarks/vehicle_file.h"
#include "db/database_session.h"
#include "support/recording_desktop.h"
#include "support/scripted_prompt.h"

namespace lokari {
namespace {

/// The record form on a database, as the main window has it.
class Storage {
 public:
  explicit Storage(const QString& file) : file_(file) {}

  void open() {
    session_ = std::make_unique<DatabaseSession>(
        RecordFormParts{prompt_, desktop_, ini_, folder_.path()}, file_, oldFormat_);
    session_->InitDB();
  }
  void close() { session_.reset(); }

  RecordForm& form() { return session_->form(); }
  int count() { return form().records().count(); }
  /// Empty when nothing was reported.
  QString fault() const { return prompt_.shown.join(u'\n'); }

 private:
  QTemporaryDir folder_;
  QString file_;
  test::ScriptedPrompt prompt_;
  test::RecordingDesktop desktop_;
  IniFile ini_{folder_.filePath(QStringLiteral("LOKARI.INI"))};
  NoOldFormat oldFormat_;
  std::unique_ptr<DatabaseSession> session_;
};

/// One step of a benchmark; false when it did not do what it measures.
using Step = bool (*)(Storage& storage, int number);

bool reopen(Storage& storage, int) {
  storage.open();
  return storage.form().position() == 0;
}

bool nextRecord(Storage& storage, int number) {
  if (number % storage.count() == 0) {
    storage.form().MoveFirst();
  } else {
    storage.form().MoveNext();
  }
  return storage.form().position() == number % storage.count();
}

bool findVehicle(Storage& storage, int number) {
  // Every collection holds the addresses from 1 up; the last one is farthest.
  const int address = number % (storage.count() / benchmarks::kCollections) + 1;
  return storage.form().FindFirst(
             QStringLiteral("DC_COLL=\"Sammlung 9\" AND DC_ADR=%1").arg(address)) ==
         FindResult::Found;
}

bool storeRecord(Storage& storage, int number) {
  storage.form().edited(QStringLiteral("fz_lname"), QString::number(number));
  return storage.form().storeEdit();
}

void measure(benchmark::State& state, int vehicles, Step step) {
  Storage storage(benchmarks::vehicleFile(vehicles));
  storage.open();
  if (storage.count() != vehicles) state.SkipWithError("the database is not what it should be");
  QElapsedTimer timer;
  qint64 spent = 0;
  int number = 0;
  for (auto each : state) {
    static_cast<void>(each);
    if (step == reopen) storage.close();
    timer.start();
    const bool done = step(storage, ++number);
    spent += timer.nsecsElapsed();
    if (!done || !storage.fault().isEmpty()) {
      state.SkipWithError(("a step failed: " + storage.fault().toStdString()).c_str());
      break;
    }
  }
  state.counters["ms"] = static_cast<double>(spent) / 1e6 / number;
}

void arrange(benchmark::internal::Benchmark* benchmark) {
  benchmark->UseRealTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(measure, few, benchmarks::kFew, reopen)->Name("storage_open/few")->Apply(arrange);
BENCHMARK_CAPTURE(measure, many, benchmarks::kMany, reopen)
    ->Name("storage_open/many")
    ->Apply(arrange);
BENCHMARK_CAPTURE(measure, few, benchmarks::kFew, nextRecord)
    ->Name("storage_next/few")
    ->Apply(arrange);
BENCHMARK_CAPTURE(measure, many, benchmarks::kMany, nextRecord)
    ->Name("storage_next/many")
    ->Apply(arrange);
BENCHMARK_CAPTURE(measure, few, benchmarks::kFew, findVehicle)
    ->Name("storage_find/few")
    ->Apply(arrange);
BENCHMARK_CAPTURE(measure, many, benchmarks::kMany, findVehicle)
    ->Name("storage_find/many")
    ->Apply(arrange);
BENCHMARK_CAPTURE(measure, few, benchmarks::kFew, storeRecord)
    ->Name("storage_store/few")
    ->Apply(arrange);
BENCHMARK_CAPTURE(measure, many, benchmarks::kMany, storeRecord)
    ->Name("storage_store/many")
    ->Apply(arrange);

}  // namespace
}  // namespace lokari
