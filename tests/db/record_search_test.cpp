// The query form: what it asks, what it finds, and what it does when nothing fits.
#include "db/record_search.h"

#include "tests/db/form_fixture.h"

namespace lokari {
namespace {

class Search : public test::FormFixture {
 protected:
  /// Fills a blank query form.
  void ask(std::initializer_list<std::pair<const char*, const char*>> entries) {
    form_.butFind();
    for (const auto& [control, entry] : entries) type(control, entry);
  }
  QString addresses() {
    QStringList found;
    for (form_.MoveFirst(); found.size() < form_.records().count(); form_.MoveNext()) {
      found << text("dc_adr");
    }
    return found.join(u' ');
  }
  SearchCondition condition(std::initializer_list<std::pair<const char*, const char*>> entries) {
    const QMap<QString, QString> filled = [&] {
      QMap<QString, QString> map;
      for (const auto& [control, entry] : entries) map.insert(str(control), str(entry));
      return map;
    }();
    return searchCondition(*base_.open().schema().table(str("LOCO_DAT")),
                           [&](const QString& control) { return filled.value(control); });
  }
  const QString kNothingFits = str("Keine passenden Daten gefunden!");
};

// ---- The condition ------------------------------------------------------------------------------

TEST_F(Search, AddressAndPatternMakeBothConditions) {
  const SearchCondition made = condition({{"dc_adr", "5"}, {"st_sname", "V*"}});
  EXPECT_EQ(made.sql, str("ST_SNAME LIKE \"V*\" AND DC_ADR=5"));
  EXPECT_EQ(made.report, str("{LOCO_DAT.ST_SNAME} LIKE 'V*' AND {LOCO_DAT.DC_ADR}=5"));
}

TEST_F(Search, ACollectionAloneIsComparedAsText) {
  EXPECT_EQ(condition({{"dc_coll", "Meine"}}).sql, str("DC_COLL=\"Meine\""));
  EXPECT_EQ(condition({{"dc_coll", "Meine"}}).report, str("{LOCO_DAT.DC_COLL}='Meine'"));
}

TEST_F(Search, AnEmptyFormHasNoCondition) {
  EXPECT_TRUE(condition({}).sql.isEmpty());
  EXPECT_TRUE(condition({}).report.isEmpty());
}

TEST_F(Search, TheControlsAreWalkedInTheirOwnOrder) {
  EXPECT_EQ(
      condition({{"md_user_3", "a"},   {"md_user_2", "b"}, {"md_user_1", "c"}, {"dc_coll", "d"},
                 {"md_scale", "e"},    {"dc_type", "1"},   {"md_price", "2"},  {"md_catno", "f"},
                 {"fz_maxspeed", "3"}, {"fz_opcode", "g"}, {"fz_code", "h"},   {"md_info", "i"},
                 {"fz_lname", "j"},    {"st_group", "4"},  {"st_sname", "k"},  {"dc_adr", "5"},
                 {"md_motor", "l"},    {"md_manuf", "m"},  {"fz_era", "n"},    {"fz_line", "o"},
                 {"fz_ftype", "p"}})
          .sql,
      str("MD_USER_3=\"a\" AND MD_USER_2=\"b\" AND MD_USER_1=\"c\" AND DC_COLL=\"d\" AND "
          "MD_SCALE=\"e\" AND DC_TYPE=1 AND MD_PRICE=2 AND MD_CATNO=\"f\" AND FZ_MAXSPEED=3 AND "
          "FZ_OPCODE=\"g\" AND FZ_CODE=\"h\" AND MD_INFO=\"i\" AND FZ_LNAME=\"j\" AND ST_GROUP=4 "
          "AND ST_SNAME=\"k\" AND DC_ADR=5 AND MD_MOTOR=\"l\" AND MD_MANUF=\"m\" AND FZ_ERA=\"n\" "
          "AND FZ_LINE=\"o\" AND FZ_FTYPE=\"p\""));
}

TEST_F(Search, RecordNumberDecoderAndMakerTakeNoPart) {
  EXPECT_TRUE(condition({{"dc_recno", "1"}, {"dc_decoder", "x"}, {"dc_manuf", "y"}}).sql.isEmpty());
}

TEST_F(Search, OnlyAStarMakesAPattern) {
  EXPECT_EQ(condition({{"st_sname", "V?#[a]"}}).sql, str("ST_SNAME=\"V?#[a]\""));
  EXPECT_EQ(condition({{"fz_era", "*V"}}).sql, str("FZ_ERA LIKE \"*V\""));
}

TEST_F(Search, AStarInANumberIsComparedAsANumber) {
  EXPECT_EQ(condition({{"dc_adr", "1*"}}).sql, str("DC_ADR=1*"));
  EXPECT_EQ(condition({{"dc_adr", "1*"}}).report, str("{LOCO_DAT.DC_ADR}=1*"));
}

TEST_F(Search, QuotesGoInAsTheyAre) {
  EXPECT_EQ(condition({{"fz_lname", "a\"b'c"}}).sql, str("FZ_LNAME=\"a\"b'c\""));
  EXPECT_EQ(condition({{"fz_lname", "a\"b'c"}}).report, str("{LOCO_DAT.FZ_LNAME}='a\"b'c'"));
}

// ---- The mode -----------------------------------------------------------------------------------

TEST_F(Search, TheQueryFormIsBlankAndHasItsOwnButtons) {
  base_.run("UPDATE LOCO_DAT SET DC_MANUF = 145, DC_DECODER = 'ZX', FZ_ERA = 'III'");
  open();
  form_.butFind();
  for (const char* control : {"butTable", "butFind", "butNew", "butDelete", "Data1"}) {
    EXPECT_FALSE(visible(control)) << control;
  }
  for (const char* control :
       {"butPicLink", "Data1", "butProg", "butDrive", "butSwitch", "mnuDbPrint", "mnuEditNew",
        "mnuEditCopy", "mnuEditDelete", "mnuEditFind"}) {
    EXPECT_FALSE(enabled(control)) << control;
  }
  for (const char* control : {"butOK", "butCancel", "butFilter"}) {
    EXPECT_TRUE(visible(control)) << control;
  }
  EXPECT_EQ(text("butOK"), str("Suchen"));
  for (const char* control : {"dc_adr", "dc_coll", "st_sname", "dc_type", "dc_manuf", "dc_decoder",
                              "fz_era", "dc_recno"}) {
    EXPECT_EQ(text(control), QString()) << control;
  }
  EXPECT_EQ(form_.typeOption(), 0);
  EXPECT_EQ(form_.editMode(), EditMode::Add);
  EXPECT_EQ(focus_, QStringList{str("dc_adr")});
}

TEST_F(Search, CancelShowsTheRecordAgain) {
  open();
  form_.MoveLast();
  ask({{"st_sname", "x"}});
  form_.butCancel();
  EXPECT_EQ(text("st_sname"), str("V7"));
  EXPECT_EQ(text("dc_coll"), str("Vitrine"));
  EXPECT_EQ(form_.typeOption(), 1);
  EXPECT_EQ(form_.editMode(), EditMode::None);
  EXPECT_TRUE(visible("butFind"));
  EXPECT_TRUE(visible("Data1"));
  EXPECT_FALSE(visible("butFilter"));
}

TEST_F(Search, APendingEditIsStoredFirst) {
  open();
  type("fz_lname", "lang");
  form_.butFind();
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str("lang"));
  EXPECT_FALSE(form_.recordDirty);
}

TEST_F(Search, AnInvalidEditKeepsTheFormOutOfTheSearch) {
  open();
  type("dc_adr", "20000");
  form_.butFind();
  EXPECT_EQ(prompt_.shown, QStringList{str("Adresse ungültig")});
  EXPECT_TRUE(visible("butFind"));
  EXPECT_FALSE(form_.isSearching());
}

TEST_F(Search, WhatAQueryHoldsIsNeverStored) {
  open();
  ask({{"dc_adr", "99"}, {"st_sname", "x"}, {"dc_coll", "Neu"}, {"fz_era", "III"}});
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_FALSE(form_.isSearching());
  EXPECT_EQ(text("st_sname"), str("A3"));
  ask({{"dc_adr", "99"}, {"st_sname", "x"}});
  EXPECT_TRUE(form_.close());
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 3);
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT WHERE FZ_ERA = 'III'").toInt(), 0);
}

