#include "cli/cv_commands.h"

#include <QHash>

#include "base/numbers.h"
#include "cli/arguments.h"
#include "cli/cli_session.h"
#include "cli/command.h"
#include "cli/console.h"
#include "link/link_error.h"

namespace lokari {
namespace {

constexpr int kLastCv = 1024;
constexpr int kLastAddress = 10239;
constexpr int kLastShortAddress = 127;
constexpr int kLastCvWithoutV36 = 255;

struct CvOptions {
  bool main = false;
  int address = 0;  ///< 0 for none
  int mode = 0;     ///< `progMode`
};

CvOptions takeOptions(Arguments& arguments) {
  static const QHash<QString, int> kModes{
      {QStringLiteral("direct"), 0}, {QStringLiteral("paged"), 1}, {QStringLiteral("register"), 2}};
  CvOptions options;
  options.main = arguments.takeFlag(QStringLiteral("--main"));
  options.address = arguments.takeNumber(QStringLiteral("--address"), 1, kLastAddress).value_or(0);
  if (const auto mode = arguments.takeValue(QStringLiteral("--mode"))) {
    if (!kModes.contains(*mode)) {
      throw WrongCall(
          QStringLiteral("--mode: \"%1\" ist weder direct noch paged noch register!").arg(*mode));
    }
    options.mode = kModes[*mode];
  }
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

void checkWritable(int cv, const CliContext& context) {
  checkOffered(cv <= context.settings.station().highestWritableCv,
               QStringLiteral("CV %1 schreiben").arg(cv), context);
}

int cvArgument(const QString& text) {
  return numberArgument(text, 1, kLastCv, QStringLiteral("CV-Nummer"));
}

QString line(int cv, int result, const QString& text = {}) {
  const QString head = QStringLiteral("%1\t%2").arg(cv).arg(result);
  return result < 0 || !text.isEmpty() ? head + QLatin1Char('\t') + text : head;
}

/// One CV to read or to write.
struct CvJob {
  int cv = 0;
  int value = 0;
};

/// Runs `one` for each job until one of them throws or the user cancels. Gives Done when every job
/// has succeeded.
template <class RunOne>
ExitStatus runAll(const QList<CvJob>& jobs, CliContext& context, RunOne one) {
  ExitStatus status = ExitStatus::Done;
  for (const CvJob& job : jobs) {
    if (context.link.cancelRequested) return ExitStatus::Failed;
    if (!one(job)) status = ExitStatus::Failed;
  }
  return status;
}

bool readOne(const CvJob& job, const CvOptions& options, CliContext& context) {
  const int result = context.link.ReadCV(job.cv, options.address);
  context.console.result(line(job.cv, result, result < 0 ? cvResultText(result) : QString()));
  return result >= 0;
}

bool writeOne(const CvJob& job, const CvOptions& options, CliContext& context) {
  const int result = context.link.WriteCV(job.cv, job.value, options.address, options.mode);
  QString text;
  if (result < 0) {
    text = cvResultText(result);
  } else if (result != job.value) {
    text = QStringLiteral("Wert %1 nicht programmiert (gelesen:%2)!")
               .arg(printed(job.value), printed(result));
  }
  context.console.result(line(job.cv, result, text));
  return result == job.value;
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

}  // namespace

ExitStatus cvRead(const QStringList& arguments, CliContext& context) {
  Arguments parser(arguments);
  const CvOptions options = takeOptions(parser);
  QList<CvJob> jobs;
  const QStringList rest = parser.takeRest();
  for (const QString& each : rest) jobs.append({cvArgument(each), 0});
  if (jobs.isEmpty()) throw WrongCall(QStringLiteral("Es fehlt die Nummer der CV!"));
  checkOffered(!options.main || context.settings.station().readsOnMain,
               QStringLiteral("auf dem Hauptgleis lesen"), context);
  for (const CvJob& job : std::as_const(jobs)) checkReadable(job.cv, context);

  const CommJob job = options.main ? CommJob::ReadMain : CommJob::ReadProgTrack;
  const CliSession session(context, job, !options.main);
  if (!session.isOpen()) return ExitStatus::WrongCall;
  context.link.progMode = options.mode;
  return runAll(jobs, context, [&](const CvJob& each) { return readOne(each, options, context); });
}

ExitStatus cvWrite(const QStringList& arguments, CliContext& context) {
  Arguments parser(arguments);
  const CvOptions options = takeOptions(parser);
  QList<CvJob> jobs;
  const QStringList rest = parser.takeRest();
  for (const QString& each : rest) {
    const QStringList halves = each.split(QLatin1Char('='));
    if (halves.size() != 2) throw WrongCall(QStringLiteral("\"%1\" ist nicht CV=Wert!").arg(each));
    jobs.append({cvArgument(halves[0]), numberArgument(halves[1], 0, 255, QStringLiteral("Wert"))});
  }
  if (jobs.isEmpty()) throw WrongCall(QStringLiteral("Es fehlt CV=Wert!"));
  checkOffered(!options.main || context.settings.station().programsOnMain,
               QStringLiteral("auf dem Hauptgleis schreiben"), context);
  for (const CvJob& job : std::as_const(jobs)) checkWritable(job.cv, context);

  const CommJob job = options.main ? CommJob::WriteMain : CommJob::WriteProgTrack;
  const CliSession session(context, job, !options.main);
  if (!session.isOpen()) return ExitStatus::WrongCall;
  context.link.progMode = options.mode;
  if (options.main && !chooseVehicle(options, context)) return ExitStatus::Failed;
  return runAll(jobs, context, [&](const CvJob& each) { return writeOne(each, options, context); });
}

}  // namespace lokari
