// What goes to the terminal.
#include "cli/standard_console.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

using ::testing::internal::CaptureStdout;
using ::testing::internal::GetCapturedStdout;

TEST(StandardConsole, NoSignOfAResultEndsItsLineOrSpeaksToTheTerminal) {
  bool lost = false;
  StandardConsole console([&lost] { lost = true; });
  CaptureStdout();
  console.result(QStringLiteral("a") + QChar(0) + QStringLiteral("b\x1b[2Jc\td") + QChar(0x9B) +
                 QStringLiteral("e"));
  console.result(QStringLiteral("Züge"));
  EXPECT_EQ(GetCapturedStdout(), "a b [2Jc\td e\nZ\xC3\xBCge\n");
  EXPECT_FALSE(lost);
  EXPECT_TRUE(console.complete());
}

}  // namespace
}  // namespace lokari
