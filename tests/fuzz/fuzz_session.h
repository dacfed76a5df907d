// A session in virtual time with a station on a serial line whose answers are the fuzzer's bytes.
//
// Input: one byte that chooses the operation, then the answers to the program's messages, each
// behind a byte with its length. An answer of odd length comes in two pieces. Messages beyond the
// input meet silence.
#pragma once

#include <functional>
#include <optional>

#include "link/station_link.h"
#include "support/memory_line.h"

namespace lokari::fuzz {

class FuzzLine final : public test::MemoryLine {
 public:
  FuzzLine(test::VirtualClock& clock, QByteArray answers)
      : MemoryLine(clock), answers_(std::move(answers)) {}

 protected:
  void onWrite(const QByteArray& data) override;

 private:
  QByteArray answers_;
};

/// Runs one session of the kind with the input: opening, one CV operation twice, farewell. Stops
/// the process when a result is neither a value nor a code that `allowed` accepts, when the
/// session does not close, or when it takes longer than the messages sent can explain. The user
/// cancels after `cancelAfter`; kCancelled is then a result too.
void runCvSession(StationKind kind, const QByteArray& input,
                  const std::function<bool(int)>& allowed,
                  std::optional<Millis> cancelAfter = std::nullopt);

/// Stops the process with the text when the condition does not hold.
void require(bool holds, const char* text);

}  // namespace lokari::fuzz
