#include "cli/cv_commands.h"

#include <QScopeGuard>

#include "base/numbers.h"
#include "cli/cli_session.h"
#include "cli/command.h"
#include "cli/console.h"
#include "link/link_error.h"

namespace lokari {
namespace {

constexpr int kLastShortAddress = 127;

/// These two select the bank that CVs above 256 lie in: behind a failed one their numbers mean
/// other CVs.
constexpr bool selectsBank(int cv) {
  return cv == 31 || cv == 32;
}

struct CvOptions {
  bool main = false;
  int address = 0;  ///< 0 for none
  ProgMethod method = ProgMethod::Direct;

  int mode() const { return static_cast<int>(method); }
};

ProgMethod methodOf(const QString& word) {
  if (word == QLatin1String("paged")) return ProgMethod::Paged;
  return word == QLatin1String("register") ? ProgMethod::Register : ProgMethod::Direct;
}

CvOptions takeOptions(const Call& call) {
  const CvOptions options{.main = call.has(u"--main"),
                          .address = call.number(u"--address").value_or(0),
                          .method = methodOf(call.text(u"--mode").value_or(QString()))};
  if (options.main && options.address == 0) {
    throw WrongCall(QStringLiteral("Auf dem Hauptgleis muss --address stehen!"));
  }
  return options;
}

QString kindName(const CliContext& context) {
  return QString::fromUtf16(context.settings.station().name);
}

/// Refuses what the decoder window does not offer for the station kind.
void checkOffered(bool offered, const QString& job, const CliContext& context) {
  if (!offered) {
    throw WrongCall(QStringLiteral("%1 kann nicht %2!").arg(kindName(context), job));
  }
}

void checkReadable(int cv, const CliContext& context) {
  const bool limited =
      context.settings.station().readLimitedWithoutV36 && !context.settings.lenzV36;
  checkOffered(!limited || cv <= kLastCvWithoutV36, QStringLiteral("CV %1 lesen").arg(cv), context);
}

void checkWritable(int cv, const CvOptions& options, const CliContext& context) {
  const StationKindRow& kind = context.settings.station();
  const bool sent = kind.canSendWrite(cv, !options.main, context.settings.lenzV36);
  checkOffered(cv <= kind.highestWritableCv && sent, QStringLiteral("CV %1 schreiben").arg(cv),
               context);
}

/// What goes out in another method than the one asked for would reach other CVs.
void checkMethod(const CvOptions& options, const Call& call, const CliContext& context) {
  checkOffered(
      context.settings.station().progMethods.has(options.method),
      QStringLiteral("mit --mode %1 programmieren").arg(call.text(u"--mode").value_or(QString())),
      context);
}

/// One CV to read or to write.
struct CvJob {
  int cv = 0;
  int value = 0;
  bool endsTheRun = false;  ///< when it fails, whatever the settings say
};

/// What became of it.
struct CvOutcome {
  int cv = 0;
  int result = 0;  ///< a value or a negative code
  QString text;    ///< of a failure

  bool failed() const { return !text.isEmpty(); }
};

QString failureText(int code) {
  const QString text = cvResultText(code);
  return text.isEmpty() ? QStringLiteral("Abgebrochen") : text;
}

void print(const CvOutcome& outcome, CliContext& context) {
  QList<ResultField> fields{
      {QStringLiteral("cv"), outcome.cv},
      {outcome.result < 0 ? QStringLiteral("code") : QStringLiteral("value"), outcome.result}};
  if (outcome.failed()) fields.append({QStringLiteral("text"), outcome.text});
  context.results.line(fields);
}

/// Names the writes that no value of the decoder stands behind.
void tellUnproved(const QList<CvOutcome>& outcomes, const CvOptions& options, CliContext& context) {
  if (context.settings.station().provesWrites(!options.main)) return;
  QStringList numbers;
  for (const CvOutcome& each : outcomes) {
    if (!each.failed()) numbers << QString::number(each.cv);
  }
  if (numbers.isEmpty()) return;
  context.console.message(
      QStringLiteral("CV %1: geschrieben, nicht geprüft!").arg(numbers.join(QStringLiteral(", "))));
}

void tellLeftOut(const QList<CvJob>& jobs, qsizetype from, CliContext& context) {
  QStringList numbers;
  for (const CvJob& job : jobs.mid(from)) numbers << QString::number(job.cv);
  if (numbers.isEmpty()) return;
  context.console.message(
      QStringLiteral("Nicht mehr bearbeitet: CV %1").arg(numbers.join(QStringLiteral(", "))));
}

/// Runs `one` for each job until one of them throws, the user cancels, or one fails that ends the
/// run, or the settings do not go on then. `take` gets the outcomes. Gives Done when every job has
/// succeeded.
template <class RunOne, class Take>
ExitStatus runAll(const QList<CvJob>& jobs, CliContext& context, RunOne one, Take take) {
  ExitStatus status = ExitStatus::Done;
  for (qsizetype i = 0; i < jobs.size(); ++i) {
    if (context.link.cancelRequested) return ExitStatus::Failed;
    const CvOutcome outcome = one(jobs[i]);
    take(outcome);
    if (!outcome.failed()) continue;
    status = ExitStatus::Failed;
    const bool goesOn = context.settings.continueOnError && !jobs[i].endsTheRun;
    if (goesOn || context.link.cancelRequested) continue;
    tellLeftOut(jobs, i + 1, context);
    break;
  }
  return status;
}

CvOutcome readOne(const CvJob& job, const CvOptions& options, CliContext& context) {
  const int result = context.link.ReadCV(job.cv, options.address);
  return {job.cv, result, result < 0 ? failureText(result) : QString()};
}

CvOutcome writeOne(const CvJob& job, const CvOptions& options, CliContext& context) {
  const int result = context.link.WriteCV(job.cv, job.value, options.address, options.mode());
  if (result < 0) return {job.cv, result, failureText(result)};
  if (result == job.value) return {job.cv, result, {}};
  return {job.cv, result,
          QStringLiteral("Wert %1 nicht programmiert (gelesen:%2)!")
              .arg(printed(job.value), printed(result))};
}

/// The station's own number of a vehicle on the main track. False when it has none now.
bool chooseVehicle(const CvOptions& options, CliContext& context) {
  StationLink& link = context.link;
  const int index =
      options.address > kLastShortAddress ? link.getAddrIndex(options.address) : options.address;
  if (index >= 0) {
    link.pomAddr = index;
    return true;
  }
  context.console.message(QStringLiteral("Adresse derzeit nicht verfügbar!"));
  return false;
}

/// Writes whose refusal may come as late as the session's farewell.
class LateOutcomes {
 public:
  LateOutcomes(CliSession& session, const CvOptions& options, CliContext& context)
      : session_(session), options_(options), context_(context) {}
  /// Prints what is known, also when the line has gone.
  ~LateOutcomes() { tell(); }
  LateOutcomes(const LateOutcomes&) = delete;
  LateOutcomes& operator=(const LateOutcomes&) = delete;

