// A raw pseudo-terminal: the far end of a serial port, for tests of real ports.
#pragma once

#include <QByteArray>
#include <QString>

namespace lokari::test {

class PseudoTerminal {
 public:
  PseudoTerminal();
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  /// Device path of the port.
  QString port() const { return port_; }
  void send(const QByteArray& data) const;
  /// What has come so far; never waits.
  QByteArray received() const;
  /// Unplugs: the port's side sees a hang-up.
  void unplug();

 private:
  int master_ = -1;
  QString port_;
};

}  // namespace lokari::test
