// The three choices of vehicles that can be printed. Texts of the user go in as they were typed, as
// they do in a search: what this breaks is refused where it is read.
#pragma once

#include "reports/report_selection.h"

namespace lokari {

/// The order of vehicles on paper: by collection, those without one last, then by address.
inline constexpr char16_t kPrintOrder[] = u"ORDER BY ISNULL(DC_COLL) DESC, DC_COLL, DC_ADR";

ReportSelection allVehicles();

/// The vehicles of the active filter, given in both languages. Without a filter the query has no
/// condition behind its WHERE, which the storage refuses.
ReportSelection filteredVehicles(const QString& sqlFilter, const QString& reportFilter);

/// The vehicles of a collection whose addresses lie from `from` to `to`, both included. An empty
/// `collection` leaves the addresses alone to choose.
ReportSelection collectionVehicles(const QString& collection, const QString& from,
                                   const QString& to);

}  // namespace lokari
