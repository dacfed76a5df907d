// The Z21: datagrams to the station's port 21105, answers filtered by the head that is awaited.
#pragma once

#include <deque>
#include <optional>

#include "base/clock.h"
#include "link/station_protocol.h"
#include "link/z21_track.h"

namespace lokari {

struct Z21Form;

class Z21Protocol final : public StationProtocol {
 public:
  static constexpr quint16 kStationPort = 21105;

  explicit Z21Protocol(StationLink& link) : StationProtocol(link) {}
  ~Z21Protocol() override;

  // -- session and waiting; what is waited for is the length of the awaited message

  void open(bool progOn, int& step) override;
  void reopen(int users, int& step) override;
  void farewell(bool leaveMode, bool progOn) override;
  void close(bool lastUser) override;
  qint32 bufferCount() override { return z21ReplyLen; }
  bool arrived(qint32 want) override;
  void dropInput() override;

  std::unique_ptr<CvExchange> readCv(const CvRequest& request) override;
  std::unique_ptr<CvExchange> writeCv(const CvRequest& request) override;

  // -- messages; also for driving and status queries

  /// Sends a text of hexadecimal pairs as one datagram, an empty one not at all; in the form that
  /// the settings name. Throws LinkError for a text that is none or longer than 65 bytes, and when
  /// the socket is not open.
  void z21Send(QStringView text);

  /// How the station is spoken to, by the settings as they are now.
  const Z21Form& form() const;
  /// What it has told of its track.
  const Z21Track& track() const { return track_; }

  /// A CV operation begins, which will get the result for `cv`: nothing that came before it may
  /// pass for its answer. Datagrams left unread are looked through at the next arrival, but only
  /// for what is awaited then.
  void beginCvOperation(int cv);
  /// It has ended; the next result is one for nobody.
  void endCvOperation();

  /// Whether a result's checksum is one of those in use. A station has one of them only: one that
  /// fits in the other way, as one in a hundred does by chance, is none of its own.
  bool isSound(const QByteArray& message);
  /// The station's machine tells that nobody listens there to what was sent last.
  bool isPortClosed() const { return portClosed_; }

  bool z21Connected = false;  ///< the station has answered the socket
  int z21ReplyLen = 0;        ///< length of the last message that matched z21Wanted, else 0
  /// Head that the next awaited message must start with; set before sending. Empty when nothing is
  /// awaited: datagrams then wait in the socket.
  QByteArray z21Wanted;
  QByteArray z21LastReply;  ///< the last message taken out of a datagram

 private:
  /// Opens the socket and waits for the station's first word.
  void connectStation(int& step, bool powerOn);
  /// Asks for broadcasts and for the track's state, where the form has it.
  void subscribe();
  /// Behind the subscription of a first session: a layout that stands shows as one.
  void showStanding();
  void showStopped();
  void leaveProgramming();
  void noteOn();
  void send(const QByteArray& message);
  bool isHopeless() const;
  QString whyNotOpen() const;
  void datagramArrived();
  /// Looks for news of the layout, beside whoever takes the datagram.
  void hear(const QByteArray& datagram);
  /// Walks through a datagram up to the awaited message. Without `keepOthers` it leaves
  /// z21LastReply alone when there is none.
  bool lookThrough(const QByteArray& datagram, bool keepOthers);
  bool isAwaited(const QByteArray& message) const;
  /// Whether a message that nobody awaits tells something to whoever waits.
  bool concernsWait(const QByteArray& message) const;

  std::deque<QByteArray> unread_;       ///< of the time before the operation
  std::optional<QByteArray> cvResult_;  ///< head of the running CV operation's result
  bool refused_ = false;                ///< it will get none
  bool portClosed_ = false;             ///< to what was sent last
  std::optional<bool> checksOfBytes_;   ///< the station's kind of checksum, once known
  Z21Track track_;
  bool programmed_ = false;  ///< the programming track was used since the last farewell
  Millis spokeAt_ = 0;       ///< when the last message went out
};

std::unique_ptr<StationProtocol> makeZ21Protocol(StationLink& link);

}  // namespace lokari
