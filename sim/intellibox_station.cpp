#include "sim/intellibox_station.h"

#include <algorithm>
#include <array>

#include "base/bytes.h"
#include "sim/ibx_driving.h"
#include "sim/ibx_status.h"

namespace lokari::sim {
namespace {

/// Time the programming track takes for one CV.
constexpr Millis kTrackTime = 250;
/// A sender who pauses longer inside a command begins a new one.
constexpr Millis kLongestPause = 1000;

constexpr int kAccepted = 0x00;
constexpr int kUnknown = 0x02;
constexpr int kBusy = 0x06;
constexpr int kNoEvent = 0xF5;

struct Operation {
  int byte;
  qsizetype size;  ///< of the command with its first byte
};
constexpr std::array kOperations{
    Operation{0xEE, 3}, Operation{0xEC, 3}, Operation{0xF2, 3},
    Operation{0xEF, 4}, Operation{0xED, 4}, Operation{0xF1, 4},
    Operation{0xDE, 6}, Operation{0xCE, 1}, Operation{0xE2, 1},
};

qsizetype sizeOf(int operation) {
  for (const Operation& each : kOperations) {
    if (each.byte == operation) return each.size;
  }
  return std::max<qsizetype>(ibxDrivingSize(operation), 1);
}

int statusOf(TrackAnswer answer) {
  switch (answer) {
    case TrackAnswer::NoAck:
      return 0xFE;
    case TrackAnswer::ShortCircuit:
      return 0xFD;
    case TrackAnswer::NoDecoder:
      return 0xFC;
    case TrackAnswer::Value:
    case TrackAnswer::Busy:
      break;
  }
  return 0x00;
}

}  // namespace

void IntelliboxStation::receive(const QByteArray& data) {
  if (clock().now() - lastAt_ > kLongestPause) input_.clear();
  lastAt_ = clock().now();
  input_ += data;
  for (;;) {
    const qsizetype start = input_.indexOf('x');
    input_ = start < 0 ? QByteArray() : input_.mid(start);
    if (input_.size() < 2) return;
    const qsizetype size = sizeOf(byteAt(input_, 1));
    if (input_.size() < 1 + size) return;
    const QByteArray command = input_.mid(1, size);
    input_.remove(0, 1 + size);
    obey(command);
  }
}

void IntelliboxStation::obey(const QByteArray& command) {
  if (ibxDrivingSize(byteAt(command, 0)) > 0) {
    answer(obeyIbxDriving(layout(), command));
    return;
  }
  const int first = byteAt(command, 1);
  const int cv = first + 256 * byteAt(command, 2);
  switch (byteAt(command, 0)) {
    case 0xEE:
      return readCv(cv, Method::Paged);
    case 0xEC:
      return readCv(first, Method::Register);
    case 0xF2:
      return readCv(cv, Method::Direct);
    case 0xEF:
      return writeCv(cv, byteAt(command, 3), Method::Paged);
    case 0xED:
      return writeCv(first, byteAt(command, 3), Method::Register);
    case 0xF1:
      return writeCv(cv, byteAt(command, 3), Method::Direct);
    case 0xDE:
      // Nobody on the main track confirms: a vehicle that is not there is written just as well.
      writeOnMainTrack(cv, byteAt(command, 3) + 256 * byteAt(command, 4), byteAt(command, 5));
      return answerByte(kAccepted);
    case 0xCE:
      return answerEvent();
    case 0xE2:
      programming_ = false;
      event_.clear();
      return answerByte(kAccepted);
    case kAskVersions:
      answer(bytes({0x02, 0x50, 0x15, 0x02, 0x10, 0x13, 0x01, 0x14, 0x01, 0x09, 0x01, 0x2A, 0x05,
                    0x00, 0x01, 0x23, 0x4F, 0x56, 0x00}));
      return;
    case kAskIbxState:
      return answerByte(ibxState(layout()));
    default:
      return answerByte(kUnknown);
  }
}

void IntelliboxStation::readCv(int cv, Method method) {
  const TrackResult result = readOnProgrammingTrack(cv, method);
  startProgramming(result, bytes({result.value}));
}

void IntelliboxStation::writeCv(int cv, int value, Method method) {
  startProgramming(writeOnProgrammingTrack(cv, value, method), {});
}

void IntelliboxStation::startProgramming(const TrackResult& result, const QByteArray& data) {
  if (result.answer == TrackAnswer::Busy) {
    answerByte(kBusy);
    return;
  }
  programming_ = true;
  const QByteArray event = bytes({statusOf(result.answer)}) +
                           (result.answer == TrackAnswer::Value ? data : QByteArray());
  event_ = bytes({static_cast<int>(event.size())}) + event;
  eventAt_ = clock().now() + kTrackTime;
  answerByte(kAccepted);
}

void IntelliboxStation::answerEvent() {
  if (event_.isEmpty() || clock().now() < eventAt_) {
    answerByte(kNoEvent);
  } else {
    answer(event_);
  }
}

void IntelliboxStation::answerByte(int byte) {
  answer(bytes({byte}));
}

}  // namespace lokari::sim
