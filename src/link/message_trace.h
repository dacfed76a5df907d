// What a transport's trace makes of bytes: lines of whole messages with the time of their first
// byte, and the family's words about them.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include "base/clock.h"
#include "base/station_kind.h"

namespace lokari {

class Trace;
struct CanMessage;
struct FamilyWords;
struct Settings;

/// Nothing here throws, waits or lets events run. While nobody wants the trace each call is one
/// comparison.
///
/// Pieces are put together until the family says that a message is whole. What is left of one ends
/// where the other side speaks, behind a pause of kPause, and with the line.
class MessageTrace {
 public:
  static constexpr Millis kPause = 1000;
  /// Bytes of a line; more of them are only counted.
  static constexpr qsizetype kMostShown = 80;

  /// All arguments must outlive it; the settings tell the family.
  MessageTrace(Trace& trace, const Settings& settings, const Clock& clock, Transport transport)
      : trace_(trace), settings_(settings), clock_(clock), transport_(transport) {}

  bool isWanted() const;
  void sent(const QByteArray& piece) noexcept;
  void received(const QByteArray& piece) noexcept;
  void sent(const CanMessage& message) noexcept;
  void received(const CanMessage& message) noexcept;
  /// The line is being opened; why it fails is told anew.
  void opening(const QString& text) noexcept;
  /// What befalls the line itself, German.
  void event(const QString& text) noexcept;
  /// Why an operation has failed; told once as long as it stays the same.
  void fault(const QString& text) noexcept;
  /// Ends what is not whole.
  void flush() noexcept;

  const Settings& settings() const { return settings_; }

 private:
  /// What has come of the next message of one side.
  struct Pending {
    QByteArray bytes;
    QDateTime time;  ///< of its first byte
    Millis last = 0;
    QDateTime lastTime;  ///< of its last piece
  };

  const FamilyWords& words() const;
  void add(Pending& pending, const QByteArray& piece);
  /// What is behind the first `size` bytes has come with the last piece.
  static void drop(Pending& pending, qsizetype size);
  void takeSent();
  void takeReceived();
  void endPending();
  void sentLine(const QByteArray& message);
  void receivedLine(const QByteArray& message);
  void line(const QDateTime& time, char16_t sign, const QString& bytes, const QString& words);

  Trace& trace_;
  const Settings& settings_;
  const Clock& clock_;
  Transport transport_;
  Pending sent_;
  Pending received_;
  QByteArray asked_;  ///< the last whole message that was sent
  QString fault_;
};

}  // namespace lokari
