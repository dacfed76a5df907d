#include "cab/mx1_text.h"

#include "cab/cab_line.h"
#include "cab/mx1_text_codec.h"
#include "cab/speed_steps.h"
#include "cab/zimo_flags.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

using mx1cab::Field;

constexpr int kHighestShortAddress = 127;
constexpr int kEightFunctions = 8;

/// The driving command of the vehicle is kept as the station told it; each operation changes its
/// own field and sends the whole of it.
class Mx1TextCab final : public CabProtocol {
 public:
  using CabProtocol::CabProtocol;

  std::optional<FunctionMask> readState() override;

  FunctionMask toldFunctions() const override {
    return stateForm().tellsF9To12 ? ~FunctionMask{0} : zimo::kUpToF8;
  }

  bool sendSpeed() override {
    mx1cab::setField(state().locoCmd, Field::Speed, cutStationSteps(state().speed, state().steps));
    return sendCommand();
  }

  void sendDirection() override { sendFlag(zimo::kBackward, state().backward); }
  void sendManual() override { sendFlag(zimo::kManual, state().manual); }
  void sendFunction(int n) override;
  void sendStopped() override;

 private:
  /// The number that the station knows the vehicle by, or nothing.
  std::optional<int> vehicleNumber();
  QByteArray takeAnswer();
  mx1cab::StateForm stateForm() const;

  void sendFlag(int bit, bool set) {
    mx1cab::setBits(state().locoCmd, Field::Flags, bit, set);
    sendCommand();
  }
  /// False when there is nothing to drive by, or no answer where one is due.
  bool sendCommand();
};

std::optional<FunctionMask> Mx1TextCab::readState() {
  // Until the station has told an index there is nothing to drive by.
  state().locoCmd.clear();
  const std::optional<int> number = vehicleNumber();
  if (!number) return {};
  // Speeds must fit the steps that the same command names.
  state().locoCmd = mx1cab::defaultCommand(*number);
  state().steps = 14;

  // What waits is no answer to it.
  link().protocol().dropInput();
  line().send([&] { link().serial().write(mx1cab::askState(*number)); });
  const auto told = mx1cab::parseState(takeAnswer(), *number, stateForm());
  if (!told) return {};
  state().locoCmd = told->command;
  state().steps = zimo::stepsOf(told->flags);
  state().speed = barPosition(told->speed, state().steps);
  state().backward = (told->flags & zimo::kBackward) != 0;
  state().manual = (told->flags & zimo::kManual) != 0;
  return told->functions;
}

std::optional<int> Mx1TextCab::vehicleNumber() {
  state().addrIndexed = state().address > kHighestShortAddress;
  if (!state().addrIndexed) return state().address;
  const int index = link().getAddrIndex(state().address);
  if (index < 0) return {};
  return index;
}

/// The answer of one of the two lengths; empty for any other.
QByteArray Mx1TextCab::takeAnswer() {
  const int length = mx1cab::stateLength(state().addrIndexed);
  SerialLine& serial = link().serial();
  link().WaitForData(length);
  QByteArray answer = serial.read();
  // The longer answer may still be under way.
  const auto missing = static_cast<int>(length + mx1cab::kExtraDigits - answer.size());
  if (answer.size() >= length && missing > 0 && !answer.endsWith('\r')) {
    link().WaitForData(missing);
    answer += serial.read();
  }
  const bool fits = answer.size() == length || answer.size() == length + mx1cab::kExtraDigits;
  return fits ? answer : QByteArray();
}

mx1cab::StateForm Mx1TextCab::stateForm() const {
  const Settings& settings = link().settings();
  const bool newer = settings.baseUnit == StationKind::Mx1V25;
  return {.tellsF9To12 = newer,
          .commandsF9To12 = newer || settings.zimoFunctionCount != kEightFunctions};
}

void Mx1TextCab::sendFunction(int n) {
  const bool on = state().funcOn.at(static_cast<size_t>(n));
  if (n == 0) return sendFlag(zimo::kLight, on);
  if (n > zimo::kLastOfHighByte) return;
  const bool isHigh = n >= zimo::kFirstOfHighByte;
  mx1cab::setBits(state().locoCmd, isHigh ? Field::Functions9To12 : Field::Functions1To8,
                  1 << (n - (isHigh ? zimo::kFirstOfHighByte : zimo::kFirstOfLowByte)), on);
  sendCommand();
}

bool Mx1TextCab::sendCommand() {
  if (state().locoCmd.isEmpty()) return false;
  if (state().addrIndexed) link().protocol().dropInput();
  line().send([&] { link().serial().write(state().locoCmd); });
  if (!state().addrIndexed) return true;
  // The station tells the index of the vehicle that it drives.
  link().WaitForData(mx1cab::kIndexLineLength);
  return link().serial().read().startsWith('E');
}

/// It names no vehicle, so that no line about an index answers it; nothing else does either.
void Mx1TextCab::sendStopped() {
  line().send([&] { link().serial().write(mx1cab::trackPower(!state().stopped)); });
  if (hooks().stopHeld) hooks().stopHeld(state().stopped);
}

}  // namespace

std::unique_ptr<CabProtocol> makeMx1TextCab(CabLine& line, CabState& state, CabHooks hooks) {
  return std::make_unique<Mx1TextCab>(line, state, std::move(hooks));
}

}  // namespace lokari
