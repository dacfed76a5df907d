#include "db/record_set.h"

#include <QSet>
#include <QSqlQuery>

#include <algorithm>

#include "db/column_values.h"
#include "db/jet_sql.h"
#include "db/sqlite_functions.h"

namespace lokari {
namespace {

QString quoted(const QString& name) {
  return u'"' + name + u'"';
}

[[noreturn]] void noRecord() {
  throw StorageError(storage_error::kNoRecord, QStringLiteral("Kein aktueller Datensatz."));
}

}  // namespace

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

void RecordSet::FindFirst(const QString& condition) {
  if (!isOpen()) noRecord();
  const JetCondition found = translateCondition(*table_, condition);
  QSet<qint64> matches;
  database_->read(
      QStringLiteral("SELECT rowid FROM %1 WHERE %2").arg(quoted(table_->name), found.sql),
      found.values,
      [&matches](const QSqlQuery& row) { matches.insert(row.value(0).toLongLong()); });
  const auto first = std::find_if(keys_.begin(), keys_.end(),
                                  [&matches](qint64 key) { return matches.contains(key); });
  noMatch_ = first == keys_.end();
  if (!noMatch_) go(static_cast<int>(first - keys_.begin()));
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
  switch (editMode_) {
    case EditMode::None:
      throw StorageError(storage_error::kNotEditing,
                         QStringLiteral("Es wird kein Datensatz bearbeitet."));
    case EditMode::Add:
      checkUnique();
      keys_.push_back(insertRow());
      // An empty set stood at both ends; it still has no current record.
      if (count() == 1) bof_ = false;
      break;
    case EditMode::Edit:
      if (!changes_.isEmpty()) {
        checkUnique();
        updateRow();
      }
      row_.reset();
      break;
  }
  CancelUpdate();
}

qint64 RecordSet::insertRow() {
  if (changes_.isEmpty()) {
    return database_->write(
        QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(quoted(table_->name)), {});
  }
  QStringList names;
  QStringList marks;
  for (auto change = changes_.cbegin(); change != changes_.cend(); ++change) {
    names.append(quoted(change.key()));
    marks.append(QStringLiteral("?"));
  }
  return database_->write(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                              .arg(quoted(table_->name), names.join(QStringLiteral(", ")),
                                   marks.join(QStringLiteral(", "))),
                          changes_.values());
}

void RecordSet::updateRow() {
  QStringList assignments;
  for (auto change = changes_.cbegin(); change != changes_.cend(); ++change) {
    assignments.append(quoted(change.key()) + QStringLiteral(" = ?"));
  }
  // A row that somebody else deleted is not found again; that must not pass for a stored change.
  fetch();
  database_->write(QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?")
                       .arg(quoted(table_->name), assignments.join(QStringLiteral(", "))),
                   changes_.values() << currentKey());
}

// The indexes in the file know no umlauts in another case; this look-up does.
void RecordSet::checkUnique() const {
  for (const QStringList& key : table_->uniqueKeys) {
    // A change beside the key is stored even where another program has made two of a kind.
    const bool touched = std::any_of(key.begin(), key.end(), [this](const QString& name) {
      return changes_.contains(needColumn(name).name);
    });
    if (editMode_ == EditMode::Edit && !touched) continue;
    QStringList terms;
    QVariantList values;
    bool complete = true;
    for (const QString& name : key) {
      const ColumnInfo& info = needColumn(name);
      values.append(value(name));
      complete = complete && !values.last().isNull();
      terms.append(quoted(name) + QStringLiteral(" = ?") +
                   (info.isText() ? QStringLiteral(" COLLATE ") + QString::fromUtf16(kTextCollation)
                                  : QString()));
    }
    if (!complete) continue;
    if (editMode_ == EditMode::Edit) {
      terms.append(QStringLiteral("rowid <> ?"));
      values.append(currentKey());
    }
    bool taken = false;
    database_->read(QStringLiteral("SELECT 1 FROM %1 WHERE %2 LIMIT 1")
                        .arg(quoted(table_->name), terms.join(QStringLiteral(" AND "))),
                    values, [&taken](const QSqlQuery&) { taken = true; });
    if (taken) {
      throw StorageError(storage_error::kDuplicateKey,
                         QStringLiteral("Diesen Schlüssel gibt es bereits."));
    }
  }
}

void RecordSet::Delete() {
  if (position_ < 0) noRecord();
  database_->write(QStringLiteral("DELETE FROM %1 WHERE rowid = ?").arg(quoted(table_->name)),
                   {currentKey()});
  const int deleted = position_;
  keys_.erase(keys_.begin() + deleted);
  go(-1);
  gap_ = deleted;
  bof_ = keys_.empty();
  eof_ = keys_.empty();
}

qint64 RecordSet::currentKey() const {
  if (position_ < 0) noRecord();
  return keys_[static_cast<size_t>(position_)];
}

void RecordSet::fetch() const {
  if (row_) return;
  QStringList names;
  for (const ColumnInfo& info : table_->columns) {
    if (info.type != ColumnType::Binary) names.append(quoted(info.name));
  }
  database_->read(QStringLiteral("SELECT %1 FROM %2 WHERE rowid = ?")
                      .arg(names.join(QStringLiteral(", ")), quoted(table_->name)),
                  {currentKey()}, [this](const QSqlQuery& row) {
                    row_.emplace();
                    int at = 0;
                    for (const ColumnInfo& info : table_->columns) {
                      if (info.type != ColumnType::Binary) row_->insert(info.name, row.value(at++));
                    }
                  });
  if (!row_) {
    throw StorageError(storage_error::kRecordDeleted,
                       QStringLiteral("Der Datensatz wurde gelöscht."));
  }
}

QVariant RecordSet::stored(const ColumnInfo& column) const {
  if (column.type != ColumnType::Binary) {
    fetch();
    return row_->value(column.name);
  }
  QVariant result;
  bool found = false;
  database_->read(QStringLiteral("SELECT %1 FROM %2 WHERE rowid = ?")
                      .arg(quoted(column.name), quoted(table_->name)),
                  {currentKey()}, [&](const QSqlQuery& row) {
                    result = row.value(0);
                    found = true;
                  });
  if (!found) {
    throw StorageError(storage_error::kRecordDeleted,
                       QStringLiteral("Der Datensatz wurde gelöscht."));
  }
  return result;
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
