// A table as a grid that is edited in place, with an empty row at the end to begin new ones in.
//
// Texts are taken cell by cell; a row is stored as a whole when it is left, or given up. Only one
// row is being edited at any time. What may be done is asked from the table's ListRules; what the
// storage refuses is shown through the Prompt, and the row stays in its edit. A row that another
// program has changed under the edit is asked about.
#pragma once

#include <QAbstractTableModel>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "db/list_rules.h"

namespace lokari {

class Prompt;

class ListGrid final : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// An empty grid. `database` and `prompt` must outlive it.
  ListGrid(Database& database, Prompt& prompt, std::unique_ptr<ListRules> rules,
           QObject* parent = nullptr);

  /// Shows the rows of a query (see RecordSet::open()); an edit in hand is given up. Throws
  /// StorageError; the grid stays as it was.
  void open(const QString& query);

  /// The empty row at the end.
  int blankRow() const { return static_cast<int>(rows_.size()) - 1; }
  /// The row that was changed and not stored, -1 when there is none.
  int editedRow() const { return edited_; }

  /// Asked before the user begins to type in a row: another row's edit is stored first, and a new
  /// row must be allowed. False after a message.
  bool mayEdit(int row);
  /// Takes a text for a cell; an empty one is Null. False when it was refused, after a message.
  bool setData(const QModelIndex& index, const QVariant& text, int role = Qt::EditRole) override;
  /// Stores the edit, if there is one; rows then stand in the order of the query. A new row without
  /// an entry is dropped instead. False when the row cannot be stored, after a message: it is still
  /// being edited.
  bool storeRow();
  /// Gives the edit up: the row is as it is stored now.
  void revertRow();
  /// Deletes a row; a row that was only begun is given up. False when that is refused, and for the
  /// empty row.
  bool deleteRow(int row);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  ListRow& at(int row) { return rows_[static_cast<size_t>(row)]; }
  const ListRow& at(int row) const { return rows_[static_cast<size_t>(row)]; }
  const ColumnInfo& info(int column) const;
  QVariantList valuesOf(const RecordSet& records) const;
  RowValues shownColumns(const ListRow& row) const;
  ListRow blank() const;
  bool attempt(const std::function<bool()>& operation) const;
  QVariant checked(int column, const QString& text) const;
  void take(int row, const ListRow& changed);
  bool writeOrAsk();
  void write(bool over);
  void takeStored();
  void takeBack();
  std::optional<QVariantList> storedNow(int row);
  int askAboutChange(const RecordChanged& changed);
  void reorder();
  void remove(int row);
  void tellChanged(int row);

  Database& database_;
  Prompt& prompt_;
  std::unique_ptr<ListRules> rules_;
  std::vector<ListColumn> columns_;
  QString query_;
  RecordSet records_;
  std::vector<ListRow> rows_;
  int edited_ = -1;
};

}  // namespace lokari
