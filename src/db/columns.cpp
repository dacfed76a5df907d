#include "db/columns.h"

#include <algorithm>
#include <limits>

namespace lokari {
namespace {

struct Declaration {
  const char16_t* word;
  ColumnType type;
};
constexpr Declaration kDeclarations[] = {
    {u"TINYINT", ColumnType::Byte}, {u"SMALLINT", ColumnType::Integer},
    {u"INTEGER", ColumnType::Long}, {u"CURRENCY", ColumnType::Currency},
    {u"VARCHAR", ColumnType::Text}, {u"BLOB", ColumnType::Binary},
};
/// The widest text that Access has beside its memos, which have no limit. A column that is declared
/// as wide takes what a memo holds, so that none comes over cut.
constexpr int kMemo = 255;

}  // namespace

ColumnInfo ColumnInfo::declared(const QString& name, const QString& declaration) {
  ColumnInfo info{name, ColumnType::Text, std::numeric_limits<int>::max()};
  const QString word = declaration.section(u'(', 0, 0).trimmed();
  for (const Declaration& known : kDeclarations) {
    if (word.compare(QStringView(known.word), Qt::CaseInsensitive) == 0) info.type = known.type;
  }
  if (!info.isText()) {
    info.size = 0;
    return info;
  }
  const int size = declaration.section(u'(', 1).section(u')', 0, 0).toInt();
  if (size > 0 && size < kMemo) info.size = size;
  return info;
}

const ColumnInfo* TableInfo::column(const QString& columnName) const {
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const ColumnInfo& info) {
    return info.name.compare(columnName, Qt::CaseInsensitive) == 0;
  });
  return found == columns.end() ? nullptr : &*found;
}

const TableInfo* Schema::table(const QString& name) const {
  const auto found = tables_.constFind(name.toUpper());
  return found == tables_.constEnd() ? nullptr : &*found;
}

}  // namespace lokari