TEST_F(Search, WithoutADatabaseTheFormStaysInBrowsingMode) {
  form_.butFind();
  EXPECT_EQ(prompt_.shown.size(), 1);
  EXPECT_FALSE(form_.isSearching());
  EXPECT_TRUE(visible("butFind"));
}

// ---- Find ---------------------------------------------------------------------------------------

TEST_F(Search, FindGoesToTheFirstMatchAndLeavesTheMode) {
  open();
  ask({{"st_sname", "*7"}});
  form_.butOK();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(text("Data1"), str("Satz  3 von  3"));
  EXPECT_EQ(text("st_sname"), str("V7"));
  EXPECT_TRUE(visible("butNew"));
  EXPECT_TRUE(enabled("mnuEditFind"));
  EXPECT_FALSE(visible("butOK"));
  EXPECT_EQ(form_.editMode(), EditMode::None);
}

TEST_F(Search, FindReachesTheFirstMatchOnly) {
  open();
  for (int time = 0; time < 2; ++time) {
    ask({{"dc_coll", "anlage"}});
    form_.butOK();
    EXPECT_EQ(text("st_sname"), str("A3"));
  }
}

TEST_F(Search, AnEmptyFormFindsTheFirstRecord) {
  open();
  form_.MoveLast();
  ask({});
  form_.butOK();
  EXPECT_EQ(text("Data1"), str("Satz  1 von  3"));
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(Search, WithoutAMatchTheRecordShownBeforeIsCurrentAgain) {
  open();
  form_.MoveNext();
  ask({{"dc_adr", "4711"}});
  form_.butOK();
  EXPECT_EQ(prompt_.shown, QStringList{kNothingFits});
  EXPECT_EQ(text("Data1"), str("Satz  2 von  3"));
  EXPECT_EQ(text("st_sname"), str("A5"));
  EXPECT_TRUE(form_.sqlFilter.isEmpty());
  EXPECT_TRUE(form_.reportFilter.isEmpty());
}

TEST_F(Search, TheTypeIsAConditionOnlyWhenItsButtonIsClicked) {
  base_.run("UPDATE LOCO_DAT SET DC_TYPE = 2 WHERE DC_ADR = 5");
  open();
  ask({});
  form_.clickType(2);
  form_.butFilter();
  EXPECT_EQ(form_.sqlFilter, str("DC_TYPE=2"));
  EXPECT_EQ(text("st_sname"), str("A5"));
}

TEST_F(Search, APriceIsAskedForWithAPoint) {
  base_.run("UPDATE LOCO_DAT SET MD_PRICE = 199.9 WHERE DC_ADR = 5");
  open();
  ask({{"md_price", "199.9"}});
  form_.focusLost(str("md_price"));
  form_.butOK();
  EXPECT_TRUE(prompt_.shown.isEmpty()) << qPrintable(prompt_.shown.join(u'\n'));
  EXPECT_EQ(text("st_sname"), str("A5"));
  EXPECT_EQ(text("md_price"), str("199,90"));
}

TEST_F(Search, APriceIsFoundAsItIsShown) {
  base_.run("UPDATE LOCO_DAT SET MD_PRICE = 1199.9 WHERE DC_ADR = 5");
  for (const char* price : {"1199,90", "1.199,90", "1199,9"}) {
    open();
    ask({{"md_price", price}});
    form_.butFilter();
    EXPECT_TRUE(prompt_.shown.isEmpty()) << price << qPrintable(prompt_.shown.join(u'\n'));
    EXPECT_EQ(addresses(), str("5")) << price;
  }
}

// ---- Stars --------------------------------------------------------------------------------------

TEST_F(Search, APartOfATextIsOfferedWithStarsAndTakenOver) {
  base_.run("UPDATE LOCO_DAT SET FZ_LNAME = 'Baureihe 218 rot' WHERE DC_ADR = 5");
  open();
  ask({{"fz_lname", "218"}});
  form_.butOK();
  EXPECT_EQ(prompt_.shown, QStringList{kNothingFits});
  ASSERT_EQ(prompt_.asked.size(), 1);
  EXPECT_TRUE(prompt_.below[0].contains(str("\"*218*\" findet ein Fahrzeug")))
      << qPrintable(prompt_.below[0]);
  EXPECT_EQ(text("st_sname"), str("A3")) << "the safe answer stays";
  prompt_.choices = {0, 0};
  ask({{"fz_lname", "218"}});
  form_.butOK();
  EXPECT_EQ(text("st_sname"), str("A5"));
  ask({{"fz_lname", "218"}});
  form_.butFilter();
  EXPECT_EQ(form_.sqlFilter, str("FZ_LNAME LIKE \"*218*\""));
  EXPECT_EQ(form_.reportFilter, str("{LOCO_DAT.FZ_LNAME} LIKE '*218*'"));
  EXPECT_EQ(addresses(), str("5"));
}

TEST_F(Search, StarsThatFindNothingAreNotOffered) {
  open();
  ask({{"fz_lname", "218"}});
  form_.butOK();
  EXPECT_EQ(prompt_.shown, QStringList{kNothingFits});
  EXPECT_TRUE(prompt_.asked.isEmpty());
}

// ---- On and on ----------------------------------------------------------------------------------

TEST_F(Search, WeitersuchenGoesOnFromTheRecordOnShow) {
  open();
  EXPECT_FALSE(enabled("mnuEditFindNext"));
  ask({{"dc_coll", "Anlage"}});
  EXPECT_FALSE(enabled("mnuEditFindNext"));
  form_.butOK();
  EXPECT_EQ(text("st_sname"), str("A3"));
  ASSERT_TRUE(enabled("mnuEditFindNext"));
  form_.mnuEditFindNext();
  EXPECT_EQ(text("st_sname"), str("A5"));
  form_.mnuEditFindNext();
  EXPECT_EQ(prompt_.shown, QStringList{str("Keine weiteren passenden Daten gefunden!")});
  EXPECT_EQ(text("st_sname"), str("A5"));
  form_.MoveFirst();
  form_.mnuEditFindNext();
  EXPECT_EQ(text("st_sname"), str("A5"));
  open();
  EXPECT_FALSE(enabled("mnuEditFindNext")) << "another database";
}

TEST_F(Search, WeitersuchenStoresTheEditFirst) {
  open();
  ask({{"dc_coll", "Anlage"}});
  form_.butOK();
  type("fz_lname", "lang");
  form_.mnuEditFindNext();
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str("lang"));
  EXPECT_EQ(text("st_sname"), str("A5"));
}

