#include "db/list_grid.h"

#include <QHash>

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

#include "base/numbers.h"
#include "base/prompt.h"
#include "db/column_values.h"
#include "db/foreign_changes.h"

namespace lokari {
namespace {

/// What stands ahead of a row.
constexpr char16_t kEditedMark[] = u"✎";
constexpr char16_t kBlankMark[] = u"*";

/// The answers where another program has changed the row under the edit.
enum ForeignChange { kMine, kTheirs, kNeither };

/// A value that the grid cannot take, with the text that says why.
class Refusal : public StorageError {
 public:
  explicit Refusal(const QString& text) : StorageError(storage_error::kOther, text) {}
};

}  // namespace

ListGrid::ListGrid(Database& database, Prompt& prompt, std::unique_ptr<ListRules> rules,
                   QObject* parent)
    : QAbstractTableModel(parent),
      database_(database),
      prompt_(prompt),
      rules_(std::move(rules)),
      columns_(rules_->columns()) {
  rows_.push_back(blank());
}

void ListGrid::open(const QString& query) {
  RecordSet records;
  std::vector<ListRow> rows;
  for (records.open(database_, query); !records.EOF_(); records.MoveNext()) {
    const QVariantList values = valuesOf(records);
    rows.push_back({records.bookmark(), values, values});
  }
  beginResetModel();
  query_ = query;
  records_ = std::move(records);
  rows_ = std::move(rows);
  rows_.push_back(blank());
  edited_ = -1;
  endResetModel();
}

ListRow ListGrid::blank() const {
  ListRow row;
  row.values.resize(static_cast<qsizetype>(columns_.size()));
  row.stored = row.values;
  return row;
}

const ColumnInfo& ListGrid::info(int column) const {
  return *records_.table().column(QString::fromUtf16(columns_[static_cast<size_t>(column)].column));
}

QVariantList ListGrid::valuesOf(const RecordSet& records) const {
  QVariantList values;
  for (const ListColumn& column : columns_) {
    const QVariant value = records.value(QString::fromUtf16(column.column));
    values.append(value.isNull() ? QVariant() : value);
  }
  return values;
}

RowValues ListGrid::shownColumns(const ListRow& row) const {
  RowValues values;
  for (int column = 0; column < columnCount(); ++column) {
    values.insert(info(column).name, row.stored[column]);
  }
  return values;
}

bool ListGrid::attempt(const std::function<bool()>& operation) const {
  try {
    return operation();
  } catch (const StorageError& error) {
    prompt_.message(error.text());
    return false;
  }
}

bool ListGrid::mayEdit(int row) {
  const QPersistentModelIndex place(index(row, 0));
  if (edited_ >= 0 && edited_ != row && !storeRow()) return false;
  if (place.row() != blankRow()) return true;
  return attempt([this] { return rules_->mayInsert(); });
}

bool ListGrid::setData(const QModelIndex& index, const QVariant& text, int role) {
  if (role != Qt::EditRole || !index.isValid()) return false;
  const QPersistentModelIndex place(index);
  const int column = index.column();
  QString wanted = text.toString();
  if (wanted == at(index.row()).text(column)) return true;
  if (!mayEdit(index.row())) return false;
  return attempt([&] {
    ListRow row = at(place.row());
    if (!rules_->mayChange(row, column, wanted)) return false;
    row.values[column] = checked(column, wanted);
    take(place.row(), row);
    return true;
  });
}

QVariant ListGrid::checked(int column, const QString& text) const {
  if (text.isEmpty()) return {};
  const ColumnInfo& target = info(column);
  if (target.isNumeric() && !isNumeric(text)) {
    throw Refusal(QStringLiteral("Numerische Eingabe erforderlich!"));
  }
  if (target.isText() && text.size() > target.size) {
    throw Refusal(QStringLiteral("Maximale Eingabelänge überschritten!"));
  }
  return columnValue(target, text);
}

void ListGrid::take(int row, const ListRow& changed) {
  if (row == blankRow()) {
    beginInsertRows({}, row + 1, row + 1);
    rows_.push_back(blank());
    endInsertRows();
  }
  at(row) = changed;
  edited_ = changed.isNew() || changed.isChanged() ? row : -1;
  tellChanged(row);
}

bool ListGrid::storeRow() {
  if (edited_ < 0) return true;
  // What was typed into it is gone again.
  if (at(edited_).isNew() && !at(edited_).isChanged()) {
    revertRow();
    return true;
  }
  return attempt([this] {
    switch (rules_->mayStore(at(edited_))) {
      case RowVerdict::Refuse:
        return false;
      case RowVerdict::Drop:
        revertRow();
        return true;
      case RowVerdict::Store:
        break;
    }
    return writeOrAsk();
  });
}

bool ListGrid::writeOrAsk() {
  try {
    write(false);
    return true;
  } catch (const RecordChanged& changed) {
    switch (askAboutChange(changed)) {
      case kMine:
        write(true);
        return true;
      case kTheirs:
        takeStored();
        return true;
      default:
        return false;
    }
  }
}

int ListGrid::askAboutChange(const RecordChanged& changed) {
  const ListRow& row = at(edited_);
  QStringList lines;
  for (int column = 0; column < columnCount(); ++column) {
    const auto there = changed.stored().constFind(info(column).name);
    if (there == changed.stored().constEnd()) continue;
    const bool isChanged = row.values[column] != row.stored[column];
    lines << foreignLine(
        QString::fromUtf16(columns_[static_cast<size_t>(column)].caption),
        shownValue(info(column), *there),
        isChanged ? std::optional(shownValue(info(column), row.values[column])) : std::nullopt);
  }
  return prompt_.choose(
      {.text = changed.text(),
       .more = lines.join(u'\n'),
       .answers = {QStringLiteral("&Meine Eingaben speichern"),
                   QStringLiteral("Stand von &dort nehmen"), QStringLiteral("&Weiter bearbeiten")},
       .safe = kNeither,
       .icon = Icon::Warning});
}

/// The edited row becomes what another program has made of it.
void ListGrid::takeStored() {
  ListRow& row = at(edited_);
  records_.setBookmark(row.key);
  row.stored = valuesOf(records_);
  row.values = row.stored;
  tellChanged(std::exchange(edited_, -1));
  reorder();
}

std::optional<QVariantList> ListGrid::storedNow(int row) {
  try {
    records_.setBookmark(at(row).key);
    return valuesOf(records_);
  } catch (const StorageError& error) {
    if (error.code() != storage_error::kRecordDeleted) throw;
    return std::nullopt;
  }
}

void ListGrid::write(bool over) {
  ListRow& row = at(edited_);
  const bool isNew = row.isNew();
  if (isNew) {
    records_.AddNew();
  } else {
    records_.setBookmark(row.key);
    records_.Edit();
  }
  try {
    if (!isNew) records_.onShow(shownColumns(row));
    for (int column = 0; column < columnCount(); ++column) {
      if (row.values[column] == row.stored[column]) continue;
      records_.setValue(info(column).name, row.values[column]);
    }
    over ? records_.overwrite() : records_.Update();
  } catch (...) {
    records_.CancelUpdate();
    throw;
  }
  if (isNew) records_.MoveLast();
  row.key = records_.bookmark();
  // Another program's columns were not on show yet.
  if (over) row.values = valuesOf(records_);
  row.stored = row.values;
  const ListRow stored = row;
  tellChanged(std::exchange(edited_, -1));
  if (isNew) rules_->inserted(stored);
  reorder();
}

// The rows keep their place in views: a cell that is current stays so, wherever its row goes.
void ListGrid::reorder() {
  RecordSet records;
  QHash<qint64, int> places;
  for (records.open(database_, query_); !records.EOF_(); records.MoveNext()) {
    places.insert(*records.bookmark(), records.position());
  }
  const auto place = [&](const ListRow& row) {
    // Rows that another program has deleted meanwhile stay on show, behind the others.
    return places.value(*row.key, std::numeric_limits<int>::max());
  };
  std::vector<int> order(static_cast<size_t>(blankRow()));
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(),
                   [&](int a, int b) { return place(at(a)) < place(at(b)); });
  emit layoutAboutToBeChanged();
  const QModelIndexList from = persistentIndexList();
  std::vector<int> moved(rows_.size(), blankRow());
  std::vector<ListRow> sorted;
  for (const int row : order) {
    moved[static_cast<size_t>(row)] = static_cast<int>(sorted.size());
    sorted.push_back(at(row));
  }
  sorted.push_back(blank());
  QModelIndexList to;
  for (const QModelIndex& old : from) {
    to.append(index(moved[static_cast<size_t>(old.row())], old.column()));
  }
  rows_ = std::move(sorted);
  records_ = std::move(records);
  changePersistentIndexList(from, to);
  emit layoutChanged();
}

