#include "db/database_check.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

#include <array>

#include "db/columns.h"
#include "db/database.h"
#include "db/schema_text.h"

namespace lokari {
namespace {

/// Rows of one column that are told one by one.
constexpr int kTold = 10;

// ---- The tables
// ----------------------------------------------------------------------------------

struct TablePlan {
  QString name;
  QList<ColumnInfo> columns;
  QStringList declarations;  ///< of the columns, as they are declared
  QStringList indexes;  ///< "eindeutiger Index über DC_COLL, DC_ADR", the order of text included
};

using Rows = std::function<void(const QString& statement, const QVariantList& values,
                                const Database::RowHandler& row)>;

QString indexText(const Rows& read, const QString& index, bool unique) {
  QStringList columns;
  read(QStringLiteral("SELECT name, coll FROM pragma_index_xinfo(?) WHERE key = 1 ORDER BY seqno"),
       {index}, [&](const QSqlQuery& row) {
         const QString order = row.value(1).toString().toUpper();
         columns << row.value(0).toString().toUpper() +
                        (order == QLatin1String("BINARY") ? QString() : u' ' + order);
       });
  return (unique ? QStringLiteral("eindeutiger Index über ") : QStringLiteral("Index über ")) +
         columns.join(QStringLiteral(", "));
}

TablePlan planOf(const Rows& read, const QString& table) {
  TablePlan plan{table, {}, {}, {}};
  read(QStringLiteral("SELECT name, type FROM pragma_table_info(?)"), {table},
       [&](const QSqlQuery& row) {
         plan.columns << ColumnInfo::declared(row.value(0).toString(), row.value(1).toString());
         plan.declarations << row.value(1).toString();
       });
  QList<std::pair<QString, bool>> indexes;
  read(QStringLiteral("SELECT name, \"unique\" FROM pragma_index_list(?)"), {table},
       [&](const QSqlQuery& row) {
         indexes.append({row.value(0).toString(), row.value(1).toInt() == 1});
       });
  for (const auto& [name, unique] : indexes) plan.indexes << indexText(read, name, unique);
  return plan;
}

QList<TablePlan> plansOf(const Rows& read) {
  QStringList names;
  read(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND "
                      "name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY rowid"),
       {}, [&](const QSqlQuery& row) { names.append(row.value(0).toString()); });
  QList<TablePlan> plans;
  for (const QString& name : names) plans << planOf(read, name);
  return plans;
}

QStringList schemaStatements() {
  static const QRegularExpression kComment(QStringLiteral("--[^\\n]*"));
  QStringList statements;
  for (const QString& each : QString::fromUtf8(kSchemaSql).remove(kComment).split(u';')) {
    if (!each.trimmed().isEmpty()) statements << each;
  }
  return statements;
}

/// A new database in memory.
class NewDatabase {
 public:
  NewDatabase() : name_(QUuid::createUuid().toString()) {
    QSqlDatabase connection = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
    connection.setDatabaseName(QStringLiteral(":memory:"));
    connection.open();
    for (const QString& statement : schemaStatements()) run(statement, {});
  }
  ~NewDatabase() { QSqlDatabase::removeDatabase(name_); }
  NewDatabase(const NewDatabase&) = delete;
  NewDatabase& operator=(const NewDatabase&) = delete;

  QList<TablePlan> plans() const {
    return plansOf([this](const QString& statement, const QVariantList& values,
                          const Database::RowHandler& row) {
      QSqlQuery query = run(statement, values);
      while (query.next()) row(query);
    });
  }

 private:
  QSqlQuery run(const QString& statement, const QVariantList& values) const {
    QSqlQuery query(QSqlDatabase::database(name_, false));
    query.prepare(statement);
    for (const QVariant& value : values) query.addBindValue(value);
    if (!query.exec()) throw StorageError(storage_error::kOther, query.lastError().text());
    return query;
  }

