// Replies of an MX1 with the text protocol, alone and in a session.
#include "fuzz_session.h"
#include "link/mx1_text_codec.h"

using namespace lokari;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));

  const mx1::Reply reply = mx1::parseReply(input);
  if (reply.number) {
    fuzz::require(*reply.number >= 0 && *reply.number <= 255, "a number that is no byte");
  }
  const std::optional<int> index = mx1::parseIndex(input);
  if (index) fuzz::require(*index >= 128 && *index <= 255, "an index that is none");

  fuzz::runCvSession(StationKind::Mx1, input, [](int code) {
    return (code >= -255 && code <= -1) || code == cv_result::kNoReply ||
           code == cv_result::kWrongReply;
  });
  return 0;
}
