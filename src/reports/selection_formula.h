// The report writer's own language of conditions, in which a filter comes along to the printer:
//
//   {LOCO_DAT.ST_SNAME} LIKE 'V*' AND {LOCO_DAT.DC_ADR} >= 5
//
//   field       {LOCO_DAT.column}; no other table, and never a column without its braces
//   text        in single or double quotes, a doubled quote inside stands for one; an apostrophe
//               that was not doubled is understood where the formula has no other meaning
//   comparison  = <> < <= > >= and [NOT] LIKE; ISNULL(field)
//   joined by   AND, OR, NOT and parentheses
//
// Words have no case. What else there is belongs to no formula of this program and is refused.
#pragma once

#include <QString>

#include "db/columns.h"

namespace lokari {

/// The formula as a condition of the query language (see jet_sql.h), which selects the same
/// vehicles. `vehicles` is the table LOCO_DAT. Throws ReportError for what is no formula.
QString formulaCondition(const TableInfo& vehicles, const QString& formula);

/// The formula for people: "Kurzname wie „V*“ und Adresse ≥ 5". Throws like formulaCondition().
QString formulaInWords(const TableInfo& vehicles, const QString& formula);

}  // namespace lokari
