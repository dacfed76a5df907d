// What all simulated stations share: the tracks, the faults, and a queue of answers that leave one
// after the other, never from inside receive().
#pragma once

#include <QByteArray>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/clock.h"
#include "sim/faults.h"
#include "sim/layout.h"

namespace lokari::sim {

/// What a station stands in; all must outlive it.
struct Surroundings {
  Clock& clock;
  Layout& layout;
  FaultPlan& faults;
  Millis answerDelay = 20;  ///< from a command to its answer
};

/// How the programming track answered.
enum class TrackAnswer { Value, Busy, ShortCircuit, NoDecoder, NoAck };

struct TrackResult {
  TrackAnswer answer = TrackAnswer::Value;
  int value = 0;  ///< with Value: what the decoder holds
};

class Station {
 public:
  explicit Station(const Surroundings& surroundings) : surroundings_(surroundings) {}
  virtual ~Station() = default;
  Station(const Station&) = delete;
  Station& operator=(const Station&) = delete;

  /// Bytes from the program, in any portions; on UDP one datagram.
  virtual void receive(const QByteArray& data) = 0;
  /// The same on a network, from one of several clients. Most stations do not tell them apart.
  virtual void receiveFrom(int client, const QByteArray& data);

  /// Bytes to the program, or one datagram.
  std::function<void(const QByteArray&)> onAnswer;
  /// One datagram to one client, by a station that tells them apart. Without it onAnswer has it.
  std::function<void(int client, const QByteArray&)> onAnswerTo;
  /// The station is pulled out.
  std::function<void()> onUnplug;
  /// A station's boot loader is left, with this memory: 65536 bytes, 255 where nothing came.
  std::function<void(const QByteArray& image)> onFirmware;

 protected:
  Clock& clock() const { return surroundings_.clock; }
  Layout& layout() const { return surroundings_.layout; }

  /// Queues an answer: `delay` from now, or the usual one, and never before those queued earlier.
  /// The faults of the wire strike here.
  void answer(const QByteArray& data);
  void answer(const QByteArray& data, Millis delay);
  void answerTo(int client, const QByteArray& data, Millis delay);
  /// The usual time from a command to its answer.
  Millis answerDelay() const { return surroundings_.answerDelay; }

  /// A message that the station sends without being asked, such as news of another throttle; empty
  /// for a station that only answers.
  virtual QByteArray unasked() const { return {}; }

  /// Runs a pending action of the station, `delay` from now.
  void later(Millis delay, std::function<void()> action);

  /// The station has no time for a command beside programming: the fault of that name strikes.
  bool isBusy();

  /// Programming on the programming track, with the faults of the track.
  TrackResult readOnProgrammingTrack(int cv, Method method);
  TrackResult writeOnProgrammingTrack(int cv, int value, Method method);
  /// On the main track, by address. A vehicle that is not there gives NoDecoder, a read that
  /// nobody answers NoAck. A write is never acknowledged by the vehicle; Value means it was sent.
  TrackResult readOnMainTrack(int address, int cv);
  TrackResult writeOnMainTrack(int address, int cv, int value);

 private:
  struct Pending {
    std::unique_ptr<Clock::Alarm> alarm;
    bool done = false;
  };

  /// Whom an answer is for: anybody who hears the wire, or one client.
  using Recipient = std::optional<int>;

  void answer(Recipient recipient, const QByteArray& data, Millis delay);
  void queue(Recipient recipient, const QByteArray& data, Millis at);
  std::optional<TrackResult> trackFault();

  Surroundings surroundings_;
  std::vector<std::shared_ptr<Pending>> pending_;
  Millis lastAnswerAt_ = 0;
};

}  // namespace lokari::sim
