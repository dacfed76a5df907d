#include "cli/vehicle_list.h"

#include <QSqlQuery>

#include <array>

#include "base/paths.h"
#include "cli/command.h"
#include "cli/console.h"
#include "db/column_values.h"
#include "db/database.h"
#include "db/jet_sql.h"

namespace lokari {
namespace {

constexpr std::array kColumns{u"DC_COLL",  u"DC_ADR",   u"ST_SNAME",
                              u"FZ_LNAME", u"FZ_FTYPE", u"DC_DECODER"};

QStringList columnNames() {
  QStringList names;
  for (const char16_t* column : kColumns) names.append(QString::fromUtf16(column));
  return names;
}

QString query(const QString& where) {
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

QList<ResultField> fieldsOf(const QStringList& texts) {
  QList<ResultField> fields;
  for (const QString& name : columnNames()) {
    const QString& text = texts.at(fields.size());
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    const bool asNumber = isNumber && name == QLatin1String("DC_ADR");
    fields.append({name, asNumber ? QJsonValue(number) : QJsonValue(text), text});
  }
  return fields;
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

bool isFaultOfQuery(const StorageError& error) {
  return error.code() == storage_error::kSyntax || error.code() == storage_error::kUnknownName ||
         error.code() == storage_error::kTypeMismatch;
}

QList<QStringList> readChosen(const Database& database, const QString& condition) {
  // A database that lacks a column is no fault of the condition.
  database.query(query(QStringLiteral(" WHERE DC_RECNO = 0")), [](const QSqlQuery&) {});
  try {
    const TableInfo* vehicles = database.schema().table(QStringLiteral("LOCO_DAT"));
    return readVehicles(database, query(provenWhere(*vehicles, condition)));
  } catch (const StorageError& error) {
    if (!isFaultOfQuery(error)) throw;
    throw WrongCall(
        QStringLiteral("Die Bedingung \"%1\" ist fehlerhaft: %2").arg(condition, error.text()));
  }
}

}  // namespace

ExitStatus vehicles(const Call& call, CliContext& context) {
  const std::optional<QString> condition = call.text(u"--where");
  const bool csv = call.has(u"--csv");
  try {
    const Database database(placeFor(context.settings.dbPath));
    const QList<QStringList> lines =
        condition ? readChosen(database, *condition) : readVehicles(database, query({}));
    if (csv) context.console.result(csvLine(columnNames()));
    for (const QStringList& line : lines) {
      csv ? context.console.result(csvLine(line)) : context.results.line(fieldsOf(line));
    }
  } catch (const StorageError& error) {
    context.console.message(QStringLiteral("Datenbankdatei ") + context.settings.dbPath +
                            QStringLiteral(": ") + error.text());
    return ExitStatus::Failed;
  }
  return ExitStatus::Done;
}

}  // namespace lokari
