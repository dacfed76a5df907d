// The trace on every kind of station: nobody else notices it, and every message has its words.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "link/station_link.h"
#include "link/system_can.h"
#include "link/trace.h"
#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"
#include "support/sim_socket.h"

namespace lokari {
namespace {

/// What a run of a few CVs has sent, and when; what it has found; and its trace.
struct Exchange {
  QList<QPair<Millis, QByteArray>> writes;
  QList<QByteArray> datagrams;
  QList<int> results;
  Millis duration = 0;
  QStringList trace;
};

Exchange runOn(const StationKindRow& kind, bool traced, bool faulty) {
  QTemporaryDir folder;
  test::VirtualClock clock;
  sim::Layout layout;
  sim::FaultPlan faults;
  EXPECT_EQ(sim::readDecoders(sim::builtInDecoders(), layout), "");
  const sim::StationRow& row = *sim::stationByName(QStringView(kind.name));
  const auto station = row.make({clock, layout, faults, 20});
  const bool isSerial = row.wire == sim::Wire::Serial;
  // Replies come in pieces, and one of them not at all. No network cuts a datagram.
  if (faulty) faults.add(*sim::faultFromText(QStringLiteral("silence:1@2")));
  if (faulty && isSerial) faults.add(*sim::faultFromText(QStringLiteral("split:immer:30")));
  std::unique_ptr<test::MemoryLine> line = isSerial
                                               ? std::make_unique<test::SimLine>(clock, *station)
                                               : std::make_unique<test::MemoryLine>(clock);
  std::unique_ptr<test::MemorySocket> socket =
      isSerial ? std::make_unique<test::MemorySocket>(clock)
               : std::make_unique<test::SimSocket>(clock, *station);
  SystemCan can(clock, *line, *socket, std::vector<CanInterface>{});
  Settings settings;
  settings.baseUnit = kind.kind;
  settings.ipAddr = QStringLiteral("127.000.000.001");
  settings.timeoutVal = 2;
  settings.trace = traced;
  test::ScriptedPrompt prompt;
  Trace trace(folder.path(), clock);
  Exchange run;
  {
    StationLink link(settings, clock, prompt, Transports{*line, *socket, can, nullptr, &trace});
    run.results << (link.initComm(true, true, true).isEmpty() ? 1 : 0);
    link.commJob = CommJob::WriteProgTrack;
    run.results << link.ReadCV(29, 3) << link.WriteCV(5, 77, 3, 0) << link.ReadCV(5, 3);
    run.results << link.ReadCV(200, 3) << link.ReadCV(8, 3);
    link.endcomm(true, true);
  }
  for (const auto& each : line->writes) run.writes << qMakePair(each.at, each.data);
  run.datagrams = socket->sent;
  run.duration = clock.now();
  QFile file(trace.path());
  if (file.open(QIODevice::ReadOnly)) {
    run.trace = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
  }
  return run;
}

class TraceOnEveryKind : public ::testing::TestWithParam<StationKindRow> {};

TEST_P(TraceOnEveryKind, ChangesNeitherWhatIsSentNorWhenNorWhatIsFound) {
  for (const bool faulty : {false, true}) {
    const Exchange plain = runOn(GetParam(), false, faulty);
    const Exchange traced = runOn(GetParam(), true, faulty);
    EXPECT_EQ(plain.writes, traced.writes);
    EXPECT_EQ(plain.datagrams, traced.datagrams);
    EXPECT_EQ(plain.results, traced.results);
    EXPECT_EQ(plain.duration, traced.duration);
    EXPECT_TRUE(plain.trace.isEmpty());
    EXPECT_FALSE(traced.trace.isEmpty());
  }
}

TEST_P(TraceOnEveryKind, HasWordsForEveryMessage) {
  const QStringList lines = runOn(GetParam(), true, false).trace;
  int sent = 0;
  int received = 0;
  for (const QString& line : lines) {
    const QChar sign = line.size() > 13 ? line[13] : QChar();
    if (sign != u'>' && sign != u'<') continue;
    sent += sign == u'>' ? 1 : 0;
    received += sign == u'<' ? 1 : 0;
    EXPECT_TRUE(line.contains(QLatin1String(" ; "))) << qPrintable(line);
  }
  EXPECT_GE(sent, 5) << qPrintable(lines.join(u'\n'));
  EXPECT_GE(received, 5) << qPrintable(lines.join(u'\n'));
  EXPECT_TRUE(lines.filter(QStringLiteral("liest CV 29")).size() +
                  lines.filter(QStringLiteral("CV 29 lesen")).size() +
                  lines.filter(QStringLiteral("xPTRB 29")).size() >
              0)
      << qPrintable(lines.join(u'\n'));
}

INSTANTIATE_TEST_SUITE_P(All, TraceOnEveryKind, ::testing::ValuesIn(kStationKinds),
                         [](const auto& kind) {
                           return QString::fromUtf16(kind.param.name).toStdString();
                         });

}  // namespace
}  // namespace lokari
