// Frames of a station with the Zimo binary protocol, alone and in a session.
#include "fuzz_session.h"
#include "link/zimo_binary_codec.h"

using namespace lokari;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));

  const std::optional<qsizetype> start = zbin::bodyStart(input);
  if (start) fuzz::require(*start >= 2 && *start <= input.size(), "a start outside the bytes");
  const zbin::Reply reply = zbin::takeApart(input);
  fuzz::require(reply.text.size() <= input.size(), "a reply longer than its frame");
  if (zbin::judge(reply.text) == zbin::Verdict::Refused) zbin::refusal(reply.text);
  zbin::result(reply.text);
  zbin::confirmation(input, reply.text);

  fuzz::runCvSession(StationKind::Mx1Bin, input, [](int code) {
    return (code >= -1285 && code <= -1030) || (code >= -1355 && code <= -1100) ||
           code == cv_result::kNoReply || code == cv_result::kWrongReply;
  });
  return 0;
}
