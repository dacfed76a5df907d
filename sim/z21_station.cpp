#include "sim/z21_station.h"

#include "base/bytes.h"

namespace lokari::sim {
namespace {

/// Time the programming track takes for one CV.
constexpr Millis kTrackTime = 250;
constexpr Millis kAtOnce = 5;

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
    if (const auto command = z21CvCommand(message.data)) {
      accessCv(*command);
    } else if (message.data == bytes({0x21, 0x81})) {
      answerCommand({kState, kPowerOn}, kAtOnce);
    } else {
      answerCommand({kState, kUnknown}, kAtOnce);
    }
  }
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

void Z21Station::answerCommand(std::initializer_list<int> data, Millis delay) {
  answer(z21Bytes({kZ21Command, bytes(data)}), delay);
}

}  // namespace lokari::sim
