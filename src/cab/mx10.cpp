#include "cab/mx10.h"

#include <QScopeGuard>

#include "cab/cab_line.h"
#include "cab/mx10_codec.h"
#include "link/link_error.h"
#include "link/mx10.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// What cab and panel do alike on the bus.
class Bus {
 public:
  explicit Bus(CabLine& line) : line_(line) {}

  Mx10Protocol& station() const { return dynamic_cast<Mx10Protocol&>(line_.link().protocol()); }

  /// The pause ahead of a message, after which nothing old is waiting.
  void settle() const {
    line_.link().Delay(0);
    station().ClearMX10Input();
  }

  /// True when the bus has taken the message.
  bool write(const CanMessage& message) const {
    int code = 0;
    line_.send([&] { code = station().canWrite(message); });
    return code == 0;
  }

  /// The same for a command. Throws LinkError when the bus does not take it.
  void command(const CanMessage& message) const {
    if (!write(message)) {
      throw LinkError(QStringLiteral("Die CAN-Schnittstelle nimmt keine Nachricht an!"));
    }
  }

  /// Sends a question and waits for its answer; false when the bus does not take it.
  bool ask(const CanMessage& question) const {
    if (!write(question)) return false;
    station().awaitVehicle(question);
    const auto end = qScopeGuard([this] { station().endVehicleQuestion(); });
    line_.link().WaitForData(static_cast<qint32>(question.ID));
    return true;
  }

 private:
  CabLine& line_;
};

/// Raises `canBusy` for a scope.
class Busy {
 public:
  explicit Busy(CabState& state) : state_(state) { state_.canBusy = true; }
  ~Busy() { state_.canBusy = false; }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  CabState& state_;
};

class Mx10Cab final : public CabProtocol {
 public:
  Mx10Cab(CabLine& line, CabState& state, CabHooks hooks)
      : CabProtocol(line, state, std::move(hooks)), bus_(line) {}

  std::optional<FunctionMask> readState() override {
    const Busy busy(state());
    bus_.settle();
    return read();
  }

  bool sendSpeed() override {
    const int value = mx10::speedValue(state().speed);
    state().canFlags = mx10::speedFlags(state().canFlags, value, state().backward);
    send(mx10::drive(state().address, value & 0xFF, state().canFlags, state().canFuncs));
    return true;
  }

  /// The bar's position goes out as it stands, not times 8.
  void sendDirection() override {
    state().canFlags = mx10::directionFlags(state().canFlags, state().backward);
    send(mx10::drive(state().address, state().speed, state().canFlags, state().canFuncs));
  }

  void sendFunction(int n) override {
    send(mx10::function(state().address, n, state().funcOn[static_cast<size_t>(n)]));
  }

  void sendManual() override { send(mx10::manual(state().address, state().manual)); }

  /// Without the pause of the other messages: a stop must not wait.
  void sendStopped() override {
    const Busy busy(state());
    // Inside another exchange what waits is that one's answer.
    if (!line().isNested()) bus_.station().ClearMX10Input();
    // Whoever waits takes the messages in; on an idle line nobody does.
    order([this] { bus_.command(mx10::track(state().stopped)); }, GoesOut::AtOnce,
          [bus = bus_, &shared = line()] {
            if (!shared.isBusy()) bus.station().ClearMX10Input();
          });
  }

  void tick() override {
    if (state().canBusy) return;
    bus_.station().ClearMX10Input();
    bus_.settle();
    bus_.command(mx10::keepAlive(state().address));
  }

 private:
  std::optional<FunctionMask> read() {
    if (!bus_.ask(mx10::functionsQuestion(state().address))) return {};
    const auto functions = mx10::functionsIn(bus_.station());
    if (!functions || !bus_.ask(mx10::speedQuestion(state().address))) return {};
    const auto speed = mx10::speedIn(bus_.station());
    if (!speed || !bus_.ask(mx10::manualQuestion(state().address))) return {};
    const auto manual = mx10::manualIn(bus_.station());
    if (!manual) return {};
    state().canFlags = speed->flags;
    state().canFuncs = speed->funcs;
    state().backward = speed->backward;
    state().speed = speed->barPosition;
    state().manual = *manual;
    return functions;
  }

  void send(const CanMessage& message) {
    const Busy busy(state());
    bus_.settle();
    bus_.command(message);
  }

  Bus bus_;
};

class Mx10Panel final : public PanelProtocol {
 public:
  Mx10Panel(CabLine& line, PanelState& state) : PanelProtocol(line, state), bus_(line) {}

  std::optional<quint8> readState() override {
    bus_.settle();
    if (!bus_.ask(mx10::outputsQuestion(state().address))) return {};
    return mx10::outputsIn(bus_.station());
  }

  void sendOutput(int n) override {
    bus_.settle();
    bus_.command(mx10::output(state().address, n, state().outOn[static_cast<size_t>(n)]));
  }

 private:
  Bus bus_;
};

}  // namespace

std::unique_ptr<CabProtocol> makeMx10Cab(CabLine& line, CabState& state, CabHooks hooks) {
  return std::make_unique<Mx10Cab>(line, state, std::move(hooks));
}

std::unique_ptr<PanelProtocol> makeMx10Panel(CabLine& line, PanelState& state) {
  return std::make_unique<Mx10Panel>(line, state);
}

}  // namespace lokari
