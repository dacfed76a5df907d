#include "db/jet_sql.h"

#include <gtest/gtest.h>

#include <QSqlQuery>

#include "db/reference_lists.h"
#include "support/test_database.h"

namespace lokari {
namespace {

class JetSql : public ::testing::Test {
 protected:
  JetSql() {
    base_.addVehicle(5, QStringLiteral("Meine"), QStringLiteral("V 200"));
    base_.addVehicle(7, QStringLiteral(""), QStringLiteral("ÖBB"));
    base_.addVehicle(7, QString(), QStringLiteral("V 100"));
    base_.addVehicle(9, QStringLiteral("Gäste"), QStringLiteral("Sagt \"ja\""));
  }

  /// The short names of the vehicles that meet the condition.
  QString names(const char* condition) {
    return answer("SELECT ST_SNAME FROM LOCO_DAT WHERE " + QString::fromUtf8(condition));
  }

  QString answer(const QString& query) {
    QStringList result;
    base_.open().query(query, [&result](const QSqlQuery& row) {
      result.append(row.value(0).isNull() ? QStringLiteral("NULL") : row.value(0).toString());
    });
    return result.join(u'|');
  }

  int refusal(const QString& query) {
    try {
      base_.open().query(query, [](const QSqlQuery&) {});
    } catch (const StorageError& error) {
      EXPECT_FALSE(error.text().isEmpty());
      return error.code();
    }
    return 0;
  }

  int refusedCondition(const char* condition) {
    return refusal("SELECT * FROM LOCO_DAT WHERE " + QString::fromUtf8(condition));
  }

