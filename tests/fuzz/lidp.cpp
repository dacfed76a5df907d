// Replies of the Lenz decoder programmer, alone and in a session.
#include "fuzz_session.h"
#include "link/lidp_codec.h"

using namespace lokari;

namespace {

bool isRefusal(int code) {
  return code == cv_result::kWrongReply || code == cv_result::kNoAck ||
         code == cv_result::kCancelled;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const int read = lidp::readResult(input);
  fuzz::require((read >= 0 && read <= 255) || isRefusal(read), "a read result that is none");
  const int written = lidp::writeResult(input, 6);
  fuzz::require(written == 6 || isRefusal(written), "a write result that is none");
  fuzz::require(lidp::withoutLateEnd(input).size() <= input.size(), "more than there was");

  fuzz::runCvSession(StationKind::LiDp, input,
                     [](int code) { return isRefusal(code) || code == cv_result::kNoReply; });
  return 0;
}
