#include "sim/tams_station.h"

#include <QList>

#include <algorithm>

#include "base/bytes.h"
#include "sim/ibx_driving.h"
#include "sim/ibx_status.h"

namespace lokari::sim {
namespace {

constexpr char kError[] = "Error";

/// Behind the letter "x": text has no such character.
constexpr int kFirstBinary = 0x80;
constexpr int kUnknown = 0x02;
/// A sender who pauses longer inside a binary command begins a new one.
constexpr Millis kLongestPause = 1000;

std::optional<Method> methodOf(char letter, char direct) {
  if (letter == 'P') return Method::Paged;
  if (letter == 'R') return Method::Register;
  if (letter == direct) return Method::Direct;
  return {};
}

/// The `count` decimal numbers of a comma list, or nothing.
std::optional<QList<int>> numbers(const QByteArray& text, qsizetype count) {
  QList<int> result;
  const QList<QByteArray> parts = text.split(',');
  for (const QByteArray& part : parts) {
    bool valid = false;
    result.append(part.trimmed().toInt(&valid));
    if (!valid) return {};
  }
  if (result.size() != count) return {};
  return result;
}

bool isCv(int cv) {
  return cv >= 1 && cv <= Decoder::kLastCv;
}

bool isByte(int value) {
  return value >= 0 && value <= 255;
}

QByteArray textOf(const TrackResult& result, const QByteArray& success) {
  switch (result.answer) {
    case TrackAnswer::Value:
      return success;
    case TrackAnswer::NoAck:
    case TrackAnswer::NoDecoder:
      return "No ack";
    case TrackAnswer::Busy:
    case TrackAnswer::ShortCircuit:
      break;
  }
  return kError;
}

}  // namespace

void TamsStation::receive(const QByteArray& data) {
  if (beginsBinary() && clock().now() - lastAt_ > kLongestPause) input_.clear();
  lastAt_ = clock().now();
  input_ += data;
  while (takeBinary() || takeLine()) {
  }
}

bool TamsStation::beginsBinary() const {
  return input_.startsWith('x') && byteAt(input_, 1) >= kFirstBinary;
}

bool TamsStation::takeBinary() {
  if (!beginsBinary()) return false;
  const int operation = byteAt(input_, 1);
  const qsizetype drivingSize = ibxDrivingSize(operation);
  const qsizetype size = std::max<qsizetype>(drivingSize, 1);
  if (input_.size() < 1 + size) return false;
  const QByteArray command = input_.mid(1, size);
  input_.remove(0, 1 + size);
  if (drivingSize > 0) {
    answer(obeyIbxDriving(layout(), command));
  } else if (operation == kAskVersions) {
    answer(bytes({0x04, 0x02, 0x01, 0x04, 0x61, 0x00, 0x01, 0xE2, 0x40, 0x00}));
  } else {
    answer(bytes({operation == kAskIbxState ? ibxState(layout()) : kUnknown}));
  }
  return true;
}

bool TamsStation::takeLine() {
  const qsizetype end = beginsBinary() ? -1 : input_.indexOf('\r');
  if (end < 0) return false;
  const QByteArray line = input_.left(end);
  input_.remove(0, end + 1);
  answer(replyTo(line) + "]\r");
  return true;
}

QByteArray TamsStation::replyTo(const QByteArray& line) {
  if (line.startsWith("xPTR") && line.size() > 5) {
    const auto method = methodOf(line[4], 'B');
    const auto args = numbers(line.mid(5), 1);
    if (!method || !args || !isCv((*args)[0])) return kError;
    const TrackResult result = readOnProgrammingTrack((*args)[0], *method);
    return textOf(result, QByteArray::number(result.value));
  }
  if (line.startsWith("xPTW") && line.size() > 5) {
    const auto method = methodOf(line[4], 'D');
    const auto args = numbers(line.mid(5), 2);
    if (!method || !args || !isCv((*args)[0]) || !isByte((*args)[1])) return kError;
    return textOf(writeOnProgrammingTrack((*args)[0], (*args)[1], *method), "Ok");
  }
  if (line.startsWith("xPD")) {
    const auto args = numbers(line.mid(3), 3);
    if (!args || !isCv((*args)[1]) || !isByte((*args)[2])) return kError;
    // Nobody answers on the main track: a vehicle that is not there is written just as well.
    writeOnMainTrack((*args)[0], (*args)[1], (*args)[2]);
    return "Ok";
  }
  return kError;
}

}  // namespace lokari::sim
