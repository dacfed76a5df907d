// The record on show, from one run to the next.
#pragma once

#include <QString>

namespace lokari {

class IniFile;

/// The condition that finds the record of the keys `DBColl` and `DBAddr` again, or an empty text.
/// An address without a collection gives `DC_ADR=7AND DC_COLL=""`: a number followed by AND still
/// parses, and settings files and storages agree on this form.
QString savedPlaceCondition(const IniFile& ini);

/// Keeps the place. `position` counts from 0, -1 for none. An empty `address` leaves the old key.
/// Keys that cannot be written are left: a read-only settings file is no reason to stay open.
void savePlace(IniFile& ini, int position, const QString& collection, const QString& address);

}  // namespace lokari