TEST_F(Search, FindLooksInTheFilteredSet) {
  open();
  ask({{"dc_coll", "Anlage"}});
  form_.butFilter();
  ask({{"dc_adr", "7"}});
  form_.butOK();
  EXPECT_EQ(prompt_.shown, QStringList{kNothingFits});
  EXPECT_EQ(text("Data1"), str("Satz  1 von  2"));
}

// ---- Filter -------------------------------------------------------------------------------------

TEST_F(Search, AFilterShowsTheMatchesAloneAndTellsItByItsColour) {
  QList<bool> colours;
  QObject::connect(&form_, &RecordForm::filteredChanged, &form_, [&](bool on) { colours << on; });
  open();
  colours.clear();
  form_.MoveLast();
  ask({{"dc_coll", "Anlage"}});
  form_.butFilter();
  EXPECT_EQ(text("Data1"), str("Satz  1 von  2"));
  EXPECT_EQ(form_.sqlFilter, str("DC_COLL=\"Anlage\""));
  EXPECT_EQ(form_.reportFilter, str("{LOCO_DAT.DC_COLL}='Anlage'"));
  EXPECT_TRUE(form_.isFiltered());
  EXPECT_EQ(colours, QList<bool>{true});
  EXPECT_EQ(addresses(), str("3 5"));
  EXPECT_FALSE(form_.loadingRecord);
}

