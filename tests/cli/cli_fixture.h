// lokari-cli in virtual time, on a simulated station, a Tams MC unless another is named.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "cli/cli.h"
#include "cli/console.h"
#include "link/trace.h"
#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/sim_line.h"

namespace lokari {

class RecordingConsole final : public Console {
 public:
  void result(const QString& line) override { results << line; }
  void message(const QString& line) override { messages << line; }

  QStringList results;
  QStringList messages;
};

class CliFixture : public ::testing::Test {
 protected:
  explicit CliFixture(const char16_t* kind = u"TAMSMC")
      : station(sim::stationByName(kind)->make({clock, layout, faults, 20})) {
    EXPECT_EQ(sim::readDecoders(sim::builtInDecoders(), layout), "");
    writeIni("LOKARI", "BaseUnit=" + QString::fromUtf16(kind).toLatin1() +
                           "\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\n");
  }

  void writeIni(const QString& stem, const QByteArray& keys) {
    QFile file(folder.filePath(stem + QStringLiteral(".INI")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[LOKARI]\r\n" + keys);
  }

  /// Runs a command line, split at its blanks, and gives its exit status.
  int run(const char* line) {
    console.results.clear();
    console.messages.clear();
    const CliWorld world{
        folder.path(), clock, {line_, socket, can, nullptr, &trace}, console, interrupt};
    return static_cast<int>(
        runCli(QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts), world));
  }

  /// Nothing was opened, nothing was sent.
  bool untouched() const { return line_.opens == 0 && line_.writes.isEmpty(); }

  test::VirtualClock clock;
  sim::Layout layout;
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> station;
  test::SimLine line_{clock, *station};
  test::MemorySocket socket{clock};
  test::MemoryCan can;
  QTemporaryDir folder;
  Trace trace{folder.path(), clock};
  RecordingConsole console;
  Interrupt interrupt;
};

}  // namespace lokari
