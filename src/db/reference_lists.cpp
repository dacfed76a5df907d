#include "db/reference_lists.h"

#include <QSqlQuery>

#include <algorithm>

#include "db/catalogue.h"
#include "db/database.h"

namespace lokari {
namespace {

// clang-format off
constexpr ReferenceList kLists[] = {
    {u"dlgFTypes", u"Fahrzeugtypen",
     u"datFTypes", u"fz_ftype", u"FTYPES", u"FZ_FTYPE_SEQ", u"FZ_FTYPE", u"Type",
     u"SELECT * FROM FTYPES ORDER BY ISNULL(FZ_FTYPE_SEQ) DESC, FZ_FTYPE_SEQ, FZ_FTYPE"},
    {u"dlgLines", u"Bahnverwaltungen",
     u"datLines",  u"fz_line",  u"LINES",  u"FZ_LINE_SEQ",  u"FZ_LINE",  u"Bahnverwaltung",
     u"SELECT * FROM LINES ORDER BY ISNULL(FZ_LINE_SEQ) DESC, FZ_LINE_SEQ, FZ_LINE"},
    {u"dlgEras", u"Modellbahn-Epochen",
     u"datEras",   u"fz_era",   u"ERAS",   u"FZ_ERA_SEQ",   u"FZ_ERA",   u"Epoche",
     u"SELECT * FROM ERAS ORDER BY ISNULL(FZ_ERA_SEQ) DESC, FZ_ERA_SEQ, FZ_ERA"},
    {u"dlgManuf", u"Modellbahn-Hersteller",
     u"datManufs", u"md_manuf", u"MANUFS", u"MD_MANUF_SEQ", u"MD_MANUF", u"Hersteller",
     u"SELECT * FROM MANUFS ORDER BY ISNULL(MD_MANUF_SEQ) DESC, MD_MANUF_SEQ, MD_MANUF"},
    {u"dlgMotor", u"Motortypen",
     u"datMotors", u"md_motor", u"MOTORS", u"MD_MOTOR_SEQ", u"MD_MOTOR", u"Motortype",
     u"SELECT * FROM MOTORS ORDER BY ISNULL(MD_MOTOR_SEQ) DESC, MD_MOTOR_SEQ, MD_MOTOR"},
};
// clang-format on

constexpr char16_t kCollections[] = u"SELECT DISTINCT(DC_COLL) FROM LOCO_DAT ORDER BY DC_COLL";
constexpr const char16_t* kCatalogueQueries[] = {
    u"SELECT * FROM DECODERS ORDER BY DC_MANUF, ISNULL(DC_SEQ) DESC, DC_SEQ, DC_DECODER",
    kMakersQuery,
};

void nothing(const QSqlQuery&) {}

}  // namespace

std::span<const ReferenceList> referenceLists() {
  return kLists;
}

const ReferenceList* referenceListOf(QStringView control) {
  const auto* found =
      std::find_if(std::begin(kLists), std::end(kLists),
                   [&](const ReferenceList& list) { return control == QStringView(list.control); });
  return found == std::end(kLists) ? nullptr : found;
}

QStringList readReferenceList(const Database& database, const ReferenceList& list) {
  QStringList entries;
  const QString column = QString::fromUtf16(list.text);
  database.query(QString::fromUtf16(list.query), [&](const QSqlQuery& row) {
    const QString entry = row.value(column).toString();
    if (!entry.isEmpty()) entries.append(entry);
  });
  return entries;
}

QStringList readCollections(const Database& database) {
  QStringList entries;
  database.query(QString::fromUtf16(kCollections), [&entries](const QSqlQuery& row) {
    if (!row.value(0).isNull()) entries.append(row.value(0).toString());
  });
  return entries;
}

void checkSources(const Database& database) {
  for (const ReferenceList& list : kLists) readReferenceList(database, list);
  for (const char16_t* query : kCatalogueQueries) {
    database.query(QString::fromUtf16(query), nothing);
  }
  readCollections(database);
}

}  // namespace lokari
