// What makes a row the only one of its kind: which other row has the same, and what is refused
// then.
#include <QSqlQuery>

#include <algorithm>

#include "db/record_set.h"
#include "db/sqlite_functions.h"

namespace lokari {

// The indexes in the file know no umlauts in another case; this look-up does.
Bookmark RecordSet::holderOf(const QStringList& key, const QVariantList& values,
                             Bookmark except) const {
  QStringList terms;
  for (qsizetype i = 0; i < key.size(); ++i) {
    // Null is no key.
    if (values[i].isNull()) return {};
    const ColumnInfo& info = needColumn(key[i]);
    terms.append(quotedName(info.name) + QStringLiteral(" = ?") +
                 (info.isText() ? QStringLiteral(" COLLATE ") + QString::fromUtf16(kTextCollation)
                                : QString()));
  }
  QVariantList wanted = values;
  if (except) {
    terms.append(QStringLiteral("rowid <> ?"));
    wanted.append(*except);
  }
  Bookmark holder;
  database_->read(QStringLiteral("SELECT rowid FROM %1 WHERE %2 LIMIT 1")
                      .arg(quotedName(table_->name), terms.join(QStringLiteral(" AND "))),
                  wanted, [&holder](const QSqlQuery& row) { holder = row.value(0).toLongLong(); });
  return holder;
}

bool RecordSet::isTaken() const {
  return std::any_of(
      table_->uniqueKeys.begin(), table_->uniqueKeys.end(), [this](const QStringList& key) {
        // A change beside the key is stored even where another program has made two of a kind.
        const bool touched = std::any_of(key.begin(), key.end(), [this](const QString& name) {
          return changes_.contains(needColumn(name).name);
        });
        if (editMode_ == EditMode::Edit && !touched) return false;
        QVariantList values;
        for (const QString& name : key) values.append(value(name));
        const Bookmark except = editMode_ == EditMode::Edit ? Bookmark(currentKey()) : Bookmark();
        return holderOf(key, values, except).has_value();
      });
}

void RecordSet::refuseDuplicate() {
  throw StorageError(storage_error::kDuplicateKey,
                     QStringLiteral("Diesen Schlüssel gibt es bereits."));
}

void RecordSet::checkUnique() const {
  if (isTaken()) refuseDuplicate();
}

std::optional<RowValues> RecordSet::inTheWayOf(const RowValues& row) const {
  for (const QStringList& key : table_->uniqueKeys) {
    QVariantList values;
    for (const QString& name : key) values.append(row.value(needColumn(name).name));
    const Bookmark holder = holderOf(key, values, {});
    if (holder) return readRow(plainColumns(), *holder);
  }
  return {};
}

void RecordSet::restore(const RowValues& row, int position) {
  if (!isOpen()) noRecord();
  checkFree();
  if (inTheWayOf(row)) refuseDuplicate();
  const QStringList names = row.keys();
  QStringList columns;
  QStringList marks;
  QVariantList values;
  for (const QString& name : names) {
    columns.append(quotedName(needColumn(name).name));
    marks.append(QStringLiteral("?"));
    values.append(row[name]);
  }
  const qint64 key =
      database_->write(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                           .arg(quotedName(table_->name), columns.join(u','), marks.join(u',')),
                       values);
  const int place = std::clamp(position, 0, count());
  keys_.insert(keys_.begin() + place, key);
  go(place);
}

}  // namespace lokari
