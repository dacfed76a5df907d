// Sending and receiving frames of the Zimo binary protocol: what CV access, driving messages,
// status queries and the firmware update have in common.
#pragma once

#include <QByteArray>

#include <deque>

#include "base/clock.h"
#include "link/zimo_binary_codec.h"

namespace lokari {

class StationLink;

/// Seconds that a station may be busy on the track before it answers.
inline constexpr int kZimoFirstBytesSeconds = 30;

class ZimoBinaryFraming {
 public:
  /// `link` must outlive it.
  explicit ZimoBinaryFraming(StationLink& link) : link_(link) {}

  /// Sends a payload in a frame with the next sequence number; `answer` marks it as the answer to
  /// a frame of the station. On a closed port nothing happens and the number stays.
  void zbinSend(const QByteArray& msg, bool answer);

  /// Takes the next frame but those that nobody asked for, and leaves what follows it waiting. A
  /// frame of the makers' documents must answer what was sent; of others nobody knows. Gives its
  /// command byte and data. Empty when no whole frame comes, after a cancel, and when the port
  /// fails. Up to `seconds` pass before the first bytes, `timeoutVal` between later ones.
  QByteArray zbinReceive(int seconds = kZimoFirstBytesSeconds);

  /// Sends a payload until the station confirms it, up to 5 times; the speaker tells a failure.
  /// False when it is not confirmed, also because the port has closed.
  bool zbinSendMsg(const QByteArray& msg);

  /// Sends a payload at once, also while another one waits for its answer: that answer is left to
  /// the one that waits. zbinSettle() has to follow when it is done. A later payload takes the
  /// place of one that is not settled yet, so that nothing repeats an order that was revoked.
  void zbinSendAhead(const QByteArray& msg);

  /// Confirms what zbinSendAhead() has sent, as zbinSendMsg() does; at once when there is nothing
  /// to confirm. What was not confirmed in time is sent again, unless the port has closed.
  void zbinSettle();

  /// Whether `reply` is one that is due to what was sent ahead; it counts as that from then on.
  bool answersAhead(const QByteArray& reply);

  /// Takes the answers that are due, as far as they come within a second and also after a cancel:
  /// behind the end of a session nobody can.
  void takeAnswersAhead();
  /// Takes in what has arrived, beside whoever takes it as a reply.
  void hear(const QByteArray& data);
  /// zbinSettle() has something to do.
  bool isUnsettled() const { return unsettled_; }

  /// The input was dropped, and with it answers to what was sent ahead.
  void inputDropped() { answersAhead_ = 0; }
  /// The port was opened anew: what was sent ahead before is history.
  void forgetAhead();

  int zbinSeq = 0;               ///< sequence number of the next frame, 0 to 255
  int zbinRxSeq = -1;            ///< first byte of the last frame received; -1 before the first
  bool zbinSound = true;         ///< the checksum of the last frame received was right
  int zbinKind = -1;             ///< its kind
  bool zbinSilent = false;       ///< the last zbinReceive() waited in vain for the first bytes
  QByteArray zbinAhead;          ///< what zbinSendAhead() sent last; empty before the first
  bool zbinAheadFailed = false;  ///< it was given up without a confirmation

 private:
  /// A message that was sent, as a reply names it.
  struct Asked {
    int seq = -1;
    int message = -1;
    bool operator==(const Asked&) const = default;
  };

  bool isStray(const zbin::Reply& reply) const;
  void acknowledge(const zbin::Reply& reply);
  /// What stands behind a frame's start, its closing 17 included; empty when there is none.
  QByteArray receiveBody(int seconds);
  /// The pause before the next try, after an answer that is no confirmation.
  void pauseAfter(zbin::Confirmation answer);

  /// A message whose answer has not been heard.
  struct Unheard {
    char command;
    Millis sentAt;
    bool isOrder;  ///< it is `zbinAhead`, or an earlier try of it
  };

  StationLink& link_;
  Asked asked_;              ///< what was sent last in turn
  std::deque<Asked> ahead_;  ///< what was sent ahead
  bool unsettled_ = false;   ///< `zbinAhead` is not confirmed yet
  int answersAhead_ = 0;     ///< answers due to what was sent ahead
  QByteArray heard_;         ///< the beginning of a frame
  std::deque<Unheard> unheard_;
};

}  // namespace lokari
