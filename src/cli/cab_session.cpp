#include "cli/cab_session.h"

#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/console.h"

namespace lokari {

CabSession::CabSession(CliContext& context) : context_(context), line_(context.link) {
  StationLink& link = context.link;
  // Opening may wait for the station, too.
  context.interrupt.action = [&link] { link.cancelRequested = true; };
  const QString failure = link.initComm(true, false, false);
  if (!failure.isEmpty()) {
    context.console.message(failure);
    context.console.message(link.openFailureReason());
    link.FinishComm();
    return;
  }
  open_ = true;
  if (context.interrupt.raised) link.cancelRequested = true;
}

CabSession::~CabSession() {
  context_.interrupt.action = nullptr;
  if (open_) context_.link.FinishComm();
}

ExitStatus CabSession::status() const {
  if (context_.prompt.hasBeeped()) {
    context_.console.message(
        QStringLiteral("Die Digitalzentrale hat einen Befehl nicht bestätigt!"));
    return ExitStatus::Failed;
  }
  return context_.interrupt.raised ? ExitStatus::Failed : ExitStatus::Done;
}

void checkHasCabs(const CliContext& context, const QString& job) {
  const StationKindRow& kind = context.settings.station();
  if (kind.cab.available()) return;
  throw WrongCall(QStringLiteral("%1 kann nicht %2!").arg(QString::fromUtf16(kind.name), job));
}

SwitchArgument switchArgument(const QString& text, int first, int last, const QString& what) {
  const QStringList halves = text.split(QLatin1Char('='));
  const bool on = halves.size() == 2 && halves[1] == QLatin1String("on");
  if (!on && (halves.size() != 2 || halves[1] != QLatin1String("off"))) {
    throw WrongCall(QStringLiteral("\"%1\" ist weder N=on noch N=off!").arg(text));
  }
  return {numberArgument(halves[0], first, last, what), on};
}

QString onOff(bool on) {
  return on ? QStringLiteral("ein") : QStringLiteral("aus");
}

}  // namespace lokari
