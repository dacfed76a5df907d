// What a list or a table file is made of.
#pragma once

#include <QDateTime>
#include <QString>

#include "reports/report_fields.h"

namespace lokari {

class Database;

struct ReportSource {
  const Database& database;  ///< must outlive the report
  QString templateFile;
  QString formula;  ///< which vehicles; empty for all
  QDateTime made = QDateTime::currentDateTime();
};

inline constexpr char16_t kListTitle[] = u"Fahrzeugliste";

/// The columns of a vehicle.
const TableInfo& vehicleColumns(const Database& database);

/// What is said of the report. Throws ReportError for a formula that is not understood.
ReportFacts reportFacts(const ReportSource& source, size_t vehicles);

}  // namespace lokari
