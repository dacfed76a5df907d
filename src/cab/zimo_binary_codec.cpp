#include "cab/zimo_binary_codec.h"

#include "base/bytes.h"
#include "cab/zimo_flags.h"

namespace lokari::zbincab {
namespace {

constexpr int kTrackPower = 0x02;
constexpr int kDrive = 0x03;
constexpr int kSwitch = 0x07;
constexpr int kAskState = 0x08;
constexpr int kAskOutputs = 0x09;

constexpr int kAnswered = 0x00;
constexpr int kBusy = 0x04;

/// Bits of an address's high byte that mark a long one.
constexpr int kLongMark = 0xC0;
constexpr int kLongMarkReduction = 0x40;

constexpr int kEightFunctions = 8;

/// The byte at a position counted from 1, or -1.
int at(const QByteArray& data, int position) {
  return byteAt(data, position - 1);
}

void replaceAt(QByteArray& command, int position, int value) {
  if (position <= command.size()) command[position - 1] = static_cast<char>(value & 0xFF);
}

QByteArray withAddress(int command, int address) {
  return bytes({command, byteSecond(address), byteLow(address)});
}

/// The address in two bytes, without the marks of a long one.
int addressAt(const QByteArray& data, int position) {
  return (at(data, position) & ~kLongMark) * 256 + at(data, position + 1);
}

}  // namespace

QByteArray askState(int address) {
  return withAddress(kAskState, address);
}

QByteArray askOutputs(int unit) {
  return withAddress(kAskOutputs, unit);
}

QByteArray trackPower(bool on) {
  return bytes({kTrackPower, on ? 0x02 : 0x00});
}

Verdict judge(const QByteArray& question, const QByteArray& answer, int least) {
  if (at(answer, 1) != at(question, 1)) return Verdict::Other;
  if (at(answer, 2) == kBusy) return Verdict::Busy;
  if (at(answer, 2) != kAnswered || answer.size() < least) return Verdict::Other;
  // A late answer to an older question may tell of another address.
  return addressAt(answer, 3) == addressAt(question, 2) ? Verdict::Good : Verdict::Other;
}

QByteArray defaultCommand(int address) {
  return askState(address) + QByteArray(4, '\0');
}

VehicleState parseState(const QByteArray& answer, int functionCount) {
  VehicleState told;
  told.speed = at(answer, 5);
  told.flags = at(answer, 6);
  const bool hasHigh = answer.size() > kLeastState;
  told.functions = zimo::functionMask(told.flags, at(answer, 7), hasHigh ? at(answer, 8) : 0);
  told.command = bytes({kDrive}) + answer.mid(2, functionCount == kEightFunctions ? 5 : 6);
  const int high = at(told.command, 2);
  if (high >= kLongMark) replaceAt(told.command, 2, high - kLongMarkReduction);
  return told;
}

void setField(QByteArray& command, Field field, int value) {
  replaceAt(command, static_cast<int>(field), value);
}

void setBits(QByteArray& command, Field field, int bits, bool set) {
  const int before = at(command, static_cast<int>(field));
  if (before >= 0) setField(command, field, set ? before | bits : before & ~bits);
}

OutputsState parseOutputs(const QByteArray& answer) {
  return {.mask = static_cast<quint8>(at(answer, 6)),
          .command = bytes({kSwitch}) + answer.mid(2, 2)};
}

QByteArray switchCommand(const QByteArray& command, int n, bool on) {
  return command + bytes({zimo::switchValue(n, on)});
}

}  // namespace lokari::zbincab
