#include "decoder/cv_sets.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

const CvIndex kCv(3);

CvSets withValue(int value) {
  CvSets sets;
  sets.setValue(kCv, value);
  return sets;
}

/// What OK would ask about, as the value that was known; -1 for nothing.
int lostOf(CvSets& sets) {
  sets.storeCurrent();
  const std::vector<LostValue> lost = sets.lostValues();
  return lost.empty() ? -1 : lost.front().known;
}

TEST(CvSets, AFailedReadKeepsTheKnownValueThroughAFailedWrite) {
  CvSets sets = withValue(55);
  sets.takeFailedRead(kCv, 0);
  sets.setWriteFailed(kCv);
  EXPECT_EQ(lostOf(sets), 55);
}

TEST(CvSets, AFailedReadKeepsTheKnownValueWhenAnOddTextTakesTheMark) {
  CvSets sets = withValue(55);
  sets.takeFailedRead(kCv, 0);
  sets.setMark(kCv, CvMark::None);
  EXPECT_EQ(lostOf(sets), 55);
}

TEST(CvSets, AnAccessThatWentWellEndsTheKnownValue) {
  CvSets sets = withValue(55);
  sets.takeFailedRead(kCv, 0);
  sets.setMark(kCv, CvMark::Verified);
  EXPECT_EQ(lostOf(sets), -1);
}

TEST(CvSets, AValueTypedBehindAFailedReadIsTheKnownOneOfTheNext) {
  CvSets sets = withValue(12);
  sets.takeFailedRead(kCv, 0);
  sets.setValue(kCv, 55);
  sets.setMark(kCv, CvMark::None);
  sets.takeFailedRead(kCv, 0);
  EXPECT_EQ(lostOf(sets), 55);
}

TEST(CvSets, TakingACvBringsWhatIsKnownOfIt) {
  CvSets kept = withValue(7);
  kept.setWritten(kCv, false);
  CvSets sets = kept;
  sets.setMark(kCv, CvMark::None);
  sets.takeCv(kept, kCv);
  EXPECT_EQ(sets.mark(kCv), CvMark::Verified);
  EXPECT_TRUE(sets.isUnproved(kCv));
}

}  // namespace
}  // namespace lokari
