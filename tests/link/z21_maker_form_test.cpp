// A Z21 that is spoken to as its maker's documents have it. Checksums were worked out by hand.
#include "link/cv_result.h"
#include "link/track_stop.h"
#include "link/z21_codec.h"
#include "link/z21_fixture.h"

namespace lokari {
namespace {

QByteArray hexBytes(const char* text) {
  return QByteArray::fromHex(text);
}

const QByteArray kStatusOn = hexBytes("08 00 40 00 62 22 00 40");
const QByteArray kStatusStopped = hexBytes("08 00 40 00 62 22 01 41");
const QByteArray kStatusOff = hexBytes("08 00 40 00 62 22 02 42");
const QByteArray kStatusShort = hexBytes("08 00 40 00 62 22 04 44");
const QByteArray kStatusProgramming = hexBytes("08 00 40 00 62 22 20 60");

const QByteArray kIsOff = hexBytes("07 00 40 00 61 00 61");
const QByteArray kIsShort = hexBytes("07 00 40 00 61 08 69");
const QByteArray kIsStopped = hexBytes("07 00 40 00 81 00 81");

class Z21MakerForm : public test::Z21Fixture {
 protected:
  /// A station that has forgotten the silent tells him of its track again.
  void expectHearing() {
    socket.expect(subscribe);
    socket.expect(askStatus);
  }

  Z21MakerForm() { settings.makerForm = true; }

  void expectSession(const QByteArray& status) {
    socket.expect(subscribe);
    socket.expect(askStatus).answer(status);
  }

  void open(bool progOn, const QByteArray& status = kStatusOn) {
    socket.expect(askSerialNumber).answer(serialNumber);
    expectSession(status);
    ASSERT_EQ(z21.initComm(true, true, progOn), QString());
    z21.commJob = progOn ? CommJob::ReadProgTrack : CommJob::ReadMain;
  }

  void readOnce() {
    socket.expect(readDocumented29).answer(programming, 5).answer(cv29Is14, 400);
    ASSERT_EQ(z21.ReadCV(29, 3), 14);
  }

  void endsWith(const QByteArray& message, const QByteArray& answer) {
    socket.expect(message).answer(answer);
    socket.expect(logOff);
    z21.endcomm(true, true);
    EXPECT_TRUE(socket.played());
  }

