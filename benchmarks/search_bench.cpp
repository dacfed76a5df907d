// Searching in a database of many vehicles: a filter, set against what the sqlite3 shell needs for
// the same question on the same file, and the vehicle list.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>

#include "base/ini_file.h"
#include "base/ui/window_scale.h"
#include "benchmarks/vehicle_file.h"
#include "db/database_session.h"
#include "db/ui/dlg_table.h"
#include "support/recording_desktop.h"
#include "support/scripted_prompt.h"

namespace lokari {
namespace {

/// Vehicles with a 9 in their number: 6878 of 20,000. No index helps with that.
constexpr char16_t kPattern[] = u"Schnellzug*9*";
constexpr char kShellQuery[] = "SELECT DC_RECNO FROM LOCO_DAT WHERE FZ_LNAME LIKE 'Schnellzug%9%';";
constexpr int kMatches = 6878;

class OpenForm {
 public:
  explicit OpenForm(const QString& file)
      : session_({prompt_, desktop_, ini_, folder_.path()}, file, oldFormat_) {
    session_.InitDB();
  }
  RecordForm& form() { return session_.form(); }
  QString folder() const { return folder_.path(); }

 private:
  QTemporaryDir folder_;
  test::ScriptedPrompt prompt_;
  test::RecordingDesktop desktop_;
  IniFile ini_{folder_.filePath(QStringLiteral("LOKARI.INI"))};
  NoOldFormat oldFormat_;
  DatabaseSession session_;
};

/// The shell's own measure of the question in milliseconds, its start and the opening of the file
/// not counted. Below 0 when it has no answer.
double shellTime(const QString& file) {
  QProcess shell;
  shell.start(QStringLiteral("sqlite3"), {QStringLiteral("-readonly"), file});
  // Asked twice: the first time warms the shell as the program has long been.
  QByteArray script(".output /dev/null\n");
  script.append(kShellQuery).append("\n.timer on\n").append(kShellQuery).append("\n");
  shell.write(script);
  shell.closeWriteChannel();
  if (!shell.waitForFinished() || shell.exitCode() != 0) return -1;
  // "Run Time: real 0.052 user 0.031250 sys 0.020833"
  const QByteArray answer = shell.readAllStandardOutput();
  const qsizetype at = answer.lastIndexOf("real ");
  return at < 0 ? -1 : answer.mid(at + 5).split(' ').first().toDouble() * 1000;
}

void filter(benchmark::State& state) {
  const QString file = benchmarks::vehicleFile(benchmarks::kMany);
  OpenForm open(file);
  RecordForm& form = open.form();
  double ours = 0;
  double shells = 0;
  for (auto each : state) {
    static_cast<void>(each);
    // One after the other, so that both meet the machine in the same mood.
    const double shell = shellTime(file);
    form.butFind();
    form.edited(QStringLiteral("fz_lname"), QString::fromUtf16(kPattern));
    QElapsedTimer timer;
    timer.start();
    form.butFilter();
    ours += static_cast<double>(timer.nsecsElapsed()) / 1e6;
    shells += shell;
    if (shell <= 0 || form.records().count() != kMatches) {
      state.SkipWithError("shell or filter did not answer");
      return;
    }
  }
  const auto times = static_cast<double>(state.iterations());
  state.counters["ms"] = ours / times;
  state.counters["shell_ms"] = shells / times;
  state.counters["ratio"] = ours / shells;
}

void openList(benchmark::State& state) {
  OpenForm open(benchmarks::vehicleFile(benchmarks::kMany));
  open.form().MoveLast();
  const WindowScale scale(open.folder() + QStringLiteral("/WINDOW.INI"));
  double worst = 0;
  for (auto each : state) {
    static_cast<void>(each);
    QElapsedTimer timer;
    timer.start();
    open.form().prepareList();
    DlgTable dlgTable(open.form(), scale, nullptr);
    dlgTable.show();
    QCoreApplication::processEvents();
    worst = std::max(worst, static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  state.counters["ms"] = worst;
}

BENCHMARK(filter)
    ->Name("filter/many")
    ->UseRealTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(openList)
    ->Name("list_open/many")
    ->UseRealTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
