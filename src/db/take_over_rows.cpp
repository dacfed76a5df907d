#include "db/take_over_rows.h"

#include <algorithm>

#include "base/text_file.h"
#include "db/column_values.h"
#include "db/ole_picture.h"

namespace lokari {
namespace {

const QString kVehicles = QStringLiteral("LOCO_DAT");
const QString kNumber = QStringLiteral("DC_RECNO");
const QString kPicture = QStringLiteral("MD_PIC");

/// A character that takes two places is not cut in half.
QString beginning(const QString& text, int size) {
  return text.left(text[size - 1].isHighSurrogate() ? size - 1 : size);
}

}  // namespace

TakeOverRows::TakeOverRows(const TableInfo& table, const QStringList& columns)
    : table_(table.name) {
  QStringList names;
  QStringList places;
  for (qsizetype i = 0; i < columns.size(); ++i) {
    const ColumnInfo* known = table.column(columns[i]);
    if (known == nullptr) {
      unknown_ << columns[i];
      continue;
    }
    columns_.append({*known, i});
    names << known->name;
    places << QStringLiteral("?");
  }
  statement_ = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                   .arg(table_, names.join(u','), places.join(u','));
}

bool TakeOverRows::areVehicles() const {
  return table_ == kVehicles;
}

TakenRow TakeOverRows::take(const QVariantList& row) const {
  TakenRow result;
  result.values.reserve(columns_.size());
  for (const Column& column : columns_) {
    result.values.append(taken(column.info, row[column.source], result.kept));
  }
  return result;
}

QVariant TakeOverRows::taken(const ColumnInfo& column, const QVariant& value,
                             QList<KeptValue>& kept) const {
  if (column.isText() && value.toString().size() > column.size) {
    const QString text = value.toString();
    kept.append({column.name, QStringLiteral("txt"), encodeMarkedUtf8(text),
                 QStringLiteral("%1 ist nach %2 Zeichen abgeschnitten, der ganze Text steht")
                     .arg(column.name)
                     .arg(column.size)});
    return beginning(text, column.size);
  }
  if (column.name != kPicture || !isOleWrapped(value.toByteArray())) {
    return columnValue(column, value);
  }
  const QByteArray wrapped = value.toByteArray();
  if (const auto picture = pictureInOle(wrapped)) return *picture;
  kept.append({column.name, QStringLiteral("ole"), wrapped,
               QStringLiteral("Das Bild ist weder Bitmap noch JPEG, es liegt unverändert")});
  return {};
}

QVariantList TakeOverRows::withoutNumber(const QVariantList& values) const {
  QVariantList result = values;
  for (qsizetype i = 0; i < columns_.size(); ++i) {
    if (columns_[i].info.name == kNumber) result[i] = QVariant();
  }
  return result;
}

QString TakeOverRows::rowName(const QVariantList& row, int number) const {
  if (!areVehicles()) return QStringLiteral("Tabelle %1, Zeile %2").arg(table_).arg(number);
  return QStringLiteral("Satz %1 (Adresse %2, Sammlung \"%3\")")
      .arg(valueOf(row, kNumber), valueOf(row, QStringLiteral("DC_ADR")),
           valueOf(row, QStringLiteral("DC_COLL")));
}

QString TakeOverRows::valueOf(const QVariantList& row, const QString& column) const {
  const auto found = std::find_if(columns_.begin(), columns_.end(),
                                  [&](const Column& one) { return one.info.name == column; });
  return found == columns_.end() ? QString() : row[found->source].toString();
}

}  // namespace lokari
