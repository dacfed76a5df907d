// The vehicles as a table: order, sorting, looking through, and the way back to the record.
#include "db/vehicle_list.h"

#include <gtest/gtest.h>

#include "support/test_database.h"

namespace lokari {
namespace {

class VehicleListTest : public ::testing::Test {
 protected:
  VehicleListTest() {
    base_.addVehicle(10, str("Vitrine"), str("v10"));
    base_.addVehicle(9, str("Vitrine"), str("V9"));
    base_.addVehicle(3, QString(), str("null"));
    base_.addVehicle(3, str(""), str("leer"));
    base_.addVehicle(5, str("ägypten"), str("Ä5"));
    base_.addVehicle(6, str("Anlage"), str("A6"));
  }
  static QString str(const char* text) { return QString::fromUtf8(text); }
  void load(const char* filter = "") { list_.load(base_.open(), str(filter)); }
  QString cell(int row, int column) const {
    return list_.data(list_.index(row, column), Qt::DisplayRole).toString();
  }
  QString names() const {
    QStringList names;
    for (int row = 0; row < list_.rowCount(); ++row) names << cell(row, VehicleList::ShortName);
    return names.join(u' ');
  }

  test::TestDatabase base_;
  VehicleList list_;
};

TEST_F(VehicleListTest, HasSevenColumnsOfTheirCaptions) {
  QStringList captions;
  for (int column = 0; column < list_.columnCount(); ++column) {
    captions << list_.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  }
  EXPECT_EQ(captions, (QStringList{str("Samml."), str("Adr."), str("Kurzbez."), str("F.-Type"),
                                   str("Verw."), str("Herst."), str("Decoder")}));
}

TEST_F(VehicleListTest, ShowsTheColumnsOfTheVehicle) {
  base_.run(
      "UPDATE LOCO_DAT SET FZ_FTYPE = 'Dampf', FZ_LINE = 'DB', MD_MANUF = 'Roco', "
      "DC_DECODER = 'ZX1' WHERE DC_ADR = 6");
  load("DC_ADR=6");
  QStringList texts;
  for (int column = 0; column < list_.columnCount(); ++column) texts << cell(0, column);
  EXPECT_EQ(texts, (QStringList{str("Anlage"), str("6"), str("A6"), str("Dampf"), str("DB"),
                                str("Roco"), str("ZX1")}));
}

TEST_F(VehicleListTest, StandsInTheOrderOfCollectionsAndAddressesWithNullAtTheEnd) {
  load();
  EXPECT_EQ(names(), str("leer Ä5 A6 V9 v10 null"));
}

TEST_F(VehicleListTest, AFilteredListIsSortedToo) {
  load("DC_COLL=\"Vitrine\"");
  EXPECT_EQ(names(), str("V9 v10"));
}

TEST_F(VehicleListTest, ABrokenFilterThrowsAndLeavesTheListAsItWas) {
  load();
  EXPECT_THROW(load("DC_ADR=*"), StorageError);
  EXPECT_EQ(list_.rowCount(), 6);
}

TEST_F(VehicleListTest, AddressesAreSortedAsNumbers) {
  load();
  list_.sort(VehicleList::Address, Qt::AscendingOrder);
  EXPECT_EQ(names(), str("leer null Ä5 A6 V9 v10"));
  list_.sort(VehicleList::Address, Qt::DescendingOrder);
  EXPECT_EQ(names(), str("v10 V9 A6 Ä5 leer null"));
}

TEST_F(VehicleListTest, TextsAreSortedInGermanOrderWithoutRegardToCase) {
  load();
  list_.sort(VehicleList::ShortName, Qt::AscendingOrder);
  EXPECT_EQ(names(), str("Ä5 A6 leer null v10 V9"));
}

TEST_F(VehicleListTest, NullCollectionsAreBehindAllOthers) {
  load();
  list_.sort(VehicleList::Collection, Qt::AscendingOrder);
  EXPECT_EQ(names(), str("leer Ä5 A6 V9 v10 null"));
  list_.sort(VehicleList::Collection, Qt::DescendingOrder);
  EXPECT_EQ(names(), str("null V9 v10 A6 Ä5 leer"));
}

TEST_F(VehicleListTest, NoColumnBringsTheFirstOrderBack) {
  load();
  list_.sort(VehicleList::Address, Qt::DescendingOrder);
  list_.sort(-1, Qt::DescendingOrder);
  EXPECT_EQ(names(), str("leer Ä5 A6 V9 v10 null"));
}

TEST_F(VehicleListTest, RowsThatAreInTheFirstOrderAreNotSortedIntoIt) {
  load();
  int changes = 0;
  QObject::connect(&list_, &VehicleList::layoutChanged, &list_, [&changes] { ++changes; });
  list_.sort(-1, Qt::AscendingOrder);
  EXPECT_EQ(changes, 0);
  list_.sort(VehicleList::ShortName, Qt::AscendingOrder);
  list_.sort(-1, Qt::AscendingOrder);
  EXPECT_EQ(changes, 2);
}

TEST_F(VehicleListTest, AKeptIndexFollowsItsVehicleThroughASort) {
  load();
  const QPersistentModelIndex kept = list_.index(2, VehicleList::ShortName);
  ASSERT_EQ(kept.data().toString(), str("A6"));
  list_.sort(VehicleList::ShortName, Qt::DescendingOrder);
  EXPECT_EQ(kept.data().toString(), str("A6"));
  EXPECT_EQ(kept.row(), 4);
}

TEST_F(VehicleListTest, TheFirstRowOfAConditionIsThatOfTheListsOrder) {
  load();
  EXPECT_EQ(list_.firstRow(base_.open(), str("DC_COLL = \"Vitrine\" AND DC_ADR = 10")), 4);
  EXPECT_EQ(list_.firstRow(base_.open(), str("DC_COLL = \"Vitrine\"")), 3);
  EXPECT_EQ(list_.firstRow(base_.open(), str("DC_ADR = 4711")), -1);
  EXPECT_THROW(list_.firstRow(base_.open(), str("DC_ADR = ")), StorageError);
}

TEST_F(VehicleListTest, ARowThatTheFilterHidesIsNotFound) {
  load("DC_COLL=\"Vitrine\"");
  EXPECT_EQ(list_.firstRow(base_.open(), str("DC_ADR = 6")), -1);
}

TEST_F(VehicleListTest, ARowIsFoundAgainByCollectionAndAddress) {
  load();
  EXPECT_EQ(list_.condition(3), str("DC_COLL=\"Vitrine\" AND DC_ADR=9"));
}

TEST_F(VehicleListTest, ANullCollectionIsAskedForAsAnEmptyOne) {
  load();
  EXPECT_EQ(list_.condition(5), str("DC_COLL=\"\" AND DC_ADR=3"));
}

TEST_F(VehicleListTest, LookingThroughGoesRoundAndTakesAnyColumn) {
  load();
  EXPECT_EQ(list_.rowWith(str("VITR"), 0), 3);
  EXPECT_EQ(list_.rowWith(str("vitr"), 4), 4);
  EXPECT_EQ(list_.rowWith(str("vitr"), 5), 3);
  EXPECT_EQ(list_.rowWith(str("ä5"), 0), 1);
  EXPECT_EQ(list_.rowWith(str("10"), 0), 4);
  EXPECT_EQ(list_.rowWith(str("fehlt"), 0), -1);
}

TEST_F(VehicleListTest, AnEmptyListHasNothing) {
  load("DC_ADR=4711");
  EXPECT_EQ(list_.rowCount(), 0);
  EXPECT_EQ(list_.rowWith(str("a"), 0), -1);
  list_.sort(VehicleList::Address, Qt::AscendingOrder);
  EXPECT_EQ(list_.rowCount(), 0);
}

}  // namespace
}  // namespace lokari
