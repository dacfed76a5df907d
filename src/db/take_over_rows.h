// Rows of a foreign table on their way into the table of the same name.
#pragma once

#include <QStringList>
#include <QVariantList>

#include "db/columns.h"

namespace lokari {

/// A value that its column cannot hold, or not as it stands: it goes into a file.
struct KeptValue {
  QString column;
  QString extension;
  QByteArray data;
  QString reason;  ///< German: what happened to it, as the beginning of a sentence
};

struct TakenRow {
  QVariantList values;  ///< for the placeholders of statement()
  QList<KeptValue> kept;
};

class TakeOverRows {
 public:
  /// `columns` are those of the foreign table. Names have no case; a column that only one of the
  /// tables has is left out.
  TakeOverRows(const TableInfo& table, const QStringList& columns);

  bool areVehicles() const;
  /// Whether no column has a place here.
  bool isEmpty() const { return columns_.isEmpty(); }
  /// The foreign columns that this system does not know.
  const QStringList& unknownColumns() const { return unknown_; }
  /// INSERT with a placeholder a column.
  const QString& statement() const { return statement_; }

  /// A picture in the wrapper of Access is unwrapped, or kept when it is no picture file; a text
  /// longer than its column is cut and kept whole. Throws StorageError with kNotNumeric for a value
  /// that its column cannot hold.
  TakenRow take(const QVariantList& row) const;

  /// The row's values without its own number, so that the database gives it a new one. The same
  /// values for a table whose rows have none.
  QVariantList withoutNumber(const QVariantList& values) const;

  /// What a person calls the row: "Satz 7 (Adresse 3, Sammlung "Anlage")", or the table and the
  /// number of the row, from 1.
  QString rowName(const QVariantList& row, int number) const;

 private:
  struct Column {
    ColumnInfo info;
    qsizetype source;  ///< its place in a foreign row
  };
  QVariant taken(const ColumnInfo& column, const QVariant& value, QList<KeptValue>& kept) const;
  QString valueOf(const QVariantList& row, const QString& column) const;

  QString table_;
  QList<Column> columns_;
  QStringList unknown_;
  QString statement_;
};

}  // namespace lokari
