#include "db/sqlite_functions.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QVariant>

#include <sqlite3.h>
#include <string_view>

#include "db/german_text.h"
#include "db/like_pattern.h"
#include "db/storage_error.h"

namespace lokari {
namespace {

int compareTexts(void*, int sizeA, const void* a, int sizeB, const void* b) {
  return compareGerman(std::string_view(static_cast<const char*>(a), static_cast<size_t>(sizeA)),
                       std::string_view(static_cast<const char*>(b), static_cast<size_t>(sizeB)));
}

std::string_view textOf(sqlite3_value* value) {
  // The text must be asked for ahead of its size.
  const unsigned char* text = sqlite3_value_text(value);
  const auto size = static_cast<size_t>(sqlite3_value_bytes(value));
  return text == nullptr ? std::string_view()
                         : std::string_view(reinterpret_cast<const char*>(text), size);
}

void deletePattern(void* pattern) {
  delete static_cast<LikePattern*>(pattern);
}

void like(sqlite3_context* context, int, sqlite3_value** values) {
  if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
  // The pattern is parsed once a statement, not once a row.
  auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 1));
  if (pattern != nullptr) {
    sqlite3_result_int(context, pattern->matches(textOf(values[0])) ? 1 : 0);
    return;
  }
  std::optional<LikePattern> parsed = LikePattern::parse(textOf(values[1]));
  if (!parsed) {
    sqlite3_result_error(context, "LIKE", -1);
    return;
  }
  sqlite3_result_int(context, parsed->matches(textOf(values[0])) ? 1 : 0);
  sqlite3_set_auxdata(context, 1, new LikePattern(*std::move(parsed)), deletePattern);
}

}  // namespace

void registerSqliteFunctions(const QSqlDatabase& connection) {
  const QVariant handle = connection.driver()->handle();
  if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0) {
    throw StorageError(storage_error::kOther, QStringLiteral("SQLite-Treiber nicht verfügbar."));
  }
  sqlite3* sqlite = *static_cast<sqlite3* const*>(handle.constData());
  const QByteArray collation = QString::fromUtf16(kTextCollation).toUtf8();
  const QByteArray function = QString::fromUtf16(kLikeFunction).toUtf8();
  if (sqlite3_create_collation_v2(sqlite, collation.constData(), SQLITE_UTF8, nullptr, compareTexts,
                                  nullptr) != SQLITE_OK ||
      sqlite3_create_function_v2(sqlite, function.constData(), 2,
                                 SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY, nullptr,
                                 like, nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw StorageError(storage_error::kOther, QString::fromUtf8(sqlite3_errmsg(sqlite)));
  }
}

}  // namespace lokari
