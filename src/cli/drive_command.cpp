#include "cli/drive_command.h"

#include <algorithm>
#include <cstdlib>
#include <map>

#include "cab/cab_table.h"
#include "cab/dcc_speed.h"
#include "cab/speed_steps.h"
#include "cli/cab_session.h"
#include "cli/command.h"

namespace lokari {
namespace {

struct Wish {
  int address = 0;
  std::optional<int> speed;
  std::optional<bool> backward;
  std::vector<Switching> functions;
  bool stop = false;
  bool go = false;
};

Wish takeWish(const Call& call, const StationKindRow& kind) {
  Wish wish{.address = call.number(u"ADRESSE").value_or(0),
            .speed = call.number(u"--speed"),
            .backward = {},
            .functions = call.switchings(u"--function"),
            .stop = call.has(u"--stop"),
            .go = call.has(u"--go")};
  if (call.has(u"--forward")) wish.backward = false;
  if (call.has(u"--back")) wish.backward = true;
  for (const Switching& each : wish.functions) {
    numberArgument(QString::number(each.number), 0, kind.cab.funcCount,
                   QStringLiteral("--function"));
  }
  return wish;
}

/// One vehicle on the one session: what a cab is without its window.
class Throttle {
 public:
  Throttle(CabSession& session, const StationKindRow& kind, int address)
      : session_(session), kind_(kind) {
    state_.address = address;
    state_.funcCount = kind.cab.funcCount;
    protocol_ = makeCabProtocol(
        kind.family, session.line(), state_,
        {.stateArrived = [this](FunctionMask mask) { showFunctions(mask); },
         .stopFailed = [this](bool, StopFault fault) { tellFailed(fault); },
         .layoutTold = [this](LayoutStands stands) { session_.tellStands(stands); }});
  }

  /// For the whole track.
  bool setStopped(bool stopped) {
    state_.stopped = stopped;
    refused_ = false;
    return session_.stop([this] { protocol_->sendStopped(); }) && !refused_;
  }

  bool read() {
    const auto mask = session_.read([this] { return protocol_->readState(); });
    if (mask) showFunctions(*mask);
    return mask.has_value();
  }

  /// What the station says behind the commands; false when it says nothing or something else than
  /// `wish`, which is told.
  bool readBack(const Wish& wish) {
    const auto sent = state_.funcOn;
    if (!read()) {
      session_.fail(QStringLiteral("Ob die Befehle angekommen sind, ist nicht bekannt!"));
      return false;
    }
    const FunctionMask told = protocol_->toldFunctions();
    for (size_t n = 0; n <= CabState::kHighestFunction; ++n) {
      if ((told >> n & 1U) == 0) state_.funcOn[n] = sent[n];
    }
    if (isAsWished(wish)) return true;
    session_.fail(QStringLiteral("Die Digitalzentrale meldet danach einen anderen Stand!"));
    return true;
  }

  /// What is asked for and not so already. True when something went out.
  bool act(const Wish& wish) {
    sent_ = false;
    for (const Switching& each : wish.functions) {
      if (each.number > state_.funcCount) {
        session_.fail(QStringLiteral("F%1 kennt die Digitalzentrale nicht!").arg(each.number));
        continue;
      }
      bool& on = state_.funcOn[static_cast<size_t>(each.number)];
      if (on != each.on) send(on, each.on, [this, &each] { protocol_->sendFunction(each.number); });
    }
    if (wish.backward && *wish.backward != state_.backward) {
      send(state_.backward, *wish.backward, [this] { protocol_->sendDirection(); });
    }
    if (wish.speed) send(state_.speed, *wish.speed, [this] { protocol_->sendSpeed(); });
    return sent_;
  }

