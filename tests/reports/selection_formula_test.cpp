#include "reports/selection_formula.h"

#include <QSqlQuery>

#include "db/record_search.h"
#include "reports/print_selection.h"
#include "reports/report_error.h"
#include "support/test_database.h"

namespace lokari {
namespace {

class SelectionFormula : public ::testing::Test {
 protected:
  SelectionFormula() {
    database.run("DELETE FROM LOCO_DAT");
    add(3, "Anlage", "V60", "Rangierlok", "199.9");
    add(5, "Anlage", "V200", "Opa's \"beste\" Lok", "20");
    add(17, "Vitrine", "E10", "50 % Rabatt; DROP TABLE", "199.95");
    add(40, "Opa's", "v80", "{LOCO_DAT.DC_ADR} > 0", {});
    add(60, {}, "leer", {}, {});
  }

  void add(int address, const QString& collection, const char* name, const QString& longName,
           const QString& price) {
    database.run(
        "INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, ST_SNAME, FZ_LNAME, MD_PRICE) VALUES "
        "(?, ?, ?, ?, ?)",
        {address, collection.isNull() ? QVariant() : QVariant(collection), name,
         longName.isNull() ? QVariant() : QVariant(longName),
         price.isNull() ? QVariant() : QVariant(price.toDouble())});
  }

  const TableInfo& vehicles() { return *database.open().schema().table("LOCO_DAT"); }

  QString condition(const char* formula) {
    return formulaCondition(vehicles(), QString::fromUtf8(formula)).simplified();
  }

  QList<int> addresses(const QString& query) {
    QList<int> found;
    database.open().query(query, [&found](const QSqlQuery& row) {
      found << row.value(QStringLiteral("DC_ADR")).toInt();
    });
    return found;
  }

  QList<int> addressesOf(const QString& formula) {
    const QString where = formula.isEmpty()
                              ? QString()
                              : QStringLiteral("WHERE ") + formulaCondition(vehicles(), formula);
    return addresses(QStringLiteral("SELECT DC_ADR FROM LOCO_DAT ") + where + u' ' +
                     QString::fromUtf16(kPrintOrder));
  }

  QString refusal(const QString& formula) {
    try {
      formulaCondition(vehicles(), formula);
    } catch (const ReportError& error) {
      return error.text();
    }
    return {};
  }

