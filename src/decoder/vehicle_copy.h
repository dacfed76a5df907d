// Copying values of CVs into the vehicles of a database.
#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <vector>

#include "decoder/cv_numbers.h"

namespace lokari {

class Database;

struct CvValue {
  CvIndex cv;
  int value = 0;  ///< 0 to 255
};

/// Records that copyCvsToVehicles() would go through. `condition` is a condition on the vehicle
/// list in the system's query language, empty for all. Throws StorageError.
int countVehicles(Database& database, const QString& condition);

/// Told now and then with the records that are done and their total; false ends the copying.
using CopyProgress = std::function<bool(int done, int total)>;

/// Puts the values into all five sets of every vehicle and function unit that meets the condition;
/// records of the group "Sonstiges" have no decoder and stay. Marks are not touched. Sets that are
/// Null or too short come to full size.
///
/// One transaction: gives the number of records that were changed, or nothing when `progress` ended
/// it; then, and when it throws StorageError, no record has changed.
std::optional<int> copyCvsToVehicles(Database& database, const QString& condition,
                                     const std::vector<CvValue>& cvs, const CopyProgress& progress);

}  // namespace lokari
