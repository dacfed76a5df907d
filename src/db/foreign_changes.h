// What another program made of a record while it was being edited, in words.
#pragma once

#include <QString>

#include <optional>

#include "db/record_set.h"

namespace lokari {

/// "Baureihe: dort "64", hier "80"". Without `here`, which is for a column that the user has not
/// changed, the other program's value alone.
QString foreignLine(const QString& caption, const QString& there,
                    const std::optional<QString>& here);

/// One line for each of the columns, with what is stored there and what the user of `records` has
/// made of it: at most a handful, with the number of the others.
QString foreignChanges(const RecordSet& records, const RowValues& stored);

}  // namespace lokari
