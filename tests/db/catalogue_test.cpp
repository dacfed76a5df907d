#include "db/catalogue.h"

#include <gtest/gtest.h>

#include "support/test_database.h"

namespace lokari {
namespace {

class CatalogueTest : public ::testing::Test {
 protected:
  CatalogueTest() : catalogue_(&base_.open()) {
    base_.clearLists();
    base_.run(
        "INSERT INTO DCMANUFS VALUES (NULL, 60, 'Kessler'), (2, 145, 'Zimo'), (1, 0, 'Standard'), "
        "(NULL, 97, 'Adlerton')");
    base_.run(
        "INSERT INTO DECODERS VALUES (NULL, 'B', 145), (NULL, 'A', 145), (1, 'Z', 145), "
        "(NULL, 'A', 97)");
  }

  test::TestDatabase base_;
  Catalogue catalogue_;
};

TEST_F(CatalogueTest, MakersComeInTheirSequenceThenByName) {
  const QList<Maker> expected = {{0, QStringLiteral("Standard")},
                                 {145, QStringLiteral("Zimo")},
                                 {97, QStringLiteral("Adlerton")},
                                 {60, QStringLiteral("Kessler")}};
  EXPECT_EQ(catalogue_.makers(), expected);
}

TEST_F(CatalogueTest, AMakerIsFoundByNumberAndByName) {
  EXPECT_EQ(catalogue_.makerByNumber(145)->name, QStringLiteral("Zimo"));
  EXPECT_EQ(catalogue_.makerByName(QStringLiteral("zimo"))->number, 145);
  EXPECT_FALSE(catalogue_.makerByNumber(1).has_value());
  EXPECT_FALSE(catalogue_.makerByName(QStringLiteral("Zi*")).has_value());
}

TEST_F(CatalogueTest, TypesOfAMakerComeInTheirSequenceThenByName) {
  EXPECT_EQ(catalogue_.types(145),
            QStringList({QStringLiteral("Z"), QStringLiteral("A"), QStringLiteral("B")}));
  EXPECT_EQ(catalogue_.types(60), QStringList());
  EXPECT_EQ(catalogue_.type(145, QStringLiteral("b")), QStringLiteral("B"));
  EXPECT_FALSE(catalogue_.type(97, QStringLiteral("B")).has_value());
}

TEST_F(CatalogueTest, WithoutADatabaseEverythingIsEmpty) {
  const Catalogue none;
  EXPECT_TRUE(none.makers().isEmpty());
  EXPECT_TRUE(none.types(145).isEmpty());
  EXPECT_FALSE(none.makerByNumber(0).has_value());
}

TEST(ShippedCatalogue, HasTheMaker0AndLongEnoughNames) {
  test::TestDatabase base;
  const Catalogue catalogue(&base.open());
  ASSERT_TRUE(catalogue.makerByNumber(0).has_value());
  EXPECT_TRUE(catalogue.types(0).isEmpty());
  for (const Maker& maker : catalogue.makers()) {
    EXPECT_TRUE(maker.name.size() >= 1 && maker.name.size() <= 8) << maker.name.toStdString();
    for (const QString& type : catalogue.types(maker.number)) {
      EXPECT_TRUE(type.size() >= 1 && type.size() <= 8) << type.toStdString();
    }
  }
}

}  // namespace
}  // namespace lokari
