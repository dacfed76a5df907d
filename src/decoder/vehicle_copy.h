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

/// Whom copyCvsToVehicles() would reach.
struct CopyTargets {
  int records = 0;    ///< it goes through
  int vehicles = 0;   ///< of these it changes: vehicles and function units
  int otherType = 0;  ///< of these have another decoder type, or none
  bool own = false;   ///< the vehicle that is copied from is one of them
};

/// The vehicle that is copied from.
struct CopySource {
  std::optional<qint64> key;  ///< empty for one that is in no database yet
  int manufacturer = 0;
  QString decoder;
};

/// Counts, and reads no CVs. `condition` is a condition on the vehicle list in the system's query
/// language, empty for all. Throws StorageError.
CopyTargets copyTargets(Database& database, const QString& condition, const CopySource& from);

/// Told now and then with the records that are done and their total; false ends the copying.
using CopyProgress = std::function<bool(int done, int total)>;

/// Puts the values into all five sets of every vehicle and function unit that meets the condition;
/// records of the group "Sonstiges" have no decoder and stay. Sets that are Null or too short come
/// to full size. Marks are not copied, but a value that changes loses the mark that told of the
/// value before it; marks that are Null or too short stay so.
///
/// One transaction: gives the number of records that were changed, or nothing when `progress` ended
/// it; then, and when it throws StorageError, no record has changed.
std::optional<int> copyCvsToVehicles(Database& database, const QString& condition,
                                     const std::vector<CvValue>& cvs, const CopyProgress& progress);

}  // namespace lokari
