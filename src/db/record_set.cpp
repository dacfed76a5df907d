#include "db/record_set.h"

#include <QSqlQuery>

#include <algorithm>

#include "db/column_values.h"
#include "db/cv_columns.h"
#include "db/jet_sql.h"
#include "db/sqlite_functions.h"

namespace lokari {
namespace {

/// The same stored form. Empty text is not Null.
bool sameStored(const QVariant& one, const QVariant& other) {
  const auto isNull = [](const QVariant& value) {
    return value.isNull() || (value.typeId() == QMetaType::QString && value.toString().isNull()) ||
           (value.typeId() == QMetaType::QByteArray && value.toByteArray().isNull());
  };
  if (isNull(one) || isNull(other)) return isNull(one) && isNull(other);
  if (one.typeId() == QMetaType::QString || other.typeId() == QMetaType::QString) {
    return one.toString() == other.toString();
  }
  if (one.typeId() == QMetaType::QByteArray || other.typeId() == QMetaType::QByteArray) {
    return one.toByteArray() == other.toByteArray();
  }
  return one.toDouble() == other.toDouble();
}

}  // namespace

RecordChanged::RecordChanged(const RowValues& stored)
    : StorageError(storage_error::kRecordChanged,
                   QStringLiteral("Der Datensatz wurde inzwischen von einem anderen Programm "
                                  "geändert.")),
      stored_(stored) {}

void RecordSet::noRecord() {
  throw StorageError(storage_error::kNoRecord, QStringLiteral("Kein aktueller Datensatz."));
}

void RecordSet::open(Database& database, const QString& query) {
  const JetSelect select = translateSelect(database.schema(), query);
  if (!select.all) {
    throw StorageError(
        storage_error::kSyntax,
        QStringLiteral("Die Abfrage \"%1\" hat keine ganzen Datensätze.").arg(query));
  }
  RecordSet opened;
  opened.database_ = &database;
  opened.table_ = database.schema().table(select.table);
  database.read(select.keys(), select.values, [&opened](const QSqlQuery& row) {
    opened.keys_.push_back(row.value(0).toLongLong());
  });
  opened.MoveFirst();
  *this = std::move(opened);
}

Bookmark RecordSet::bookmark() const {
  return position_ < 0 ? Bookmark() : keys_[static_cast<size_t>(position_)];
}

void RecordSet::setBookmark(const Bookmark& bookmark) {
  const auto found = bookmark ? std::find(keys_.begin(), keys_.end(), *bookmark) : keys_.end();
  if (found == keys_.end()) noRecord();
  go(static_cast<int>(found - keys_.begin()));
}

void RecordSet::go(int position) {
  CancelUpdate();
  row_.reset();
  gap_ = -1;
  bof_ = keys_.empty() || position < 0;
  eof_ = keys_.empty() || position >= count();
  position_ = bof_ || eof_ ? -1 : position;
}

void RecordSet::MoveFirst() {
  go(0);
}

void RecordSet::MoveLast() {
  go(count() - 1);
}

void RecordSet::MoveNext() {
  if (eof_) noRecord();
  go(gap_ >= 0 ? gap_ : position_ + 1);
}

void RecordSet::MovePrevious() {
  if (bof_) noRecord();
  go(eof_ ? count() - 1 : (gap_ >= 0 ? gap_ : position_) - 1);
}

QSet<qint64> RecordSet::matches(const QString& condition) const {
  if (!isOpen()) noRecord();
  const JetCondition found = translateCondition(*table_, condition);
  QSet<qint64> keys;
  database_->read(
      QStringLiteral("SELECT rowid FROM %1 WHERE %2").arg(quotedName(table_->name), found.sql),
      found.values, [&keys](const QSqlQuery& row) { keys.insert(row.value(0).toLongLong()); });
  return keys;
}

void RecordSet::findFrom(int position, const QString& condition) {
  const QSet<qint64> found = matches(condition);
  const auto first = std::find_if(keys_.begin() + std::min(position, count()), keys_.end(),
                                  [&found](qint64 key) { return found.contains(key); });
  noMatch_ = first == keys_.end();
  if (!noMatch_) go(static_cast<int>(first - keys_.begin()));
}

void RecordSet::FindFirst(const QString& condition) {
  findFrom(0, condition);
}

void RecordSet::FindNext(const QString& condition) {
  findFrom(position_ + 1, condition);
}

int RecordSet::countOf(const QString& condition) const {
  const QSet<qint64> found = matches(condition);
  return static_cast<int>(std::count_if(keys_.begin(), keys_.end(),
                                        [&found](qint64 key) { return found.contains(key); }));
}

void RecordSet::AddNew() {
  if (!isOpen()) noRecord();
  changes_.clear();
  editMode_ = EditMode::Add;
}

void RecordSet::Edit() {
  if (editMode_ != EditMode::None) return;
  if (position_ < 0) noRecord();
  editMode_ = EditMode::Edit;
}

void RecordSet::CancelUpdate() {
  changes_.clear();
  editMode_ = EditMode::None;
}

void RecordSet::Update() {
  storeEdit(false);
}

void RecordSet::overwrite() {
  storeEdit(true);
}

void RecordSet::storeEdit(bool over) {
  if (editMode_ == EditMode::None) {
    throw StorageError(storage_error::kNotEditing,
                       QStringLiteral("Es wird kein Datensatz bearbeitet."));
  }
  // Nobody comes between looking at the file and changing it.
  RowValues written;
  const auto work = [&] {
    if (editMode_ == EditMode::Add) {
      addRow();
    } else {
      written = updateRow(over);
    }
  };
  if (editMode_ == EditMode::Edit && changes_.isEmpty()) {
    // There is nothing to look at and nothing to change.
  } else if (checkFree(); database_->inTransaction()) {
    work();
  } else {
    database_->transaction(work);
  }
  if (editMode_ == EditMode::Add) {
    keys_.push_back(addedKey_);
    // An empty set stood at both ends; it still has no current record.
    if (count() == 1) bof_ = false;
  } else if (!written.isEmpty()) {
    row_ = written;
  }
  CancelUpdate();
}

void RecordSet::checkFree() const {
  if (joins_ || !database_->inTransaction()) return;
  throw StorageError(storage_error::kBusy,
                     QStringLiteral("Lokari ändert gerade die ganze Datenbank, zum Beispiel bei "
                                    "einem Import. Dieser Satz kann erst danach gespeichert "
                                    "werden."));
}

void RecordSet::onShow(const RowValues& values) {
  fetch();
  for (auto value = values.cbegin(); value != values.cend(); ++value) {
    row_->insert(needColumn(value.key()).name, value.value());
  }
}

void RecordSet::addRow() {
  checkUnique();
  addedKey_ = insertRow();
}

qint64 RecordSet::insertRow() {
  if (changes_.isEmpty()) {
    return database_->write(
        QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(quotedName(table_->name)), {});
  }
  QStringList names;
  QStringList marks;
  for (auto change = changes_.cbegin(); change != changes_.cend(); ++change) {
    names.append(quotedName(change.key()));
    marks.append(QStringLiteral("?"));
  }
  return database_->write(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                              .arg(quotedName(table_->name), names.join(QStringLiteral(", ")),
                                   marks.join(QStringLiteral(", "))),
                          changes_.values());
}

RowValues RecordSet::updateRow(bool over) {
  checkUnique();
  fetch();
  const QStringList read = row_->keys();
  QStringList columns = read;
  for (auto change = changes_.cbegin(); change != changes_.cend(); ++change) {
    if (!row_->contains(change.key())) columns.append(change.key());
  }
  RowValues now = readRow(columns);
  RowValues foreign;
  for (const QString& column : read) {
    if (!sameStored(now[column], row_->value(column))) foreign.insert(column, now[column]);
  }
  if (!foreign.isEmpty() && !over) throw RecordChanged(foreign);

  QStringList assignments;
  QVariantList values;
  const QMap<QString, QVariant> own = ownChanges();
  for (auto change = own.cbegin(); change != own.cend(); ++change) {
    if (sameStored(now[change.key()], *change)) continue;
    assignments.append(quotedName(change.key()) + QStringLiteral(" = ?"));
    values.append(*change);
  }
  if (!assignments.isEmpty()) {
    database_->changeRow(QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?")
                             .arg(quotedName(table_->name), assignments.join(QStringLiteral(", "))),
                         values << currentKey());
  }
  for (auto change = own.cbegin(); change != own.cend(); ++change) {
    now.insert(change.key(), *change);
  }
  return now;
}

// What is as it was read is nobody's change: another program's stays.
QMap<QString, QVariant> RecordSet::ownChanges() const {
  QMap<QString, QVariant> own;
  for (auto change = changes_.cbegin(); change != changes_.cend(); ++change) {
    if (!isChanged(change.key())) continue;
    own.insert(change.key(), *change);
    const QString twin = twinOf(change.key());
    if (!changes_.contains(twin) && row_->contains(twin)) own.insert(twin, row_->value(twin));
  }
  return own;
}

bool RecordSet::isChanged(const QString& column) const {
  const QString name = needColumn(column).name;
  return differs(name) || differs(twinOf(name));
}

bool RecordSet::differs(const QString& name) const {
  const auto change = changes_.constFind(name);
  if (change == changes_.constEnd()) return false;
  if (editMode_ == EditMode::Add || !row_) return true;
  const auto read = row_->constFind(name);
  return read == row_->constEnd() || !sameStored(*read, *change);
}

bool RecordSet::holds(const QString& name) const {
  return changes_.contains(name) || changes_.contains(twinOf(name));
}

void RecordSet::Delete() {
  if (position_ < 0) noRecord();
  checkFree();
  database_->write(QStringLiteral("DELETE FROM %1 WHERE rowid = ?").arg(quotedName(table_->name)),
                   {currentKey()});
  const int deleted = position_;
  keys_.erase(keys_.begin() + deleted);
  go(-1);
  gap_ = deleted;
  bof_ = keys_.empty();
  eof_ = keys_.empty();
}

RowValues RecordSet::row() const {
  QStringList columns;
  for (const ColumnInfo& info : table_->columns) columns.append(info.name);
  return readRow(columns);
}

qint64 RecordSet::currentKey() const {
  if (position_ < 0) noRecord();
  return keys_[static_cast<size_t>(position_)];
}

RowValues RecordSet::readRow(const QStringList& columns) const {
  return readRow(columns, currentKey());
}

RowValues RecordSet::readRow(const QStringList& columns, qint64 key) const {
  QStringList names;
  for (const QString& column : columns) names.append(quotedName(column));
  std::optional<RowValues> result;
  database_->read(QStringLiteral("SELECT %1 FROM %2 WHERE rowid = ?")
                      .arg(names.join(QStringLiteral(", ")), quotedName(table_->name)),
                  {key}, [&](const QSqlQuery& row) {
                    result.emplace();
                    for (qsizetype i = 0; i < columns.size(); ++i) {
                      result->insert(columns[i], row.value(static_cast<int>(i)));
                    }
                  });
  if (!result) throw recordDeleted();
  return *result;
}

void RecordSet::fetch() const {
  if (!row_) row_ = readRow(plainColumns());
}

QStringList RecordSet::plainColumns() const {
  QStringList columns;
  for (const ColumnInfo& info : table_->columns) {
    if (info.type != ColumnType::Binary) columns.append(info.name);
  }
  return columns;
}

QVariant RecordSet::stored(const ColumnInfo& column) const {
  fetch();
  auto known = row_->constFind(column.name);
  if (known == row_->constEnd()) {
    known = row_->insert(column.name, readRow({column.name}).value(column.name));
  }
  return *known;
}

void RecordSet::reread() {
  if (row_) reread(row_->keys());
}

void RecordSet::reread(const QStringList& columns) {
  if (!row_) return;
  QStringList free = columns;
  free.removeIf([this](const QString& column) { return holds(needColumn(column).name); });
  if (free.isEmpty()) return;
  const RowValues now = readRow(free);
  for (auto value = now.cbegin(); value != now.cend(); ++value) {
    row_->insert(value.key(), value.value());
  }
}

void RecordSet::changedBeside(const QString& column,
                              const std::function<QVariant(const QVariant& value)>& change) {
  const QString name = needColumn(column).name;
  if (!holds(name)) return reread({name});
  if (row_ && row_->contains(name)) row_->insert(name, change(row_->value(name)));
  if (changes_.contains(name)) changes_[name] = change(changes_[name]);
}

const ColumnInfo& RecordSet::needColumn(const QString& name) const {
  if (!isOpen()) noRecord();
  const ColumnInfo* found = table_->column(name);
  if (found == nullptr) {
    throw StorageError(
        storage_error::kUnknownName,
        QStringLiteral("Die Tabelle %1 hat keine Spalte \"%2\".").arg(table_->name, name));
  }
  return *found;
}

QVariant RecordSet::value(const QString& column) const {
  const ColumnInfo& info = needColumn(column);
  const auto change = changes_.constFind(info.name);
  if (change != changes_.constEnd()) return *change;
  return editMode_ == EditMode::Add ? QVariant() : stored(info);
}

QString RecordSet::text(const QString& column) const {
  return shownValue(needColumn(column), value(column));
}

void RecordSet::setValue(const QString& column, const QVariant& value) {
  const ColumnInfo& info = needColumn(column);
  if (editMode_ == EditMode::None) {
    throw StorageError(storage_error::kNotEditing,
                       QStringLiteral("Es wird kein Datensatz bearbeitet."));
  }
  changes_.insert(info.name, columnValue(info, value));
}

}  // namespace lokari
