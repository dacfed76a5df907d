#include "link/tams_codec.h"

#include <algorithm>
#include <array>

#include "base/numbers.h"
#include "link/cv_result.h"

namespace lokari::tams {
namespace {

constexpr char kError[] = "Error";
constexpr char kNoAck[] = "No ack";
constexpr char kOk[] = "Ok";
constexpr char kEnd = ']';

QByteArray number(int value) {
  return printed(value).toLatin1();
}

/// The letter of a programming method in "xPTR." and, direct differing, "xPTW.".
char methodLetter(int mode, char direct) {
  if (mode == 1) return 'P';
  if (mode == 2) return 'R';
  return direct;
}

bool isLineEnd(char c) {
  return c == '\r' || c == '\n';
}

/// What both commands are refused with; 0 when the reply is no refusal.
int refusal(const QByteArray& reply) {
  if (reply.startsWith(kError)) return cv_result::kWrongReply;
  if (reply.startsWith(kNoAck)) return cv_result::kNoAck;
  return 0;
}

}  // namespace

QByteArray readCommand(int mode, int cv) {
  return QByteArray("xPTR") + methodLetter(mode, 'B') + number(cv) + '\r';
}

QByteArray writeCommand(int mode, int cv, int value) {
  return QByteArray("xPTW") + methodLetter(mode, 'D') + number(cv) + ',' + number(value) + '\r';
}

QByteArray writeMainCommand(int address, int cv, int value) {
  return QByteArray("xPD") + number(address) + ',' + number(cv) + ',' + number(value) + '\r';
}

QByteArray textOf(const QByteArray& input) {
  QByteArray text;
  std::copy_if(input.begin(), input.end(), std::back_inserter(text),
               [](char c) { return !isLineEnd(c); });
  return text;
}

int readResult(const QByteArray& reply) {
  if (const int code = refusal(reply); code < 0) return code;
  int value = -1;
  const QByteArray text = reply.left(3).trimmed();
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    value = std::max(value, 0) * 10 + (c - '0');
  }
  return value >= 0 && value <= 255 ? value : cv_result::kWrongReply;
}

int writeResult(const QByteArray& reply, int value) {
  if (reply.startsWith(kOk)) return value;
  const int code = refusal(reply);
  return code < 0 ? code : cv_result::kWrongReply;
}

bool isCutText(const QByteArray& reply) {
  constexpr std::array kTexts{kError, kNoAck};
  return std::any_of(kTexts.begin(), kTexts.end(), [&](const char* text) {
    const QByteArray whole(text);
    return reply.size() < whole.size() && whole.startsWith(reply);
  });
}

bool isComplete(const QByteArray& reply) {
  return reply.contains(kEnd);
}

int repliesIn(const QByteArray& text) {
  return static_cast<int>(text.count(kEnd));
}

}  // namespace lokari::tams
