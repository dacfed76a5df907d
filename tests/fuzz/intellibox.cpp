// Replies of the Intellibox, alone and in a session.
#include "fuzz_session.h"
#include "link/intellibox_codec.h"

using namespace lokari;

namespace {

/// A station that has no event ever is left by a cancel.
constexpr Millis kCancelAfter = 300'000;

bool isFailure(int code) {
  return (code >= -255 && code <= -1) || code == cv_result::kNoReply ||
         code == cv_result::kWrongReply || code == cv_result::kShortCircuit ||
         code == cv_result::kNoDecoder || code == cv_result::kNotReady || code == cv_result::kNoAck;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const int read = ibx::readResult(input);
  fuzz::require((read >= 0 && read <= 255) || isFailure(read), "a read result that is none");
  const int written = ibx::writeResult(input, 6);
  fuzz::require(written == 6 || isFailure(written), "a write result that is none");
  fuzz::require(ibx::missing(input) >= 0 && ibx::missing(input) <= 255, "too much is missing");

  fuzz::runCvSession(StationKind::Ibx, input, isFailure, kCancelAfter);
  return 0;
}
