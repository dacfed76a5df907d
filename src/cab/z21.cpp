#include "cab/z21.h"

#include "cab/cab_line.h"
#include "cab/z21_codec.h"
#include "cab/z21_coding.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "link/z21.h"

namespace lokari {
namespace {

/// Behind a poll's question.
constexpr Millis kPause = 100;
/// One may be lost on the way; a station that leaves so many in a row unanswered is not there.
constexpr int kSilentPolls = 4;
/// The longest that a poll waits for its answer.
constexpr Millis kPollLimit = 400;

}  // namespace

Z21Protocol& Z21Cab::station() const {
  return dynamic_cast<Z21Protocol&>(link().protocol());
}

const z21::Coding& Z21Cab::coding() const {
  return z21::coding(link().settings());
}

std::optional<FunctionMask> Z21Cab::readState() {
  ask(state().address, Patience::TimeOut);
  const auto vehicle = reply();
  if (!vehicle) return {};
  take(*vehicle);
  return vehicle->functions;
}

/// A wait that gave way to a command says nothing of the station.
bool Z21Cab::sendSpeed() {
  sendZ21(state().address, state().speed, kNoFunction, state().backward);
  return reply().has_value() || line().commandWaits();
}

void Z21Cab::sendFunction(int n) {
  sendZ21(state().address, kNoSpeed, n, state().backward);
}

void Z21Cab::sendStopped() {
  order([this] { sendZ21(state().address, kNoSpeed, kNoFunction, state().backward); });
}

void Z21Cab::tick() {
  ask(state().address, Patience::Poll);
  if (tell(state().address)) {
    silentPolls_ = 0;
  } else if (station().z21LastReply.isEmpty() && !line().commandWaits() &&
             ++silentPolls_ >= kSilentPolls) {
    throw LinkError(QStringLiteral("Die Z21 antwortet nicht mehr!"));
  }
}

void Z21Cab::sendZ21(int address, int speed, int function, bool backward) {
  const bool isFunction = function >= 0 && function <= CabState::kHighestFunction;
  QString text;
  if (speed >= 0) {
    text = z21::driveText(address, state().steps, coding().value(speed, state().steps), backward);
  } else if (isFunction) {
    text = z21::functionText(address, function, state().funcOn[static_cast<size_t>(function)]);
  } else {
    text = z21::stopText(state().stopped);
  }
  // Inside another exchange its answer is still awaited: that one is left alone.
  if (!line().isNested()) station().z21Wanted.clear();
  line().send([&] { station().z21Send(text); });
  tellLayout(speed >= 0 || isFunction);
  // A stop without a vehicle has nothing to ask for either.
  if (line().isNested() || address == 0) return;
  link().Delay(0);
  readZ21State(address);
}

/// A stop of ours shows as one; what stands for another reason would not. Behind stop and go the
/// station's word is still to come.
void Z21Cab::tellLayout(bool drives) {
  if (!hooks().layoutTold) return;
  LayoutStands stands = LayoutStands::No;
  const Z21Track& track = station().track();
  if (drives && track.isStanding() && !state().stopped) {
    const bool halted = track.state() == Z21Track::State::Halted;
    stands = halted ? LayoutStands::Halted : LayoutStands::WithoutPower;
  }
  hooks().layoutTold(stands);
}

bool Z21Cab::readZ21State(int address) {
  ask(address, Patience::Command);
  return tell(address);
}

void Z21Cab::ask(int address, Patience patience) {
  // What came unasked would be taken for the answer.
  station().dropInput();
  station().z21ReplyLen = 0;
  station().z21LastReply.clear();
  station().z21Wanted = z21::vehicleHead(address);
  line().send([&] { station().z21Send(z21::vehicleQuestion(address)); });
  if (patience == Patience::TimeOut) {
    link().Delay(0);
    link().WaitForData(z21::kVehicleLength);
    return;
  }
  const auto givesWay = [this] { return link().cancelRequested || line().commandWaits(); };
  Clock& clock = link().clock();
  if (patience == Patience::Command) {
    // The whole pause: a bar that is dragged must not flood the station.
    link().Delay(0);
  } else {
    clock.waitUntil(givesWay, clock.now() + kPause);
  }
  const Millis limit =
      patience == Patience::Poll ? kPollLimit : Millis{1000} * link().settings().timeoutVal;
  clock.waitUntil([&] { return givesWay() || station().z21ReplyLen >= z21::kVehicleLength; },
                  clock.now() + limit);
}

std::optional<z21::VehicleState> Z21Cab::reply() const {
  if (station().z21ReplyLen < z21::kVehicleLength) return {};
  return z21::vehicleState(station().z21LastReply);
}

void Z21Cab::take(const z21::VehicleState& vehicle) {
  told_ = vehicle.told;
  state().steps = coding().steps(vehicle.stepsCode);
  state().backward = vehicle.backward;
  state().speed = coding().position(vehicle.value, state().steps);
}

bool Z21Cab::tell(int address) {
  const auto vehicle = reply();
  // News of another vehicle say that the station is there, and that this answer is lost.
  const auto other = z21::vehicleState(station().z21LastReply);
  if (!vehicle && other && other->address != address) return false;
  // Given way to a command: nothing is known, and the next reading comes soon.
  if (!vehicle && line().commandWaits()) return false;
  if (vehicle) take(*vehicle);
  hooks().stateArrived(vehicle ? vehicle->functions : 0);
  return vehicle.has_value();
}

std::unique_ptr<CabProtocol> makeZ21Cab(CabLine& line, CabState& state, CabHooks hooks) {
  return std::make_unique<Z21Cab>(line, state, std::move(hooks));
}

}  // namespace lokari
