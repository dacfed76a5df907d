#include "cli/call.h"

#include <gtest/gtest.h>

#include <functional>

namespace lokari {
namespace {

constexpr std::array kRows{
    ArgumentRow{u"ZIEL", u"", Form::Text, u"", 0, 0, false, 0, u"Es fehlt das Ziel!"},
    ArgumentRow{u"CV", u"", Form::Numbers, u"", 1, 1024, true, 0, u"Es fehlt die CV!"},
    ArgumentRow{u"--address", u"N", Form::Number, u"", 1, 100},
    ArgumentRow{u"--main", u"", Form::Flag, u""},
    ArgumentRow{u"--forward", u"", Form::Flag, u"", 0, 0, false, 1},
    ArgumentRow{u"--back", u"", Form::Flag, u"", 0, 0, false, 1},
    ArgumentRow{u"--mode", u"eins|zwei", Form::Choice, u""},
    ArgumentRow{u"--function", u"N=on|off", Form::Switching, u"", 0, 28, true},
    ArgumentRow{u"--set", u"CV=WERT", Form::Setting, u"", 1, 1024, true}};

Call from(const char* line) {
  return {QStringLiteral("probe"), kRows,
          QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts)};
}

QString faultOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const WrongCall& wrong) {
    return wrong.text();
  }
  return QStringLiteral("no fault");
}

QString faultOf(const char* line) {
  return faultOf([line] { from(line); });
}

TEST(CliCall, OptionsMayStandAnywhere) {
  const Call call = from("--address 77 X 1 --main 3");
  EXPECT_EQ(call.text(u"ZIEL"), "X");
  EXPECT_EQ(call.numbers(u"CV"), (std::vector<int>{1, 3}));
  EXPECT_EQ(call.number(u"--address"), 77);
  EXPECT_TRUE(call.has(u"--main"));
  EXPECT_FALSE(call.has(u"--back"));
  EXPECT_EQ(call.number(u"--mode"), std::nullopt);
}

TEST(CliCall, ASpanIsAllItsNumbersInTheirOrder) {
  EXPECT_EQ(from("X 8 3-6 1").numbers(u"CV"), (std::vector<int>{8, 3, 4, 5, 6, 1}));
  EXPECT_EQ(faultOf("X 6-3"), "CV: \"6-3\" läuft rückwärts!");
  EXPECT_EQ(faultOf("X 1-2-3"), "CV: \"1-2-3\" ist kein Bereich!");
  EXPECT_EQ(faultOf("X 1-1025"), "CV: \"1025\" ist keine Zahl von 1 bis 1024!");
  EXPECT_EQ(faultOf("X 3-"), "CV: \"\" ist keine Zahl von 1 bis 1024!");
}

TEST(CliCall, AnOptionThatIsInNoRowIsNone) {
  EXPECT_EQ(faultOf("X 1 --laut"), "Die Option \"--laut\" gibt es nicht!");
}

TEST(CliCall, AnOptionNeedsItsValueOnce) {
  EXPECT_EQ(faultOf("X 1 --address"), "Hinter --address fehlt der Wert!");
  EXPECT_EQ(faultOf("X 1 --address 1 --address 2"), "--address steht mehrmals!");
}

TEST(CliCall, OfOptionsThatExcludeEachOtherOneMayStand) {
  EXPECT_EQ(faultOf("X 1 --back --forward"), "--forward und --back schließen sich aus!");
  EXPECT_TRUE(from("X 1 --back").has(u"--back"));
}

TEST(CliCall, OperandsThatAreMissingAreNamed) {
  EXPECT_EQ(faultOf("--main"), "Es fehlt das Ziel!");
  EXPECT_EQ(faultOf("X"), "Es fehlt die CV!");
}

TEST(CliCall, WhatNoRowTakesDoesNotBelongToTheCommand) {
  const ArgumentRows one = ArgumentRows(kRows).first(1);
  EXPECT_EQ(faultOf([&] { Call("probe", one, {"X", "y"}); }), "\"y\" gehört nicht zum Befehl!");
  EXPECT_EQ(faultOf([] { Call("probe", {}, {"X"}); }), "probe hat keine Argumente!");
}

TEST(CliCall, AChoiceIsOneOfItsWords) {
  EXPECT_EQ(from("X 1 --mode zwei").text(u"--mode"), "zwei");
  EXPECT_EQ(faultOf("X 1 --mode drei"), "--mode: \"drei\" ist weder eins noch zwei!");
}

TEST(CliCall, FunctionsAndValuesComeInTheirOrder) {
  const Call call = from("X 1 --function 3=on --set 5=200 --function 0=off");
  const auto functions = call.switchings(u"--function");
  ASSERT_EQ(functions.size(), 2U);
  EXPECT_EQ(functions[0].number, 3);
  EXPECT_TRUE(functions[0].on);
  EXPECT_EQ(functions[1].number, 0);
  EXPECT_FALSE(functions[1].on);
  ASSERT_EQ(call.settings(u"--set").size(), 1U);
  EXPECT_EQ(call.settings(u"--set")[0].cv, 5);
  EXPECT_EQ(call.settings(u"--set")[0].value, 200);
  EXPECT_EQ(faultOf("X 1 --function 3"), "\"3\" ist weder N=on noch N=off!");
  EXPECT_EQ(faultOf("X 1 --set 5"), "\"5\" ist nicht CV=Wert!");
  EXPECT_EQ(faultOf("X 1 --set 5=256"), "Wert: \"256\" ist keine Zahl von 0 bis 255!");
}

TEST(CliCall, NumbersAreDecimalAndWithinTheirRange) {
  EXPECT_EQ(numberArgument("0", 0, 255, "Wert"), 0);
  EXPECT_EQ(numberArgument("255", 0, 255, "Wert"), 255);
  for (const char* text : {"", "256", "-1", "+1", " 1", "1.5", "0x10", "1e2", "99999999999"}) {
    EXPECT_EQ(faultOf([&] { numberArgument(text, 0, 255, "Wert"); }),
              QStringLiteral("Wert: \"%1\" ist keine Zahl von 0 bis 255!").arg(text));
  }
}

}  // namespace
}  // namespace lokari