TEST_F(Search, AFilteredSetStandsInTheOrderOfStorage) {
  base_.addVehicle(1, str("Anlage"), str("A1"));
  open();
  EXPECT_EQ(addresses(), str("1 3 5 7"));
  ask({{"dc_coll", "Anl*"}});
  form_.butFilter();
  EXPECT_EQ(addresses(), str("3 5 1"));
}

TEST_F(Search, AnEmptyFormEndsTheFilter) {
  open();
  ask({{"dc_adr", "7"}});
  form_.butFilter();
  ASSERT_TRUE(form_.isFiltered());
  ask({});
  form_.butFilter();
  EXPECT_FALSE(form_.isFiltered());
  EXPECT_TRUE(form_.reportFilter.isEmpty());
  EXPECT_EQ(text("Data1"), str("Satz  1 von  3"));
}

TEST_F(Search, AFilterWithoutAMatchShowsAllAndKeepsTheReportsSelection) {
  open();
  ask({{"dc_coll", "Vitrine"}});
  form_.butFilter();
  ask({{"st_sname", "Q*"}});
  form_.butFilter();
  EXPECT_EQ(prompt_.shown, QStringList{kNothingFits});
  EXPECT_EQ(text("Data1"), str("Satz  1 von  3"));
  EXPECT_TRUE(form_.sqlFilter.isEmpty());
  EXPECT_EQ(form_.reportFilter, str("{LOCO_DAT.ST_SNAME} LIKE 'Q*'"));
  EXPECT_FALSE(form_.isFiltered());
}

