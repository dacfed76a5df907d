// A raw pseudo-terminal whose near end is the station and whose far end is a serial port to
// everyone else, linked to a name of the user's choice.
#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <QString>

#include <functional>
#include <memory>

namespace lokari::sim {

class PseudoTerminal {
 public:
  PseudoTerminal() = default;
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  /// Empty on success, else a German message. A link of an earlier run is replaced, any other file
  /// of that name is not.
  QString open(const QString& link);
  /// Takes the link away and hangs up on whoever has the port open.
  void close();

  QString device() const { return device_; }
  /// Sends what the port can hold; a port that nobody reads loses the rest, like a real one.
  void send(const QByteArray& data) const;

  std::function<void(const QByteArray&)> onReceive;

 private:
  void receive() const;

  int near_ = -1;
  int far_ = -1;  ///< kept open, so that a program that closes the port does not hang up on us
  QString link_;
  QString device_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace lokari::sim
