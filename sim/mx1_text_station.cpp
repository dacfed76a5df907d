#include "sim/mx1_text_station.h"

#include <algorithm>
#include <utility>

namespace lokari::sim {
namespace {

constexpr int kFirstIndex = 128;
constexpr int kNewGeneration = 0x80;
constexpr int kDcc = 0x20;
constexpr int kIndices = 128;
/// No line is longer; what is, is noise.
constexpr qsizetype kLongestLine = 64;

int statusOf(TrackAnswer answer) {
  switch (answer) {
    case TrackAnswer::Value:
      return 0;
    case TrackAnswer::NoAck:
      return 1;
    case TrackAnswer::NoDecoder:
      return 2;
    case TrackAnswer::ShortCircuit:
      return 3;
    case TrackAnswer::Busy:
      break;
  }
  return 4;
}

}  // namespace

void Mx1TextStation::receive(const QByteArray& data) {
  for (const char byte : data) {
    if (bootLoader_.isActive()) {
      feedBootLoader(byte);
    } else if (byte == '\r') {
      obey(std::exchange(input_, {}));
    } else {
      input_.append(byte);
    }
  }
  if (input_.size() > kLongestLine) input_.clear();
}

void Mx1TextStation::obey(const QByteArray& line) {
  if (const std::optional<Mx1Driving> driving = mx1DrivingFrom(line)) {
    drive(*driving);
    return;
  }
  const std::optional<Mx1Command> command = mx1CommandFrom(line);
  if (!command) {
    answer(mx1Refusal());
    return;
  }
  switch (command->kind) {
    case Mx1Command::Kind::WakeUp:
    case Mx1Command::Kind::Leave:
      return;
    case Mx1Command::Kind::ReadCv:
      answerCv(command->cv, readOnProgrammingTrack(command->cv, Method::Direct));
      return;
    case Mx1Command::Kind::WriteCv:
      answerCv(command->cv, writeOnProgrammingTrack(command->cv, command->value, Method::Direct));
      return;
    case Mx1Command::Kind::WriteMain:
      writeMain(*command);
      return;
    case Mx1Command::Kind::AskIndex:
      answer(mx1IndexReply(indexOf(command->address), command->address));
      return;
    case Mx1Command::Kind::AskState:
      answerState();
      return;
    case Mx1Command::Kind::Download:
      answer(bootLoader_.start());
      return;
  }
}

void Mx1TextStation::drive(const Mx1Driving& command) {
  using Kind = Mx1Driving::Kind;
  if (command.kind == Kind::Stop || command.kind == Kind::Go) {
    layout().setTrackPower(command.kind == Kind::Go);
    return;
  }
  if (command.kind == Kind::Switch) {
    if (isBusy() || !switchZimoOutput(layout(), command.unit, command.value)) {
      answer(mx1SwitchRefusal());
    }
    return;
  }
  const std::optional<int> address = addressOf(command.number);
  if (isBusy() || !address) {
    answer(mx1Refusal());
  } else if (command.kind == Kind::AskUnit) {
    answer(mx1UnitReply(command.unit, zimoOutputs(layout(), command.unit)));
  } else if (command.kind == Kind::AskVehicle) {
    answerVehicle(command, *address);
  } else {
    driveVehicle(command, *address);
  }
}

void Mx1TextStation::answerVehicle(const Mx1Driving& command, int address) {
  const ZimoVehicle vehicle = zimoVehicleFrom(layout().drive(address));
  answer(notice(command.number, address) +
         mx1VehicleReply(command.number, vehicle, newGeneration_));
}

void Mx1TextStation::driveVehicle(const Mx1Driving& command, int address) {
  ZimoVehicle vehicle = command.vehicle;
  if (!command.hasHigh) vehicle.high = zimoVehicleFrom(layout().drive(address)).high;
  layout().setDrive(address, driveStateFrom(vehicle));
  const QByteArray told = notice(command.number, address);
  if (!told.isEmpty()) answer(told);
}

void Mx1TextStation::answerState() {
  int state = kNewGeneration | kDcc;
  if (layout().stopped()) state |= 0x01;
  if (layout().trackPower()) state |= 0x02;
  if (layout().overloaded()) state |= 0x04;
  answer(mx1StateReply(state));
}

QByteArray Mx1TextStation::unasked() const {
  return mx1VehicleReply(3, {}, newGeneration_);
}

void Mx1TextStation::feedBootLoader(char byte) {
  const QByteArray reply = bootLoader_.feed(byte, clock().now());
  if (!reply.isEmpty()) answer(reply);
  if (!bootLoader_.isActive() && onFirmware) onFirmware(bootLoader_.image());
}

void Mx1TextStation::answerCv(int cv, const TrackResult& result) {
  answer(mx1CvReply(statusOf(result.answer), cv, result.value));
}

void Mx1TextStation::writeMain(const Mx1Command& command) {
  const bool isLong = command.index >= kFirstIndex;
  const bool known = !isLong || indexOf(command.address) == command.index;
  // Only a refusal is answered: nobody on the main track confirms.
  if (!known ||
      writeOnMainTrack(command.address, command.cv, command.value).answer == TrackAnswer::Busy) {
    answer(mx1Refusal());
  }
}

int Mx1TextStation::indexOf(int address) {
  auto found = std::find(addresses_.begin(), addresses_.end(), address);
  if (found == addresses_.end()) {
    if (addresses_.size() >= kIndices || layout().onMainTrack(address) == nullptr) return 0;
    found = addresses_.insert(addresses_.end(), address);
  }
  return kFirstIndex + static_cast<int>(found - addresses_.begin());
}

std::optional<int> Mx1TextStation::addressOf(int number) const {
  if (number < kFirstIndex) return number;
  const auto place = static_cast<size_t>(number - kFirstIndex);
  if (place >= addresses_.size()) return {};
  return addresses_[place];
}

QByteArray Mx1TextStation::notice(int number, int address) const {
  return number < kFirstIndex ? QByteArray() : mx1IndexNotice(number, address);
}

}  // namespace lokari::sim
