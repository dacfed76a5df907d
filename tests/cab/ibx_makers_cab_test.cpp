// Cabs and panels on the Intellibox and the Tams MC when messages follow the makers' documents.
#include "cab_fixture.h"
#include "link/link_error.h"

namespace lokari {
namespace {

class IbxMakersCab : public test::CabFixture, public ::testing::WithParamInterface<StationKind> {
 protected:
  IbxMakersCab() : CabFixture(GetParam()) { settings.makerForm = true; }

  test::ScriptedLine& expect(const char* text) { return line.expect("x" + fromHex(text)); }
  test::ScriptedLine& accepted(const char* text) { return expect(text).answer(fromHex("00")); }

  void expectVehicle() {
    expect("84 03 00").answer(fromHex("00 25 35 1B"));
    expect("8C 03 00").answer(fromHex("00 82"));
  }
  void expectAll() {
    expectVehicle();
    expect("8D 03 00").answer(fromHex("00 81"));
    expect("8E 03 00").answer(fromHex("00 01 F8"));
  }
};

constexpr FunctionMask bit(int n) {
  return FunctionMask{1} << n;
}

std::string nameOf(const ::testing::TestParamInfo<StationKind>& kind) {
  return QString::fromUtf16(stationKind(kind.param).name).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Kinds, IbxMakersCab,
                         ::testing::Values(StationKind::Ibx, StationKind::TamsMc), nameOf);

TEST_P(IbxMakersCab, ReadsF0ToF28) {
  expectAll();
  EXPECT_EQ(read(), bit(0) | bit(2) | bit(8) | bit(9) | bit(16) | bit(17) | bit(28));
  EXPECT_EQ(state.funcCount, 28);
  EXPECT_EQ(cab->toldFunctions(), bit(29) - 1);
}

TEST_P(IbxMakersCab, FunctionsThatTheStationDoesNotKnowAreUnknown) {
  for (const char* code : {"01", "3F"}) {
    expectVehicle();
    expect("8D 03 00").answer(fromHex(code));
    EXPECT_EQ(read(), bit(0) | bit(2) | bit(8)) << code;
    EXPECT_EQ(state.funcCount, 8);
    EXPECT_EQ(cab->toldFunctions(), bit(9) - 1);
    function(9, true);
    function(28, true);
    EXPECT_EQ(prompt.beeps, 0) << "nothing goes out";

    expectVehicle();
    expect("8D 03 00").answer(fromHex("00 01"));
    expect("8E 03 00").answer(fromHex(code));
    EXPECT_EQ(read(), bit(0) | bit(2) | bit(8) | bit(9));
    EXPECT_EQ(state.funcCount, 16);
  }
}

TEST_P(IbxMakersCab, AQuestionThatNobodyAnswersIsUnknownToTheStationToo) {
  expectVehicle();
  expect("8D 03 00");
  EXPECT_TRUE(read());
  EXPECT_EQ(state.funcCount, 8);
}

TEST_P(IbxMakersCab, AVehicleWithoutASlotHasAllFunctionsOff) {
  expect("84 03 00").answer(fromHex("0A"));
  for (const char* question : {"8C 03 00", "8D 03 00", "8E 03 00"}) {
    expect(question).answer(fromHex("0A"));
  }
  EXPECT_EQ(read(), FunctionMask{0});
  EXPECT_EQ(state.funcCount, 28);
}

TEST_P(IbxMakersCab, EveryFunctionGoesOutWithTheOthersOfItsRange) {
  accepted("88 03 00 01");
  function(1, true);
  accepted("88 03 00 81");
  function(8, true);
  accepted("89 03 00 01");
  function(9, true);
  accepted("89 03 00 81");
  function(16, true);
  accepted("8A 03 00 01 00");
  function(17, true);
  accepted("8A 03 00 81 00");
  function(24, true);
  accepted("8A 03 00 81 01");
  function(25, true);
  accepted("8A 03 00 81 09");
  function(28, true);
  accepted("88 03 00 80");
  function(1, false);
  accepted("80 03 00 00 70");
  function(0, true);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IbxMakersCab, TheBarNeverSendsTheEmergencyStop) {
  for (int position = 0; position <= 127; ++position) {
    const int wire = position == 1 ? 2 : position;
    line.expect("x" + fromHex("80 03 00") + static_cast<char>(wire) + fromHex("60"))
        .answer(fromHex("00"));
    speed(position);
  }
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IbxMakersCab, AVehicleThatWasStoppedAtOnceStands) {
  expect("84 03 00").answer(fromHex("00 01 20 1B"));
  expect("8C 03 00").answer(fromHex("00 00"));
  expect("8D 03 00").answer(fromHex("01"));
  EXPECT_TRUE(read());
  EXPECT_EQ(state.speed, 0);
  expect("84 03 00").answer(fromHex("00 7F 20 01"));
  expect("8C 03 00").answer(fromHex("00 00"));
  expect("8D 03 00").answer(fromHex("01"));
  EXPECT_TRUE(read());
  EXPECT_EQ(state.speed, 127) << "whatever the steps tell";
}

/// Every reply of a reading in two pieces, by the byte it is cut behind.
class IbxMakersPieces : public test::CabFixture, public ::testing::WithParamInterface<int> {
 protected:
  IbxMakersPieces() : CabFixture(StationKind::TamsMc) { settings.makerForm = true; }

