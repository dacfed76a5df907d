#include "reports/report_rows.h"

#include <QHash>
#include <QSqlQuery>

#include <array>

#include "base/progress.h"
#include "db/column_values.h"
#include "db/database.h"
#include "reports/print_selection.h"
#include "reports/selection_formula.h"

namespace lokari {
namespace {

/// Rows between two looks at the user's wish to stop.
constexpr size_t kPatience = 500;

struct Cancelled {};

constexpr std::array kTypes{u"", u"Fahrzeug", u"Funktionsteil", u"Sonstiges"};

/// Makes the texts of a row's fields.
class RowReader {
 public:
  RowReader(const Database& database, const TableInfo& table, const QStringList& fields) {
    for (const QString& field : fields) add(database, table, field);
    // A query without a column is none.
    if (columns_.isEmpty()) columns_ << QStringLiteral("DC_RECNO");
  }

  const QStringList& columns() const { return columns_; }

  void append(const QSqlQuery& row, size_t number, const ReportEncodings& encode,
              std::vector<std::string>& values) const {
    for (const Field& field : fields_) {
      const ReportEncoding encoding = isText(field) ? encode.text : encode.other;
      values.push_back(encoding(text(field, row, number)));
    }
  }

 private:
  enum class Kind { Plain, Maker, Type, Number, Even };
  struct Field {
    Kind kind = Kind::Plain;
    int place = 0;  ///< of its column in the query
    const ColumnInfo* column = nullptr;
  };

  static bool isText(const Field& field) {
    return field.kind == Kind::Maker || (field.kind == Kind::Plain && field.column->isText());
  }

  void add(const Database& database, const TableInfo& table, const QString& name) {
    Field field;
    if (name == QStringView(kNumberField)) {
      field.kind = Kind::Number;
    } else if (name == QStringView(kEvenField)) {
      field.kind = Kind::Even;
    } else if (name == QStringView(kMakerField)) {
      field.kind = Kind::Maker;
      field.place = columnPlace(QStringLiteral("DC_MANUF"));
      readMakers(database);
    } else if (name == QStringView(kTypeField)) {
      field.kind = Kind::Type;
      field.place = columnPlace(QStringLiteral("DC_TYPE"));
    } else {
      field.column = table.column(name);
      field.kind = Kind::Plain;
      field.place = columnPlace(field.column->name);
    }
    fields_.push_back(field);
  }

  int columnPlace(const QString& column) {
    if (!columns_.contains(column)) columns_ << column;
    return static_cast<int>(columns_.indexOf(column));
  }

  void readMakers(const Database& database) {
    database.query(QStringLiteral("SELECT DC_MANUF, DC_MANUF_TEXT FROM DCMANUFS"),
                   [this](const QSqlQuery& row) {
                     makers_.insert(row.value(0).toInt(), row.value(1).toString());
                   });
  }

  QString text(const Field& field, const QSqlQuery& row, size_t number) const {
    switch (field.kind) {
      case Kind::Plain:
        return shownValue(*field.column, row.value(field.place));
      case Kind::Maker:
        return row.isNull(field.place) ? QString() : makers_.value(row.value(field.place).toInt());
      case Kind::Type: {
        const auto type = row.value(field.place).toUInt();
        return type < kTypes.size() ? QString::fromUtf16(kTypes.at(type)) : QString();
      }
      case Kind::Number:
        return QString::number(number);
      case Kind::Even:
        return number % 2 == 0 ? QStringLiteral("1") : QString();
    }
    return {};
  }

  std::vector<Field> fields_;
  QStringList columns_;
  QHash<int, QString> makers_;
};

}  // namespace

std::optional<ReportRows> ReportRows::read(const ReportSource& source, const QStringList& fields,
                                           const ReportEncodings& encode, Progress& progress) {
  const TableInfo& table = vehicleColumns(source.database);
  const QString where =
      source.formula.isEmpty()
          ? QString()
          : QStringLiteral("WHERE ") + formulaCondition(table, source.formula) + u' ';
  const RowReader reader(source.database, table, fields);
  ReportRows rows;
  rows.width_ = static_cast<size_t>(fields.size());
  const auto take = [&](const QSqlQuery& row) {
    if (rows.count_ % kPatience == 0 && progress.cancelled()) throw Cancelled();
    reader.append(row, ++rows.count_, encode, rows.values_);
  };
  try {
    source.database.query(QStringLiteral("SELECT ") + reader.columns().join(QStringLiteral(", ")) +
                              QStringLiteral(" FROM LOCO_DAT ") + where +
                              QString::fromUtf16(kPrintOrder),
                          take);
  } catch (const Cancelled&) {
    return {};
  }
  return rows;
}

}  // namespace lokari
