// Batches on stations that tell what is wrong on the track, and what a decoder holds after a write.
#include "bench_fixture.h"

namespace lokari {
namespace {

const char* const kPlain =
    "[X]\n"
    "MAPCVA=31\nMAPCVB=32\nMAPVALA_2=16\nMAPVALB_2=3\n"
    "CV_33=Licht,0-15,0,3\nCV_49=Regler,0-3,0,4\nCV_257_2=Motor,0-128,100,6\n";

class ReadbackTest : public BenchFixture {
 protected:
  explicit ReadbackTest(StationKind kind = StationKind::Mx1) : BenchFixture(kind) {
    record.recCvValues[0][32] = 12;
    record.recCvValues[0][48] = 2;
    decoder().store(33, 5);
    decoder().store(49, 1);
  }
};

// ---- What the station tells about the track ---------------------------------------------------

struct TrackCase {
  StationKind kind;
  const char* fault;
  const char* readStatus;
  const char* writeStatus;
};

class TrackFailures : public ReadbackTest, public ::testing::WithParamInterface<TrackCase> {
 protected:
  TrackFailures() : ReadbackTest(GetParam().kind) {}

  void expectStopped(const char* status) {
    EXPECT_EQ(view.statuses.last(), QString::fromUtf8(status));
    EXPECT_EQ(prompt.beeps, 1);
    EXPECT_EQ(view.hides, 0) << "the dialog stays up with the text";
    EXPECT_EQ(bench->jobEnd, JobEnd::Failed);
    expectSessionClosed();
  }
};

TEST_P(TrackFailures, EndARead) {
  openEco(kPlain);
  markRow(33);
  markRow(49);
  fault(GetParam().fault);
  read();
  expectStopped(GetParam().readStatus);
  EXPECT_EQ(value(33), 12) << "the value that stood there stays";
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(view.details.last(), "CV 33");
}

TEST_P(TrackFailures, EndAWrite) {
  openEco(kPlain);
  markRowForWriting(33);
  markRowForWriting(49);
  fault(GetParam().fault);
  write();
  expectStopped(GetParam().writeStatus);
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(decoder().stored(49), 1);
}

INSTANTIATE_TEST_SUITE_P(AsTheStationTells, TrackFailures,
                         ::testing::Values(
                             // Always, since a station may be asked again.
                             TrackCase{StationKind::Mx1, "shortcircuit:immer", "Lesefehler  3",
                                       "Lesefehler  3"},
                             TrackCase{StationKind::LiUsb, "shortcircuit:immer",
                                       "Kurzschluß am Programmiergleis", "Lesefehler  18"},
                             TrackCase{StationKind::LiUsb, "nodecoder:immer",
                                       "Kein Decoder am Programmiergleis", "Lesefehler  19"},
                             TrackCase{StationKind::Ibx, "busy:immer", "Zentrale nicht bereit",
                                       "Zentrale nicht bereit"}));

// ---- What the decoder holds after a write -----------------------------------------------------

TEST_F(ReadbackTest, AnotherValueReadBackIsAFailure) {
  openEco(kPlain);
  decoder().sticky = {33};
  markRowForWriting(33);
  markRowForWriting(49);
  write();
  EXPECT_EQ(view.statuses.last(), "Wert  12 nicht programmiert (gelesen: 5)!");
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(value(33), 12) << "the working value is what the user wanted";
  EXPECT_EQ(row(33).text, "12");
  EXPECT_EQ(row(33).colour, TextColour::Red);
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(decoder().stored(49), 1) << "nothing is written behind it";
  EXPECT_EQ(view.hides, 0);
  expectSessionClosed();
}

TEST_F(ReadbackTest, AContinuedFailureToStickGoesOn) {
  settings.continueOnError = true;
  openEco(kPlain);
  decoder().sticky = {33};
  markRowForWriting(33);
  markRowForWriting(49);
  write();
  EXPECT_TRUE(view.statuses.contains("Wert  12 nicht programmiert (gelesen: 5)!"));
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(mark(49), CvMark::Verified);
  EXPECT_EQ(decoder().stored(49), 2);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(ReadbackTest, ABankRegisterThatKeepsItsValueIsAFailureOfARead) {
  decoder().banks = {{{16, 3}, {{257, 11}}}};
  decoder().store(31, 16);
  decoder().store(32, 7);
  decoder().sticky = {32};
  openEco(kPlain);
  markRow(1024);
  read();
  EXPECT_EQ(view.statuses.last(), "Wert  3 nicht programmiert (gelesen: 7)!");
  EXPECT_EQ(value(1024), 0);
  EXPECT_EQ(mark(1024), CvMark::None);
  EXPECT_EQ(view.hides, 0);
  expectSessionClosed();
}

TEST_F(ReadbackTest, ADecoderThatDropsBit5OfItsConfigurationIsAskedAbout) {
  settings.addressCheckNow = true;
  decoder().store(29, 2);
  decoder().sticky = {29};
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  markRowForWriting(49);
  prompt.answers = {Answer::Ok};
  write();
  EXPECT_EQ(prompt.shown, QStringList({"Decoder unterstützt keine Adresse über 127!"}));
  EXPECT_EQ(prompt.beeps, 0) << "the question takes the place of a failure";
  EXPECT_EQ(decoder().address(), 3) << "no half of the address is written";
  EXPECT_EQ(mark(1), CvMark::Failed);
  EXPECT_EQ(mark(17), CvMark::None);
  EXPECT_EQ(mark(18), CvMark::None);
  EXPECT_EQ(mark(49), CvMark::Verified) << "and the run goes on";
}

TEST_F(ReadbackTest, AnAddressThatDoesNotStickIsAFailure) {
  decoder().sticky = {1};
  openEco(kPlain, "5");
  check("chkDcAdrWrite");
  markRowForWriting(49);
  write();
  EXPECT_EQ(view.statuses.last(), "Wert  5 nicht programmiert (gelesen: 3)!");
  EXPECT_EQ(text("dc_adr"), "5");
  EXPECT_EQ(control("dc_adr").colour, TextColour::Red);
  EXPECT_EQ(decoder().stored(49), 1);
  expectSessionClosed();
}

// ---- The farewell after a cancel --------------------------------------------------------------

class CancelOnLiUsb : public ReadbackTest {
 protected:
  CancelOnLiUsb() : ReadbackTest(StationKind::LiUsb) {
    openEco(kPlain);
    markRow(33);
    markRowForWriting(33);
    fault("silence:immer@1");
  }
  /// Milliseconds from the cancel to the end of the job.
  Millis farewell(CommJob job) {
    const Millis cancel = clock.now() + 2500;
    clock.schedule(2500, [this] { link.cancelRequested = true; });
    runJob(job);
    EXPECT_EQ(view.statuses.last(), "Beende Kommunikation ...");
    return clock.now() - cancel;
  }
};

TEST_F(CancelOnLiUsb, AWriteStaysCancelledThroughTheFarewellAndAReadDoesNot) {
  const Millis afterRead = farewell(CommJob::ReadProgTrack);
  const Millis afterWrite = farewell(CommJob::WriteProgTrack);
  EXPECT_LT(afterWrite, afterRead) << "a farewell that is cancelled waits for no answer";
  EXPECT_FALSE(link.cancelRequested);
}

}  // namespace
}  // namespace lokari
