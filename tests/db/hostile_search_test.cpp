// Texts in the query form that try to be more than a text: on a real database, by find and by
// filter. Whatever they say, only vehicles are read and nothing is changed.
#include "tests/db/form_fixture.h"

namespace lokari {
namespace {

/// What the filter shows, by the short names joined; nullptr for an entry that is refused.
struct Hostile {
  const char* control;
  const char* entry;
  const char* shown;
};

constexpr const char* kRefused = nullptr;
constexpr const char* kNone = "";  ///< understood, and no vehicle is like that

const Hostile kHostile[] = {
    {"fz_lname", "\"", kRefused},
    {"fz_lname", "a\"b", kRefused},
    {"fz_lname", "x\"; DROP TABLE LOCO_DAT; --", kRefused},
    {"fz_lname", "x\"; DELETE FROM LOCO_DAT WHERE \"\"=\"", kRefused},
    {"fz_lname", "x\" UNION SELECT * FROM DCMANUFS --", kRefused},
    {"fz_lname", "x\" OR 1=1 --", kRefused},
    {"fz_lname", "x\" OR EXISTS (SELECT 1 FROM sqlite_master) OR FZ_LNAME=\"", kRefused},
    {"fz_lname", "x\" OR load_extension(\"a\")=\"", kRefused},
    {"fz_lname", "x\" OR DC_MANUF_TEXT=\"Zimo", kRefused},
    {"fz_lname", "x\" OR LOCO_DAT.FZ_LNAME=\"y", kRefused},
    {"fz_lname", "x\" ORDER BY DC_ADR --", kRefused},
    {"fz_lname", "x\" /* \"", kRefused},
    {"dc_adr", "3; DELETE FROM LOCO_DAT", kRefused},
    {"dc_adr", "3 UNION SELECT 1", kRefused},
    {"dc_adr", "(SELECT MAX(DC_ADR) FROM LOCO_DAT)", kRefused},
    {"dc_adr", "\"3\"", kRefused},
    {"dc_adr", "DC_COLL", kRefused},
    {"dc_adr", "3,5,1", kRefused},
    {"dc_adr", "3,5", ""},
    {"dc_adr", "3--", kRefused},
    {"dc_coll", "a\" = \"a", kRefused},
    {"fz_lname", "'; DROP TABLE LOCO_DAT; --", kNone},
    {"fz_lname", "x' OR '1'='1", kNone},
    {"fz_lname", "/* */ -- # %", kNone},
    {"fz_lname", "%", kNone},
    {"fz_lname", "_______", kNone},
    {"fz_lname", "\\", kNone},
    {"fz_lname", "x\"\" OR \"\"1\"\"=\"\"1", kNone},
    {"fz_lname", "☃ 🚂 \u202E", kNone},
    {"fz_lname", "%*", "B"},
    {"fz_lname", "*';*", "C"},
    {"fz_lname", "*🚂*", "D"},
    {"fz_lname", "GRÜẞE*", "D"},
    {"fz_lname", "100% --x", "B2"},
    // A quote in the right place makes another condition, of vehicles still.
    {"fz_lname", "x\" OR DC_ADR=2 OR FZ_LNAME=\"x", "B"},
    {"dc_adr", "DC_ADR", "ABCDB2"},
};

class HostileSearch : public test::FormFixture {
 protected:
  void SetUp() override {
    base_.run("DELETE FROM LOCO_DAT");
    add(1, "A", "Dampflok");
    add(2, "B", "%prozent");
    add(3, "C", "Lok'; --");
    add(4, "D", "Grüße an die 🚂");
    add(5, "B2", "100% --x");
    before_ = contents();
    open();
  }
  void add(int address, const char* name, const char* description) {
    base_.run(
        "INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, DC_TYPE, ST_SNAME, FZ_LNAME) "
        "VALUES (?, 'Anlage', 1, ?, ?)",
        {address, str(name), str(description)});
  }

  /// Everything that a statement of the user could reach: schema, vehicles and makers.
  QStringList contents() {
    QStringList rows;
    const auto keep = [&rows](const QSqlQuery& row) { rows << row.value(0).toString(); };
    base_.open().read(str("SELECT name || type || COALESCE(sql, '') FROM sqlite_master"), {}, keep);
    base_.open().read(str("SELECT DC_RECNO || '|' || DC_ADR || DC_COLL || ST_SNAME || FZ_LNAME "
                          "FROM LOCO_DAT ORDER BY DC_RECNO"),
                      {}, keep);
    base_.open().read(str("SELECT DC_MANUF || DC_MANUF_TEXT FROM DCMANUFS"), {}, keep);
    return rows;
  }
  QString shownNames() {
    QString names;
    const int count = form_.records().count();
    form_.MoveFirst();
    for (int at = 0; at < count; ++at) {
      names += text("st_sname");
      if (at + 1 < count) form_.MoveNext();
    }
    return names;
  }

  QStringList before_;
};

TEST_F(HostileSearch, ReadsVehiclesOnlyAndChangesNothing) {
  for (const Hostile& hostile : kHostile) {
    SCOPED_TRACE(std::string(hostile.control) + ": " + hostile.entry);
    for (const bool filter : {false, true}) {
      prompt_.shown.clear();
      form_.butFind();
      type(hostile.control, hostile.entry);
      prompt_.shown.clear();
      filter ? form_.butFilter() : form_.butOK();
      EXPECT_FALSE(form_.isSearching());
      if (hostile.shown != nullptr && *hostile.shown != '\0') {
        EXPECT_TRUE(prompt_.shown.isEmpty()) << qPrintable(prompt_.shown.join(u'\n'));
        if (filter) {
          EXPECT_EQ(shownNames(), str(hostile.shown));
        }
      } else {
        ASSERT_EQ(prompt_.shown.size(), 1);
        EXPECT_EQ(prompt_.shown[0] == str("Keine passenden Daten gefunden!"),
                  hostile.shown != nullptr)
            << qPrintable(prompt_.shown[0]);
        EXPECT_EQ(form_.records().count(), 5);
      }
      EXPECT_EQ(contents(), before_);
    }
    // The next entry begins with all vehicles.
    form_.butFind();
    form_.butFilter();
    ASSERT_EQ(form_.records().count(), 5);
  }
}

}  // namespace
}  // namespace lokari
