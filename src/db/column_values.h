// Values on their way into a column and into a control.
#pragma once

#include <QVariant>

#include "db/columns.h"

namespace lokari {

/// The value as the column takes it: text, a whole number, an amount or bytes; Null stays Null. A
/// number is rounded to the column's places, ties to the even neighbour. Throws StorageError:
/// kTooLong for a text longer than the column, kNotNumeric for no number or one out of the column's
/// range.
QVariant columnValue(const ColumnInfo& column, const QVariant& value);

/// A value as a control shows it: empty for Null and bytes; an amount with "," as its decimal
/// separator and at least two places behind it.
QString shownValue(const ColumnInfo& column, const QVariant& value);

}  // namespace lokari
