#include "cli/vehicle_list.h"

#include <QSqlQuery>

#include <array>

#include "base/paths.h"
#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/console.h"
#include "db/column_values.h"
#include "db/database.h"

namespace lokari {
namespace {

constexpr std::array kColumns{u"DC_COLL",  u"DC_ADR",   u"ST_SNAME",
                              u"FZ_LNAME", u"FZ_FTYPE", u"DC_DECODER"};

QStringList columnNames() {
  QStringList names;
  for (const char16_t* column : kColumns) names.append(QString::fromUtf16(column));
  return names;
}

QString query(const std::optional<QString>& condition) {
  const QString where = condition ? QStringLiteral(" WHERE ") + *condition : QString();
  return QStringLiteral("SELECT ") + columnNames().join(QStringLiteral(", ")) +
         QStringLiteral(" FROM LOCO_DAT") + where +
         QStringLiteral(" ORDER BY ISNULL(DC_COLL) DESC, DC_COLL, DC_ADR");
}

// A field with a separator, a quote or a line end stands in quotes.
QString csvField(QString field) {
  const bool plain = !field.contains(u',') && !field.contains(u'"') && !field.contains(u'\n') &&
                     !field.contains(u'\r');
  if (plain) return field;
  return u'"' + field.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString csvLine(const QStringList& fields) {
  QStringList quoted;
  for (const QString& field : fields) quoted.append(csvField(field));
  return quoted.join(u',');
}

// One line a vehicle and one tab between two columns, whatever the texts hold.
QString tabLine(const QStringList& fields) {
  QStringList plain;
  for (QString field : fields) {
    plain.append(field.replace(u'\t', u' ').replace(u'\r', u' ').replace(u'\n', u' '));
  }
  return plain.join(u'\t');
}

QList<QStringList> readVehicles(const Database& database, const QString& query) {
  const TableInfo* table = database.schema().table(QStringLiteral("LOCO_DAT"));
  QList<QStringList> lines;
  database.query(query, [&](const QSqlQuery& row) {
    QStringList fields;
    for (const QString& column : columnNames()) {
      const ColumnInfo* info = table->column(column);
      fields.append(info == nullptr ? QString() : shownValue(*info, row.value(column)));
    }
    lines.append(fields);
  });
  return lines;
}

bool isFaultOfCondition(const StorageError& error) {
  return error.code() == storage_error::kSyntax || error.code() == storage_error::kUnknownName ||
         error.code() == storage_error::kTypeMismatch;
}

}  // namespace

ExitStatus vehicles(const QStringList& arguments, CliContext& context) {
  Arguments parser(arguments);
  const std::optional<QString> condition = parser.takeValue(QStringLiteral("--where"));
  const bool csv = parser.takeFlag(QStringLiteral("--csv"));
  const QStringList rest = parser.takeRest();
  if (!rest.isEmpty()) {
    throw WrongCall(QStringLiteral("\"%1\" gehört nicht zum Befehl!").arg(rest.join(u' ')));
  }
  try {
    const Database database(placeFor(context.settings.dbPath));
    const QList<QStringList> lines = readVehicles(database, query(condition));
    if (csv) context.console.result(csvLine(columnNames()));
    for (const QStringList& line : lines) {
      context.console.result(csv ? csvLine(line) : tabLine(line));
    }
  } catch (const StorageError& error) {
    if (condition && isFaultOfCondition(error)) throw WrongCall(error.text());
    context.console.message(QStringLiteral("Datenbankdatei ") + context.settings.dbPath +
                            QStringLiteral(": ") + error.text());
    return ExitStatus::Failed;
  }
  return ExitStatus::Done;
}

}  // namespace lokari