  test::TestDatabase base_;
};

TEST_F(JetSql, TheExamplesOfTheSearch) {
  EXPECT_EQ(names("ST_SNAME LIKE \"V*\" AND DC_ADR=5"), QStringLiteral("V 200"));
  EXPECT_EQ(names("DC_COLL=\"Meine\""), QStringLiteral("V 200"));
}

TEST_F(JetSql, AConditionWithoutTheBlankInFrontOfAndParses) {
  EXPECT_EQ(names("DC_ADR=7AND DC_COLL=\"\""), QStringLiteral("ÖBB"));
}

TEST_F(JetSql, AnEmptyTextDoesNotFindNull) {
  EXPECT_EQ(names("DC_COLL=\"\""), QStringLiteral("ÖBB"));
  EXPECT_EQ(names("DC_COLL IS NULL"), QStringLiteral("V 100"));
  EXPECT_EQ(names("ISNULL(DC_COLL)"), QStringLiteral("V 100"));
  EXPECT_EQ(names("ISNULL(DC_COLL) = -1"), QStringLiteral("V 100"));
}

TEST_F(JetSql, TextIsComparedWithoutRegardToCase) {
  EXPECT_EQ(names("ST_SNAME = 'öbb'"), QStringLiteral("ÖBB"));
  EXPECT_EQ(names("dc_coll = \"GÄSTE\""), QStringLiteral("Sagt \"ja\""));
  EXPECT_EQ(names("ST_SNAME LIKE 'ö*'"), QStringLiteral("ÖBB"));
  EXPECT_EQ(names("ST_SNAME >= 'P' AND ST_SNAME < 'T'"), QStringLiteral("Sagt \"ja\""));
}

TEST_F(JetSql, ADoubledQuoteStandsForOne) {
  EXPECT_EQ(names("ST_SNAME = \"Sagt \"\"ja\"\"\""), QStringLiteral("Sagt \"ja\""));
  EXPECT_EQ(names("ST_SNAME = 'Sagt \"ja\"'"), QStringLiteral("Sagt \"ja\""));
}

TEST_F(JetSql, ComparisonsAndTheirCombination) {
  EXPECT_EQ(names("DC_ADR >= 6 AND DC_ADR <= 8"), QStringLiteral("ÖBB|V 100"));
  EXPECT_EQ(names("DC_ADR = 5 OR DC_ADR = 9"), QStringLiteral("V 200|Sagt \"ja\""));
  EXPECT_EQ(names("NOT (DC_ADR = 5 OR DC_ADR = 7)"), QStringLiteral("Sagt \"ja\""));
  EXPECT_EQ(names("DC_ADR <> 7 AND ST_SNAME NOT LIKE 'V*'"), QStringLiteral("Sagt \"ja\""));
  EXPECT_EQ(names("DC_ADR LIKE '#' AND DC_ADR < 6"), QStringLiteral("V 200"));
}

TEST_F(JetSql, DistinctCollectionsBeginWithNullAndIgnoreCase) {
  base_.addVehicle(6, QStringLiteral("MEINE"), QStringLiteral("x"));
  EXPECT_EQ(
      answer(QStringLiteral("SELECT DISTINCT(DC_COLL) FROM LOCO_DAT ORDER BY DC_COLL")).toUpper(),
      QStringLiteral("NULL||GÄSTE|MEINE"));
}

TEST_F(JetSql, TheHighestNumberIsNullInAnEmptyTable) {
  EXPECT_EQ(answer(QStringLiteral("SELECT MAX(DC_RECNO) FROM LOCO_DAT")), QStringLiteral("4"));
  base_.run("DELETE FROM LOCO_DAT");
  EXPECT_EQ(answer(QStringLiteral("SELECT MAX(DC_RECNO) FROM LOCO_DAT")), QStringLiteral("NULL"));
}

TEST_F(JetSql, ARecordWithNullCollectionStandsLastAndOneWithAnEmptyCollectionFirst) {
  EXPECT_EQ(answer(QStringLiteral("SELECT ST_SNAME FROM LOCO_DAT "
                                  "ORDER BY ISNULL(DC_COLL) DESC, DC_COLL, DC_ADR")),
            QStringLiteral("ÖBB|Sagt \"ja\"|V 200|V 100"));
}

TEST_F(JetSql, AReferenceRowWithoutANumberStandsBehindEveryNumberedRow) {
  base_.run("DELETE FROM LINES");
  base_.run("INSERT INTO LINES VALUES (NULL, 'Aare'), (9, 'Zett'), (2, 'Mitte'), (NULL, 'Ähr')");
  EXPECT_EQ(readReferenceList(base_.open(), *referenceListOf(u"fz_line")),
            QStringList({QStringLiteral("Mitte"), QStringLiteral("Zett"), QStringLiteral("Aare"),
                         QStringLiteral("Ähr")}));
}

TEST_F(JetSql, WhatIsNotUnderstoodIsRefused) {
  using namespace storage_error;
  EXPECT_EQ(refusedCondition("DC_ADR=1*"), kSyntax);
  EXPECT_EQ(refusedCondition("DC_ADR="), kSyntax);
  EXPECT_EQ(refusedCondition("DC_ADR"), kSyntax);
  EXPECT_EQ(refusedCondition("5"), kSyntax);
  EXPECT_EQ(refusedCondition("DC_COLL=\"a\"b\""), kSyntax);
  EXPECT_EQ(refusedCondition("(DC_ADR=5"), kSyntax);
  EXPECT_EQ(refusedCondition("DC_ADR=5 DC_ADR=6"), kSyntax);
  EXPECT_EQ(refusedCondition("MD_PRICE=1,4,9"), kSyntax);
  EXPECT_EQ(refusedCondition("ST_SNAME LIKE \"[a\""), kSyntax);
  EXPECT_EQ(refusedCondition("DC_ADR IN (1)"), kSyntax);
  EXPECT_EQ(refusedCondition("NOSUCH=5"), kUnknownName);
  EXPECT_EQ(refusal(QStringLiteral("SELECT * FROM NOSUCH")), kUnknownName);
  EXPECT_EQ(refusal(QStringLiteral("SELECT * FROM sqlite_master")), kUnknownName);
  EXPECT_EQ(refusal(QStringLiteral("DELETE FROM LOCO_DAT")), kSyntax);
  EXPECT_EQ(refusal(QString()), kSyntax);
}

TEST_F(JetSql, TextAndNumberDoNotCompare) {
  EXPECT_EQ(refusedCondition("DC_ADR=\"5\""), storage_error::kTypeMismatch);
  EXPECT_EQ(refusedCondition("ST_SNAME=5"), storage_error::kTypeMismatch);
  EXPECT_EQ(refusedCondition("DC_CV='x'"), storage_error::kTypeMismatch);
}

TEST_F(JetSql, HostileTextChangesNothing) {
  for (const char* text :
       {"x\"; DROP TABLE LOCO_DAT; --", "x\" OR 1=1 --",
        "x' UNION SELECT name FROM sqlite_master --", "DC_ADR=5; DELETE FROM LOCO_DAT",
        "DC_ADR=load_extension('x')", "DC_ADR=5 /* */", "(SELECT DC_ADR FROM LOCO_DAT)=5",
        "DC_ADR=5 --", "DC_COLL=\"\\\"\"", "\"DC_ADR\"=DC_ADR", "ST_SNAME = char(39)",
        "DC_ADR=5 LIMIT 1", "DC_ADR=0x5", "[DC_ADR]=5", "DC_ADR=?1", "DC_ADR=@x"}) {
    EXPECT_NE(refusedCondition(text), 0) << text;
  }
  EXPECT_EQ(answer(QStringLiteral("SELECT MAX(DC_RECNO) FROM LOCO_DAT")), QStringLiteral("4"));
}

TEST_F(JetSql, HostileTextAsAValueIsAValue) {
  base_.addVehicle(11, QStringLiteral("x"), QStringLiteral("'; DROP TABLE LOCO_DAT; --"));
  EXPECT_EQ(names("ST_SNAME = \"'; DROP TABLE LOCO_DAT; --\""),
            QStringLiteral("'; DROP TABLE LOCO_DAT; --"));
}

TEST_F(JetSql, DeepNestingIsRefusedAndNotFollowed) {
  const QByteArray open(100000, '(');
  EXPECT_EQ(refusedCondition(open.constData()), storage_error::kSyntax);
  QByteArray nots;
  for (int i = 0; i < 100000; ++i) nots += "NOT ";
  EXPECT_EQ(refusedCondition((nots + "DC_ADR=5").constData()), storage_error::kSyntax);
}

TEST_F(JetSql, AValueIsNeverPartOfTheStatement) {
  const JetCondition condition =
      translateCondition(*base_.open().schema().table(QStringLiteral("LOCO_DAT")),
                         QStringLiteral("DC_COLL = \"Meine\" AND DC_ADR = -5"));
  EXPECT_FALSE(condition.sql.contains(QStringLiteral("Meine")));
  EXPECT_EQ(condition.values, QVariantList({QStringLiteral("Meine"), -5LL}));
}

}  // namespace
}  // namespace lokari
