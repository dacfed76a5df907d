#include "reports/rzk_record.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

QByteArray blanks(int count) {
  return QByteArray(count, ' ');
}

TEST(RzkRecord, TheHeadHasItsMagicAndIsElseEmpty) {
  const QByteArray head = rzkHead();
  ASSERT_EQ(head.size(), 52);
  EXPECT_EQ(head, QByteArray("RZKV51\0\0\0\0", 10) + blanks(40) + QByteArray(2, '\0'));
  EXPECT_TRUE(isRzkHead(head));
}

TEST(RzkRecord, AVehicleIsLaidOutToTheByte) {
  EXPECT_EQ(rzkRecord({.shortName = "E103", .longName = "Tee", .group = 258, .address = 1000}),
            QByteArray("E103\0  \x02\x01Tee\0", 13) + blanks(37) + QByteArray("\xE8\x03", 2));
}

TEST(RzkRecord, NamesAreCutToTheirPlaces) {
  const QByteArray record =
      rzkRecord({.shortName = "1234567890", .longName = QString(60, QLatin1Char('x'))});
  ASSERT_EQ(record.size(), 52);
  EXPECT_EQ(record.left(7), QByteArray("123456\0", 7));
  EXPECT_EQ(record.mid(9, 41), QByteArray(40, 'x') + '\0');
}

TEST(RzkRecord, NamesThatJustFitAreWhole) {
  const QByteArray record =
      rzkRecord({.shortName = "123456", .longName = QString(40, QLatin1Char('x'))});
  EXPECT_EQ(record.left(7), QByteArray("123456\0", 7));
  EXPECT_EQ(record.mid(9, 41), QByteArray(40, 'x') + '\0');
}

TEST(RzkRecord, AMissingLongNameIsAByteZeroAndBlanks) {
  EXPECT_EQ(rzkRecord({.shortName = "V60", .longName = {}}).mid(9, 41),
            QByteArray(1, '\0') + blanks(40));
}

TEST(RzkRecord, UmlautsAreOneByteAndWhatTheCodePageLacksIsAQuestionMark) {
  EXPECT_EQ(rzkRecord({.shortName = QStringLiteral("Köf€Ж\U0001F682"), .longName = {}}).left(7),
            QByteArray("K\xF6"
                       "f\x80??\0",
                       7));
}

TEST(RzkRecord, NegativeNumbersKeepTheirSign) {
  const QByteArray record =
      rzkRecord({.shortName = "a", .longName = {}, .group = -2, .address = -1});
  EXPECT_EQ(record.mid(7, 2), QByteArray("\xFE\xFF", 2));
  EXPECT_EQ(rzkAddress(record), -1);
}

TEST(RzkRecord, WhatIsNoHeadIsRefused) {
  EXPECT_FALSE(isRzkHead({}));
  EXPECT_FALSE(isRzkHead(rzkHead().chopped(1)));
  EXPECT_FALSE(isRzkHead(rzkRecord({.shortName = "RZKV50", .longName = {}})));
  EXPECT_FALSE(isRzkHead(rzkRecord({.shortName = "rzkv51", .longName = {}})));
}

}  // namespace
}  // namespace lokari
