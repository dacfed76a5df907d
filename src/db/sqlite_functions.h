// What the query language needs of a connection and no file carries: the order of text and LIKE.
#pragma once

class QSqlDatabase;

namespace lokari {

/// Name of the collation of text: without regard to case, in German order.
inline constexpr char16_t kTextCollation[] = u"LOKARI_DE";
/// Name of the function of LIKE: (text, pattern) gives 1 or 0, Null for Null.
inline constexpr char16_t kLikeFunction[] = u"LOKARI_LIKE";

/// Registers both on an open connection; throws StorageError when that fails.
void registerSqliteFunctions(const QSqlDatabase& connection);

}  // namespace lokari
