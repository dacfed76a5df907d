#include "reports/print_selection.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

TEST(PrintSelection, AllVehiclesHaveNoFormula) {
  const ReportSelection selection = allVehicles();
  EXPECT_EQ(selection.query,
            "SELECT * FROM LOCO_DAT ORDER BY ISNULL(DC_COLL) DESC, DC_COLL, DC_ADR");
  EXPECT_TRUE(selection.formula.isEmpty());
}

TEST(PrintSelection, TheFilterStandsInBothAsItIs) {
  const ReportSelection selection =
      filteredVehicles(QStringLiteral("ST_SNAME LIKE \"V*\" AND DC_ADR=5"),
                       QStringLiteral("{LOCO_DAT.ST_SNAME} LIKE 'V*' AND {LOCO_DAT.DC_ADR}=5"));
  EXPECT_EQ(selection.query,
            "SELECT * FROM LOCO_DAT WHERE ST_SNAME LIKE \"V*\" AND DC_ADR=5 "
            "ORDER BY ISNULL(DC_COLL) DESC, DC_COLL, DC_ADR");
  EXPECT_EQ(selection.formula, "{LOCO_DAT.ST_SNAME} LIKE 'V*' AND {LOCO_DAT.DC_ADR}=5");
}

TEST(PrintSelection, WithoutAFilterTheConditionIsEmpty) {
  const ReportSelection selection = filteredVehicles({}, {});
  EXPECT_EQ(selection.query,
            "SELECT * FROM LOCO_DAT WHERE  ORDER BY ISNULL(DC_COLL) DESC, DC_COLL, DC_ADR");
  EXPECT_EQ(selection.formula, "");
}

TEST(PrintSelection, ACollectionAndItsAddresses) {
  const ReportSelection selection =
      collectionVehicles(QStringLiteral("Anlage"), QStringLiteral("3"), QStringLiteral("10239"));
  EXPECT_EQ(selection.query,
            "SELECT * FROM LOCO_DAT WHERE DC_COLL ='Anlage' AND DC_ADR >= 3 AND DC_ADR <= 10239 "
            "ORDER BY ISNULL(DC_COLL) DESC, DC_COLL, DC_ADR");
  EXPECT_EQ(selection.formula,
            "{LOCO_DAT.DC_COLL} ='Anlage' AND {LOCO_DAT.DC_ADR} >= 3 AND {LOCO_DAT.DC_ADR} <= "
            "10239");
}

TEST(PrintSelection, WithoutACollectionOnlyTheAddressesSelect) {
  const ReportSelection selection =
      collectionVehicles({}, QStringLiteral("1"), QStringLiteral("99"));
  EXPECT_EQ(selection.query,
            "SELECT * FROM LOCO_DAT WHERE DC_ADR >= 1 AND DC_ADR <= 99 "
            "ORDER BY ISNULL(DC_COLL) DESC, DC_COLL, DC_ADR");
  EXPECT_EQ(selection.formula, "{LOCO_DAT.DC_ADR} >= 1 AND {LOCO_DAT.DC_ADR} <= 99");
}

}  // namespace
}  // namespace lokari
