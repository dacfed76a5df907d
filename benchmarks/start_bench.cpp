// The start of the program with a database of many vehicles, from the call to a main window that
// can be used, as a process of its own: loading its libraries counts as well.
#include <benchmark/benchmark.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "benchmarks/vehicle_file.h"
#include "support/places.h"

namespace lokari {
namespace {

constexpr int kPatience = 30000;  // milliseconds

/// A data folder with the installation's files, whose settings name the database.
class DataFolder {
 public:
  explicit DataFolder(const QString& database) {
    QProcess::execute(
        QStringLiteral("cp"),
        {QStringLiteral("-r"), places::data() + QStringLiteral("/."), folder_.path()});
    QFile settings(folder_.filePath(QStringLiteral("LOKARI.INI")));
    if (settings.open(QIODevice::WriteOnly)) {
      settings.write("[LOKARI]\r\nCANLog=0\r\nDBPath=" + database.toUtf8() + "\r\n");
    }
  }

  QString path() const { return folder_.path(); }

 private:
  QTemporaryDir folder_;
};

/// Kilobytes that the start took at most; 0 when there was no start.
long start(const QString& folder) {
  QProcess probe;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LOKARI_APP"), folder);
  probe.setProcessEnvironment(environment);
  probe.start(QStringLiteral(LOKARI_START_PROBE), QStringList());
  if (!probe.waitForReadyRead(kPatience)) return 0;
  const long kilobytes = probe.readLine().trimmed().toLong();
  probe.waitForFinished(kPatience);
  return kilobytes;
}

void startProgram(benchmark::State& state) {
  const DataFolder folder(benchmarks::vehicleFile(benchmarks::kMany));
  QElapsedTimer timer;
  qint64 spent = 0;
  qint64 starts = 0;
  long most = 0;
  for (auto each : state) {
    static_cast<void>(each);
    timer.start();
    const long kilobytes = start(folder.path());
    spent += timer.nsecsElapsed();
    ++starts;
    if (kilobytes == 0) {
      state.SkipWithError("the program did not start");
      break;
    }
    most = std::max(most, kilobytes);
  }
  state.counters["ms"] = static_cast<double>(spent) / 1e6 / static_cast<double>(starts);
  state.counters["mb"] = static_cast<double>(most) / 1024;
}
BENCHMARK(startProgram)->Name("start/many_vehicles")->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
