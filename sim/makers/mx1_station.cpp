#include "sim/makers/mx1_station.h"

#include <array>

#include "base/bytes.h"

namespace lokari::sim::makers {
namespace {

constexpr int kUnasked = 0x00;
constexpr int kCommand = 0x10;
constexpr int kData = 0x20;
constexpr int kAcknowledge = 0x40;
constexpr int kOfTheProgram = 0x50;

constexpr int kNoError = 0x00;
constexpr int kBusy = 0x04;
constexpr int kNoDcc = 0x06;
constexpr int kMessageUnknown = 0x0A;

constexpr int kDcc = 0x80;
constexpr int kBackward = 0x20;
constexpr int kLight = 0x10;
constexpr int kManual = 0x80;
constexpr int kStepsMask = 0x0C;

constexpr int kVehicleChanged = 0xFF;

struct Steps {
  int steps;
  int bits;
};
constexpr Steps kSteps[] = {{14, 0x04}, {28, 0x08}, {128, 0x0C}};

int addressIn(const QByteArray& data) {
  return (byteAt(data, 0) & 0x3F) * 256 + byteAt(data, 1);
}

}  // namespace

std::span<const Mx1Station::Row> Mx1Station::rows() {
  static constexpr std::array kRows{
      Row{0x00, 0, 0, &Mx1Station::reset},    Row{0x02, 1, 1, &Mx1Station::switchTrack},
      Row{0x03, 6, 6, &Mx1Station::drive},    Row{0x08, 2, 2, &Mx1Station::tellVehicle},
      Row{0x13, 4, 5, &Mx1Station::accessCv},
  };
  return kRows;
}

void Mx1Station::receive(const QByteArray& data) {
  const QList<Mx1Frame> frames = reader_.feed(data);
  for (const Mx1Frame& frame : frames) {
    if (frame.kind == kOfTheProgram && unacknowledged_ > 0) --unacknowledged_;
    if (frame.kind == kCommand) obey(frame);
  }
}

void Mx1Station::obey(const Mx1Frame& command) {
  for (const Row& row : rows()) {
    if (row.message != command.message) continue;
    if (command.data.size() < row.least || command.data.size() > row.most) continue;
    return (this->*row.obey)(command);
  }
  acknowledge(command, bytes({kMessageUnknown}));
}

void Mx1Station::reset(const Mx1Frame& command) {
  acknowledge(command, bytes({kNoError}));
}

void Mx1Station::switchTrack(const Mx1Frame& command) {
  constexpr int kStop = 0;
  constexpr int kOff = 1;
  constexpr int kOn = 2;
  const int wanted = byteAt(command.data, 0);
  if (wanted == kStop) layout().setStopped(true);
  if (wanted == kOff) layout().setTrackPower(false);
  if (wanted == kOn) {
    layout().setStopped(false);
    layout().setTrackPower(true);
  }
  acknowledge(command,
              bytes({(layout().stopped() ? 0x01 : 0) | (layout().trackPower() ? 0 : 0x02)}));
}

void Mx1Station::drive(const Mx1Frame& command) {
  if (isBusy()) return acknowledge(command, bytes({kBusy}));
  const int flags = byteAt(command.data, 3);
  const int address = addressIn(command.data);
  DriveState state = layout().drive(address);
  for (const Steps& each : kSteps) {
    if (each.bits == (flags & kStepsMask)) state.steps = each.steps;
  }
  state.speed = byteAt(command.data, 2) & 0x7F;
  state.backward = (flags & kBackward) != 0;
  state.functions = ((flags & kLight) != 0 ? 1U : 0U) |
                    static_cast<quint32>(byteAt(command.data, 4)) << 1 |
                    static_cast<quint32>(byteAt(command.data, 5)) << 9;
  layout().setDrive(address, state);
  acknowledge(command, bytes({kNoError}));
}

void Mx1Station::tellVehicle(const Mx1Frame& command) {
  acknowledge(command, bytes({kNoError}) + vehicleBytes(addressIn(command.data)));
}

QByteArray Mx1Station::vehicleBytes(int address) const {
  const DriveState& state = layout().drive(address);
  int flags = (state.backward ? kBackward : 0) | (state.manual ? kManual : 0);
  if ((state.functions & 1U) != 0) flags |= kLight;
  for (const Steps& each : kSteps) {
    if (each.steps == state.steps) flags |= each.bits;
  }
  return bytes({kDcc | address >> 8, address & 0xFF, state.speed, flags,
                static_cast<int>(state.functions >> 1 & 0xFF),
                static_cast<int>(state.functions >> 9 & 0xFF)});
}

void Mx1Station::accessCv(const Mx1Frame& command) {
  const QByteArray& data = command.data;
  const int address = addressIn(data);
  const int cv = byteAt(data, 2) * 256 + byteAt(data, 3);
  const bool write = data.size() == 5;
  TrackResult result;
  if (address == 0) {
    result = write ? writeOnProgrammingTrack(cv, byteAt(data, 4), Method::Direct)
                   : readOnProgrammingTrack(cv, Method::Direct);
  } else {
    result = write ? writeOnMainTrack(address, cv, byteAt(data, 4)) : readOnMainTrack(address, cv);
  }
  if (result.answer == TrackAnswer::Value) {
    tellCv(command, data.left(4) + bytes({result.value}));
  } else {
    const int error = result.answer == TrackAnswer::Busy ? kBusy : kNoDcc;
    tellCv(command, data.left(2) + bytes({error}));
  }
}

void Mx1Station::acknowledge(const Mx1Frame& command, const QByteArray& data) {
  answer(mx1Bytes(
      {++sequence_ & 0xFF, kAcknowledge, command.message, bytes({command.sequence}) + data}));
}

void Mx1Station::tellCv(const Mx1Frame& command, const QByteArray& data) {
  const QByteArray told = bytes({command.sequence}) + data;
  // The station answers other commands meanwhile.
  later(options_.accessTime, [this, message = command.message, told] {
    ++unacknowledged_;
    answer(mx1Bytes({++sequence_ & 0xFF, kData, message, told}), 0);
  });
}

QByteArray Mx1Station::unasked() const {
  return mx1Bytes({(sequence_ + 1) & 0xFF, kUnasked, kVehicleChanged, vehicleBytes(3)});
}

}  // namespace lokari::sim::makers
