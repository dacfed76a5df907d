#include "cli/arguments.h"

#include <gtest/gtest.h>

#include "cli/command.h"

namespace lokari {
namespace {

Arguments from(const char* line) {
  return Arguments(QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

QString faultOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const WrongCall& wrong) {
    return wrong.text();
  }
  return QStringLiteral("no fault");
}

TEST(CliArguments, OptionsMayStandAnywhere) {
  Arguments arguments = from("1 --address 77 2 --main 3");
  EXPECT_TRUE(arguments.takeFlag("--main"));
  EXPECT_FALSE(arguments.takeFlag("--main"));
  EXPECT_EQ(arguments.takeNumber("--address", 1, 100), 77);
  EXPECT_EQ(arguments.takeNumber("--address", 1, 100), std::nullopt);
  EXPECT_EQ(arguments.takeRest(), (QStringList{"1", "2", "3"}));
}

TEST(CliArguments, AnOptionThatNobodyTookIsNone) {
  Arguments arguments = from("1 --laut");
  EXPECT_EQ(faultOf([&] { arguments.takeRest(); }), "Die Option \"--laut\" gibt es nicht!");
}

TEST(CliArguments, AnOptionNeedsItsValueOnce) {
  Arguments missing = from("1 --address");
  EXPECT_EQ(faultOf([&] { missing.takeValue("--address"); }), "Hinter --address fehlt der Wert!");
  Arguments twice = from("--address 1 --address 2");
  EXPECT_EQ(faultOf([&] { twice.takeValue("--address"); }), "--address steht mehrmals!");
}

TEST(CliArguments, NumbersAreDecimalAndWithinTheirRange) {
  EXPECT_EQ(numberArgument("0", 0, 255, "Wert"), 0);
  EXPECT_EQ(numberArgument("255", 0, 255, "Wert"), 255);
  for (const char* text : {"", "256", "-1", "+1", " 1", "1.5", "0x10", "1e2", "99999999999"}) {
    EXPECT_EQ(faultOf([&] { numberArgument(text, 0, 255, "Wert"); }),
              QStringLiteral("Wert: \"%1\" ist keine Zahl von 0 bis 255!").arg(text));
  }
}

}  // namespace
}  // namespace lokari
