// What comes from an MX10, alone and in a session: bytes of the key, datagrams of its IP mode.
#include "fuzz_session.h"
#include "link/can_key_codec.h"
#include "link/can_message_text.h"
#include "link/cv_result.h"
#include "network_session.h"

using namespace lokari;

namespace {

void check(const CanMessage& message) {
  fuzz::require(message.LEN <= can_key::kMostData, "more data than a message holds");
  fuzz::require(message.ID <= 0x1FFFFFFF, "an identifier of more than 29 bits");
  canMessageText(message);
}

bool isAllowed(int code) {
  return code == cv_result::kNoReply || code == cv_result::kWrongReply;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));

  // However the bytes are cut, the same messages come out.
  can_key::FrameReader whole;
  can_key::FrameReader single;
  whole.feed(input);
  int ofWhole = 0;
  int ofSingle = 0;
  while (const auto message = whole.next()) {
    check(*message);
    ++ofWhole;
  }
  for (const char byte : input) {
    single.feed(QByteArray(1, byte));
    while (single.next()) ++ofSingle;
  }
  fuzz::require(ofWhole == ofSingle, "other messages from other pieces");

  if (const auto message = can_key::fromDatagram(input)) {
    check(*message);
    fuzz::require(can_key::datagram(*message) == input, "a datagram that changes");
  }

  for (const StationKind kind : {StationKind::Mx10, StationKind::Mx10Ip}) {
    fuzz::runNetworkSession(kind, input, isAllowed);
  }
  return 0;
}
