#include "db/catalogue_checks.h"

#include <QSqlQuery>

#include "db/database.h"
#include "db/sqlite_functions.h"

namespace lokari {
namespace {

bool hasRow(const Database& database, const QString& table, int maker) {
  bool found = false;
  database.read(QStringLiteral("SELECT 1 FROM %1 WHERE DC_MANUF = ? LIMIT 1").arg(table), {maker},
                [&found](const QSqlQuery&) { found = true; });
  return found;
}

bool hasType(const Database& database, const QString& table, int maker, const QString& type) {
  bool found = false;
  database.read(QStringLiteral("SELECT 1 FROM %1 WHERE DC_MANUF = ? "
                               "AND DC_DECODER = ? COLLATE %2 LIMIT 1")
                    .arg(table, QString::fromUtf16(kTextCollation)),
                {maker, type}, [&found](const QSqlQuery&) { found = true; });
  return found;
}

}  // namespace

bool makerExists(const Database& database, int maker) {
  return hasRow(database, QStringLiteral("DCMANUFS"), maker);
}

bool makerHasTypes(const Database& database, int maker) {
  return hasRow(database, QStringLiteral("DECODERS"), maker);
}

int vehiclesOfMaker(const Database& database, int maker) {
  int count = 0;
  database.read(QStringLiteral("SELECT COUNT(*) FROM LOCO_DAT WHERE DC_MANUF = ?"), {maker},
                [&count](const QSqlQuery& row) { count = row.value(0).toInt(); });
  return count;
}

bool typeExists(const Database& database, int maker, const QString& type) {
  return hasType(database, QStringLiteral("DECODERS"), maker, type);
}

bool typeIsUsed(const Database& database, int maker, const QString& type) {
  return hasType(database, QStringLiteral("LOCO_DAT"), maker, type);
}

}  // namespace lokari
