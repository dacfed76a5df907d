// A session in virtual time with a station that is reached by datagrams or behind the CAN key; its
// answers are the fuzzer's bytes.
//
// Input: one byte that chooses the operation, then the answers to the program's messages, each
// behind a byte with its length. An answer of odd length comes in two pieces. Messages beyond the
// input meet silence.
#pragma once

#include <functional>

#include "link/station_link.h"
#include "support/memory_line.h"
#include "support/memory_socket.h"

namespace lokari::fuzz {

/// Hands out the answers.
class FuzzAnswers {
 public:
  FuzzAnswers(test::VirtualClock& clock, QByteArray input)
      : clock_(clock), input_(std::move(input)) {}

  /// A message was sent: its answer is given to `arrive`, piece by piece.
  void next(const std::function<void(const QByteArray&)>& arrive);

 private:
  test::VirtualClock& clock_;
  QByteArray input_;
};

/// Runs one session of the kind with the input: opening, one CV operation twice, farewell. A
/// session that the station does not open is left. Stops the process when a result is neither a
/// value nor a code that `allowed` accepts, when the transport does not close, or when it takes
/// longer than the messages sent can explain.
void runNetworkSession(StationKind kind, const QByteArray& input,
                       const std::function<bool(int)>& allowed);

}  // namespace lokari::fuzz
