// What a wait for a station that does not answer costs: processor time against wall time, over a
// real port and in real time.
#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include <ctime>

#include "base/qt_clock.h"
#include "link/system_transports.h"
#include "sim/pseudo_terminal.h"
#include "sim/station_table.h"
#include "sim/udp_server.h"
#include "support/scripted_prompt.h"

namespace lokari {
namespace {

constexpr int kWaitSeconds = 3;
/// No station ever sends that many bytes, and none answers to this CAN identifier.
constexpr qint32 kNeverComes = 0x7F000000;

/// A simulated station on a real port of this machine, and the link to it.
class RealStation {
 public:
  explicit RealStation(const StationKindRow& kind) {
    settings_.baseUnit = kind.kind;
    settings_.comPort = 4;
    settings_.ipAddr = QStringLiteral("127.0.0.1");
    settings_.timeoutVal = kWaitSeconds;
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
    if (fault_.isEmpty()) fault_ = link_.initComm(true, true, true);
  }
  ~RealStation() { link_.endcomm(true, true); }
  RealStation(const RealStation&) = delete;
  RealStation& operator=(const RealStation&) = delete;

  /// Empty, or why there is no session.
  const QString& fault() const { return fault_; }
  StationLink& link() { return link_; }

 private:
  template <class Port>
  void join(Port& port) {
    station_->onAnswer = [&port](const QByteArray& data) { port.send(data); };
    port.onReceive = [this](const QByteArray& data) { station_->receive(data); };
  }

  QString port() const { return folder_.filePath(QStringLiteral("port")); }

  void writePorts() const {
    QFile file(folder_.filePath(QStringLiteral("PORTS.INI")));
    if (file.open(QIODevice::WriteOnly)) file.write("[PORTS]\r\nCOM4=" + port().toLocal8Bit());
  }

  QString fault_;
  QTemporaryDir folder_;
  QtClock clock_;
  Settings settings_;
  test::ScriptedPrompt prompt_;
  sim::Layout layout_;
  sim::FaultPlan faults_;
  std::unique_ptr<sim::Station> station_;
  sim::PseudoTerminal terminal_;
  sim::UdpServer server_;
  SystemTransports transports_{folder_.path(), clock_};
  StationLink link_{settings_, clock_, prompt_, transports_.transports()};
};

double processorSeconds() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void waiting(benchmark::State& state, StationKind kind) {
  RealStation station(stationKind(kind));
  if (!station.fault().isEmpty()) {
    state.SkipWithError(station.fault().toUtf8().constData());
    return;
  }
  double busy = 0;
  double wall = 0;
  for (auto each : state) {
    static_cast<void>(each);
    QElapsedTimer timer;
    timer.start();
    const double before = processorSeconds();
    station.link().WaitForData(kNeverComes);
    busy += processorSeconds() - before;
    wall += static_cast<double>(timer.nsecsElapsed()) / 1e9;
  }
  state.counters["core_percent"] = 100 * busy / wall;
}

BENCHMARK_CAPTURE(waiting, serial, StationKind::TamsMc)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(waiting, can_key, StationKind::Mx10)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(waiting, udp, StationKind::Z21Ip)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lokari
