// What a table of the lists and of the catalogue lets the user do in its grid, asked before and
// told after each change of a row. The grid itself (list_grid.h) knows no table.
#pragma once

#include <QString>
#include <QVariant>

#include <vector>

#include "db/record_set.h"

namespace lokari {

/// A column of a grid.
struct ListColumn {
  const char16_t* column;  ///< of the table
  const char16_t* caption;
};

/// A row of a grid. Values stand in the order of the grid's columns; Null is an invalid QVariant.
struct ListRow {
  Bookmark key;         ///< empty until the row is stored
  QVariantList values;  ///< as they are shown
  QVariantList stored;  ///< as they are on disk; all Null in a new row

  bool isNew() const { return !key.has_value(); }
  bool isChanged() const { return values != stored; }
  QString text(int column) const { return values[column].toString(); }
  QString storedText(int column) const { return stored[column].toString(); }
};

/// What becomes of a row that the user leaves.
enum class RowVerdict {
  Store,
  Drop,    ///< a new row without an entry: it goes without a word
  Refuse,  ///< a message was shown; the user stays in the row
};

/// Each operation may throw StorageError, which refuses the change.
class ListRules {
 public:
  virtual ~ListRules() = default;

  /// The columns of the grid. `column` in the other operations is an index of these.
  virtual std::vector<ListColumn> columns() const = 0;

  /// Before a row is begun. False refuses it; a message was shown.
  virtual bool mayInsert() { return true; }

  /// Before a text is taken into a column of a row, which still holds the old one. It may put
  /// another text in its place and set other columns. False refuses it; a message was shown.
  virtual bool mayChange(ListRow& row, int column, QString& text) = 0;

  /// Before a changed row is stored; a new row has a value in some column.
  virtual RowVerdict mayStore(const ListRow& row) = 0;

  /// A new row was stored.
  virtual void inserted(const ListRow& /*row*/) {}

  /// Before a stored row is deleted. False refuses it; a message was shown, or the user said no.
  virtual bool mayDelete(const ListRow& /*row*/) { return true; }

  /// The row was deleted.
  virtual void deleted(const ListRow& /*row*/) {}
};

}  // namespace lokari