  test::TestDatabase database;
};

TEST_F(SelectionFormula, FieldsLoseTheirBraces) {
  EXPECT_EQ(condition("{LOCO_DAT.ST_SNAME} LIKE 'V*' AND {LOCO_DAT.DC_ADR}=5"),
            "ST_SNAME LIKE 'V*' AND DC_ADR =5");
  EXPECT_EQ(condition("{loco_dat.dc_adr}>=3AND{LOCO_DAT.DC_ADR}<=9"), "DC_ADR >=3AND DC_ADR <=9");
  EXPECT_EQ(condition("not ({LOCO_DAT.MD_PRICE} < 19.95 or isnull({LOCO_DAT.MD_PRICE}))"),
            "not ( MD_PRICE < 19.95 or isnull( MD_PRICE ))");
}

TEST_F(SelectionFormula, BracesInATextAreText) {
  EXPECT_EQ(condition("{LOCO_DAT.FZ_LNAME}='{LOCO_DAT.DC_ADR} > 0'"),
            "FZ_LNAME ='{LOCO_DAT.DC_ADR} > 0'");
  EXPECT_EQ(addressesOf("{LOCO_DAT.FZ_LNAME}='{LOCO_DAT.DC_ADR} > 0'"), QList{40});
  EXPECT_EQ(addressesOf("{LOCO_DAT.FZ_LNAME}=\"it's {\" OR {LOCO_DAT.DC_ADR}=3"), QList{3});
}

TEST_F(SelectionFormula, BothQuotesAndDoubledOnes) {
  EXPECT_EQ(addressesOf("{LOCO_DAT.DC_COLL}='Opa''s'"), QList{40});
  EXPECT_EQ(addressesOf("{LOCO_DAT.DC_COLL}=\"Opa's\""), QList{40});
  EXPECT_EQ(addressesOf("{LOCO_DAT.FZ_LNAME}=\"Opa's \"\"beste\"\" Lok\""), QList{5});
}

TEST_F(SelectionFormula, EachComparison) {
  EXPECT_EQ(addressesOf("{LOCO_DAT.DC_ADR}<>3 AND {LOCO_DAT.DC_ADR}<17"), QList{5});
  EXPECT_EQ(addressesOf("{LOCO_DAT.DC_ADR}>17"), (QList{40, 60}));
  EXPECT_EQ(addressesOf("{LOCO_DAT.MD_PRICE}=199.95"), QList{17});
  EXPECT_EQ(addressesOf("{LOCO_DAT.ST_SNAME} NOT LIKE 'v*'"), (QList{17, 60}));
  EXPECT_EQ(addressesOf("ISNULL({LOCO_DAT.DC_COLL})"), QList{60});
  EXPECT_EQ(addressesOf("{LOCO_DAT.ST_SNAME} LIKE '?60' OR NOT {LOCO_DAT.DC_ADR} < 60"),
            (QList{3, 60}));
  EXPECT_EQ(addressesOf("{LOCO_DAT.DC_ADR}=3 AND ({LOCO_DAT.DC_ADR}=5 OR {LOCO_DAT.DC_ADR}=3)"),
            QList{3});
}

TEST_F(SelectionFormula, WhatItDoesNotKnowIsRefused) {
  for (const char* formula : {"DC_ADR=5",
                              "{LOCO_DAT.DC_ADR}",
                              "{LOCO_DAT.DC_ADR}=*",
                              "{LOCO_DAT.DC_ADR}='x'",
                              "{LOCO_DAT.NIX}=1",
                              "{DCMANUFS.DC_MANUF}=1",
                              "{DC_ADR}=1",
                              "{LOCO_DAT.DC_ADR=1",
                              "{}=1",
                              "{LOCO_DAT.DC_ADR}=1 ORDER BY {LOCO_DAT.DC_ADR}",
                              "{LOCO_DAT.DC_ADR}=1; DROP TABLE x",
                              "{LOCO_DAT.DC_ADR}=1)",
                              "({LOCO_DAT.DC_ADR}=1",
                              "{LOCO_DAT.DC_COLL} ='Opa's",
                              "{LOCO_DAT.DC_COLL}='offen",
                              "{LOCO_DAT.MD_PIC}='x'",
                              "{LOCO_DAT.DC_ADR} IS NULL",
                              " ",
                              "{LOCO_DAT.DC_ADR}=3,5,7",
                              "{LOCO_DAT.DC_ADR} >=  AND {LOCO_DAT.DC_ADR} <= 5",
                              "{LOCO_DAT.DC_ADR}{LOCO_DAT.DC_ADR}=3"}) {
    EXPECT_TRUE(
        refusal(QString::fromUtf8(formula))
            .startsWith(QStringLiteral("Die Auswahl der Fahrzeuge wird nicht verstanden:\r") +
                        QString::fromUtf8(formula) + u'\r'))
        << formula;
  }
  EXPECT_TRUE(refusal("{LOCO_DAT.NIX}=1").endsWith("Das Feld {LOCO_DAT.NIX} gibt es nicht."));
  EXPECT_TRUE(refusal("DC_ADR=5").endsWith("Unbekanntes Wort \"DC_ADR\"."));
}

TEST_F(SelectionFormula, FormulaAndQueryOfASelectionShowTheSameRows) {
  for (const QString& collection : {QString(), QStringLiteral("anlage"), QStringLiteral("nix"),
                                    QStringLiteral("50 % [x]; \"DROP\" {LOCO_DAT.DC_ADR}")}) {
    const ReportSelection selection = collectionVehicles(collection, "3", "59");
    EXPECT_EQ(addresses(selection.query), addressesOf(selection.formula));
  }
  EXPECT_EQ(addressesOf(allVehicles().formula), addresses(allVehicles().query));
  EXPECT_EQ(addressesOf({}), (QList{3, 5, 40, 17, 60})) << "no collection stands behind all others";
}

TEST_F(SelectionFormula, FormulaAndQueryOfAFilterShowTheSameRows) {
  struct Typed {
    const char* control;
    const char* text;
    QList<int> found;
  };
  const Typed filters[] = {
      {"st_sname", "V*", {3, 5, 40}},
      {"st_sname", "v?0", {}},  // no LIKE without a "*"
      {"fz_lname", "*%*; DROP TABLE*", {17}},
      {"fz_lname", "{LOCO_DAT.DC_ADR} > 0", {40}},
      {"fz_lname", "{*}", {}},
      {"fz_lname", "*[O]pa*", {5}},
      {"md_price", "199.9", {3}},
      {"md_price", "199,90", {3}},
      {"dc_adr", "17", {17}},
      {"dc_coll", "Vitrine", {17}},
      {"dc_type", "1", {}},
  };
  for (const Typed& filter : filters) {
    const SearchCondition condition = searchCondition(vehicles(), [&](const QString& control) {
      return control == QString::fromUtf8(filter.control) ? QString::fromUtf8(filter.text)
                                                          : QString();
    });
    const ReportSelection selection = filteredVehicles(condition.sql, condition.report);
    EXPECT_EQ(addresses(selection.query), filter.found) << filter.text;
    EXPECT_EQ(addressesOf(selection.formula), filter.found) << filter.text;
  }
}

TEST_F(SelectionFormula, AnApostropheInAFilterIsPartOfItsText) {
  add(41, "'n Rest'", "a'b' AND c", "Opas'", {});
  struct Typed {
    QMap<QString, QString> texts;
    QList<int> found;
  };
  const Typed filters[] = {
      {{{"dc_coll", "Opa's"}}, {40}},
      {{{"dc_coll", "Opa's"}, {"st_sname", "v*"}}, {40}},
      {{{"fz_lname", "Opa's*"}, {"dc_adr", "5"}}, {5}},
      {{{"fz_lname", "Opas'"}, {"st_sname", "a'*"}}, {41}},
      {{{"dc_coll", "'n Rest'"}, {"fz_lname", "*'"}}, {41}},
      {{{"st_sname", "a'b' AND c"}}, {41}},
      {{{"dc_coll", "Oma's"}}, {}},
  };
  for (const Typed& filter : filters) {
    const SearchCondition condition = searchCondition(
        vehicles(), [&](const QString& control) { return filter.texts.value(control); });
    EXPECT_EQ(addresses(filteredVehicles(condition.sql, {}).query), filter.found);
    EXPECT_EQ(addressesOf(condition.report), filter.found) << condition.report.toStdString();
  }
  EXPECT_EQ(formulaInWords(vehicles(), "{LOCO_DAT.DC_COLL}='Opa's' AND {LOCO_DAT.DC_ADR}=5"),
            "Sammlung = „Opa's“ und Adresse = 5");
  EXPECT_EQ(addressesOf("NOT ({LOCO_DAT.DC_COLL}='Opa's') AND NOT ({LOCO_DAT.DC_ADR}=3)"),
            (QList{41, 5, 17}));
}

TEST_F(SelectionFormula, PeopleReadItInWords) {
  EXPECT_EQ(formulaInWords(vehicles(), "{LOCO_DAT.ST_SNAME} LIKE 'V*' AND {LOCO_DAT.DC_ADR}=5"),
            "Kurzname wie „V*“ und Adresse = 5");
  EXPECT_EQ(formulaInWords(vehicles(), collectionVehicles("Anlage", "1", "99").formula),
            "Sammlung = „Anlage“ und Adresse ≥ 1 und Adresse ≤ 99");
  EXPECT_EQ(formulaInWords(vehicles(), "not ({LOCO_DAT.MD_PRICE}<>-19.95 or {LOCO_DAT.DC_TYPE}=1)"),
            "nicht (Preis ≠ -19,95 oder Art = 1)");
  EXPECT_EQ(formulaInWords(vehicles(), "{LOCO_DAT.DC_DECODER}='a''b'"), "Decoder = „a'b“");
}

}  // namespace
}  // namespace lokari
