// Conditions and queries: whatever the text, the translator gives a statement of its own words or a
// StorageError.
#include "db/jet_sql.h"

#include <QString>

#include <cstdlib>

#include "db/like_pattern.h"
#include "db/storage_error.h"

namespace {

using namespace lokari;

Schema vehicles() {
  TableInfo table;
  table.name = QStringLiteral("LOCO_DAT");
  table.columns = {ColumnInfo::declared(QStringLiteral("DC_ADR"), QStringLiteral("SMALLINT")),
                   ColumnInfo::declared(QStringLiteral("DC_COLL"), QStringLiteral("VARCHAR(24)")),
                   ColumnInfo::declared(QStringLiteral("MD_PRICE"), QStringLiteral("CURRENCY")),
                   ColumnInfo::declared(QStringLiteral("DC_CV"), QStringLiteral("BLOB"))};
  Schema schema;
  schema.add(table);
  return schema;
}

// As many marks as values, and none of the signs that only texts of the user can bring in.
void check(const QString& sql, const QVariantList& values) {
  if (sql.count(u'?') != values.size() || sql.contains(u';') || sql.contains(u'\'') ||
      sql.contains(QStringLiteral("--"))) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
  const Schema schema = vehicles();
  const QString text =
      QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  try {
    const JetCondition condition =
        translateCondition(*schema.table(QStringLiteral("LOCO_DAT")), text);
    check(condition.sql, condition.values);
  } catch (const StorageError&) {
    // Refused.
  }
  try {
    const JetSelect select = translateSelect(schema, text);
    check(select.statement(), select.values);
  } catch (const StorageError&) {
    // Refused.
  }
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto pattern = LikePattern::parse(bytes.substr(0, size / 2));
  if (pattern) pattern->matches(bytes.substr(size / 2));
  return 0;
}