  const QByteArray subscribe = hexBytes("08 00 50 00 01 00 00 00");
  const QByteArray askStatus = hexBytes("07 00 40 00 21 24 05");
  const QByteArray powerOff = hexBytes("07 00 40 00 21 80 A1");
  const QByteArray readDocumented29 = hexBytes("09 00 40 00 23 11 00 1C 2E");
  const QByteArray writeDocumented1As3 = hexBytes("0A 00 40 00 24 12 00 00 03 35");
  const QByteArray readMain1 = hexBytes("0C 00 40 00 E6 30 00 03 E4 00 00 31");
};

TEST_F(Z21MakerForm, ASessionSubscribesAndAsksForTheStatusAndSwitchesNothingOn) {
  open(true);
  EXPECT_EQ(station().track().state(), Z21Track::State::On);
  EXPECT_FALSE(z21.trackStop().isHeld());
}

TEST_F(Z21MakerForm, EachSessionSubscribesAnewOnTheOneSocket) {
  open(false);
  expectSession(kStatusOn);
  EXPECT_EQ(z21.initComm(true, true, false), QString());
  z21.FinishComm();
  socket.expect(logOff);
  z21.FinishComm();
  open(false);
}

TEST_F(Z21MakerForm, ALostStatusIsAskedForOnceMore) {
  socket.expect(askSerialNumber).answer(serialNumber);
  socket.expect(subscribe);
  socket.expect(askStatus);
  socket.expect(askStatus).answer(kStatusOn);
  EXPECT_EQ(z21.initComm(true, true, false), QString());
  EXPECT_EQ(station().track().state(), Z21Track::State::On);
}

TEST_F(Z21MakerForm, AStationThatTellsNoStatusIsNoReasonToFail) {
  socket.expect(askSerialNumber).answer(serialNumber);
  socket.expect(subscribe);
  socket.expect(askStatus);
  socket.expect(askStatus);
  EXPECT_EQ(z21.initComm(true, true, false), QString());
  EXPECT_EQ(station().track().state(), Z21Track::State::Unknown);
  EXPECT_FALSE(z21.trackStop().isHeld());
}

TEST_F(Z21MakerForm, ALayoutThatIsFoundStandingShowsAsStoppedUntilItGoesOn) {
  open(false, kStatusOff);
  EXPECT_TRUE(z21.trackStop().isHeld());
  // Somebody switches it on at the station.
  udp.arrive(powerIsOn);
  EXPECT_FALSE(z21.trackStop().isHeld());
  // So does one that a stop of ours took off.
  z21.trackStop().noteTaken(true);
  udp.arrive(kIsOff);
  udp.arrive(powerIsOn);
  EXPECT_FALSE(z21.trackStop().isHeld());
}

TEST_F(Z21MakerForm, AStationThatForgetsTheSilentHearsTheSubscriptionFirst) {
  open(false);
  clock.advance(48'000);
  socket.expect(readMain1).answer(cv1Is3);
  EXPECT_EQ(z21.ReadCV(1, 3), 3);
  clock.advance(50'000);
  expectHearing();
  socket.expect(readMain1).answer(cv1Is3);
  EXPECT_EQ(z21.ReadCV(1, 3), 3);
}

TEST_F(Z21MakerForm, CvMessagesCarryTheChecksumOfTheirBytes) {
  open(true);
  readOnce();
  socket.expect(writeDocumented1As3).answer(cv1Is3);
  EXPECT_EQ(z21.WriteCV(1, 3, 3, 0), 3);
}

TEST_F(Z21MakerForm, OnTheMainTrackALongAddressCarriesItsMark) {
  open(false);
  socket.expect(hexBytes("0C 00 40 00 E6 30 C3 E8 E4 07 00 1E"))
      .answer(hexBytes("0A 00 40 00 64 14 00 07 91 E6"));
  EXPECT_EQ(z21.ReadCV(8, 1000), 145);
  socket.expect(hexBytes("0C 00 40 00 E6 30 C3 E8 EC 02 4D 5E"));
  EXPECT_EQ(z21.WriteCV(3, 77, 1000, 0), 77);
  socket.expect(hexBytes("0C 00 40 00 E6 30 00 7F E4 07 00 4A")).answer(noAck);
  EXPECT_EQ(z21.ReadCV(8, 127), cv_result::kNoAck);
}

TEST_F(Z21MakerForm, AReadOnTheMainTrackIsNeverAskedOnTheOtherOne) {
  open(false);
  socket.expect(readMain1);
  // A minute has passed.
  expectHearing();
  socket.expect(readMain1);
  EXPECT_EQ(z21.ReadCV(1, 3), cv_result::kWrongReply);
  expectHearing();
  socket.expect(readMain1);
  expectHearing();
  socket.expect(readMain1).answer(cv1Is3, 500);
  EXPECT_EQ(z21.ReadCV(1, 3), 3);
}

TEST_F(Z21MakerForm, NewsOfTheTrackAreNoAnswerAndALostResultIsAskedForAgain) {
  open(true);
  socket.expect(readDocumented29).answer(programming, 5);
  expectHearing();
  socket.expect(readDocumented29).answer(programming, 5).answer(cv29Is14, 400);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_F(Z21MakerForm, BehindProgrammingATrackThatWasOnIsOnAgain) {
  open(true);
  readOnce();
  endsWith(powerOn, powerIsOn);
  EXPECT_FALSE(z21.trackStop().isHeld());
}

TEST_F(Z21MakerForm, BehindProgrammingATrackThatStoodGoesOnStanding) {
  for (const QByteArray& status : {kStatusOff, kStatusStopped, kStatusShort}) {
    open(true, status);
    readOnce();
    endsWith(powerOff, kIsOff);
    EXPECT_TRUE(z21.trackStop().isHeld());
    z21.trackStop().noteTaken(false);
  }
}

TEST_F(Z21MakerForm, ATrackOfWhichNothingIsKnownIsNotSwitchedOn) {
  socket.expect(askSerialNumber).answer(serialNumber);
  expectSession(kStatusProgramming);
  socket.expect(askStatus).answer(kStatusProgramming);
  ASSERT_EQ(z21.initComm(true, true, true), QString());
  z21.commJob = CommJob::ReadProgTrack;
  readOnce();
  endsWith(powerOff, kIsOff);
}

TEST_F(Z21MakerForm, ATrackThatIsStoppedWhileItIsProgrammedGoesOnStanding) {
  for (const QByteArray& news : {kIsOff, kIsStopped, kIsShort}) {
    open(true);
    readOnce();
    udp.arrive(news);
    endsWith(powerOff, kIsOff);
    z21.trackStop().noteTaken(false);
  }
}

TEST_F(Z21MakerForm, AStopOfOursThatNobodyConfirmedHoldsBehindProgramming) {
  open(true);
  readOnce();
  z21.trackStop().noteOrdered(true);
  z21.trackStop().noteFailed(true, true);
  endsWith(powerOff, kIsOff);
}

TEST_F(Z21MakerForm, WithoutProgrammingThereIsNothingToLeave) {
  open(true);
  socket.expect(logOff);
  z21.endcomm(true, true);
}

TEST_F(Z21MakerForm, ASocketThatOpensAnewSubscribesAndSwitchesNothingOn) {
  open(false);
  udp.close();
  udp.onClosed();
  socket.expect(askSerialNumber).answer(serialNumber);
  expectSession(kStatusOn);
  EXPECT_EQ(z21.reopen(), QString());
}

// ---- Receiving, in both forms -------------------------------------------------------------------

/// What may come between a question and its answer.
struct Between {
  const char* name;
  const char* datagram;
};
void PrintTo(const Between& between, std::ostream* out) {
  *out << between.name;
}

constexpr Between kNoRecords[] = {
    {"cut", "0A 00 40 00 64 14"},
    {"of nothing", "00 00"},
};
constexpr Between kRecords[] = {
    {"track off", "07 00 40 00 61 00 61"},
    {"track on", "07 00 40 00 61 01 60"},
    {"programming mode", "07 00 40 00 61 02 63"},
    {"short circuit", "07 00 40 00 61 08 69"},
    {"stopped", "07 00 40 00 81 00 81"},
    {"short vehicle", "0E 00 40 00 EF 00 04 04 80 00 00 00 00 6F"},
    {"long vehicle", "15 00 40 00 EF 00 04 04 80 00 00 00 00 00 00 00 00 00 00 00 6F"},
    {"output", "09 00 40 00 43 00 0C 01 4E"},
    {"system", "14 00 84 00 00 00 00 00 00 00 19 00 50 46 80 3E 00 00 00 3B"},
    {"status", "08 00 40 00 62 22 20 60"},
    {"unknown kind", "06 00 99 00 12 34"},
    {"result of another CV", "0A 00 40 00 64 14 00 07 61 16"},
    {"result without a value", "06 00 40 00 64 14"},
};

class Z21Between : public test::Z21Fixture,
                   public ::testing::WithParamInterface<std::tuple<Between, bool>> {
 protected:
  Z21Between() { settings.makerForm = isDocumented(); }

  static bool isDocumented() { return std::get<1>(GetParam()); }

  void open() {
    if (!isDocumented()) return openSession(true);
    socket.expect(askSerialNumber).answer(serialNumber);
    socket.expect(subscribe);
    socket.expect(hexBytes("07 00 40 00 21 24 05")).answer(kStatusOn);
    ASSERT_EQ(z21.initComm(true, true, true), QString());
  }

  const QByteArray subscribe = hexBytes("08 00 50 00 01 00 00 00");
  const QByteArray read = isDocumented() ? hexBytes("09 00 40 00 23 11 00 1C 2E") : readCv29;
  const QByteArray between = hexBytes(std::get<0>(GetParam()).datagram);
};

INSTANTIATE_TEST_SUITE_P(Records, Z21Between,
                         ::testing::Combine(::testing::ValuesIn(kRecords), ::testing::Bool()));
INSTANTIATE_TEST_SUITE_P(NoRecords, Z21Between,
                         ::testing::Combine(::testing::ValuesIn(kNoRecords), ::testing::Bool()));

TEST_P(Z21Between, TheResultIsFoundBehindItAndAheadOfIt) {
  open();
  socket.expect(read).answer(between).answer(between, 20).answer(cv29Is14, 40);
  EXPECT_EQ(z21.ReadCV(29, 3), 14) << "a datagram each";
  socket.expect(read).answer(cv29Is14 + between);
  EXPECT_EQ(z21.ReadCV(29, 3), 14) << "behind it in one datagram";
}

/// A length that says too much, or nothing, leaves no way to the next message.
class Z21InOneDatagram : public Z21Between {};
INSTANTIATE_TEST_SUITE_P(Records, Z21InOneDatagram,
                         ::testing::Combine(::testing::ValuesIn(kRecords), ::testing::Bool()));

TEST_P(Z21InOneDatagram, TheResultIsFoundBehindOthers) {
  open();
  socket.expect(read).answer(between + cv29Is14);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
  socket.expect(read).answer(between + between + cv29Is14 + between);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_P(Z21Between, ALostResultIsAskedForOnceMoreUnlessNewsMayBeTheAnswer) {
  open();
  const bool told = between.size() >= 7 && !isDocumented();
  socket.expect(read).answer(between);
  // A minute has passed.
  if (isDocumented()) {
    socket.expect(subscribe);
    socket.expect(hexBytes("07 00 40 00 21 24 05")).answer(kStatusOn);
  }
  if (!told) socket.expect(read).answer(between).answer(cv29Is14, 400);
  const int result = z21.ReadCV(29, 3);
  EXPECT_TRUE(told ? result < 0 : result == 14) << result;
}

}  // namespace
}  // namespace lokari
