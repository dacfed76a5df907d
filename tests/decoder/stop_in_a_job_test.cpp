// Whoever ends a job, by its "Abbruch" or by a stop, has no message go out behind it: not those of
// a question that is still to be answered, and not those behind a pause.
#include "bench_fixture.h"

namespace lokari {
namespace {

const char* const kSome =
    "[X]\nPROGMAIN=J\nSPEEDTABLE=N\nCV_3=Zeit\nCV_33=Licht,0-255,0,3\nCV_40=Zaehler,0-255,256,3\n";

class StopInAJob : public BenchFixture {
 protected:
  void stopWhileAsked() {
    prompt.whileAsked = [this] { link.cancelRequested = true; };
    prompt.choices = {0};
    prompt.answers = {Answer::Ok, Answer::Ok};
  }
  TextColour addressColour() const { return control("dc_adr").colour; }
};

TEST_F(StopInAJob, OfAQuestionAheadOfTheLineLeavesTheLineAlone) {
  openEco(kSome);
  bench->gridHeaderClicked(GridColumn::Write);
  stopWhileAsked();
  write();
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(line.opens, 0);
  EXPECT_EQ(bench->jobEnd, JobEnd::Stopped);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(StopInAJob, AQuestionThatEndsItLeavesNoCancelBehind) {
  openEco(kSome);
  bench->gridHeaderClicked(GridColumn::Write);
  stopWhileAsked();
  prompt.choices.clear();
  write();
  EXPECT_EQ(line.opens, 0);
  EXPECT_FALSE(link.cancelRequested) << "cabs would end their waits by it";
}

TEST_F(StopInAJob, OfTheMessageAboutWhatIsLeftOutLeavesTheLineAlone) {
  openEco((std::string(kSome) + "PROGMODE=1\n").c_str());
  check("chkWrt_3");
  markRowForWriting(33);
  prompt.whileShown = [this] { link.cancelRequested = true; };
  write();
  ASSERT_EQ(prompt.shown, QStringList({"Nicht geschrieben werden, obwohl angekreuzt:"}));
  EXPECT_EQ(line.opens, 0);
  expectSessionClosed();
}

TEST_F(StopInAJob, OfTheQuestionAboutACheckLeavesTheAddressAlone) {
  settings.addressCheckNow = true;
  settings.continueOnError = true;
  openEco(kSome, "1001");
  check("chkDcAdrWrite");
  fault("noack:2");
  stopWhileAsked();
  write();
  EXPECT_EQ(prompt.shown, QStringList({"Die Art des Decoders (CV 29) ließ sich nicht prüfen!"}));
  EXPECT_EQ(sent().filter(QStringLiteral("xPTW")), QStringList());
  EXPECT_EQ(addressColour(), TextColour::Normal) << "nothing of it went out";
  EXPECT_EQ(bench->jobEnd, JobEnd::Stopped);
  expectSessionClosed();
}

TEST_F(StopInAJob, OfTheQuestionAboutCv29LeavesTheAddressAlone) {
  record.recCvValues[0][28] = 34;
  openEco(kSome, "5");
  check("chkDcAdrWrite");
  stopWhileAsked();
  write();
  ASSERT_EQ(prompt.shown.size(), 1);
  EXPECT_EQ(sent(), QStringList());
  EXPECT_EQ(addressColour(), TextColour::Normal);
}

TEST_F(StopInAJob, OfThePauseBehindAFailureLeavesTheOtherHalfOfAnAddress) {
  settings.continueOnError = true;
  openEco(kSome, "1001");
  check("chkDcAdrWrite");
  decoder().readOnly.insert(18);
  clock.schedule(2000, [this] { link.cancelRequested = true; });
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 18, 233"}));
  EXPECT_EQ(addressColour(), TextColour::Red) << "one half may be there";
  EXPECT_EQ(bench->jobEnd, JobEnd::Stopped);
  expectSessionClosed();
}

TEST_F(StopInAJob, OfTheQuestionAboutAnotherMakerReadsNothingMore) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 131);
  openEco(kSome);
  check("chkRd_3");
  stopWhileAsked();
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 8"}));
  EXPECT_EQ(bench->jobEnd, JobEnd::Stopped);
  expectSessionClosed();
}

}  // namespace
}  // namespace lokari
