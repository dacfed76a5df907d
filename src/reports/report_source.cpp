#include "reports/report_source.h"

#include "base/paths.h"
#include "db/database.h"
#include "reports/selection_formula.h"

namespace lokari {

const TableInfo& vehicleColumns(const Database& database) {
  const TableInfo* table = database.schema().table(QStringLiteral("LOCO_DAT"));
  if (table == nullptr) {
    throw StorageError(storage_error::kUnknownName,
                       QStringLiteral("Die Datenbank hat keine Tabelle der Fahrzeuge."));
  }
  return *table;
}

ReportFacts reportFacts(const ReportSource& source, size_t vehicles) {
  ReportFacts facts;
  facts.title = QString::fromUtf16(kListTitle);
  facts.made = source.made;
  facts.selection = source.formula.isEmpty()
                        ? QStringLiteral("alle Fahrzeuge")
                        : formulaInWords(vehicleColumns(source.database), source.formula);
  facts.database = fileNameOf(source.database.path());
  facts.vehicles = vehicles;
  return facts;
}

}  // namespace lokari