TEST_F(Search, AnotherDatabaseEndsTheFilter) {
  open();
  ask({{"dc_adr", "7"}});
  form_.butFilter();
  open();
  EXPECT_FALSE(form_.isFiltered());
  EXPECT_TRUE(form_.reportFilter.isEmpty());
  EXPECT_EQ(text("Data1"), str("Satz  1 von  3"));
}

// ---- Conditions that are none -------------------------------------------------------------------

TEST_F(Search, AFaultyConditionNamesTheFieldAndTheSign) {
  struct Case {
    const char* control;
    const char* entry;
    const char* fault;
  };
  for (const Case& each :
       {Case{"dc_adr", "1*", "Im Feld \"Adresse\" passt das Zeichen * nicht."},
        Case{"md_price", "1,2,3", "Im Feld \"Preis\" passt das Zeichen , nicht."},
        Case{"fz_lname", "V\"200", "Im Feld \"Langbezeichnung\" passt das Zeichen \" nicht."},
        Case{"st_sname", "[*", "Im Feld \"Kurzname\" passt das Zeichen [ nicht."}}) {
    prompt_.shown.clear();
    prompt_.below.clear();
    open();
    ask({{"fz_code", "103"}, {each.control, each.entry}});
    form_.butOK();
    ASSERT_EQ(prompt_.shown.size(), 1) << each.entry;
    EXPECT_TRUE(prompt_.below[0].startsWith(str(each.fault))) << qPrintable(prompt_.below[0]);
  }
}

TEST_F(Search, ABrokenConditionIsReportedWithTheModeLeft) {
  open();
  ask({{"dc_coll", "Anlage"}});
  form_.butFilter();
  form_.MoveNext();
  for (const bool filter : {false, true}) {
    prompt_.shown.clear();
    ask({{"dc_adr", "*"}});
    filter ? form_.butFilter() : form_.butOK();
    ASSERT_EQ(prompt_.shown.size(), 1);
    EXPECT_TRUE(prompt_.shown[0].startsWith(str("Syntaxfehler bei \"*")))
        << qPrintable(prompt_.shown[0]);
    EXPECT_FALSE(form_.isSearching());
    EXPECT_TRUE(visible("butNew"));
    EXPECT_EQ(text("Data1"), str("Satz  2 von  2"));
    EXPECT_EQ(text("st_sname"), str("A5"));
    EXPECT_EQ(form_.sqlFilter, str("DC_COLL=\"Anlage\""));
    EXPECT_FALSE(form_.loadingRecord);
  }
}

}  // namespace
}  // namespace lokari
