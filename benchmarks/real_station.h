// A simulated station on a real port of this machine, for measurements in real time.
#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>

#include "base/qt_clock.h"
#include "link/serial_line.h"
#include "link/system_transports.h"
#include "sim/pseudo_terminal.h"
#include "sim/station_table.h"
#include "sim/udp_server.h"
#include "support/scripted_prompt.h"

namespace lokari {

/// The station and the link to it.
class RealStation {
 public:
  RealStation(const StationKindRow& kind, int timeoutSeconds) {
    settings_.baseUnit = kind.kind;
    settings_.comPort = 4;
    settings_.ipAddr = QStringLiteral("127.0.0.1");
    settings_.timeoutVal = timeoutSeconds;
    settings_.canLog = false;
    layout_.add({});
    const sim::StationRow& row = *sim::stationByName(kind.name);
    station_ = row.make({clock_, layout_, faults_, 20});
    if (row.wire == sim::Wire::Serial) {
      join(terminal_);
      fault_ = terminal_.open(port());
      writePorts();
    } else {
      join(server_);
      fault_ = server_.open(row.udpPort);
    }
  }
  ~RealStation() {
    while (link_.commUseCount > 0) link_.endcomm(true, progOn_);
  }
  RealStation(const RealStation&) = delete;
  RealStation& operator=(const RealStation&) = delete;

  /// Opens the session.
  void open(bool progOn) {
    progOn_ = progOn;
    if (fault_.isEmpty()) fault_ = link_.initComm(true, true, progOn);
  }

  /// Empty, or why there is no station or no session.
  const QString& fault() const { return fault_; }
  StationLink& link() { return link_; }
  Clock& clock() { return clock_; }
  test::ScriptedPrompt& prompt() { return prompt_; }

  /// Bytes have arrived at the station.
  std::function<void()> onReceive;
  /// What the station runs.
  sim::Layout& layout() { return layout_; }

  /// The station gets bytes as fast as its line carries them, and no faster. A pseudo-terminal
  /// knows no rate; a network needs none.
  void receiveAtLineSpeed(int bitsPerSecond) { rate_ = bitsPerSecond; }

 private:
  template <class Port>
  void join(Port& port) {
    station_->onAnswer = [&port](const QByteArray& data) { port.send(data); };
    port.onReceive = [this](const QByteArray& data) {
      if (onReceive) onReceive();
      receive(data);
    };
  }

  void receive(const QByteArray& data) {
    if (rate_ == 0) return station_->receive(data);
    sentBy_ = std::max(sentBy_, clock_.now()) + timeOnWire(data.size(), rate_);
    pieces_.push_back(clock_.after(sentBy_ - clock_.now(), [this, data] {
      // The alarm goes, and what it holds with it.
      sim::Station& station = *station_;
      const QByteArray piece = data;
      pieces_.pop_front();
      station.receive(piece);
    }));
  }

  QString port() const { return folder_.filePath(QStringLiteral("port")); }

  void writePorts() const {
    QFile file(folder_.filePath(QStringLiteral("PORTS.INI")));
    if (file.open(QIODevice::WriteOnly)) file.write("[PORTS]\r\nCOM4=" + port().toLocal8Bit());
  }

  QString fault_;
  bool progOn_ = false;
  int rate_ = 0;
  Millis sentBy_ = 0;
  QTemporaryDir folder_;
  QtClock clock_;
  Settings settings_;
  test::ScriptedPrompt prompt_;
  sim::Layout layout_;
  sim::FaultPlan faults_;
  std::unique_ptr<sim::Station> station_;
  std::deque<std::unique_ptr<Clock::Alarm>> pieces_;  // on the wire
  sim::PseudoTerminal terminal_;
  sim::UdpServer server_;
  SystemTransports transports_{folder_.path(), clock_};
  StationLink link_{settings_, clock_, prompt_, transports_.transports()};
};

}  // namespace lokari
