// A decoder bench in virtual time: description files in a folder of its own, the template database
// as the catalogue, and a simulated Tams MC with one decoder on its programming track.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "db/catalogue.h"
#include "db/cv_record.h"
#include "db/database.h"
#include "decoder/decoder_bench.h"
#include "link/station_link.h"
#include "sim/station_table.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/places.h"
#include "support/recording_view.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"

namespace lokari {

/// The maker whose decoders most tests describe, and one of its types.
inline constexpr int kAdlerton = 97;
inline const char* const kEcoFile = "Adlerton/AT-ECO.dec";

class BenchFixture : public ::testing::Test {
 protected:
  explicit BenchFixture(StationKind kind = StationKind::TamsMc)
      : station(sim::stationByName(stationKind(kind).name)->make({clock, layout, faults, 20})) {
    settings.baseUnit = kind;
    settings.timeoutVal = 2;
    settings.delayFlag = false;
    settings.addressCheckNow = false;
    settings.manufacturerCheckNow = false;
    settings.continueOnError = false;
    link.setView(&view);
    record.InitDcData();
    decoder().store(8, kAdlerton);
    decoder().setAddress(3);
    QObject::connect(bench.get(), &DecoderBench::focusRequested, bench.get(),
                     [this](const QString& field) { focused << field; });
  }

  /// Writes a description file below the program's folder.
  void describe(const char* file, const char* text) {
    const QString path = folder.filePath(QString::fromUtf8(file));
    QDir().mkpath(QFileInfo(path).path());
    QFile out(path);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(QString::fromUtf8(text).toLatin1());
  }

  /// Opens the bench on the record, with the description of AT-ECO.
  void openEco(const char* description, const char* address = "3") {
    describe(kEcoFile, description);
    record.recManuf = kAdlerton;
    record.recDecoder = QStringLiteral("AT-ECO");
    bench->open(record, QString::fromUtf8(address));
  }

  /// The same with the description chosen in the open window, as the user does it.
  void chooseEco(const char* description, const char* address = "3") {
    describe(kEcoFile, description);
    describe("Adlerton/AT-SND16.dec", "[AT-SND16]\n");
    record.recManuf = kAdlerton;
    record.recDecoder = QStringLiteral("AT-SND16");
    bench->open(record, QString::fromUtf8(address));
    bench->chooseDecoder(QStringLiteral("AT-ECO"));
    clock.advance(100);
  }

  sim::Decoder& decoder() { return *layout.onProgrammingTrack(); }
  int value(int cv) const { return bench->sets.value(CvIndex(cv)); }
  CvMark mark(int cv) const { return bench->sets.mark(CvIndex(cv)); }
  void setMark(int cv, CvMark mark) { bench->sets.setMark(CvIndex(cv), mark); }
  const CvDescriptor& cv(int index) const { return bench->description.info(CvIndex(index)); }
  const Control& control(const char* name) const {
    return bench->controls.at(QString::fromUtf8(name));
  }
  QString text(const char* name) const { return control(name).text; }
  bool checked(const char* name) const { return control(name).checked; }
  void check(const char* name) { bench->checkBoxToggled(QString::fromUtf8(name), true); }
  /// Place of a CV's row in rows(), or -1.
  int rowOf(int cv) const {
    const auto& rows = bench->rows();
    for (size_t i = 0; i < rows.size(); ++i) {
      if (rows[i].cv == CvIndex(cv)) return static_cast<int>(i);
    }
    return -1;
  }
  const PageRow& row(int cv) const { return bench->rows().at(static_cast<size_t>(rowOf(cv))); }
  void markRow(int cv) { bench->rowReadToggled(rowOf(cv), true); }
  void markRowForWriting(int cv) { bench->rowWriteToggled(rowOf(cv), true); }

  void runJob(CommJob job) {
    line.writes.clear();
    link.commJob = job;
    bench->runJob();
  }
  void read() { runJob(CommJob::ReadProgTrack); }
  void write() { runJob(CommJob::WriteProgTrack); }

  /// What went to the station, one entry a command, without the line ends.
  QStringList sent() const {
    QStringList commands;
    for (const auto& out : line.writes) commands << QString::fromLatin1(out.data).trimmed();
    return commands;
  }
  void expectSessionClosed() {
    EXPECT_EQ(link.commUseCount, 0);
    EXPECT_FALSE(line.isOpen());
    EXPECT_FALSE(bench->commRunning);
    EXPECT_FALSE(link.cancelRequested);
    EXPECT_FALSE(view.progressEnabled);
    EXPECT_EQ(view.captions, QStringList({"Abbruch", "OK"}));
  }
  void fault(const char* text) { faults.add(*sim::faultFromText(QString::fromUtf8(text))); }

  test::VirtualClock clock;
  QTemporaryDir folder;
  Settings settings;
  test::ScriptedPrompt prompt;
  test::RecordingView view;
  sim::Layout layout = oneVehicle();
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> station;
  test::SimLine line{clock, *station};
  test::MemorySocket socket{clock};
  test::MemoryCan can;
  StationLink link{settings, clock, prompt, {line, socket, can}};
  std::unique_ptr<Database> ownDatabase = std::make_unique<Database>(copyOfTemplate());
  const Database* database = ownDatabase.get();
  Catalogue catalogue{database};
  CvRecord record;
  QStringList focused;
  std::unique_ptr<DecoderBench> bench = makeBench();

 private:
  static sim::Layout oneVehicle() {
    sim::Layout layout;
    layout.add({});
    return layout;
  }
  QString copyOfTemplate() {
    const QString path = folder.filePath(QStringLiteral("TEST.MDB"));
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), path));
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    return path;
  }
  std::unique_ptr<DecoderBench> makeBench() {
    QStringList types;
    types.fill(QString(), 256);
    types[220] = QStringLiteral("MX620");
    return std::make_unique<DecoderBench>(
        BenchParts{settings, clock, prompt, link, catalogue, folder.path(), types});
  }
};

}  // namespace lokari
