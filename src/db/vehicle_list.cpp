#include "db/vehicle_list.h"

#include <QHash>
#include <QSet>
#include <QSqlQuery>

#include <algorithm>
#include <iterator>
#include <string>

#include "db/database.h"
#include "db/german_text.h"

namespace lokari {
namespace {

struct Shown {
  const char16_t* caption;
  const char16_t* column;
};

/// In the order of VehicleList::Column.
constexpr Shown kShown[] = {
    {u"Samml.", u"DC_COLL"},     {u"Adr.", u"DC_ADR"},   {u"Kurzbez.", u"ST_SNAME"},
    {u"F.-Type", u"FZ_FTYPE"},   {u"Verw.", u"FZ_LINE"}, {u"Herst.", u"MD_MANUF"},
    {u"Decoder", u"DC_DECODER"},
};
static_assert(std::size(kShown) == VehicleList::kColumns);

QString vehicleQuery(const QString& filter) {
  QStringList columns{QStringLiteral("DC_RECNO")};
  for (const Shown& shown : kShown) columns << QString::fromUtf16(shown.column);
  const QString where = filter.isEmpty() ? QString() : QStringLiteral(" WHERE ") + filter;
  return QStringLiteral("SELECT ") + columns.join(QStringLiteral(", ")) +
         QStringLiteral(" FROM LOCO_DAT") + where +
         QStringLiteral(" ORDER BY ISNULL(DC_COLL) DESC, DC_COLL, DC_ADR");
}

}  // namespace

void VehicleList::load(const Database& database, const QString& filter) {
  std::vector<Row> rows;
  database.query(vehicleQuery(filter), [&rows](const QSqlQuery& record) {
    Row row;
    row.place = static_cast<int>(rows.size());
    int field = 0;
    row.record = record.value(field++).toLongLong();
    // Null gives a null text, which sorts behind the empty one.
    for (QString& text : row.texts) text = record.value(field++).toString();
    row.address = row.texts[Address].toInt();
    rows.push_back(std::move(row));
  });
  beginResetModel();
  rows_ = std::move(rows);
  endResetModel();
}

int VehicleList::firstRow(const Database& database, const QString& condition) const {
  QSet<qint64> matches;
  database.query(
      QStringLiteral("SELECT DC_RECNO FROM LOCO_DAT WHERE ") + condition,
      [&matches](const QSqlQuery& record) { matches.insert(record.value(0).toLongLong()); });
  const auto found = std::find_if(rows_.begin(), rows_.end(),
                                  [&](const Row& row) { return matches.contains(row.record); });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

QString VehicleList::condition(int row) const {
  const auto& texts = rows_.at(static_cast<size_t>(row)).texts;
  return QStringLiteral("DC_COLL=\"") + texts[Collection] + QStringLiteral("\" AND DC_ADR=") +
         texts[Address];
}

int VehicleList::rowWith(const QString& text, int from) const {
  const int count = rowCount();
  for (int step = 0; step < count; ++step) {
    const int at = (from + step) % count;
    const auto& texts = rows_[static_cast<size_t>(at)].texts;
    if (std::any_of(texts.begin(), texts.end(), [&](const QString& cell) {
          return cell.contains(text, Qt::CaseInsensitive);
        })) {
      return at;
    }
  }
  return -1;
}

void VehicleList::sort(int column, Qt::SortOrder order) {
  if (column >= kColumns) return;
  const auto byPlace = [](const Row& a, const Row& b) { return a.place < b.place; };
  // A grid that begins without a sorted column asks for the order that the rows are in.
  if (column < 0 && std::is_sorted(rows_.begin(), rows_.end(), byPlace)) return;
  emit layoutAboutToBeChanged({}, VerticalSortHint);
  QList<int> places;
  const QModelIndexList kept = persistentIndexList();
  for (const QModelIndex& index : kept) {
    places << rows_[static_cast<size_t>(index.row())].place;
  }
  const bool descending = column >= 0 && order == Qt::DescendingOrder;
  std::sort(rows_.begin(), rows_.end(), byPlace);
  if (column == Address) {
    std::stable_sort(rows_.begin(), rows_.end(), [descending](const Row& a, const Row& b) {
      return descending ? b.address < a.address : a.address < b.address;
    });
  } else if (column >= 0) {
    sortTexts(rows_, static_cast<Column>(column), descending);
  }
  QHash<int, int> rowOfPlace;
  for (size_t row = 0; row < rows_.size() && !kept.isEmpty(); ++row) {
    rowOfPlace.insert(rows_[row].place, static_cast<int>(row));
  }
  for (qsizetype i = 0; i < kept.size(); ++i) {
    changePersistentIndex(kept[i], index(rowOfPlace.value(places[i]), kept[i].column()));
  }
  emit layoutChanged({}, VerticalSortHint);
}

// Many vehicles share few texts, and a German comparison is dear: the texts are ranked first, and
// the rows are sorted by numbers.
void VehicleList::sortTexts(std::vector<Row>& rows, Column column, bool descending) const {
  QHash<QString, int> ranks;
  for (const Row& row : rows) ranks.insert(row.texts[column], 0);
  std::vector<std::pair<std::string, QString>> distinct;
  for (auto text = ranks.keyBegin(); text != ranks.keyEnd(); ++text) {
    distinct.emplace_back(text->toStdString(), *text);
  }
  std::sort(distinct.begin(), distinct.end(), [](const auto& a, const auto& b) {
    return compareGerman(std::string_view(a.first), std::string_view(b.first)) < 0;
  });
  int rank = 0;
  for (size_t i = 0; i < distinct.size(); ++i) {
    // Texts that differ in case only are one, and stay in the order of their vehicles.
    if (i > 0 && compareGerman(std::string_view(distinct[i - 1].first),
                               std::string_view(distinct[i].first)) != 0) {
      ++rank;
    }
    ranks[distinct[i].second] = rank;
  }
  const int behindAll = static_cast<int>(distinct.size());
  std::vector<std::pair<int, Row>> ranked;
  ranked.reserve(rows.size());
  for (Row& row : rows) {
    const QString& text = row.texts[column];
    ranked.emplace_back(text.isNull() ? behindAll : ranks.value(text), std::move(row));
  }
  std::stable_sort(ranked.begin(), ranked.end(), [descending](const auto& a, const auto& b) {
    return descending ? b.first < a.first : a.first < b.first;
  });
  std::transform(std::make_move_iterator(ranked.begin()), std::make_move_iterator(ranked.end()),
                 rows.begin(), [](auto&& pair) { return std::move(pair.second); });
}

int VehicleList::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int VehicleList::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant VehicleList::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::DisplayRole) {
    return rows_[static_cast<size_t>(index.row())].texts[static_cast<size_t>(index.column())];
  }
  if (role == Qt::TextAlignmentRole && index.column() == Address) {
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  }
  return {};
}

QVariant VehicleList::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= kColumns) return {};
  if (role == Qt::DisplayRole) return QString::fromUtf16(kShown[section].caption);
  if (role == Qt::TextAlignmentRole) {
    return QVariant((section == Address ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  }
  return {};
}

}  // namespace lokari
