#include "link/cv_result.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

TEST(CvResultText, NamesEachCodeThatHasAMeaning) {
  EXPECT_EQ(cvResultText(-1001), "Keine Antwort vom Basisgerät");
  EXPECT_EQ(cvResultText(-1002), "");
  EXPECT_EQ(cvResultText(-1003), "Falsche Antwort vom Basisgerät");
  EXPECT_EQ(cvResultText(-1018), "Kurzschluß am Programmiergleis");
  EXPECT_EQ(cvResultText(-1019), "Kein Decoder am Programmiergleis");
  EXPECT_EQ(cvResultText(-1020), "Zentrale nicht bereit");
  EXPECT_EQ(cvResultText(-1021), "Kein ACK vom Decoder");
}

TEST(CvResultText, PrintsAnyOtherCodeWithItsLeadingBlank) {
  EXPECT_EQ(cvResultText(-5), "Lesefehler  5");
  EXPECT_EQ(cvResultText(-1134), "Lesefehler  1134");
}

}  // namespace
}  // namespace lokari
