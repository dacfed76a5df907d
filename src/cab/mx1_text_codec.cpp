#include "cab/mx1_text_codec.h"

#include "base/numbers.h"
#include "cab/zimo_flags.h"

namespace lokari::mx1cab {
namespace {

constexpr int kStateLength = 16;
/// Positions in an answer, counted from 1. What a command repeats begins two characters later in
/// the answer than in the command.
constexpr int kCommandPart = 3;
constexpr int kSpeedAt = 6;
constexpr int kFlagsAt = 8;
constexpr int kFunctions1To8At = 10;
constexpr int kFunctions9To12At = 16;
constexpr int kOutputsAt = 8;
constexpr int kSwitchValueAt = 5;
/// Characters that a command repeats: letter, address, speed, flags, F1 to F8, and F9 to F12.
constexpr int kShortCommandPart = 9;
constexpr int kLongCommandPart = 11;

constexpr int kNinthBit = 0x80;

QByteArray digits(int number) {
  return hexPadded(number).toLatin1();
}

QByteArray line(const QByteArray& text) {
  return text + '\r';
}

/// The number of the two digits at a position counted from 1.
std::optional<int> numberAt(const QByteArray& text, int position) {
  const QByteArray pair = text.mid(position - 1, 2);
  const std::optional<quint32> number = parseHex(QString::fromLatin1(pair));
  if (pair.size() < 2 || !number) return std::nullopt;
  return static_cast<int>(*number);
}

/// The two digits must end before the carriage return.
void replaceAt(QByteArray& command, int position, int value) {
  if (position + 1 < command.size()) command.replace(position - 1, 2, digits(value & 0xFF));
}

bool hasNinthBit(int unit) {
  return unit > 0xFF;
}

}  // namespace

QByteArray defaultCommand(int number) {
  return line("FN" + digits(number) + "000400");
}

QByteArray askState(int number) {
  return line("AFN" + digits(number));
}

int stateLength(bool indexed) {
  return indexed ? kIndexLineLength + kStateLength : kStateLength;
}

std::optional<VehicleState> parseState(const QByteArray& answer, int number, StateForm form) {
  const QByteArray text = answer.startsWith('E') ? answer.mid(kIndexLineLength) : answer;
  const QByteArray commandPart =
      text.mid(kCommandPart - 1, form.commandsF9To12 ? kLongCommandPart : kShortCommandPart);
  const auto speed = numberAt(text, kSpeedAt);
  const auto flags = numberAt(text, kFlagsAt);
  const auto low = numberAt(text, kFunctions1To8At);
  if (!speed || !flags || !low || !commandPart.startsWith('N' + digits(number))) return {};
  int high = 0;
  if (form.tellsF9To12 && text.size() > kStateLength) {
    high = numberAt(text, kFunctions9To12At).value_or(0);
  }
  return VehicleState{.speed = *speed,
                      .flags = *flags,
                      .functions = zimo::functionMask(*flags, *low, high),
                      .command = line("F" + commandPart)};
}

void setField(QByteArray& command, Field field, int value) {
  replaceAt(command, static_cast<int>(field), value);
}

void setBits(QByteArray& command, Field field, int bits, bool set) {
  const std::optional<int> before = numberAt(command, static_cast<int>(field));
  if (before) setField(command, field, set ? *before | bits : *before & ~bits);
}

QByteArray trackPower(bool on) {
  return line(on ? "SE" : "SS");
}

QByteArray askOutputs(int unit) {
  return line("AWN" + digits(unit & 0xFF) + (hasNinthBit(unit) ? "80" : ""));
}

QByteArray switchCommand(int unit) {
  return line("MN" + digits(unit & 0xFF) + (hasNinthBit(unit) ? "80" : "00"));
}

void setOutput(QByteArray& command, int unit, int n, bool on) {
  replaceAt(command, kSwitchValueAt,
            zimo::switchValue(n, on) + (hasNinthBit(unit) ? kNinthBit : 0));
}

std::optional<quint8> parseOutputs(const QByteArray& answer) {
  const std::optional<int> outputs = numberAt(answer, kOutputsAt);
  if (!outputs) return {};
  return static_cast<quint8>(*outputs);
}

}  // namespace lokari::mx1cab
