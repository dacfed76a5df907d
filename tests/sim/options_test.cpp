#include "sim/options.h"

#include <gtest/gtest.h>

namespace lokari::sim {
namespace {

Options parse(const char* line) {
  return parseOptions(QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(SimOptions, AreTaken) {
  const Options options = parse(
      "--station TAMSMC --link /tmp/t --decoder a.txt --decoder b.txt --fault noack:3 --delay 0 "
      "--log");
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.station, "TAMSMC");
  EXPECT_EQ(options.link, "/tmp/t");
  EXPECT_EQ(options.decoders, (QStringList{"a.txt", "b.txt"}));
  ASSERT_EQ(options.faults.size(), 1);
  EXPECT_EQ(options.faults[0].kind, FaultKind::NoAck);
  EXPECT_EQ(options.answerDelay, 0);
  EXPECT_TRUE(options.log);
}

TEST(SimOptions, AWrongCallIsExplained) {
  EXPECT_EQ(parse("").error, "--station fehlt!");
  EXPECT_EQ(parse("--station TAMSMC").error, "--link fehlt!");
  EXPECT_TRUE(parse("--station NIX").error.startsWith("Die Zentrale \"NIX\" gibt es nicht!"));
  EXPECT_EQ(parse("--laut").error, "Die Option \"--laut\" gibt es nicht!");
  EXPECT_EQ(parse("--station").error, "Hinter --station fehlt der Wert!");
  EXPECT_EQ(parse("--fault laut").error, "Die Störung \"laut\" gibt es nicht!");
  EXPECT_EQ(parse("--delay x").error, "\"x\" ist keine Zahl von 0 bis 65535!");
}

TEST(SimOptions, TheTracksStateIsTaken) {
  const Options options = parse("--station LIDP --link /tmp/t --state off --state overload");
  EXPECT_EQ(options.error, "");
  EXPECT_TRUE(options.powerOff);
  EXPECT_FALSE(options.stopped);
  EXPECT_TRUE(options.overloaded);
  EXPECT_TRUE(parse("--station LIDP --link /tmp/t --state stop").stopped);
  EXPECT_EQ(parse("--state an").error, "Den Zustand \"an\" gibt es nicht!");
}

TEST(SimOptions, AnImageIsKeptOfStationsThatTakeFirmware) {
  const Options options = parse("--station MX1 --link /tmp/t --image f.bin --fault banklost");
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.image, "f.bin");
  EXPECT_EQ(parse("--station TAMSMC --link /tmp/t --image f.bin").error,
            "TAMSMC nimmt keine Firmware an!");
}

TEST(SimOptions, HelpNeedsNothingElse) {
  const Options options = parse("--help");
  EXPECT_TRUE(options.help);
  EXPECT_EQ(options.error, "");
  EXPECT_TRUE(helpText().contains("TAMSMC"));
  EXPECT_TRUE(helpText().startsWith("Aufruf: lokari-sim"));
}

}  // namespace
}  // namespace lokari::sim