  void take(const CvOutcome& outcome) { outcomes_.append(outcome); }

  /// True when the station had no objection.
  bool tell() {
    const QString refusal = session_.close();
    for (CvOutcome& each : outcomes_) {
      // The refusal does not say which one it is for.
      if (!refusal.isEmpty() && !each.failed()) each = {each.cv, cv_result::kWrongReply, refusal};
      print(each, context_);
    }
    tellUnproved(outcomes_, options_, context_);
    outcomes_.clear();
    return refusal.isEmpty();
  }

 private:
  CliSession& session_;
  const CvOptions& options_;
  CliContext& context_;
  QList<CvOutcome> outcomes_;
};

ExitStatus writeOnMain(const QList<CvJob>& jobs, const CvOptions& options, CliSession& session,
                       CliContext& context) {
  if (!chooseVehicle(options, context)) return ExitStatus::Failed;
  LateOutcomes late(session, options, context);
  const ExitStatus status = runAll(
      jobs, context, [&](const CvJob& each) { return writeOne(each, options, context); },
      [&late](const CvOutcome& outcome) { late.take(outcome); });
  return late.tell() ? status : ExitStatus::Failed;
}

}  // namespace

ExitStatus cvRead(const Call& call, CliContext& context) {
  const CvOptions options = takeOptions(call);
  QList<CvJob> jobs;
  for (const int cv : call.numbers(u"CV")) jobs.append({cv, 0});
  checkMethod(options, call, context);
  checkOffered(!options.main || context.settings.station().readsOnMain,
               QStringLiteral("auf dem Hauptgleis lesen"), context);
  for (const CvJob& job : std::as_const(jobs)) checkReadable(job.cv, context);

  const CommJob job = options.main ? CommJob::ReadMain : CommJob::ReadProgTrack;
  const CliSession session(context, job, !options.main);
  if (!session.isOpen()) return session.failure();
  context.link.progMode = options.mode();
  return runAll(
      jobs, context, [&](const CvJob& each) { return readOne(each, options, context); },
      [&](const CvOutcome& outcome) { print(outcome, context); });
}

ExitStatus cvWrite(const Call& call, CliContext& context) {
  const CvOptions options = takeOptions(call);
  QList<CvJob> jobs;
  for (const Setting& each : call.settings(u"CV=WERT")) {
    jobs.append({each.cv, each.value, selectsBank(each.cv)});
  }
  checkMethod(options, call, context);
  checkOffered(!options.main || context.settings.station().programsOnMain,
               QStringLiteral("auf dem Hauptgleis schreiben"), context);
  for (const CvJob& job : std::as_const(jobs)) checkWritable(job.cv, options, context);

  const CommJob job = options.main ? CommJob::WriteMain : CommJob::WriteProgTrack;
  CliSession session(context, job, !options.main);
  if (!session.isOpen()) return session.failure();
  context.link.progMode = options.mode();
  if (options.main) return writeOnMain(jobs, options, session, context);
  QList<CvOutcome> outcomes;
  // Also when the line breaks.
  const auto atEnd = qScopeGuard([&] { tellUnproved(outcomes, options, context); });
  return runAll(
      jobs, context, [&](const CvJob& each) { return writeOne(each, options, context); },
      [&](const CvOutcome& outcome) {
        print(outcome, context);
        outcomes.append(outcome);
      });
}

}  // namespace lokari
