#include "sim/lidp_station.h"

#include <cstdio>

namespace lokari::sim {
namespace {

constexpr char kNotUnderstood[] = "X1";
/// No line is longer; what is, is noise.
constexpr qsizetype kLongestLine = 64;

/// The number of `digits` upper-case hexadecimal digits at `at`, or nothing.
std::optional<int> number(const QByteArray& line, qsizetype at, qsizetype digits) {
  if (line.size() < at + digits) return {};
  int result = 0;
  for (qsizetype i = at; i < at + digits; ++i) {
    const char digit = line[i];
    if (digit >= '0' && digit <= '9') {
      result = result * 16 + (digit - '0');
    } else if (digit >= 'A' && digit <= 'F') {
      result = result * 16 + (digit - 'A' + 10);
    } else {
      return {};
    }
  }
  return result;
}

QByteArray textOf(const TrackResult& result) {
  switch (result.answer) {
    case TrackAnswer::Value: {
      char text[8];
      std::snprintf(text, sizeof text, "%02XOK", static_cast<unsigned>(result.value));
      return text;
    }
    case TrackAnswer::NoAck:
    case TrackAnswer::NoDecoder:
      return "X2";
    case TrackAnswer::ShortCircuit:
      return "X3";
    case TrackAnswer::Busy:
      break;
  }
  return "X4";
}

}  // namespace

void LidpStation::receive(const QByteArray& data) {
  input_ += data;
  for (qsizetype end = input_.indexOf('\r'); end >= 0; end = input_.indexOf('\r')) {
    const QByteArray line = input_.left(end);
    input_.remove(0, end + 1);
    answer(replyTo(line) + "\r\n");
  }
  if (input_.size() > kLongestLine) input_.clear();
}

QByteArray LidpStation::replyTo(const QByteArray& line) {
  if (line == "01") return layout().overloaded() ? "X3" : "OK";
  const std::optional<int> cv = number(line, 2, 4);
  if (!cv) return kNotUnderstood;
  if (line.startsWith("0B") && line.size() == 6) {
    return textOf(readOnProgrammingTrack(*cv + 1, Method::Direct));
  }
  const std::optional<int> value = number(line, 6, 2);
  if (line.startsWith("0A") && line.size() == 8 && value) {
    return textOf(writeOnProgrammingTrack(*cv + 1, *value, Method::Direct));
  }
  return kNotUnderstood;
}

}  // namespace lokari::sim
