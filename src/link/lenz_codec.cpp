#include "link/lenz_codec.h"

#include <array>

#include "base/bytes.h"
#include "link/cv_result.h"
#include "link/lenz_meaning.h"

namespace lokari::lenz {
namespace {

constexpr int kReport = 0x61;
constexpr int kResult = 0x63;
constexpr int kInterfaceReport = 0x01;
/// The type of a result that names a register, or a CV read in paged mode.
constexpr int kRegisterOrPaged = 0x10;

constexpr int kPaged = 1;
constexpr int kReadRegister = 0x11;
constexpr int kWriteRegister = 0x12;
constexpr int kReadPaged = 0x14;
constexpr int kReadDirect = 0x15;
constexpr int kWritePaged = 0x17;
constexpr int kWriteDirect = 0x16;
/// First of the four commands that share the CVs up to 1024 among them.
constexpr int kReadV36 = 0x18;
constexpr int kWriteV36 = 0x1C;

constexpr int kBlock = 256;  ///< CVs to a command
constexpr int kLastByteCv = 255;
constexpr int kLastCv = 1024;

constexpr int kWriteOnMain = 0xEC;
constexpr int kFirstLongAddress = 100;
constexpr int kLongAddressMark = 192;
constexpr int kLastLongAddress = 10239;

/// Behind FF, ahead of a message on USB.
constexpr int kAnswerMark = 0xFE;
constexpr int kUnaskedMark = 0xFD;

constexpr qsizetype kResultSize = 5;
constexpr qsizetype kReportSize = 3;

/// Command and CV byte of the messages for CVs up to 1024. 1024 wraps round to the first command's
/// 0, which CV 0 leaves free.
QByteArray v36Head(int header, int firstCommand, int cv) {
  const int wire = cv % kLastCv;
  return bytes({header, firstCommand + wire / kBlock, wire % kBlock});
}

bool isCv(int cv, int last) {
  return cv >= 1 && cv <= last;
}

std::optional<int> registerOf(int cv) {
  constexpr int kLastRegister = 8;
  constexpr int kConfigCv = 29;
  constexpr int kConfigRegister = 5;
  if (cv == kConfigCv) return kConfigRegister;
  return isCv(cv, kLastRegister) ? std::optional(cv) : std::nullopt;
}

bool isResultType(int type) {
  constexpr std::array kTypes{kRegisterOrPaged, 0x14, 0x15, 0x16, 0x17};
  for (const int each : kTypes) {
    if (each == type) return true;
  }
  return false;
}

bool isResultAt(const QByteArray& reply, qsizetype at) {
  return byteAt(reply, at) == kResult && isResultType(byteAt(reply, at + 1));
}

/// A message whose bytes begin so, as far as the mask looks.
struct NewsRow {
  int header;
  int headerMask;
  int code;
  int codeMask;
  News news;
};
constexpr int kAll = 0xFF;
constexpr int kAny = 0x00;

// Ahead of the rows for all others of their header. The first that fits counts.
constexpr std::array kNews{
    NewsRow{kInterfaceReport, kAll, 0x04, kAll, News::Accepted},
    // The station has stopped speaking to the interface, and does so again.
    NewsRow{kInterfaceReport, kAll, 0x05, kAll, News::None},
    NewsRow{kInterfaceReport, kAll, 0x07, kAll, News::None},
    NewsRow{kInterfaceReport, kAll, 0x00, kAny, News::Refused},
    NewsRow{0x81, kAll, 0x00, kAll, News::Off},
    NewsRow{kReport, kAll, 0x00, kAll, News::Off},
    NewsRow{kReport, kAll, 0x01, kAll, News::On},
    NewsRow{kReport, kAll, 0x02, kAll, News::None},
    NewsRow{kReport, kAll, 0x08, kAll, News::None},
    NewsRow{kReport, kAll, 0x80, kAll, News::Refused},
    NewsRow{kReport, kAll, 0x81, kAll, News::Refused},
    NewsRow{kReport, kAll, 0x82, kAll, News::Refused},
    // Outputs, which feedback modules tell as well, and a vehicle that another device has taken.
    NewsRow{0x40, 0xF0, 0x00, kAny, News::None},
    NewsRow{0xE3, kAll, 0x40, kAll, News::None},
};

News newsOf(const QByteArray& message) {
  const int header = byteAt(message, 0);
  const int code = byteAt(message, 1);
  for (const NewsRow& row : kNews) {
    if ((header & row.headerMask) == row.header && (code & row.codeMask) == row.code) {
      return row.news;
    }
  }
  return News::Answer;
}

}  // namespace

QByteArray withCheck(QByteArray msg) {
  char check = 0;
  for (const char byte : msg) check = static_cast<char>(check ^ byte);
  msg.append(check);
  return msg;
}

QByteArray resume() {
  return bytes({0x21, 0x81, 0xA0});
}

QByteArray askStationVersion() {
  return bytes({0x21, 0x21, 0x00});
}

QByteArray requestResult() {
  return bytes({0x21, 0x10, 0x31});
}

std::optional<QByteArray> readCv(int cv, int mode, bool lenzV36) {
  if (mode != kPaged && lenzV36) {
    if (!isCv(cv, kLastCv)) return std::nullopt;
    return withCheck(v36Head(0x22, kReadV36, cv));
  }
  if (!isCv(cv, kBlock)) return std::nullopt;
  // CV 256 goes out as 0.
  return withCheck(bytes({0x22, mode == kPaged ? kReadPaged : kReadDirect, cv % kBlock}));
}

std::optional<QByteArray> writeCv(int cv, int value, int mode, bool lenzV36) {
  QByteArray msg;
  if (mode != kPaged && lenzV36) {
    if (!isCv(cv, kLastCv)) return std::nullopt;
    msg = v36Head(0x23, kWriteV36, cv);
  } else {
    if (!isCv(cv, kLastByteCv)) return std::nullopt;
    msg = bytes({0x23, mode == kPaged ? kWritePaged : kWriteDirect, cv});
  }
  appendByte(msg, value);
  return withCheck(msg);
}

QByteArray writeBlockEnd(int value, int mode) {
  return withCheck(bytes({0x23, mode == kPaged ? kWritePaged : kWriteDirect, 0, value}));
}

std::optional<QByteArray> readRegister(int cv) {
  const auto number = registerOf(cv);
  if (!number) return std::nullopt;
  return withCheck(bytes({0x22, kReadRegister, *number}));
}

std::optional<QByteArray> writeRegister(int cv, int value) {
  const auto number = registerOf(cv);
  if (!number) return std::nullopt;
  return withCheck(bytes({0x23, kWriteRegister, *number, value}));
}

std::optional<QByteArray> writeCvMain(int pomAddr, int address, int cv, int value) {
  const bool shortAddress = pomAddr < kFirstLongAddress;
  const int addressSent = shortAddress ? pomAddr : address;
  if (addressSent < 0 || addressSent > kLastLongAddress) return std::nullopt;
  // The byte for a multiple of 256 would be -1.
  if (!isCv(cv, kLastCv) || cv % kBlock == 0) return std::nullopt;
  const int high = shortAddress ? 0 : addressSent / 256 + kLongAddressMark;
  return withCheck(bytes({0xE6, 0x30, high, addressSent & 255, kWriteOnMain + (cv - 1) / kBlock,
                          (cv & 255) - 1, value}));
}

qsizetype missing(const QByteArray& reply) {
  const int header = byteAt(reply, 0);
  if (header != kInterfaceReport && header != kReport && header != kResult) return 0;
  const qsizetype whole = (header & 0x0F) + 2;
  return std::max<qsizetype>(0, whole - reply.size());
}

QByteArray resultWithin(const QByteArray& reply) {
  if (reply.size() <= kResultSize) return reply;
  std::optional<QByteArray> first;
  for (qsizetype at = 0; at + kResultSize <= reply.size(); ++at) {
    if (!isResultAt(reply, at)) continue;
    const QByteArray found = reply.mid(at, kResultSize);
    if (isSound(found)) return found;
    if (!first) first = found;
  }
  return first.value_or(reply);
}

QByteArray serviceModeWithin(const QByteArray& reply) {
  if (reply.size() <= kReportSize) return reply;
  for (qsizetype at = 0; at + kReportSize <= reply.size(); ++at) {
    if (byteAt(reply, at) == kReport && byteAt(reply, at + 1) == 0x02) {
      return reply.mid(at, kReportSize);
    }
  }
  return reply;
}

std::optional<int> resultValue(const QByteArray& reply) {
  const int value = byteAt(reply, 3);
  if (!isResultAt(reply, 0) || value < 0) return std::nullopt;
  return value;
}

std::optional<int> resultCv(const QByteArray& reply) {
  if (!resultValue(reply) || byteAt(reply, 1) == kRegisterOrPaged) return std::nullopt;
  return byteAt(reply, 2);
}

bool isSound(const QByteArray& reply) {
  const qsizetype whole = (byteAt(reply, 0) & 0x0F) + 2;
  if (reply.isEmpty() || reply.size() < whole) return false;
  return reply.left(whole) == withCheck(reply.left(whole - 1));
}

std::optional<int> report(const QByteArray& reply) {
  const int code = byteAt(reply, 1);
  if (byteAt(reply, 0) != kReport || code < 0) return std::nullopt;
  return code;
}

bool isRefusal(const QByteArray& reply) {
  constexpr int kFirst = 0x80;
  constexpr int kLast = 0x82;
  const int code = report(reply).value_or(0);
  return isSound(reply) && code >= kFirst && code <= kLast;
}

int writeFailure(const QByteArray& reply) {
  const int code = report(reply).value_or(0);
  return code == 0 ? cv_result::kWrongReply : -code;
}

bool isServiceMode(const QByteArray& reply) {
  return reply == bytes({0x61, 0x02, 0x63});
}

bool isAccepted(const QByteArray& reply) {
  return reply.startsWith(bytes({0x01, 0x04, 0x05}));
}

std::optional<Message> takeMessage(QByteArray& input, bool usb) {
  while (!input.isEmpty()) {
    qsizetype head = 0;
    if (usb) {
      const int mark = input.size() > 1 ? byteAt(input, 1) : kAnswerMark;
      if (byteAt(input, 0) != 0xFF || (mark != kAnswerMark && mark != kUnaskedMark)) {
        input.remove(0, 1);
        continue;
      }
      head = 2;
      if (input.size() <= head) return std::nullopt;
    }
    if (!isHeader(byteAt(input, head))) {
      input.remove(0, 1);
      continue;
    }
    const qsizetype whole = sizeBehind(byteAt(input, head));
    if (input.size() < head + whole) return std::nullopt;
    const Message message{input.mid(head, whole), usb && byteAt(input, 1) == kUnaskedMark};
    if (isSound(message.bytes)) {
      input.remove(0, head + whole);
      return message;
    }
    input.remove(0, 1);
  }
  return std::nullopt;
}

News newsIn(const Message& message) {
  const News news = newsOf(message.bytes);
  return message.unasked && !isOfLayout(news) ? News::None : news;
}

bool isOfLayout(News news) {
  return news == News::Off || news == News::On;
}

bool tellsResumed(const QByteArray& reply) {
  return reply.contains(bytes({0x61, 0x01}));
}

}  // namespace lokari::lenz
