// lokari-sim: a simulated command station on a pseudo-terminal or a UDP port.
#include <QCoreApplication>

#include <cstdio>

#include "base/bytes.h"
#include "base/qt_clock.h"
#include "base/signal_watch.h"
#include "base/text_file.h"
#include "sim/decoder_file.h"
#include "sim/options.h"
#include "sim/pseudo_terminal.h"
#include "sim/station_table.h"
#include "sim/udp_server.h"

namespace {

using namespace lokari;
using namespace lokari::sim;

void print(std::FILE* file, const QString& text) {
  std::fputs((text + QLatin1Char('\n')).toUtf8().constData(), file);
  std::fflush(file);
}

QString loadDecoders(const Options& options, Layout& layout) {
  if (options.decoders.isEmpty()) return readDecoders(builtInDecoders(), layout);
  for (const QString& path : options.decoders) {
    const std::optional<QString> text = readTextFile(path);
    if (!text) return QStringLiteral("Kann %1 nicht lesen!").arg(path);
    const QString error = readDecoders(*text, layout);
    if (!error.isEmpty()) return path + QStringLiteral(", ") + error;
  }
  return {};
}

/// Joins a station to its wire; both have the same shape.
template <class Port>
void join(Station& station, Port& port, bool log) {
  station.onAnswer = [&port, log](const QByteArray& data) {
    if (log) print(stdout, QStringLiteral("< ") + hexDump(data));
    port.send(data);
  };
  station.onUnplug = [&port] {
    print(stdout, QStringLiteral("Abgezogen."));
    port.close();
    QCoreApplication::quit();
  };
}

void listen(Station& station, PseudoTerminal& port, bool log) {
  port.onReceive = [&station, log](const QByteArray& data) {
    if (log) print(stdout, QStringLiteral("> ") + hexDump(data));
    station.receive(data);
  };
}

/// On the network a station may tell its clients apart.
void listen(Station& station, UdpServer& server, bool log) {
  server.onReceiveFrom = [&station, log](int client, const QByteArray& data) {
    if (log) print(stdout, QStringLiteral("> ") + hexDump(data));
    station.receiveFrom(client, data);
  };
  station.onAnswerTo = [&server, log](int client, const QByteArray& data) {
    if (log) print(stdout, QStringLiteral("< ") + hexDump(data));
    server.sendTo(client, data);
  };
}

void keep(const QByteArray& image, const QString& path) {
  if (writeFileAtomically(path, image)) {
    print(stdout, QStringLiteral("Firmware gespeichert: %1").arg(path));
  } else {
    print(stderr, QStringLiteral("Kann %1 nicht schreiben!").arg(path));
  }
}

int run(const Options& options) {
  QtClock clock;
  Layout layout;
  layout.onChange = [](const QString& line) { print(stdout, line); };
  FaultPlan faults;
  for (const Fault& fault : options.faults) faults.add(fault);
  layout.setTrackPower(!options.powerOff);
  layout.setStopped(options.stopped);
  layout.setOverloaded(options.overloaded);
  QString error = loadDecoders(options, layout);
  const StationRow& row = *stationByName(options.station);
  const Surroundings surroundings{clock, layout, faults, options.answerDelay};
  const auto station =
      options.makersForm ? row.makeMakers(surroundings, options.makers) : row.make(surroundings);
  PseudoTerminal terminal;
  UdpServer server;
  QString place;
  if (error.isEmpty() && row.wire == Wire::Serial) {
    join(*station, terminal, options.log);
    listen(*station, terminal, options.log);
    error = terminal.open(options.link);
    place = QStringLiteral("%1 (%2)").arg(options.link, terminal.device());
  } else if (error.isEmpty()) {
    join(*station, server, options.log);
    listen(*station, server, options.log);
    const quint16 port = options.udpPort != 0 ? options.udpPort : row.udpPort;
    error = server.open(port);
    place = QStringLiteral("127.0.0.1:%1").arg(port);
  }
  if (!error.isEmpty()) {
    print(stderr, error);
    return 1;
  }
  if (!options.image.isEmpty()) {
    station->onFirmware = [&options](const QByteArray& image) { keep(image, options.image); };
  }
  const SignalWatch signalWatch([] { QCoreApplication::quit(); });
  print(stdout, QStringLiteral("%1 bereit an %2").arg(QString::fromUtf16(row.name), place));
  return QCoreApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  const Options options = parseOptions(QCoreApplication::arguments().mid(1));
  if (options.help) {
    std::fputs(helpText().toUtf8().constData(), stdout);
    return 0;
  }
  if (!options.error.isEmpty()) {
    print(stderr, options.error);
    print(stderr, QStringLiteral("Hilfe: lokari-sim --help"));
    return 2;
  }
  return run(options);
}
