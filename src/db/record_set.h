// A positioned record set over one table.
//
// It keeps the keys of its rows; a row is fetched when it becomes current, a binary column only
// when it is read. So twenty thousand vehicles cost what twenty do. The set is a snapshot of keys:
// a record that was added stands at its end until the set is opened again.
//
// Other programs may change the same file. The set keeps what it has read of the current row, and
// an edit is stored only where the row still holds that: see Update().
#pragma once

#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QVariant>

#include <functional>
#include <optional>
#include <vector>

#include "db/database.h"

namespace lokari {

enum class EditMode { None = 0, Edit = 1, Add = 2 };

/// A row's key, valid as long as the set is open. Empty when there was no current record.
using Bookmark = std::optional<qint64>;

/// The values of a row by the names of its columns.
using RowValues = QHash<QString, QVariant>;

/// Somebody else changed the row that is being edited; nothing was stored, the edit goes on.
class RecordChanged : public StorageError {
 public:
  explicit RecordChanged(const RowValues& stored);
  /// The columns that were changed, with what is stored in them now.
  const RowValues& stored() const { return stored_; }

 private:
  RowValues stored_;
};

/// Every operation throws StorageError where it says so and where the storage fails. A failed
/// operation leaves set, position and edit as they were.
class RecordSet {
 public:
  /// A closed set: no records, no position.
  RecordSet() = default;

  /// Opens the rows of a query, "SELECT * FROM table [WHERE condition] [ORDER BY order]" in the
  /// system's query language, and makes the first row current. `database` must outlive the set.
  /// A failure leaves the set as it was. A pending edit is dropped.
  void open(Database& database, const QString& query);
  void close() { *this = RecordSet(); }
  bool isOpen() const { return database_ != nullptr; }

  /// 0-based position of the current record, -1 when there is none.
  int position() const { return position_; }
  int count() const { return static_cast<int>(keys_.size()); }
  EditMode editMode() const { return editMode_; }
  /// Ahead of the first record; both are true in an empty set.
  bool BOF() const { return bof_; }
  /// Behind the last record. (The plain name is a macro of the C library.)
  bool EOF_() const { return eof_; }

  Bookmark bookmark() const;
  /// Goes back to a kept record. Throws kNoRecord when it is not in the set any more.
  void setBookmark(const Bookmark& bookmark);

  /// Moves drop a pending edit. MoveNext from the last record gives EOF_, MovePrevious from the
  /// first gives BOF; the position is then -1. A move beyond that, or in an empty set, throws
  /// kNoRecord; MoveFirst and MoveLast do nothing in an empty set.
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();

  /// Makes the first record that meets the condition the current one. Without such a record
  /// NoMatch() is true and the current record stays. Throws when the condition is not understood.
  void FindFirst(const QString& condition);
  /// The same among the records behind the current one.
  void FindNext(const QString& condition);
  bool NoMatch() const { return noMatch_; }
  /// How many records of the set meet the condition. Throws when it is not understood.
  int countOf(const QString& condition) const;

  /// Begins a blank record; the position stays. Values of it are Null until they are set.
  void AddNew();
  /// Begins a change of the current record. Throws kNoRecord. Does nothing in an edit.
  void Edit();
  /// Stores the edit: only columns whose stored form differs from what was read are written. After
  /// AddNew the record is at the end of the set and the position is unchanged. Throws kNotEditing
  /// without an edit, kDuplicateKey when an index refuses it, kRecordDeleted when the row is gone,
  /// and RecordChanged when a column that was read from the row holds something else by now; the
  /// edit then goes on.
  void Update();
  /// The same, over what somebody else changed: his columns stay where the edit has none.
  void overwrite();
  void CancelUpdate();
  /// Deletes the current record. The set then stands between two records: MoveNext goes to the one
  /// behind, MovePrevious to the one ahead; until then position() is -1. A row that somebody else
  /// has deleted already counts as deleted.
  void Delete();
  /// All values of the current row, binary ones included, as stored. Throws kRecordDeleted.
  RowValues row() const;
  /// Puts a row back that Delete() took: with its number, at its place, as the current one. Drops a
  /// pending edit. Throws kDuplicateKey when its number or key is in use again.
  void restore(const RowValues& row, int position);
  /// The row that has a key of `row` by now, without its binary columns; nothing when none has.
  std::optional<RowValues> inTheWayOf(const RowValues& row) const;

