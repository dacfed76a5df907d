// The link against XpressNet interfaces that follow their maker's documents, with its messages as
// they always were and with those of the documents.
#include <gtest/gtest.h>

#include "link/station_link.h"
#include "sim/decoder_file.h"
#include "sim/makers/xpressnet_station.h"
#include "sim/station_table.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/recording_view.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"

namespace lokari {
namespace {

using sim::Confirmation;
using sim::MakersOptions;

struct Form {
  StationKind kind;
  bool makerForm;
};

class MakersLenzSession : public ::testing::TestWithParam<Form> {
 protected:
  MakersLenzSession() {
    settings.baseUnit = GetParam().kind;
    settings.makerForm = GetParam().makerForm;
    settings.timeoutVal = 2;
    settings.delayFlag = false;
    EXPECT_EQ(sim::readDecoders(sim::builtInDecoders(), layout), "");
    connect({});
  }

  void connect(const MakersOptions& options) {
    link.reset();
    station = sim::stationByName(QStringView(stationKind(GetParam().kind).name))
                  ->makeMakers({clock, layout, faults, 20}, options);
    line = std::make_unique<test::SimLine>(clock, *station);
    link = std::make_unique<StationLink>(settings, clock, prompt, Transports{*line, socket, can});
    EXPECT_EQ(link->initComm(true, true, true), "");
    link->commJob = CommJob::WriteProgTrack;
    link->setView(&view);
  }

  void fault(const char* text) { faults.add(*sim::faultFromText(QString::fromLatin1(text))); }
  int write(int cv, int value, int mode = 0) { return link->WriteCV(cv, value, 3, mode); }
  int read(int cv) { return link->ReadCV(cv, 3); }
  bool inServiceMode() const {
    return dynamic_cast<sim::makers::XpressNetStation&>(*station).inServiceMode();
  }

  test::VirtualClock clock;
  sim::Layout layout;
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> station;
  Settings settings;
  test::ScriptedPrompt prompt;
  std::unique_ptr<test::SimLine> line;
  test::MemorySocket socket{clock};
  test::MemoryCan can;
  test::RecordingView view;
  std::unique_ptr<StationLink> link;
};

std::vector<Form> forms() {
  std::vector<Form> all;
  for (const StationKind kind : {StationKind::Li100, StationKind::Li100V3, StationKind::LiUsb}) {
    for (const bool makerForm : {false, true}) all.push_back({kind, makerForm});
  }
  return all;
}

std::string formName(const ::testing::TestParamInfo<Form>& form) {
  return QString::fromUtf16(stationKind(form.param.kind).name).toStdString() +
         (form.param.makerForm ? "MakerForm" : "");
}

INSTANTIATE_TEST_SUITE_P(Forms, MakersLenzSession, ::testing::ValuesIn(forms()), formName);

TEST_P(MakersLenzSession, ReadsAndWritesAndLeavesTheServiceMode) {
  for (const int value : {0, 1, 77, 255}) {
    EXPECT_EQ(write(5, value), value);
    EXPECT_FALSE(inServiceMode());
    EXPECT_EQ(layout.onProgrammingTrack()->stored(5), value);
    EXPECT_EQ(read(5), value);
    EXPECT_FALSE(inServiceMode());
  }
}

TEST_P(MakersLenzSession, BroadcastsMayComeOftenAndConfirmationsAnywhere) {
  for (const int times : {1, 2, 3}) {
    for (const Confirmation where :
         {Confirmation::None, Confirmation::Ahead, Confirmation::Behind}) {
      connect({.broadcastsInARow = times, .confirmation = where});
      EXPECT_EQ(write(5, 6), 6) << times;
      EXPECT_EQ(read(29), 14) << times;
      EXPECT_FALSE(inServiceMode());
      link->endcomm(true, true);
    }
  }
}

TEST_P(MakersLenzSession, ASlowDecoderIsWaitedFor) {
  connect({.accessTime = 40'000});
  EXPECT_EQ(read(29), 14);
  EXPECT_EQ(write(5, 6), 6);
  EXPECT_EQ(read(5), 6);
}

TEST_P(MakersLenzSession, AValueThatDoesNotStickComesBack) {
  layout.onProgrammingTrack()->sticky = {5};
  const int held = layout.onProgrammingTrack()->stored(5);
  EXPECT_EQ(write(5, held + 1), held);
}

TEST_P(MakersLenzSession, WithProtocol36ReachesTheLastCv) {
  settings.lenzV36 = true;
  connect({.stationVersion = sim::makers::kXpressNet36});
  layout.onProgrammingTrack()->present = {{1, 1024}};
  for (const int cv : {1, 255, 256, 257, 512, 1023, 1024}) {
    EXPECT_EQ(write(cv, 77), 77) << cv;
    EXPECT_EQ(layout.onProgrammingTrack()->stored(cv), 77) << cv;
    EXPECT_EQ(read(cv), 77) << cv;
  }
}

TEST_P(MakersLenzSession, TheTrackAfterwardsIsOnAndTheSessionCloses) {
  EXPECT_EQ(read(29), 14);
  link->endcomm(true, true);
  EXPECT_EQ(link->commUseCount, 0);
  EXPECT_FALSE(inServiceMode());
}

TEST_P(MakersLenzSession, ACancelledReadLeavesNormalOperation) {
  connect({.accessTime = 40'000});
  clock.schedule(20'000, [&] { link->cancelRequested = true; });
  EXPECT_EQ(read(8), -1002);
  link->endcomm(true, true);
  EXPECT_FALSE(inServiceMode());
}

// -- in the documented form alone

class InMakerForm : public MakersLenzSession {};

INSTANTIATE_TEST_SUITE_P(Forms, InMakerForm,
                         ::testing::Values(Form{StationKind::Li100, true},
                                           Form{StationKind::Li100V3, true},
                                           Form{StationKind::LiUsb, true}),
                         formName);

TEST_P(InMakerForm, ADecoderThatKnowsRegistersOnlyIsReadAndWritten) {
  layout.onProgrammingTrack()->methods = {sim::Method::Register};
  link->progMode = 2;
  EXPECT_EQ(write(1, 17, 2), 17);
  EXPECT_EQ(read(1), 17);
  EXPECT_EQ(read(29), 14);
  EXPECT_EQ(read(9), -1003);
}

TEST_P(InMakerForm, ADecoderThatKnowsPagesOnlyIsReadAndWritten) {
  layout.onProgrammingTrack()->methods = {sim::Method::Paged};
  link->progMode = 1;
  EXPECT_EQ(write(29, 6, 1), 6);
  EXPECT_EQ(read(29), 6);
}

TEST_P(InMakerForm, TheFaultsOfTheTrackHaveTheirCodesAtOnce) {
  const QList<std::pair<const char*, int>> rows{
      {"noack", -1019}, {"nodecoder", -1019}, {"shortcircuit", -1018}, {"busy", 97}};
  for (const auto& [text, result] : rows) {
    fault(text);
    EXPECT_EQ(read(8), result) << text;
    EXPECT_EQ(read(29), 14) << text;
    EXPECT_FALSE(inServiceMode()) << text;
  }
}

TEST_P(InMakerForm, Cv256IsReachedAtAStationOfEitherVersion) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  for (const int version : {sim::makers::kXpressNet30, sim::makers::kXpressNet36}) {
    connect({.stationVersion = version});
    EXPECT_EQ(write(256, version), version);
    EXPECT_EQ(layout.onProgrammingTrack()->stored(256), version);
    EXPECT_EQ(read(256), version);
    link->endcomm(true, true);
  }
}

}  // namespace
}  // namespace lokari
