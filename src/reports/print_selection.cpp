#include "reports/print_selection.h"

namespace lokari {
namespace {

QString ordered(const QString& where) {
  return QStringLiteral("SELECT * FROM LOCO_DAT ") + where + QString::fromUtf16(kPrintOrder);
}

}  // namespace

ReportSelection allVehicles() {
  return {.query = ordered({}), .formula = {}};
}

ReportSelection filteredVehicles(const QString& sqlFilter, const QString& reportFilter) {
  return {.query = ordered(QStringLiteral("WHERE ") + sqlFilter + u' '), .formula = reportFilter};
}

ReportSelection collectionVehicles(const QString& collection, const QString& from,
                                   const QString& to) {
  QString query = QStringLiteral("WHERE ");
  QString formula;
  if (!collection.isEmpty()) {
    query += QStringLiteral("DC_COLL ='") + collection + QStringLiteral("' AND ");
    formula += QStringLiteral("{LOCO_DAT.DC_COLL} ='") + collection + QStringLiteral("' AND ");
  }
  query += QStringLiteral("DC_ADR >= ") + from + QStringLiteral(" AND DC_ADR <= ") + to + u' ';
  formula += QStringLiteral("{LOCO_DAT.DC_ADR} >= ") + from +
             QStringLiteral(" AND {LOCO_DAT.DC_ADR} <= ") + to;
  return {.query = ordered(query), .formula = formula};
}

}  // namespace lokari
