#include <gtest/gtest.h>

#include "sim/options.h"

namespace lokari::sim {
namespace {

Options parse(const char* line) {
  return parseOptions(QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(SimForm, IsOursUnlessTheMakersIsAskedFor) {
  EXPECT_FALSE(parse("--station Z21IP").makersForm);
  EXPECT_FALSE(parse("--station Z21IP --form ours").makersForm);
  const Options options =
      parse("--station Z21IP --form makers --subscribers --state-size 21 --access-time 90000");
  EXPECT_EQ(options.error, "");
  EXPECT_TRUE(options.makersForm);
  EXPECT_EQ(options.makers,
            (MakersOptions{.subscribersOnly = true, .stateSize = 21, .accessTime = 90000}));
  EXPECT_EQ(parse("--station LIUSB --link t --form makers --repeat 3 --confirm behind "
                  "--station-version 3.0 --bundle --few-versions")
                .makers,
            (MakersOptions{.bundled = true,
                           .broadcastsInARow = 3,
                           .confirmation = Confirmation::Behind,
                           .stationVersion = 0x30,
                           .fewVersions = true}));
}

TEST(SimForm, AWrongOneIsExplained) {
  EXPECT_EQ(parse("--station Z21IP --form meine").error, "Die Form \"meine\" gibt es nicht!");
  EXPECT_EQ(parse("--station Z21IP --form makers --state-size 13").error,
            "\"13\" ist keine Zahl von 14 bis 21!");
  EXPECT_EQ(parse("--station Z21IP --subscribers").error,
            "Einstellungen der Form makers gelten nur mit --form makers!");
  EXPECT_EQ(parse("--station LI100 --link t --form makers --confirm nie").error,
            "Die Bestätigung \"nie\" gibt es nicht!");
  EXPECT_EQ(parse("--station LI100 --link t --form makers --station-version 4").error,
            "Die Version \"4\" gibt es nicht!");
}

TEST(SimForm, AKindOfWhichTheDocumentsTellNothingHasOne) {
  EXPECT_EQ(parse("--station LIDP --link t --form makers").error,
            "LIDP gibt es nur mit --form ours: über die Nachrichten dieser Zentrale sagen keine "
            "Herstellerunterlagen genug!");
  EXPECT_EQ(parse("--station LIDP --link t --form ours").error, "");
}

TEST(SimForm, HelpNamesTheKindsThatHaveBoth) {
  EXPECT_TRUE(helpText().contains("Herstellerunterlagen; für IBX, LI100, LI100V3, LIUSB"));
}

}  // namespace
}  // namespace lokari::sim