  void expect(const char* question, const char* reply) {
    const QByteArray whole = fromHex(reply);
    const qsizetype cut = GetParam() % whole.size();
    auto& script = line.expect("x" + fromHex(question));
    if (cut > 0) script.answer(whole.left(cut));
    script.answer(whole.mid(cut), 700);
  }
};

INSTANTIATE_TEST_SUITE_P(Cuts, IbxMakersPieces, ::testing::Range(0, 12));

TEST_P(IbxMakersPieces, AReadingMayComeInPieces) {
  expect("84 03 00", "00 25 35 1B");
  expect("8C 03 00", "00 82");
  expect("8D 03 00", "00 81");
  expect("8E 03 00", "00 01 F8");
  EXPECT_EQ(read(), bit(0) | bit(2) | bit(8) | bit(9) | bit(16) | bit(17) | bit(28));
  EXPECT_EQ(state.speed, 37);
  expect("95 02", "00 A6 00");
  EXPECT_EQ(readPanel(), 0x69);
  EXPECT_EQ(line.inBufferCount(), 0);
}

TEST_P(IbxMakersCab, FunctionsBeyondTheHighestStayAsTheStationHasThem) {
  expectVehicle();
  expect("8D 03 00").answer(fromHex("00 00"));
  expect("8E 03 00").answer(fromHex("00 00 A0"));
  EXPECT_TRUE(read());
  accepted("8A 03 00 01 A0");
  function(17, true);
}

// -- panels

TEST_P(IbxMakersCab, AnOutputIsSwitchedOffBehindItsPulse) {
  accepted("90 09 C0");
  accepted("90 09 80");
  output(0, true);
  ASSERT_EQ(line.writes.size(), 8);
  EXPECT_GE(line.writes[4].at - line.writes[3].at, 250);
  EXPECT_LE(line.writes[4].at - line.writes[3].at, 300);
  accepted("90 0C 40");
  accepted("90 0C 00");
  output(3, false);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IbxMakersCab, AnOutputThatWasRefusedIsNotSwitchedOff) {
  expect("90 09 C0").answer(fromHex("06"));
  output(0, true);
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_P(IbxMakersCab, AnOutputThatNobodyConfirmsIsSwitchedOffAllTheSame) {
  expect("90 09 C0");
  accepted("90 09 80");
  output(0, true);
}

TEST_P(IbxMakersCab, TheQueueOfTurnoutsMayBeFull) {
  for (const char* code : {"09", "07"}) {
    expect("90 09 C0").answer(fromHex(code));
    accepted("90 09 C0");
    expect("90 09 80").answer(fromHex("40"));
    output(0, true);
  }
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IbxMakersCab, APulseHoldsNoStopUp) {
  Millis pressed = 0;
  expect("90 09 C0")
      .answer(fromHex("00"))
      .then(
          [&] {
            pressed = clock.now();
            stop(true);
          },
          100);
  accepted("A5");
  accepted("90 09 80");
  output(0, true);
  EXPECT_LE(line.writes[5].at - pressed, 100);
  EXPECT_EQ(line.writes[5].data, fromHex("A5"));
  EXPECT_EQ(prompt.beeps, 0);
  EXPECT_TRUE(cabLine.repliesOwed.empty());
}

TEST_P(IbxMakersCab, TheReservationsBehindTheColoursMayBeMissing) {
  expect("95 02").answer(fromHex("00 A6 FF"));
  EXPECT_EQ(readPanel(), 0x69);
  expect("95 02").answer(fromHex("00 A6"));
  EXPECT_EQ(readPanel(), 0x69);
}

TEST_P(IbxMakersCab, ALineThatIsLostInsideThePulseIsTold) {
  expect("90 09 C0").answer(fromHex("00")).then([this] { line.vanish(); }, 50);
  EXPECT_THROW(output(0, true), LinkError);
  EXPECT_TRUE(cabLine.repliesOwed.empty());
}

}  // namespace
}  // namespace lokari
