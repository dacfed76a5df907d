// Datagrams of a Z21, alone and in a session.
#include "fuzz_session.h"
#include "link/cv_result.h"
#include "link/z21_codec.h"
#include "network_session.h"

using namespace lokari;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));

  qsizetype taken = 0;
  z21::DatagramReader reader(input);
  while (const auto message = reader.next()) {
    fuzz::require(!message->isEmpty(), "an empty message");
    taken += message->size();
    const auto value = z21::cvResultValue(*message);
    fuzz::require(!value || (*value >= 0 && *value <= 255), "a value that is none");
    if (z21::endsCvOperation(*message)) {
      fuzz::require(z21::refusalCode(*message).has_value(), "an end without a code");
    }
  }
  fuzz::require(taken <= input.size(), "more than there is");
  z21::toBytes(QString::fromLatin1(input));

  fuzz::runNetworkSession(StationKind::Z21Ip, input, [](int code) {
    return code == cv_result::kShortCircuit || code == cv_result::kNoAck ||
           code == cv_result::kWrongReply;
  });
  return 0;
}
