// What another program made of a record while it was being edited, in words.
#pragma once

#include <QString>

#include "db/record_set.h"

namespace lokari {

/// One line for each of the columns, with what is stored there and what `records` would store: at
/// most a handful, with the number of the others.
QString foreignChanges(const RecordSet& records, const RowValues& stored);

}  // namespace lokari
