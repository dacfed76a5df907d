// Real Access files, taken over, against what another reader says of them.
#include <QHash>
#include <QSet>
#include <QSqlQuery>

#include "access_files.h"
#include "db/access_database.h"
#include "db/cv_record.h"
#include "db/database.h"
#include "db/v2_import.h"
#include "mdb_export.h"

namespace lokari {
namespace {

QString str(const char* text) {
  return QString::fromUtf8(text);
}

/// A stored value as mdb-export writes it.
QString exported(const ColumnInfo& column, const QVariant& value) {
  if (value.isNull()) return {};
  if (column.type == ColumnType::Binary) {
    return QString::fromLatin1(value.toByteArray().toHex()).toUpper();
  }
  if (column.type == ColumnType::Currency) return QString::number(value.toDouble(), 'f', 4);
  return value.toString();
}

class AccessTakeOver : public ::testing::TestWithParam<const char*> {
 protected:
  test::AccessFiles files_;
};

TEST_P(AccessTakeOver, EveryValueIsTheSameByteByByte) {
  const QString name = str(GetParam());
  const QString file = files_.copy(name);
  ASSERT_TRUE(files_.takeOver(name)) << qPrintable(files_.report());
  EXPECT_EQ(test::AccessFiles::contents(file),
            test::AccessFiles::contents(test::AccessFiles::original(name)))
      << "the Access file stays as it is";
  const Database taken(files_.path(str("NEU.MDB")));
  EXPECT_EQ(taken.integrityFaults(), QStringList());
  for (const char* table :
       {"DCMANUFS", "DECODERS", "MANUFS", "MOTORS", "ERAS", "LINES", "FTYPES", "LOCO_DAT"}) {
    const test::ExportedTable expected = test::mdbExport(file, str(table));
    const TableInfo& info = *taken.schema().table(str(table));
    ASSERT_EQ(expected.columns.size(), info.columns.size()) << table;
    qsizetype row = 0;
    taken.read(str("SELECT %1 FROM %2 ORDER BY rowid").arg(expected.columns.join(u','), str(table)),
               {}, [&](const QSqlQuery& query) {
                 ASSERT_LT(row, expected.rows.size()) << table;
                 for (int i = 0; i < expected.columns.size(); ++i) {
                   EXPECT_EQ(exported(*info.column(expected.columns[i]), query.value(i)),
                             expected.rows[row][i])
                       << table << " row " << row << ' ' << qPrintable(expected.columns[i]);
                 }
                 ++row;
               });
    EXPECT_EQ(row, expected.rows.size()) << table;
  }
}

INSTANTIATE_TEST_SUITE_P(Files, AccessTakeOver,
                         ::testing::Values("jet4_current.mdb", "jet4_2003_empty.mdb"));

TEST_F(AccessTakeOver, TellsTheNumbersAndKeepsNothingBeside) {
  files_.copy(str("jet4_current.mdb"));
  ASSERT_TRUE(files_.takeOver(str("jet4_current.mdb")));
  EXPECT_EQ(files_.report(),
            str("Übernahme erfolgreich abgeschlossen,\n45 Fahrzeuge und 26 Listeneinträge "
                "übernommen!\nNeue Datenbank: NEU.MDB"));
  EXPECT_EQ(files_.names(), QStringList({"NEU.MDB", "jet4_current.mdb"}));
}

TEST_F(AccessTakeOver, AnEmptyCollectionAndNoneStayApart) {
  files_.copy(str("jet4_current.mdb"));
  ASSERT_TRUE(files_.takeOver(str("jet4_current.mdb")));
  QStringList kinds;
  Database(files_.path(str("NEU.MDB")))
      .read(str("SELECT typeof(DC_COLL) FROM LOCO_DAT WHERE DC_ADR IN (17, 18) ORDER BY DC_ADR"),
            {}, [&](const QSqlQuery& row) { kinds << row.value(0).toString(); });
  EXPECT_EQ(kinds, QStringList({"text", "null"}));
}

/// What a V2 vehicle becomes here, as mdb-export writes it: its values by the names of its columns,
/// its arrays in every set.
QHash<QString, QString> expectedOfV2(const test::ExportedTable& table, const QStringList& row) {
  const QString zeros(2 * kCvFieldBytes, u'0');
  QHash<QString, QString> expected;
  for (qsizetype i = 1; i < row.size(); ++i) expected[table.columns[i]] = row[i];
  for (const char* column : {"DC_CV", "DC_CV_ST"}) {
    if (expected[str(column)].isEmpty()) expected[str(column)] = zeros;
  }
  if (expected[str("FZ_LNAME")].isEmpty()) expected[str("FZ_LNAME")] = str("...");
  for (int set = 1; set <= 4; ++set) {
    expected[str("DC_CV_%1").arg(set)] = expected[str("DC_CV")];
    expected[str("DC_CV_%1_ST").arg(set)] = expected[str("DC_CV_ST")];
  }
  return expected;
}

TEST_F(AccessTakeOver, EveryValueOfAV2FileIsTheSameByteByByteInEverySet) {
  const QString file = files_.copy(str("jet4_v2.mdb"));
  const test::ExportedTable source = test::mdbExport(file, str("LOCO_DAT"));
  Database target(files_.path(str("EMPTY.MDB")));
  ASSERT_EQ(importVehicles(
                [&] { return std::make_unique<AccessDatabase>(test::AccessFiles::reader(), file); },
                target, files_.progress),
            ImportEnd::Whole);
  const TableInfo& info = *target.schema().table(str("LOCO_DAT"));
  const qsizetype address = source.columns.indexOf(str("DC_ADR"));
  QSet<QString> seen;
  for (const QStringList& row : source.rows) {
    if (seen.contains(row[address])) continue;
    seen.insert(row[address]);
    const QHash<QString, QString> expected = expectedOfV2(source, row);
    const QStringList columns = expected.keys();
    int found = 0;
    target.read(
        str("SELECT %1 FROM LOCO_DAT WHERE DC_ADR = %2").arg(columns.join(u','), row[address]), {},
        [&](const QSqlQuery& query) {
          ++found;
          for (int i = 0; i < columns.size(); ++i) {
            EXPECT_EQ(exported(*info.column(columns[i]), query.value(i)), expected[columns[i]])
                << qPrintable(row[address] + u' ' + columns[i]);
          }
        });
    EXPECT_EQ(found, 1) << qPrintable(row[address]);
  }
  EXPECT_EQ(seen.size(), 40);
}

}  // namespace
}  // namespace lokari
