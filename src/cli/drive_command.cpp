#include "cli/drive_command.h"

#include <optional>
#include <vector>

#include "cab/cab.h"
#include "cab/cab_table.h"
#include "cli/arguments.h"
#include "cli/cab_session.h"
#include "cli/command.h"
#include "cli/console.h"
#include "db/form_names.h"

namespace lokari {
namespace {

struct DriveCall {
  int address = 0;
  std::optional<int> speed;
  bool back = false;
  bool stop = false;
  std::vector<SwitchArgument> functions;
};

DriveCall takeCall(const QStringList& arguments, const StationKindRow& kind) {
  Arguments parser(arguments);
  DriveCall call{.speed = parser.takeNumber(QStringLiteral("--speed"), 0, CabState::kHighestSpeed),
                 .back = parser.takeFlag(QStringLiteral("--back")),
                 .stop = parser.takeFlag(QStringLiteral("--stop")),
                 .functions = {}};
  for (const QString& text : parser.takeValues(QStringLiteral("--function"))) {
    call.functions.push_back(
        switchArgument(text, 0, kind.cab.funcCount, QStringLiteral("--function")));
  }
  const QStringList rest = parser.takeRest();
  if (rest.size() != 1) throw WrongCall(QStringLiteral("Es fehlt die Adresse!"));
  call.address = numberArgument(rest[0], form::kLowestAddress, form::kHighestAddress,
                                QStringLiteral("Adresse"));
  return call;
}

/// What is asked for and not so already. The stop goes first: it is for the whole track.
void act(Cab& cab, const DriveCall& call) {
  if (call.stop) cab.imgStop();
  for (const SwitchArgument& each : call.functions) {
    if (cab.state().funcOn[static_cast<size_t>(each.number)] != each.on) cab.cmdFunc(each.number);
  }
  // A speed without --back is one forward.
  if ((call.back || call.speed) && cab.state().backward != call.back) {
    call.back ? cab.imgDirBackward() : cab.imgDirForward();
  }
  if (call.speed) cab.vsbSpeed(*call.speed);
}

void print(const Cab& cab, Console& console) {
  const auto line = [&console](const QString& what, const QString& value) {
    console.result(what + QLatin1Char('\t') + value);
  };
  const CabState& state = cab.state();
  line(QStringLiteral("Geschwindigkeit"), QString::number(state.speed));
  line(QStringLiteral("Richtung"),
       state.backward ? QStringLiteral("rückwärts") : QStringLiteral("vorwärts"));
  if (cab.manualVisible()) line(QStringLiteral("Handbetrieb"), onOff(state.manual));
  for (int n = 0; cab.hasFunction(n); ++n) {
    line(QStringLiteral("F%1").arg(n), onOff(state.funcOn[static_cast<size_t>(n)]));
  }
  if (state.stopped) line(QStringLiteral("Halt"), onOff(true));
}

}  // namespace

ExitStatus drive(const QStringList& arguments, CliContext& context) {
  checkHasCabs(context, QStringLiteral("fahren"));
  const DriveCall call = takeCall(arguments, context.settings.station());
  CabSession session(context);
  if (!session.isOpen()) return ExitStatus::WrongCall;

  VehicleRecords records(nullptr, context.prompt);
  const auto cab = std::make_shared<Cab>(
      CabParts{session.line(), context.prompt, records, context.paths.basePath, makeCabProtocol},
      call.address, true);
  // Where the link stays open the cab has taken the session over.
  if (cab->kind().cab.linkStaysOpen) session.handOver();
  bool loadFlag = false;
  session.line().exchange(cab.get(), 0, [&] { cab->load(loadFlag); });
  const bool told = cab->hasState() && !context.interrupt.raised;
  if (told) {
    act(*cab, call);
    print(*cab, context.console);
  }
  cab->unload();
  return told ? session.status() : ExitStatus::Failed;
}

}  // namespace lokari