  QString name_;
};

const TablePlan* planNamed(const QList<TablePlan>& plans, const QString& name) {
  for (const TablePlan& plan : plans) {
    if (plan.name.compare(name, Qt::CaseInsensitive) == 0) return &plan;
  }
  return nullptr;
}

qsizetype columnNamed(const TablePlan& plan, const QString& name) {
  for (qsizetype i = 0; i < plan.columns.size(); ++i) {
    if (plan.columns[i].name.compare(name, Qt::CaseInsensitive) == 0) return i;
  }
  return -1;
}

QStringList columnFaults(const TablePlan& wanted, const TablePlan& found) {
  QStringList faults;
  for (qsizetype i = 0; i < wanted.columns.size(); ++i) {
    const ColumnInfo& column = wanted.columns[i];
    const qsizetype at = columnNamed(found, column.name);
    if (at < 0) {
      faults << QStringLiteral("Tabelle %1: Die Spalte %2 fehlt.").arg(wanted.name, column.name);
    } else if (found.columns[at].type != column.type || found.columns[at].size < column.size) {
      faults << QStringLiteral("Tabelle %1: Die Spalte %2 ist %3 statt %4.")
                    .arg(wanted.name, column.name, found.declarations[at], wanted.declarations[i]);
    }
  }
  return faults;
}

// ---- The values
// ----------------------------------------------------------------------------------

/// Columns whose values are fewer than their type allows.
struct RangeRow {
  const char16_t* table;
  const char16_t* column;
  int first;
  int last;
};
constexpr std::array kRanges{
    RangeRow{u"LOCO_DAT", u"DC_ADR", 1, 10239}, RangeRow{u"LOCO_DAT", u"DC_TYPE", 1, 3},
    RangeRow{u"LOCO_DAT", u"DC_MANUF", 0, 255}, RangeRow{u"DCMANUFS", u"DC_MANUF", 0, 255},
    RangeRow{u"DECODERS", u"DC_MANUF", 0, 255},
};

struct ValueRule {
  QString wrong;    ///< condition of a value that is wrong, "%1" standing for the column
  QString allowed;  ///< German
};

ValueRule rangeRule(qint64 first, qint64 last) {
  return {QStringLiteral("typeof(%1) <> 'integer' OR %1 < ") + QString::number(first) +
              QStringLiteral(" OR %1 > ") + QString::number(last),
          QStringLiteral("eine Zahl von %1 bis %2").arg(first).arg(last)};
}

ValueRule ruleOf(const QString& table, const ColumnInfo& column) {
  for (const RangeRow& row : kRanges) {
    if (table.compare(QStringView(row.table), Qt::CaseInsensitive) == 0 &&
        column.name.compare(QStringView(row.column), Qt::CaseInsensitive) == 0) {
      return rangeRule(row.first, row.last);
    }
  }
  switch (column.type) {
    case ColumnType::Byte:
      return rangeRule(0, 255);
    case ColumnType::Integer:
      return rangeRule(-32768, 32767);
    case ColumnType::Long:
      return rangeRule(-2147483648LL, 2147483647LL);
    case ColumnType::Currency:
      return {QStringLiteral("typeof(%1) NOT IN ('integer', 'real')"),
              QStringLiteral("ein Betrag")};
    case ColumnType::Binary:
      return {QStringLiteral("typeof(%1) <> 'blob'"), QStringLiteral("eine Folge von Bytes")};
    case ColumnType::Text:
      break;
  }
  return {QStringLiteral("typeof(%1) <> 'text' OR length(%1) > ") + QString::number(column.size),
          QStringLiteral("ein Text von höchstens %1 Zeichen").arg(column.size)};
}

/// A value of any length in a line.
QString shown(const QVariant& value) {
  constexpr int kMost = 40;
  const QString text = value.toString().simplified();
  return text.size() > kMost ? text.left(kMost) + u'…' : text;
}

QStringList faultsOf(const Database& database, const QString& table, const ColumnInfo& column) {
  const ValueRule rule = ruleOf(table, column);
  const QString name = quotedName(column.name);
  // Only the head of a long value is fetched.
  const QString statement =
      QStringLiteral("SELECT rowid, substr(%1, 1, 100) FROM \"%2\" WHERE %1 IS NOT NULL AND (%3)")
          .arg(name, table, QString(rule.wrong).replace(QLatin1String("%1"), name));
  QStringList faults;
  int count = 0;
  database.read(statement, {}, [&](const QSqlQuery& row) {
    if (++count > kTold) return;
    faults << QStringLiteral("Tabelle %1, Zeile %2: %3 ist \"%4\", erlaubt ist %5.")
                  .arg(table, row.value(0).toString(), column.name, shown(row.value(1)),
                       rule.allowed);
  });
  if (count > kTold) {
    faults << QStringLiteral("Tabelle %1: %2 ist in %3 weiteren Zeilen falsch.")
                  .arg(table, column.name)
                  .arg(count - kTold);
  }
  return faults;
}

/// The program finds a row by a number that such a table has not.
bool lacksRowNumbers(const Database& database, const QString& table) {
  bool lacks = false;
  database.read(QStringLiteral("SELECT wr FROM pragma_table_list WHERE schema = 'main' AND "
                               "lower(name) = lower(?)"),
                {table}, [&](const QSqlQuery& row) { lacks = row.value(0).toInt() == 1; });
  return lacks;
}

}  // namespace

QStringList schemaFaults(const Database& database) {
  const QList<TablePlan> found = plansOf(
      [&database](const QString& statement, const QVariantList& values,
                  const Database::RowHandler& row) { database.read(statement, values, row); });
  QStringList faults;
  for (const TablePlan& wanted : NewDatabase().plans()) {
    const TablePlan* table = planNamed(found, wanted.name);
    if (table == nullptr) {
      faults << QStringLiteral("Die Tabelle %1 fehlt.").arg(wanted.name);
      continue;
    }
    if (lacksRowNumbers(database, wanted.name)) {
      faults << QStringLiteral("Tabelle %1: Ihre Zeilen haben keine Nummern (WITHOUT ROWID).")
                    .arg(wanted.name);
    }
    faults += columnFaults(wanted, *table);
    for (const QString& index : wanted.indexes) {
      if (table->indexes.contains(index)) continue;
      faults << QStringLiteral("Tabelle %1: Es fehlt: %2.").arg(wanted.name, index);
    }
  }
  return faults;
}

QStringList valueFaults(const Database& database) {
  QStringList faults;
  for (const TablePlan& wanted : NewDatabase().plans()) {
    const TableInfo* table = database.schema().table(wanted.name);
    if (table == nullptr || lacksRowNumbers(database, wanted.name)) continue;
    for (const ColumnInfo& column : wanted.columns) {
      if (table->column(column.name) != nullptr) faults += faultsOf(database, wanted.name, column);
    }
  }
  return faults;
}

}  // namespace lokari
