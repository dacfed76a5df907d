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
  EXPECT_EQ(parse("--station LIUSB --link t --form makers --repeat 3").makers.broadcastsInARow, 3);
}

TEST(SimForm, AWrongOneIsExplained) {
  EXPECT_EQ(parse("--station Z21IP --form meine").error, "Die Form \"meine\" gibt es nicht!");
  EXPECT_EQ(parse("--station Z21IP --form makers --state-size 13").error,
            "\"13\" ist keine Zahl von 14 bis 21!");
  EXPECT_EQ(parse("--station Z21IP --subscribers").error,
            "--subscribers, --state-size, --repeat und --access-time gelten nur mit "
            "--form makers!");
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
