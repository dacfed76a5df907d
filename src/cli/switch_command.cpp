#include "cli/switch_command.h"

#include "cab/cab_table.h"
#include "cli/cab_session.h"
#include "cli/command.h"

namespace lokari {
namespace {

void takeOutputs(quint8 mask, PanelState& state) {
  // Two bits per output; the lower one set means off.
  for (int n = 0; n < PanelState::kOutputs; ++n) {
    state.outOn[static_cast<size_t>(n)] = (mask >> (2 * n) & 1) == 0;
  }
}

QList<ResultField> fieldsOf(const PanelState& state) {
  QList<ResultField> fields{{QStringLiteral("address"), state.address}};
  for (int n = 0; n < PanelState::kOutputs; ++n) {
    const QString name = QString::number(n + 1);
    fields.append({name, state.outOn[static_cast<size_t>(n)], {}, name});
  }
  return fields;
}

}  // namespace

ExitStatus switchOutputs(const Call& call, CliContext& context) {
  checkHasCabs(context, QStringLiteral("schalten"));
  CabSession session(context);
  if (!session.isOpen()) return session.status();

  PanelState state;
  state.address = call.number(u"ADRESSE").value_or(0);
  const auto protocol = makePanelProtocol(context.settings.station().family, session.line(), state);
  const auto mask = session.read([&protocol] { return protocol->readState(); });
  if (mask) takeOutputs(*mask, state);
  for (const Switching& each : call.switchings(u"N=on|off")) {
    const int n = each.number - 1;
    bool& output = state.outOn[static_cast<size_t>(n)];
    const bool before = output;
    const bool sent = session.command([&] {
      output = each.on;
      protocol->sendOutput(n);
    });
    // What did not get through is not shown.
    if (!sent) output = before;
  }
  if (mask) context.results.record(fieldsOf(state));
  return session.status();
}

}  // namespace lokari
