#include "cab/lenz.h"

#include "base/bytes.h"
#include "cab/function_bits.h"
#include "cab/lenz_codec.h"
#include "cab/lenz_coding.h"
#include "cab/lenz_talk.h"
#include "link/lenz_codec.h"
#include "link/station_link.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

class LenzCab : public CabProtocol {
 public:
  LenzCab(CabLine& line, CabState& state, CabHooks hooks)
      : CabProtocol(line, state, std::move(hooks)), talk_(line) {}

  void sendStopped() final {
    order(
        [this] {
          talk_.send(state().stopped ? lenz::stopAll() : lenz::resume(),
                     [told = hooks().stopFailed, stopped = state().stopped, &station = link()] {
                       station.trackStop().order().drop();
                       if (told) told(stopped, StopFault::NotSent);
                     });
        },
        GoesOut::WhenGranted);
  }

 protected:
  LenzTalk& talk() { return talk_; }

  const lenz::Coding& coding() const { return lenz::coding(link().settings()); }

  FunctionMask take(const lenz::VehicleState& vehicle, int speed) {
    state().steps = vehicle.steps;
    state().speed = speed;
    state().backward = vehicle.backward;
    return vehicle.functions;
  }

  /// Sends `locoCmd` with its check byte behind it.
  void sendLocoCmd() { talk_.send(lenz::withCheck(state().locoCmd)); }

 private:
  LenzTalk talk_;
};

/// The first generation: `locoCmd` is B3 adr d f, and every command patches it.
class FirstLenzCab final : public LenzCab {
 public:
  using LenzCab::LenzCab;

  std::optional<FunctionMask> readState() override {
    const auto question = prepare();
    if (!question) return std::nullopt;
    const QByteArray reply = talk().ask(*question, lenz::kVehicleStateSize);
    const auto vehicle = lenz::vehicleByteState(reply, state().address);
    if (!vehicle) return std::nullopt;
    state().locoCmd = lenz::driveByteOf(reply);
    return take(*vehicle, vehicle->speed);
  }

  bool sendSpeed() override {
    return patch([this](QByteArray& cmd) {
      const int keep = byteAt(cmd, kDrive) & kNotSpeed;
      cmd[kDrive] = static_cast<char>(keep + lenz::speedBits(state().speed, state().steps));
    });
  }

  /// Every command has it.
  void sendDirection() override {
    patch([](QByteArray&) {});
  }

  void sendFunction(int n) override {
    if (n > kLastFunction) return;
    patch([&](QByteArray& cmd) {
      const bool on = state().funcOn.at(n);
      if (n == 0) {
        cmd[kDrive] = withBit(cmd[kDrive], kLight, on);
      } else {
        cmd[kFunctions] = withBit(cmd[kFunctions], 1 << (n - 1), on);
      }
    });
  }

 private:
  static constexpr int kDrive = 2;
  static constexpr int kFunctions = 3;
  static constexpr int kNotSpeed = 224;
  static constexpr int kForward = 64;
  static constexpr int kLight = 32;
  static constexpr int kLastFunction = 4;

  /// Makes the template of a vehicle that nothing is known of and gives the question for it;
  /// nothing for an address that has no message.
  std::optional<QByteArray> prepare() {
    auto question = lenz::askVehicleByte(state().address);
    if (question) {
      state().steps = lenz::kFirstGenerationSteps;
      state().locoCmd = lenz::driveByte(state().address);
    }
    return question;
  }

  /// The direction shown goes into every command: a template that no reply has filled says backward
  /// beside an arrow that shows forward.
  template <class Change>
  bool patch(Change change) {
    QByteArray& cmd = state().locoCmd;
    if (cmd.isEmpty() && !prepare()) return false;
    change(cmd);
    cmd[kDrive] = withBit(cmd[kDrive], kForward, !state().backward);
    sendLocoCmd();
    return true;
  }
};

/// The later generations: `locoCmd` is E4 code ah al byte; code and byte say what it does.
class LaterLenzCab final : public LenzCab {
 public:
  using LenzCab::LenzCab;

  std::optional<FunctionMask> readState() override {
    const auto question = prepare();
    if (!question) return std::nullopt;
    const auto vehicle = lenz::vehicleState(talk().ask(*question, lenz::kVehicleStateSize, true));
    if (!vehicle) return std::nullopt;
    const FunctionMask functions =
        take(*vehicle, coding().barPosition(vehicle->d, vehicle->steps)) &
        upTo(coding().toldFunctions);
    state().funcCount = vehicle->tellsFunctions ? link().settings().station().cab.funcCount : -1;
    if (!vehicle->tellsFunctions || !coding().asksUpperFunctions) return functions;
    const auto upper = lenz::upperFunctions(
        talk().ask(lenz::askUpperFunctions(state().address), lenz::kUpperFunctionsSize));
    if (!upper) state().funcCount = coding().toldFunctions;
    return functions | upper.value_or(0);
  }

  bool sendSpeed() override {
    const CabState& cab = state();
    const int forward = cab.backward ? 0 : kForward;
    return command(lenz::stepCode(cab.steps), coding().speedBits(cab.speed, cab.steps) + forward);
  }

  void sendDirection() override { sendSpeed(); }

  void sendFunction(int n) override {
    // What the station has not is not known: its group would switch the others off.
    if (n > state().funcCount) return;
    for (const lenz::FunctionGroup& group : coding().groups) {
      if (n >= group.first && n <= group.last) {
        command(group.code, lenz::groupByte(state(), group));
      }
    }
  }

 private:
  static constexpr int kCode = 1;
  static constexpr int kValue = 4;
  static constexpr int kForward = 128;

  static FunctionMask upTo(int n) { return (FunctionMask{1} << (n + 1)) - 1; }

  std::optional<QByteArray> prepare() {
    auto question = lenz::askVehicle(state().address);
    if (question) state().locoCmd = lenz::drive(state().address);
    return question;
  }

  bool command(int code, int value) {
    if (state().locoCmd.isEmpty() && !prepare()) return false;
    state().locoCmd[kCode] = static_cast<char>(code);
    state().locoCmd[kValue] = static_cast<char>(value);
    sendLocoCmd();
    return true;
  }
};

}  // namespace

std::unique_ptr<CabProtocol> makeLenzCab(CabLine& line, CabState& state, CabHooks hooks) {
  if (LenzTalk(line).type().firstGeneration) {
    return std::make_unique<FirstLenzCab>(line, state, std::move(hooks));
  }
  return std::make_unique<LaterLenzCab>(line, state, std::move(hooks));
}

}  // namespace lokari
