// The calculator: three boxes in step.
#include "decoder/calculator.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace lokari {
namespace {

using Box = Calculator::Box;
using Typed = Calculator::Typed;

QString boxes(const Calculator& calculator) {
  return QStringList(
             {calculator.text(Box::Bin), calculator.text(Box::Dec), calculator.text(Box::Hex)})
      .join(u' ');
}

TEST(Calculator, BeginsWithTheFieldsText) {
  EXPECT_EQ(boxes(Calculator(QStringLiteral("0"))), "00000000 0 00");
  EXPECT_EQ(boxes(Calculator(QStringLiteral("5"))), "00000101 5 05");
  EXPECT_EQ(boxes(Calculator(QStringLiteral(" 255 "))), "11111111 255 FF");
}

TEST(Calculator, BeginsEmptyWithATextThatIsNoByte) {
  for (const char* text : {"", "abc", "256", "-1", "99999999999999", "1,5"})
    EXPECT_EQ(boxes(Calculator(QString::fromUtf8(text))), "  ") << text;
}

TEST(Calculator, TypingDecimalSetsTheTwoOthers) {
  Calculator calculator(QStringLiteral("0"));
  EXPECT_EQ(calculator.type(Box::Dec, QStringLiteral("171")), Typed::Taken);
  EXPECT_EQ(boxes(calculator), "10101011 171 AB");
}

TEST(Calculator, TypingBinarySetsTheTwoOthers) {
  Calculator calculator(QStringLiteral("0"));
  EXPECT_EQ(calculator.type(Box::Bin, QStringLiteral("1010")), Typed::Taken);
  EXPECT_EQ(boxes(calculator), "1010 10 0A") << "the box in hand keeps its text";
}

TEST(Calculator, TypingHexadecimalRaisesLowerCase) {
  Calculator calculator(QStringLiteral("0"));
  EXPECT_EQ(calculator.type(Box::Hex, QStringLiteral("f")), Typed::Taken);
  EXPECT_EQ(boxes(calculator), "00001111 15 F");
  EXPECT_EQ(calculator.type(Box::Hex, QStringLiteral("fe")), Typed::Taken);
  EXPECT_EQ(boxes(calculator), "11111110 254 FE");
}

TEST(Calculator, Decimal255IsTheLastAnd256IsRefused) {
  Calculator calculator(QStringLiteral("25"));
  EXPECT_EQ(calculator.type(Box::Dec, QStringLiteral("255")), Typed::Taken);
  EXPECT_EQ(calculator.type(Box::Dec, QStringLiteral("256")), Typed::OutOfRange);
  EXPECT_EQ(boxes(calculator), "11111111 255 FF") << "all three are set back";
  EXPECT_EQ(calculator.type(Box::Dec, QStringLiteral("99999999999")), Typed::OutOfRange);
}

TEST(Calculator, HexadecimalAboveFFIsRefused) {
  Calculator calculator(QStringLiteral("16"));
  EXPECT_EQ(calculator.type(Box::Hex, QStringLiteral("100")), Typed::OutOfRange);
  EXPECT_EQ(calculator.type(Box::Hex, QStringLiteral("FFFFFFFFFFFF")), Typed::OutOfRange);
  EXPECT_EQ(boxes(calculator), "00010000 16 10");
}

TEST(Calculator, OtherKeysAreSwallowed) {
  Calculator calculator(QStringLiteral("7"));
  for (const char* text : {"7a", "-7", "7,5", "7 "})
    EXPECT_EQ(calculator.type(Box::Dec, QString::fromUtf8(text)), Typed::Swallowed) << text;
  EXPECT_EQ(calculator.type(Box::Bin, QStringLiteral("12")), Typed::Swallowed);
  EXPECT_EQ(calculator.type(Box::Hex, QStringLiteral("0G")), Typed::Swallowed);
  EXPECT_EQ(boxes(calculator), "00000111 7 07");
}

TEST(Calculator, BinaryHasEightDigitsAtMost) {
  Calculator calculator(QStringLiteral("0"));
  EXPECT_EQ(calculator.type(Box::Bin, QStringLiteral("11111111")), Typed::Taken);
  EXPECT_EQ(calculator.type(Box::Bin, QStringLiteral("011111111")), Typed::Swallowed);
  EXPECT_EQ(calculator.text(Box::Dec), "255");
}

TEST(Calculator, AnEmptiedBoxEmptiesTheOthers) {
  Calculator calculator(QStringLiteral("7"));
  EXPECT_EQ(calculator.type(Box::Bin, QString()), Typed::Taken);
  EXPECT_EQ(boxes(calculator), "  ");
}

TEST(Calculator, EveryByteIsTheSameInTheThreeNotations) {
  for (int value = 0; value <= 255; ++value) {
    const Calculator decimal(QString::number(value));
    Calculator binary(QStringLiteral("0"));
    binary.type(Box::Bin, decimal.text(Box::Bin));
    Calculator hex(QStringLiteral("0"));
    hex.type(Box::Hex, decimal.text(Box::Hex).toLower());
    EXPECT_EQ(boxes(binary), boxes(decimal)) << value;
    EXPECT_EQ(boxes(hex), boxes(decimal)) << value;
  }
}

}  // namespace
}  // namespace lokari
