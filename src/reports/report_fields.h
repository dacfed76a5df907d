// The names and values that templates can show.
#pragma once

#include <QDateTime>
#include <QString>

#include <string>
#include <vector>

#include "db/columns.h"
#include "reports/report_template.h"

namespace lokari {

/// Makes a value safe for what a template writes: HTML or a table's cell. Gives UTF-8.
using ReportEncoding = std::string (*)(const QString& value);
/// Ways for values that are text and for all others: numbers, amounts, what the program says
/// itself.
struct ReportEncodings {
  ReportEncoding text;
  ReportEncoding other;
};

/// Fields of a vehicle beside its columns.
inline constexpr char16_t kMakerField[] = u"DC_MANUF_TEXT";  ///< the decoder maker's name
inline constexpr char16_t kTypeField[] = u"DC_TYPE_TEXT";    ///< "Fahrzeug", "Funktionsteil", ...
inline constexpr char16_t kNumberField[] = u"nummer";        ///< the vehicle's place in the report
inline constexpr char16_t kEvenField[] = u"gerade";          ///< there for every second vehicle

/// The names that templates may use. A vehicle has all its columns but arrays and pictures.
ReportFields reportFields(const TableInfo& vehicles);

/// What is said of a report as a whole.
struct ReportFacts {
  QString title;
  QDateTime made;
  QString selection;  ///< in words
  QString database;   ///< the file's name
  size_t vehicles = 0;
  int page = 1;
  bool isFirstPage = true;
  bool isLastPage = true;
};

/// A value for each of the names `ReportFields::report`.
std::vector<std::string> reportValues(const ReportFacts& facts, ReportEncoding encode);

/// HTML: nothing in the value is markup, its line breaks are kept.
std::string htmlEncoded(const QString& value);

}  // namespace lokari
