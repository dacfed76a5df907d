// The simulated MX1 with the text protocol, driving and switching.
#include "station_fixture.h"

namespace lokari::sim {
namespace {

class Mx1DrivingTest : public StationFixture {
 protected:
  explicit Mx1DrivingTest(QStringView name = u"MX1") : StationFixture(name) {}
};

class Mx1V25DrivingTest : public Mx1DrivingTest {
 protected:
  Mx1V25DrivingTest() : Mx1DrivingTest(u"MX1V25") {}
};

TEST_F(Mx1DrivingTest, TellsAVehicleAtRest) {
  EXPECT_EQ(replyTo("AFN03\r"), "AFN03000C000000\r");
  EXPECT_EQ(replyTo("AFN7F\r"), "AFN7F000C000000\r");
}

TEST_F(Mx1DrivingTest, DrivesAVehicleWithoutAWord) {
  EXPECT_EQ(replyTo("FN0307B88103\r"), "");
  EXPECT_EQ(
      layout.drive(3),
      (DriveState{.speed = 7, .steps = 28, .backward = true, .manual = true, .functions = 0x703}));
  EXPECT_EQ(replyTo("AFN03\r"), "AFN0307B8810300\r");
}

TEST_F(Mx1DrivingTest, AShortDrivingCommandLeavesF9ToF12) {
  replyTo("FN03000C0003\r");
  replyTo("FN03100C01\r");
  EXPECT_EQ(layout.drive(3).functions, 0x602U);
  EXPECT_EQ(layout.drive(3).speed, 16);
}

TEST_F(Mx1V25DrivingTest, TheNewGenerationTellsF9ToF12OnceMore) {
  replyTo("FN03000C0003\r");
  EXPECT_EQ(replyTo("AFN03\r"), "AFN03000C00030003\r");
}

TEST_F(Mx1DrivingTest, AnIndexIsToldWheneverItIsUsed) {
  EXPECT_EQ(replyTo("E03E8\r"), "E8003E8\r");
  EXPECT_EQ(replyTo("FN802A0C0100\r"), "E8003E800\r");
  EXPECT_EQ(layout.drive(1000).speed, 42);
  EXPECT_EQ(replyTo("AFN80\r"), "E8003E800\rAFN802A0C010000\r");
}

TEST_F(Mx1DrivingTest, AnIndexThatWasNeverGivenIsRefused) {
  EXPECT_EQ(replyTo("AFN80\r"), "??\r");
  EXPECT_EQ(replyTo("FN802A0C0100\r"), "??\r");
}

TEST_F(Mx1DrivingTest, StopsAndGoesWithoutAWord) {
  EXPECT_EQ(replyTo("SS\r"), "");
  EXPECT_FALSE(layout.trackPower());
  EXPECT_EQ(replyTo("SE\r"), "");
  EXPECT_TRUE(layout.trackPower());
}

TEST_F(Mx1DrivingTest, TellsAndSwitchesAFunctionUnit) {
  EXPECT_EQ(replyTo("AWN05\r"), "AWN050055\r");
  EXPECT_EQ(replyTo("MN050B\r"), "");
  EXPECT_TRUE(layout.output(18));
  EXPECT_EQ(replyTo("AWN05\r"), "AWN050059\r");
  EXPECT_EQ(replyTo("MN050A\r"), "");
  EXPECT_FALSE(layout.output(18));
}

TEST_F(Mx1DrivingTest, AUnitAbove255HasANinthBit) {
  EXPECT_EQ(replyTo("MN2C8F\r"), "");
  EXPECT_TRUE(layout.output(1200));
  EXPECT_EQ(replyTo("AWN2C80\r"), "AWN2C8095\r");
  EXPECT_EQ(replyTo("AWN2C\r"), "AWN2C0055\r");
}

TEST_F(Mx1DrivingTest, RefusesASwitchWithThreeQuestionMarks) {
  EXPECT_EQ(replyTo("MN0507\r"), "???\r");
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(replyTo("MN0509\r"), "???\r");
  EXPECT_FALSE(layout.output(17));
}

TEST_F(Mx1DrivingTest, ABusyStationRefusesToTellAndToDrive) {
  faults.add({.kind = FaultKind::Busy, .count = 3});
  for (const char* line : {"AFN03\r", "FN032A0C0100\r", "AWN05\r"}) {
    EXPECT_EQ(replyTo(line), "??\r") << line;
  }
  EXPECT_EQ(layout.drive(3).speed, 0);
}

TEST_F(Mx1DrivingTest, RefusesWhatItDoesNotUnderstand) {
  for (const char* line :
       {"AFN\r", "AFN3\r", "AFN0303\r", "AFNxx\r", "FN03000C\r", "FN03000C000000\r",
        "FN03000c0000\r", "AWN\r", "AWN0501\r", "MN05\r", "MN050900\r", "S\r", "SSS\r"}) {
    EXPECT_EQ(replyTo(line), "??\r") << line;
  }
}

}  // namespace
}  // namespace lokari::sim
