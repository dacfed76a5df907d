#include "db/jet_sql.h"

#include "db/jet_parser.h"

namespace lokari {

JetSelect translateSelect(const Schema& schema, const QString& query) {
  return JetParser(query).select(schema);
}

JetCondition translateCondition(const TableInfo& table, const QString& condition) {
  return JetParser(condition).condition(table);
}

}  // namespace lokari
