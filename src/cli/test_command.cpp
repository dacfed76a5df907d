#include "cli/test_command.h"

#include "cli/command.h"
#include "cli/console.h"
#include "station/comm_test.h"

namespace lokari {
namespace {

QString kindName(StationKind kind) {
  return QString::fromUtf16(stationKind(kind).name);
}

/// Runs the test. Its result is printed once, in the end, and therefore not shown as a status.
CommTestResult runTest(CliContext& context) {
  StationLink& link = context.link;
  CommView* const view = link.view();
  link.setView(nullptr);
  link.commJob = CommJob::TestComm;
  const CommTestResult result = TestComm(link, context.settings);
  link.commJob = CommJob::None;
  link.setView(view);
  return result;
}

}  // namespace

ExitStatus testStation(const Call&, CliContext& context) {
  const StationKind configured = context.settings.baseUnit;
  const CommTestResult result = runTest(context);
  using Outcome = CommTestResult::Outcome;
  const bool answered =
      result.outcome == Outcome::Answered || result.outcome == Outcome::NotUnderstood;
  for (const QString& line : result.lines) {
    if (answered) {
      context.results.line({{QStringLiteral("text"), line}});
    } else {
      context.console.message(line);
    }
  }
  if (result.connected && result.connected->kind != configured) {
    context.console.message(QStringLiteral("Angeschlossen ist %1, eingestellt ist %2!")
                                .arg(kindName(result.connected->kind), kindName(configured)));
  }
  if (result.wantsMakerForm) {
    context.console.message(QString::fromUtf16(kMakerFormAdvice) +
                            QStringLiteral(" (MakerForm=J, siehe Optionen)"));
  }
  if (result.outcome == Outcome::NoSession) return ExitStatus::WrongCall;
  const bool done = result.outcome == Outcome::Answered && !result.cancelled;
  return done ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace lokari
