#include "sim/mx10_station.h"

#include "base/bytes.h"

namespace lokari::sim {
namespace {

constexpr Millis kAnnouncing = 1000;
constexpr Millis kPatience = 30'000;
/// Time that reading or writing one CV takes.
constexpr Millis kTrackTime = 250;
constexpr Millis kAtOnce = 5;

constexpr int kTrackGroup = 0x06;
constexpr int kInfoGroup = 0x08;
constexpr int kNetworkGroup = 0x0A;
constexpr int kCvGroup = 0x16;

constexpr int kTrackPowerGroup = 0x00;
constexpr int kOutputGroup = 0x01;
constexpr int kVehicleGroup = 0x02;
/// Speed values that it counts.
constexpr int kSteps = 1024;

constexpr int kQuestion = 0;
constexpr int kCommand = 1;
constexpr int kEvent = 2;
constexpr int kAnswer = 3;

constexpr qsizetype kReadSize = 8;
constexpr qsizetype kWriteSize = 9;

int nodeIn(const QByteArray& data) {
  return byteAt(data, 0) * 256 + byteAt(data, 1);
}

/// Low byte first; 0 for what is not there.
int wordIn(const QByteArray& data, qsizetype at) {
  return data.size() < at + 2 ? 0 : byteAt(data, at + 1) * 256 + byteAt(data, at);
}

/// `size` is the number of data bytes.
bool is(const BusMessage& message, int group, int command, qsizetype size) {
  return message.group == group && message.command == command && message.data.size() == size;
}

int addressIn(const QByteArray& data) {
  return byteAt(data, 3) * 256 + byteAt(data, 2);
}

int cvIn(const QByteArray& data) {
  return byteAt(data, 5) * 256 + byteAt(data, 4);
}

}  // namespace

void Mx10Station::openLine() {
  open_ = true;
  const int turn = ++turn_;
  later(kAtOnce, [this, turn] { announce(turn); });
}

QByteArray Mx10Station::unasked() const {
  return encode({.group = kCvGroup,
                 .command = 8,
                 .mode = kAnswer,
                 .node = kNode + 1,
                 .data = bytes({kNode >> 8, kNode & 0xFF, 3, 0, 8, 0, 0, 0, 99})});
}

void Mx10Station::announce(int turn) {
  if (!open_ || turn != turn_) return;
  const BusMessage message{
      .group = kNetworkGroup,
      .command = 0,
      .mode = kEvent,
      .node = kNode,
      .data = bytes({kSerialNumber >> 24, kSerialNumber >> 16 & 0xFF, kSerialNumber >> 8 & 0xFF,
                     kSerialNumber & 0xFF, 0x00, 0x00, 0x00, 0x00})};
  // Not an answer: the faults of answers do not touch it.
  if (onAnswer) onAnswer(encode(message));
  later(kAnnouncing, [this, turn] { announce(turn); });
}

void Mx10Station::obey(const BusMessage& message) {
  obeyDriving(message);
  const bool toMe = nodeIn(message.data) == kNode;
  if (message.group == kInfoGroup && message.command == 8) tellVersions(message);
  if (message.group == kTrackGroup && message.command == 0 && toMe) switchTrack(message);
  if (message.group == kCvGroup && message.command == 8 && toMe) readCv(message);
  if (message.group == kCvGroup && message.command == 9 && toMe) writeCv(message);
}

void Mx10Station::obeyDriving(const BusMessage& message) {
  if (message.mode == kQuestion) ask(message);
  if (message.mode == kCommand) command(message);
}

void Mx10Station::command(const BusMessage& message) {
  const QByteArray& data = message.data;
  const int address = wordIn(data, 0);
  DriveState state = layout().drive(address);
  if (is(message, kVehicleGroup, 2, 6)) {
    const int flags = byteAt(data, 3);
    state.steps = kSteps;
    state.speed = byteAt(data, 2) + 256 * (flags & 3);
    state.backward = (flags & 4) != 0;
  } else if (is(message, kVehicleGroup, 4, 6)) {
    const quint32 bit = 1U << wordIn(data, 2) % 32;
    state.functions = wordIn(data, 4) != 0 ? state.functions | bit : state.functions & ~bit;
  } else if (is(message, kVehicleGroup, 5, 6)) {
    state.manual = wordIn(data, 4) != 0;
  } else if (is(message, kTrackPowerGroup, 0, 4) && byteAt(data, 2) == 3) {
    layout().setTrackPower(byteAt(data, 3) != 2);
    answerTo(message, kTrackPowerGroup, data, kAtOnce);
    return;
  } else if (is(message, kOutputGroup, 4, 4)) {
    layout().setOutput(4 * (address - 1) + byteAt(data, 2) + 1, byteAt(data, 3) != 0);
    answerTo(message, kOutputGroup, data, kAtOnce);
    return;
  } else {
    return;
  }
  layout().setDrive(address, state);
  answerTo(message, kVehicleGroup, data, kAtOnce);
}

void Mx10Station::ask(const BusMessage& message) {
  const QByteArray& data = message.data;
  const int address = wordIn(data, 0);
  const DriveState& state = layout().drive(address);
  if (is(message, kVehicleGroup, 3, 2)) {
    QByteArray functions;
    for (int i = 0; i < 4; ++i)
      appendByte(functions, static_cast<int>(state.functions >> 8 * i & 0xFF));
    answerTo(message, kVehicleGroup, data + functions, kAtOnce);
  } else if (is(message, kVehicleGroup, 2, 2)) {
    const int value = state.steps == kSteps ? state.speed : state.speed * kSteps / state.steps;
    answerTo(message, kVehicleGroup,
             data + bytes({value & 0xFF, value >> 8 | (state.backward ? 0x0C : 0), 0, 0}), kAtOnce);
  } else if (is(message, kVehicleGroup, 5, 4)) {
    answerTo(message, kVehicleGroup, data + bytes({state.manual ? 1 : 0, 0}), kAtOnce);
  } else if (is(message, kOutputGroup, 2, 2)) {
    int off = 0;
    for (int i = 0; i < 4; ++i) off |= layout().output(4 * (address - 1) + i + 1) ? 0 : 1 << 2 * i;
    answerTo(message, kOutputGroup, data + bytes({0, 0, off, 0}), kAtOnce);
  }
}

void Mx10Station::tellVersions(const BusMessage& message) {
  // Alone among its messages this one has the node's low byte first.
  const QByteArray question = bytes({kNode & 0xFF, kNode >> 8, 0x02, 0x00});
  if (message.data != question) return;
  answerTo(message, kInfoGroup, question + bytes({0x38, 0x01, 0x19, 0x02}), kAtOnce);
}

void Mx10Station::switchTrack(const BusMessage& message) {
  if (message.data.size() != 4 || byteAt(message.data, 2) != 1) return;
  programmingTrack_ = byteAt(message.data, 3) == 4;
  answerTo(message, kCvGroup, message.data, kAtOnce);
}

void Mx10Station::readCv(const BusMessage& message) {
  if (message.data.size() != kReadSize) return;
  const int cv = cvIn(message.data);
  const TrackResult result = programmingTrack_ ? readOnProgrammingTrack(cv, Method::Direct)
                                               : readOnMainTrack(addressIn(message.data), cv);
  if (result.answer != TrackAnswer::Value) return;
  answerTo(message, kCvGroup, message.data + bytes({result.value}), kTrackTime);
}

void Mx10Station::writeCv(const BusMessage& message) {
  if (message.data.size() != kWriteSize) return;
  const int cv = cvIn(message.data);
  const int value = byteAt(message.data, 8);
  if (programmingTrack_) {
    writeOnProgrammingTrack(cv, value, Method::Direct);
  } else {
    writeOnMainTrack(addressIn(message.data), cv, value);
  }
  answerTo(message, kCvGroup, message.data, kTrackTime);
}

void Mx10Station::answerTo(const BusMessage& message, int group, const QByteArray& data,
                           Millis delay) {
  answer(encode({.group = group,
                 .command = message.command,
                 .mode = kAnswer,
                 .node = kNode,
                 .data = data}),
         delay);
}

void Mx10KeyStation::receive(const QByteArray& data) {
  const QList<KeyReader::Item> items = reader_.feed(data);
  for (const KeyReader::Item& item : items) {
    if (item.wakeUp) {
      answer(keyWakeUp(), kAtOnce);
      openLine();
    } else {
      obey(item.message);
    }
  }
}

void Mx10IpStation::receive(const QByteArray& datagram) {
  const auto message = fromIpDatagram(datagram);
  if (!message) return;
  heardAt_ = clock().now();
  later(kPatience, [this, heard = heardAt_] { forget(heard); });
  if (message->group == kNetworkGroup && message->command == 6) {
    if (!isOpen()) openLine();
  } else if (message->group == kNetworkGroup && message->command == 7) {
    closeLine();
  } else if (isOpen()) {
    obey(*message);
  }
}

void Mx10IpStation::forget(Millis heard) {
  if (heard == heardAt_) closeLine();
}

}  // namespace lokari::sim
