// Replies of the Lenz interfaces, alone and in a session. The first byte also chooses the
// interface.
#include "base/bytes.h"
#include "fuzz_session.h"
#include "link/lenz_codec.h"

using namespace lokari;

namespace {

constexpr StationKind kKinds[] = {StationKind::Li100, StationKind::Li100V3, StationKind::LiUsb};
/// Only a cancel ends a write to a station that has fallen silent.
constexpr Millis kCancelAfter = 300'000;

bool isByte(int value) {
  return value >= 0 && value <= 255;
}

void checkCodec(const QByteArray& reply) {
  fuzz::require(lenz::missing(reply) <= 4, "a message longer than any");
  const QByteArray result = lenz::resultWithin(reply);
  fuzz::require(result == reply || (result.size() == 5 && lenz::resultValue(result).has_value()),
                "a result that is none");
  const QByteArray mode = lenz::serviceModeWithin(reply);
  fuzz::require(mode == reply || (mode.size() == 3 && reply.contains(mode)),
                "a report from nowhere");
  for (const QByteArray& each : {reply, result, mode}) {
    if (const auto value = lenz::resultValue(each)) fuzz::require(isByte(*value), "no CV value");
    if (const auto code = lenz::report(each)) fuzz::require(isByte(*code), "no code");
    fuzz::require(lenz::writeFailure(each) < 0, "a failure that is a value");
    fuzz::require(!lenz::isServiceMode(each) || !lenz::isAccepted(each), "two replies in one");
    lenz::tellsResumed(each);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  checkCodec(input);
  if (input.isEmpty()) return 0;
  fuzz::runCvSession(
      kKinds[byteAt(input, 0) / 4 % 3], input,
      [](int code) { return (code >= -255 && code <= -1) || (code >= -1255 && code <= -1000); },
      kCancelAfter);
  return 0;
}
