// The programming track of a Lenz interface as the maker's documents have it. A command is
// confirmed (01 04) or brings the broadcast of the service mode about (61 02), or both, in any
// order. Nothing comes by itself: its result is asked for (21 10), and until the answer is there,
// which may take a minute, nothing else may be sent. A station that is busy is asked once more.
#pragma once

#include <QByteArray>

#include <optional>

#include "base/clock.h"

namespace lokari {

class LenzFraming;
class StationLink;

class LenzService {
 public:
  /// What a late 61 02 says to whoever has asked for a result. By the documents it is a broadcast;
  /// some stations answer it while there is no result.
  enum class ServiceModeWord { Passing, NotYet };

  LenzService(StationLink& link, LenzFraming& framing, ServiceModeWord word)
      : link_(link), framing_(framing), word_(word) {}
  ~LenzService();
  LenzService(const LenzService&) = delete;
  LenzService& operator=(const LenzService&) = delete;

  struct Outcome {
    enum class Kind {
      Taken,      ///< a command is at work
      Result,     ///< `message` is 63 ..., whole
      Ready,      ///< done, and the station tells no value
      Refused,    ///< `message` says why
      Silent,     ///< no answer in time
      Cancelled,  ///< by the user
    };
    Kind kind;
    QByteArray message = {};
  };

  /// Sends a command, with its check byte, until the station takes it.
  Outcome command(const QByteArray& message);
  /// Asks for the result of the command before, which is about the CV or register `subject`.
  Outcome result(int subject);
  /// The version of the station, two digits; nothing when it does not tell.
  std::optional<int> stationVersion();

 private:
  void send(const QByteArray& message);
  /// The next message until `deadline`, or the outcome that its absence is.
  std::optional<QByteArray> next(Millis deadline);
  Outcome awaitTaken();
  Outcome awaitResult(int subject, Millis deadline);
  Outcome ending() const;
  void pause();
  void tellThatItWaits();

  StationLink& link_;
  LenzFraming& framing_;
  ServiceModeWord word_;
  bool toldThatItWaits_ = false;
};

}  // namespace lokari
