// Sending and receiving frames of the Zimo binary protocol: what CV access, driving messages,
// status queries and the firmware update have in common.
#pragma once

#include <QByteArray>

namespace lokari {

class StationLink;

class ZimoBinaryFraming {
 public:
  /// `link` must outlive it.
  explicit ZimoBinaryFraming(StationLink& link) : link_(link) {}

  /// Sends a payload in a frame with the next sequence number; `answer` marks it as the answer to
  /// a frame of the station. On a closed port nothing happens and the number stays.
  void zbinSend(const QByteArray& msg, bool answer);

  /// Takes the next frame, whatever it answers, and leaves what follows it waiting. Gives its
  /// command byte and data. Empty when no whole frame comes, after a cancel, and when the port
  /// fails. Up to 30 seconds pass before the first bytes, `timeoutVal` between later ones.
  QByteArray zbinReceive();

  /// Sends a payload until the station confirms it, up to 5 times; the speaker tells a failure.
  void zbinSendMsg(const QByteArray& msg);

  int zbinSeq = 0;     ///< sequence number of the next frame, 0 to 255
  int zbinRxSeq = -1;  ///< first byte of the last frame received; -1 before the first

 private:
  /// What stands behind a frame's start, its closing 17 included; empty when there is none.
  QByteArray receiveBody();

  StationLink& link_;
};

}  // namespace lokari
