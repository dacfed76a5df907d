#include "sim/z21_station.h"

#include "base/bytes.h"

namespace lokari::sim {
namespace {

/// Time the programming track takes for one CV.
constexpr Millis kTrackTime = 250;
constexpr Millis kAtOnce = 5;

constexpr int kOutput = 0x43;
constexpr int kSwitch = 0x53;
constexpr qsizetype kVehicleSize = 16;

constexpr int kStopped = 0x81;
constexpr int kState = 0x61;
constexpr int kPowerOn = 0x01;
constexpr int kShortCircuit = 0x12;
constexpr int kNoAck = 0x13;
constexpr int kUnknown = 0x82;

int stateOf(TrackAnswer answer) {
  switch (answer) {
    case TrackAnswer::ShortCircuit:
      return kShortCircuit;
    case TrackAnswer::Busy:
      return kUnknown;
    case TrackAnswer::NoDecoder:
    case TrackAnswer::NoAck:
    case TrackAnswer::Value:
      break;
  }
  return kNoAck;
}

}  // namespace

void Z21Station::receive(const QByteArray& datagram) {
  const QList<Z21Message> messages = splitZ21Datagram(datagram);
  for (const Z21Message& message : messages) obey(message);
}

void Z21Station::obey(const Z21Message& message) {
  inUse_ = message.kind != kZ21LogOff;
  if (message.kind == kZ21SerialNumber) {
    answer(z21Bytes({kZ21SerialNumber, bytes({kSerialNumber & 0xFF, kSerialNumber >> 8 & 0xFF,
                                              kSerialNumber >> 16 & 0xFF, kSerialNumber >> 24})}));
  } else if (message.kind == kZ21Command) {
    obeyCommand(message.data);
  }
}

void Z21Station::obeyCommand(const QByteArray& data) {
  if (const auto command = z21CvCommand(data)) {
    accessCv(*command);
  } else if (data == bytes({0xF1, 0x0A})) {
    answerCommand({0xF3, 0x0A, 0x01, 0x43}, kAtOnce);
  } else if (data == bytes({0x21, 0x81})) {
    layout().setTrackPower(true);
    answerCommand({kState, kPowerOn}, kAtOnce);
  } else if (!operate(data)) {
    answerCommand({kState, kUnknown}, kAtOnce);
  }
}

bool Z21Station::operate(const QByteArray& data) {
  if (data == bytes({0x80})) {
    layout().setTrackPower(false);
    answerCommand({kStopped, 0}, kAtOnce);
  } else if (const auto drive = z21DriveCommand(data)) {
    DriveState state = layout().drive(drive->address);
    state.steps = drive->steps;
    state.speed = drive->speed;
    state.backward = drive->backward;
    layout().setDrive(drive->address, state);
  } else if (const auto function = z21FunctionCommand(data)) {
    DriveState state = layout().drive(function->address);
    const quint32 bit = 1U << function->function % 32;
    state.functions = function->on ? state.functions | bit : state.functions & ~bit;
    layout().setDrive(function->address, state);
  } else if (data.size() == 4 && data.startsWith(bytes({0xE3, 0xF0}))) {
    tellVehicle(z21VehicleAddress(data, 2));
  } else if (data.size() == 3 && byteAt(data, 0) == kOutput) {
    tellOutput(byteAt(data, 1) * 256 + byteAt(data, 2));
  } else if (data.size() == 4 && byteAt(data, 0) == kSwitch) {
    const int output = byteAt(data, 1) * 256 + byteAt(data, 2);
    layout().setOutput(output + 1, (byteAt(data, 3) & 1) == 0);
    tellOutput(output);
  } else {
    return false;
  }
  return true;
}

void Z21Station::tellVehicle(int address) {
  const DriveState& state = layout().drive(address);
  const int steps = state.steps == 28 ? 2 : state.steps == 14 ? 1 : 4;
  const quint32 functions = state.functions;
  const int light = static_cast<int>((functions & 1U) << 4 | (functions >> 1 & 15U));
  const int mark = address >= 128 ? 0xC0 : 0;
  QByteArray data = bytes(
      {0xEF, mark | address >> 8, address & 0xFF, steps, state.speed | (state.backward ? 0 : 0x80),
       light, static_cast<int>(functions >> 5 & 0xFF), static_cast<int>(functions >> 13 & 0xFF),
       static_cast<int>(functions >> 21 & 0xFF)});
  answerCommand(data.leftJustified(kVehicleSize, '\0'), kAtOnce);
}

void Z21Station::tellOutput(int output) {
  answerCommand({kOutput, output >> 8, output & 0xFF, layout().output(output + 1) ? 1 : 2},
                kAtOnce);
}

void Z21Station::accessCv(const Z21CvCommand& command) {
  if (command.main && command.write) {
    writeOnMainTrack(command.address, command.cv, command.value);
    return;
  }
  TrackResult result;
  if (command.main) {
    result = readOnMainTrack(command.address, command.cv);
  } else if (command.write) {
    result = writeOnProgrammingTrack(command.cv, command.value, Method::Direct);
  } else {
    result = readOnProgrammingTrack(command.cv, Method::Direct);
  }
  if (result.answer != TrackAnswer::Value) {
    answerCommand({kState, stateOf(result.answer)}, kTrackTime);
    return;
  }
  const int index = command.cv - 1;
  answerCommand({0x64, 0x14, index >> 8, index & 0xFF, result.value}, kTrackTime);
}

QByteArray Z21Station::unasked() const {
  return z21Bytes({kZ21Command, bytes({kState, kPowerOn})});
}

void Z21Station::answerCommand(std::initializer_list<int> data, Millis delay) {
  answerCommand(bytes(data), delay);
}

void Z21Station::answerCommand(const QByteArray& data, Millis delay) {
  answer(z21Bytes({kZ21Command, data}), delay);
}

}  // namespace lokari::sim