  /// The value of a column: of the edit, else of the current record. Null is a QVariant that
  /// isNull(); an empty text is not. A column is read once for as long as the record stays the
  /// current one. Throws kNoRecord, kUnknownName, and kRecordDeleted when another program deleted
  /// the record.
  QVariant value(const QString& column) const;
  /// value() as a control shows it: empty for Null, numbers by shownNumber().
  QString text(const QString& column) const;

  /// The values of the edit by the columns' names as in the table.
  const QMap<QString, QVariant>& changes() const { return changes_; }
  /// The edit has these values and no others.
  void setChanges(const QMap<QString, QVariant>& changes) { changes_ = changes; }
  /// Whether the edit holds something else for the column than what was read of the record. Values
  /// and marks of a CV set are one: a mark tells of its value.
  bool isChanged(const QString& column) const;

  /// Sets a column of the edit. An invalid QVariant is Null; a text for a numeric column must be a
  /// number. Throws kNotEditing, kUnknownName, kNotNumeric and kTooLong.
  void setValue(const QString& column, const QVariant& value);

  /// What is on show of the current row was read earlier than now: an edit is stored only where the
  /// row still holds that. Throws StorageError.
  void onShow(const RowValues& values);

  /// What this set writes belongs to the transaction that runs. Of other sets the storage takes
  /// nothing meanwhile (kBusy): it would be lost when the transaction is taken back.
  void joinTransaction() { joins_ = true; }

  /// Reads what was read of the current row anew, an edit apart. Without the row or its file what
  /// was read stays; throws StorageError.
  void reread();
  /// The same for some columns. Those that the edit holds are compared with what was read of them,
  /// and stay.
  void reread(const QStringList& columns);
  /// This program has changed a column of the current row by another way than this set: what was
  /// read of it, and what the edit holds, take `change` alike. What the edit does not hold is read
  /// anew. Throws StorageError.
  void changedBeside(const QString& column,
                     const std::function<QVariant(const QVariant& value)>& change);

  /// Whether another row has what the edit would make a key of this one; without a key that is
  /// touched, false. Throws StorageError.
  bool isTaken() const;

  /// The columns; only of an open set.
  const TableInfo& table() const { return *table_; }

 private:
  const ColumnInfo& needColumn(const QString& name) const;
  void go(int position);
  QSet<qint64> matches(const QString& condition) const;
  void findFrom(int position, const QString& condition);
  void checkFree() const;
  qint64 currentKey() const;
  void fetch() const;
  QVariant stored(const ColumnInfo& column) const;
  bool holds(const QString& name) const;
  bool differs(const QString& name) const;
  QMap<QString, QVariant> ownChanges() const;
  void addRow();
  qint64 insertRow();
  void storeEdit(bool over);
  /// Returns what the row holds then, of the columns that were read or written.
  RowValues updateRow(bool over);
  void checkUnique() const;
  [[noreturn]] static void noRecord();
  [[noreturn]] static void refuseDuplicate();
  /// The row that has these values in the columns of `key`, another one than `except`.
  Bookmark holderOf(const QStringList& key, const QVariantList& values, Bookmark except) const;
  RowValues readRow(const QStringList& columns) const;
  RowValues readRow(const QStringList& columns, qint64 key) const;
  QStringList plainColumns() const;

  Database* database_ = nullptr;
  const TableInfo* table_ = nullptr;
  std::vector<qint64> keys_;
  int position_ = -1;
  int gap_ = -1;  // after Delete: the index of the record behind
  bool bof_ = true;
  bool eof_ = true;
  bool noMatch_ = false;
  bool joins_ = false;
  EditMode editMode_ = EditMode::None;
  qint64 addedKey_ = 0;
  QMap<QString, QVariant> changes_;  // by the column's name as in the table
  // What was read of the current row: all columns but the binary ones, which are read one by one.
  mutable std::optional<RowValues> row_;
};

}  // namespace lokari
