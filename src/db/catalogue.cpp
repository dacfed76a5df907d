#include "db/catalogue.h"

#include <QSqlQuery>

#include <algorithm>

#include "db/database.h"
#include "db/german_text.h"

namespace lokari {
namespace {

bool same(const QString& a, const QString& b) {
  return compareGerman(a, b) == 0;
}

void ask(const Database* database, const QString& query, const Database::RowHandler& row) {
  if (database == nullptr) return;
  try {
    database->query(query, row);
  } catch (const StorageError&) {
    // Nothing is what the caller gets for a missing row as well.
    return;
  }
}

}  // namespace

QString typesQuery(int maker) {
  return QStringLiteral(
             "SELECT * FROM DECODERS WHERE DC_MANUF = %1 "
             "ORDER BY ISNULL(DC_SEQ) DESC, DC_SEQ, DC_DECODER")
      .arg(maker);
}

QList<Maker> Catalogue::makers() const {
  QList<Maker> result;
  ask(database_, QString::fromUtf16(kMakersQuery), [&result](const QSqlQuery& row) {
    result.append({row.value(QStringLiteral("DC_MANUF")).toInt(),
                   row.value(QStringLiteral("DC_MANUF_TEXT")).toString()});
  });
  return result;
}

std::optional<Maker> Catalogue::makerByNumber(int number) const {
  const QList<Maker> all = makers();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const Maker& maker) { return maker.number == number; });
  return found == all.end() ? std::nullopt : std::optional(*found);
}

std::optional<Maker> Catalogue::makerByName(const QString& name) const {
  const QList<Maker> all = makers();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const Maker& maker) { return same(maker.name, name); });
  return found == all.end() ? std::nullopt : std::optional(*found);
}

QStringList Catalogue::types(int maker) const {
  QStringList result;
  ask(database_, typesQuery(maker), [&result](const QSqlQuery& row) {
    result.append(row.value(QStringLiteral("DC_DECODER")).toString());
  });
  return result;
}

std::optional<QString> Catalogue::type(int maker, const QString& type) const {
  const QStringList all = types(maker);
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const QString& name) { return same(name, type); });
  return found == all.end() ? std::nullopt : std::optional(*found);
}

}  // namespace lokari