void ListGrid::revertRow() {
  const int row = edited_;
  const bool isStored = row >= 0 && !at(row).isNew();
  takeBack();
  if (!isStored) return;
  try {
    // Another program may have changed the row during the edit.
    if (const auto now = storedNow(row)) at(row).stored = *now;
  } catch (const StorageError&) {
    // What was read of it stays on show; the next change tells what is wrong.
  }
  at(row).values = at(row).stored;
  tellChanged(row);
}

/// The edited row becomes what was on show of it.
void ListGrid::takeBack() {
  if (edited_ < 0) return;
  const int row = std::exchange(edited_, -1);
  if (at(row).isNew()) {
    remove(row);
    return;
  }
  at(row).values = at(row).stored;
  tellChanged(row);
}

bool ListGrid::deleteRow(int row) {
  if (row < 0 || row >= blankRow()) return false;
  const QPersistentModelIndex place(index(row, 0));
  if (row == edited_) {
    const bool isNew = at(row).isNew();
    // What is deleted is what was on show, and no newer state of it.
    takeBack();
    if (isNew) return true;
  } else if (!storeRow()) {
    return false;
  }
  return attempt([&] {
    const ListRow doomed = at(place.row());
    const std::optional<QVariantList> now = storedNow(place.row());
    if (now && *now != doomed.stored) {
      at(place.row()).stored = *now;
      at(place.row()).values = *now;
      tellChanged(place.row());
      prompt_.message(QStringLiteral("Die Zeile wurde inzwischen von einem anderen Programm "
                                     "geändert."),
                      Icon::Warning,
                      QStringLiteral("Sie ist nicht gelöscht und steht jetzt da, wie sie "
                                     "gespeichert ist."));
      return false;
    }
    if (!rules_->mayDelete(doomed)) return false;
    records_.setBookmark(doomed.key);
    records_.Delete();
    remove(place.row());
    rules_->deleted(doomed);
    return true;
  });
}

void ListGrid::remove(int row) {
  beginRemoveRows({}, row, row);
  rows_.erase(rows_.begin() + row);
  endRemoveRows();
}

void ListGrid::tellChanged(int row) {
  emit dataChanged(index(row, 0), index(row, columnCount() - 1));
  emit headerDataChanged(Qt::Vertical, row, row);
}

int ListGrid::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ListGrid::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListGrid::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return at(index.row()).text(index.column());
    case Qt::TextAlignmentRole:
      if (records_.isOpen() && info(index.column()).isNumeric()) {
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
      }
      break;
    default:
      break;
  }
  return {};
}

QVariant ListGrid::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Horizontal) {
    return QString::fromUtf16(columns_[static_cast<size_t>(section)].caption);
  }
  if (section == edited_) return QString::fromUtf16(kEditedMark);
  return section == blankRow() ? QString::fromUtf16(kBlankMark) : QString();
}

Qt::ItemFlags ListGrid::flags(const QModelIndex& index) const {
  return index.isValid() ? QAbstractTableModel::flags(index) | Qt::ItemIsEditable : Qt::NoItemFlags;
}

}  // namespace lokari
