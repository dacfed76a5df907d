#include "link/intellibox_codec.h"

#include <algorithm>
#include <array>

#include "base/bytes.h"
#include "link/cv_result.h"
#include "link/p50x_codes.h"

namespace lokari::ibx {
namespace {

constexpr int kPaged = 1;
constexpr int kRegister = 2;
constexpr int kReadByte = 0xF0;
constexpr int kBitsFailed = 0xFA;

constexpr int kFirstLongAddress = 128;
constexpr int kLastAddress = 0xFFFF;

struct StatusCode {
  int status;
  int code;
};
constexpr std::array kStatusCodes{
    StatusCode{0xFF, cv_result::kNoReply},
    StatusCode{0xFE, cv_result::kNoAck},
    StatusCode{0xFD, cv_result::kShortCircuit},
    StatusCode{0xFC, cv_result::kNoDecoder},
};

/// The operation bytes of the three methods.
struct Operations {
  int paged;
  int byRegister;
  int direct;
};
constexpr Operations kRead{0xEE, 0xEC, 0xF2};
constexpr Operations kWrite{0xEF, 0xED, 0xF1};

QByteArray command(const Operations& operations, int cv, int mode) {
  if (mode == kRegister) return bytes({operations.byRegister, byteLow(cv), 0});
  return bytes(
      {mode == kPaged ? operations.paged : operations.direct, byteLow(cv), byteSecond(cv)});
}

/// The code of an event's status byte; 0 for success.
int failure(const QByteArray& event) {
  const int status = byteAt(event, 1);
  if (status < 0) return cv_result::kWrongReply;
  for (const StatusCode& each : kStatusCodes) {
    if (each.status == status) return each.code;
  }
  return -status;
}

}  // namespace

QByteArray readCv(int cv, int mode) {
  return command(kRead, cv, mode);
}

bool readsDirect(int mode) {
  return mode != kPaged && mode != kRegister;
}

QByteArray readCvByByte(int cv) {
  return bytes({kReadByte, byteLow(cv), byteSecond(cv)});
}

QByteArray writeCv(int cv, int value, int mode) {
  QByteArray msg = command(kWrite, cv, mode);
  appendByte(msg, value);
  return msg;
}

std::optional<QByteArray> writeCvMain(int pomAddr, int address, int cv, int value) {
  const int sent = pomAddr < kFirstLongAddress ? pomAddr : address;
  if (sent < 0 || sent > kLastAddress) return std::nullopt;
  return bytes({0xDE, byteLow(sent), byteSecond(sent), byteLow(cv), byteSecond(cv), value});
}

QByteArray askProgramming() {
  return bytes({0xE0});
}

QByteArray askEvent() {
  return bytes({0xCE});
}

QByteArray endProgramming() {
  return bytes({0xE2});
}

QByteArray unlessHeldDown(const QByteArray& reply) {
  return reply.size() > 1 && reply.count('\0') == reply.size() ? QByteArray() : reply;
}

QByteArray eventWithin(const QByteArray& reply) {
  qsizetype start = 0;
  while (start + 1 < reply.size() && reply[start] == '\0') ++start;
  return reply.mid(start);
}

bool isAccepted(const QByteArray& reply) {
  return p50x::isTaken(byteAt(reply, 0));
}

qsizetype missing(const QByteArray& event) {
  const qsizetype whole = byteAt(event, 0) + 1;
  return std::max<qsizetype>(0, whole - event.size());
}

int readResult(const QByteArray& event) {
  if (const int code = failure(event); code < 0) return code;
  const int value = byteAt(event, 0) >= 2 ? byteAt(event, 2) : -1;
  return value < 0 ? cv_result::kWrongReply : value;
}

bool bitsFailed(const QByteArray& event) {
  return byteAt(event, 1) == kBitsFailed;
}

int writeResult(const QByteArray& event, int value) {
  const int code = failure(event);
  return code < 0 ? code : value;
}

}  // namespace lokari::ibx
