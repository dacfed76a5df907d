#include "link/lidp_codec.h"

#include <algorithm>

#include "base/numbers.h"
#include "link/cv_result.h"

namespace lokari::lidp {
namespace {

/// The CV's number in four digits.
QByteArray number(int cv) {
  return hex(cv - 1).rightJustified(4, QLatin1Char('0')).toLatin1();
}

bool isDone(const QByteArray& reply) {
  return reply.mid(2, 2) == "OK";
}

/// The code of a reply that is not "OK".
int refusal(const QByteArray& reply) {
  if (reply.startsWith("X1")) return cv_result::kWrongReply;
  if (reply.startsWith("X2")) return cv_result::kNoAck;
  return cv_result::kCancelled;  // a failure without a text of its own
}

}  // namespace

QByteArray readCommand(int cv) {
  return "0B" + number(cv) + '\r';
}

QByteArray writeCommand(int cv, int value) {
  return "0A" + number(cv) + hexPadded(value).toLatin1() + '\r';
}

QByteArray endCommand() {
  return "01\r";
}

QByteArray withoutLateEnd(const QByteArray& reply) {
  qsizetype start = 0;
  while (start < reply.size() && (reply[start] == '\r' || reply[start] == '\n')) ++start;
  return reply.mid(start);
}

int repliesIn(const QByteArray& text) {
  int replies = 0;
  QByteArray rest = withoutLateEnd(text);
  while (!rest.isEmpty()) {
    const auto isEnd = [](char c) { return c == '\r' || c == '\n'; };
    const auto end = std::find_if(rest.begin(), rest.end(), isEnd);
    if (end != rest.end() || rest.size() >= kReplyLength) ++replies;
    rest = withoutLateEnd(rest.mid(end - rest.begin()));
  }
  return replies;
}

int readResult(const QByteArray& reply) {
  const auto value = parseHex(QString::fromLatin1(reply.left(2)));
  return isDone(reply) && value ? static_cast<int>(*value) : refusal(reply);
}

int writeResult(const QByteArray& reply, int value) {
  return isDone(reply) ? value : refusal(reply);
}

}  // namespace lokari::lidp
