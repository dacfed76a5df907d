#include "cli/switch_command.h"

#include <vector>

#include "cab/cab_table.h"
#include "cab/panel.h"
#include "cli/arguments.h"
#include "cli/cab_session.h"
#include "cli/command.h"
#include "cli/console.h"
#include "db/form_names.h"

namespace lokari {
namespace {

struct SwitchCall {
  int address = 0;
  std::vector<SwitchArgument> outputs;  // from 1
};

SwitchCall takeCall(const QStringList& arguments) {
  Arguments parser(arguments);
  const QStringList rest = parser.takeRest();
  if (rest.size() < 2) throw WrongCall(QStringLiteral("Es fehlen Adresse und Ausgang!"));
  SwitchCall call;
  call.address = numberArgument(rest[0], form::kLowestAddress, form::kHighestAddress,
                                QStringLiteral("Adresse"));
  for (const QString& text : rest.mid(1)) {
    call.outputs.push_back(
        switchArgument(text, 1, PanelState::kOutputs, QStringLiteral("Ausgang")));
  }
  return call;
}

}  // namespace

ExitStatus switchOutputs(const QStringList& arguments, CliContext& context) {
  checkHasCabs(context, QStringLiteral("schalten"));
  const SwitchCall call = takeCall(arguments);
  CabSession session(context);
  if (!session.isOpen()) return ExitStatus::WrongCall;

  const auto panel = std::make_shared<Panel>(
      PanelParts{session.line(), context.prompt, makePanelProtocol}, call.address, QString());
  bool loadFlag = false;
  session.line().exchange(panel.get(), 0, [&] { panel->load(loadFlag); });
  const bool told = panel->hasState() && !context.interrupt.raised;
  if (told) {
    const auto& outOn = panel->state().outOn;
    for (const SwitchArgument& each : call.outputs) {
      const int n = each.number - 1;
      if (outOn[static_cast<size_t>(n)] != each.on) panel->cmdSwitch(n);
    }
    for (int n = 0; n < PanelState::kOutputs; ++n) {
      context.console.result(
          QStringLiteral("%1\t%2").arg(n + 1).arg(onOff(outOn[static_cast<size_t>(n)])));
    }
  }
  panel->unload();
  return told ? session.status() : ExitStatus::Failed;
}

}  // namespace lokari