  QList<ResultField> fields() const {
    QList<ResultField> all{
        {QStringLiteral("address"), state_.address},
        {QStringLiteral("speed"), state_.speed, {}, QStringLiteral("Geschwindigkeit")},
        {QStringLiteral("backward"), state_.backward,
         state_.backward ? QStringLiteral("rückwärts") : QStringLiteral("vorwärts"),
         QStringLiteral("Richtung")}};
    if (kind_.cab.manual) {
      all.append({QStringLiteral("manual"), state_.manual, {}, QStringLiteral("Handbetrieb")});
    }
    for (int n = 0; n <= state_.funcCount; ++n) {
      const QString name = QStringLiteral("F%1").arg(n);
      all.append({name, state_.funcOn[static_cast<size_t>(n)], {}, name});
    }
    return all;
  }

 private:
  void tellFailed(StopFault fault) {
    refused_ = fault == StopFault::Refused;
    refused_ ? session_.tellRefused() : session_.tellUnconfirmed();
  }

  /// A speed is told in the steps of the vehicle, which stations cut from the bar's positions in
  /// two ways. One that moves may be a position off: a station may have no lowest step.
  bool isAt(int speed) const {
    const int told = state_.speed;
    const int steps = state_.steps;
    if (cutStationSteps(speed, steps) == cutStationSteps(told, steps)) return true;
    if (dccSpeedBits(speed, steps) == dccSpeedBits(told, steps)) return true;
    return speed > 0 && told > 0 && std::abs(speed - told) <= 1;
  }

  bool isAsWished(const Wish& wish) const {
    if (wish.speed && !isAt(*wish.speed)) return false;
    if (wish.backward && *wish.backward != state_.backward) return false;
    // Of several words about one function the last one counts.
    std::map<int, bool> functions;
    for (const Switching& each : wish.functions) functions[each.number] = each.on;
    return std::all_of(functions.begin(), functions.end(), [this](const auto& each) {
      return each.first > state_.funcCount ||
             state_.funcOn[static_cast<size_t>(each.first)] == each.second;
    });
  }

  void showFunctions(FunctionMask mask) {
    for (int n = 0; n <= CabState::kHighestFunction; ++n) {
      state_.funcOn[static_cast<size_t>(n)] = (mask >> n & 1U) != 0;
    }
  }

  /// What did not get through is not shown.
  template <class T, class Send>
  void send(T& field, T value, const Send& send) {
    const T before = field;
    const bool sent = session_.command([&] {
      field = value;
      send();
    });
    sent_ = sent_ || sent;
    if (!sent) field = before;
  }

  CabSession& session_;
  const StationKindRow& kind_;
  CabState state_;
  std::unique_ptr<CabProtocol> protocol_;
  bool sent_ = false;
  bool refused_ = false;  // the last stop or go
};

ResultField stopped(bool on) {
  return {QStringLiteral("stopped"), on, {}, QStringLiteral("Halt")};
}

}  // namespace

ExitStatus drive(const Call& call, CliContext& context) {
  checkHasCabs(context, QStringLiteral("fahren"));
  const StationKindRow& kind = context.settings.station();
  const Wish wish = takeWish(call, kind);
  CabSession session(context);
  if (!session.isOpen()) return session.status();

  Throttle throttle(session, kind, wish.address);
  QList<ResultField> results;
  // The stop is on its way before anything is waited for.
  bool halted = wish.stop && throttle.setStopped(true);
  const bool told = throttle.read();
  if (wish.stop && kind.switchesOn.cab) halted = throttle.setStopped(true);
  if (told && !context.interrupt.raised) {
    // Where reading switches nothing on, the station is asked what has become of it.
    const bool asks = throttle.act(wish) && !session.hasFailed() && !kind.switchesOn.cab;
    if (!asks || throttle.readBack(wish)) results = throttle.fields();
    // Last, so that the vehicle starts as it was told to.
    if (wish.go && !context.interrupt.raised && throttle.setStopped(false)) {
      results.append(stopped(false));
    }
  }
  if (halted) results.append(stopped(true));
  if (!results.isEmpty()) context.results.record(results);
  return session.status();
}

}  // namespace lokari
