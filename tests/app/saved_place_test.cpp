#include "app/saved_place.h"

#include <gtest/gtest.h>

#include "base/ini_file.h"
#include "support/ini_text.h"

namespace lokari {
namespace {

QString conditionOf(const QByteArray& keys) {
  const test::IniText file("[LOKARI]\r\n" + keys);
  return savedPlaceCondition(IniFile(file.path()));
}

TEST(SavedPlace, NoKeysGiveNoCondition) {
  EXPECT_TRUE(conditionOf("").isEmpty());
  EXPECT_TRUE(conditionOf("DBColl=\r\nDBAddr=\r\n").isEmpty());
}

TEST(SavedPlace, ACollectionAlone) {
  EXPECT_EQ(conditionOf("DBColl=\"  Meine Bahn \"\r\n"), QStringLiteral("DC_COLL=\"Meine Bahn\""));
}

TEST(SavedPlace, ACollectionAndAnAddress) {
  EXPECT_EQ(conditionOf("DBColl=Meine\r\nDBAddr=\" 7 \"\r\n"),
            QStringLiteral("DC_COLL=\"Meine\" AND DC_ADR=7"));
}

TEST(SavedPlace, AnAddressAloneHasNoBlankInFrontOfAnd) {
  EXPECT_EQ(conditionOf("DBAddr=7\r\n"), QStringLiteral("DC_ADR=7AND DC_COLL=\"\""));
}

TEST(SavedPlace, LongTextsAreCutToTheirKeysSize) {
  EXPECT_EQ(conditionOf("DBColl=123456789012345678901234567890\r\nDBAddr=1234567890123\r\n"),
            QStringLiteral("DC_COLL=\"123456789012345678901234\" AND DC_ADR=123456789"));
}

TEST(SavedPlace, IsWrittenWithALeadingBlankInFrontOfThePosition) {
  const test::IniText file("[LOKARI]\r\nDBAddr=3\r\nComPort=4\r\n");
  IniFile ini(file.path());
  savePlace(ini, 11, QStringLiteral("Meine"), QStringLiteral("77"));
  EXPECT_EQ(file.text(), "[LOKARI]\r\nDBAddr=77\r\nComPort=4\r\nDBPos= 12\r\nDBColl=Meine\r\n");
}

TEST(SavedPlace, AnEmptyAddressLeavesTheOldKey) {
  const test::IniText file("[LOKARI]\r\nDBAddr=3\r\nDBColl=Alt\r\nDBPos= 9\r\n");
  IniFile ini(file.path());
  savePlace(ini, -1, QString(), QString());
  EXPECT_EQ(file.text(), "[LOKARI]\r\nDBAddr=3\r\nDBColl=\r\nDBPos= 0\r\n");
}

}  // namespace
}  // namespace lokari
