#include "db/jet_sql.h"

#include "db/jet_parser.h"

namespace lokari {

JetSelect translateSelect(const Schema& schema, const QString& query) {
  return JetParser(query).select(schema);
}

QString provenWhere(const TableInfo& table, const QString& condition) {
  translateCondition(table, condition);
  return QStringLiteral(" WHERE ") + condition;
}

JetCondition translateCondition(const TableInfo& table, const QString& condition) {
  return JetParser(condition).condition(table);
}

}  // namespace lokari
