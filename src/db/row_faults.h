// Which storage errors one row of an import brings upon itself.
#pragma once

#include <algorithm>
#include <array>

#include "db/storage_error.h"

namespace lokari {

/// True for faults of the row's values. Any other error concerns the database, and the next row
/// would meet it as well.
inline bool concernsRow(const StorageError& error) {
  constexpr std::array kFaults{storage_error::kDuplicateKey, storage_error::kNotNumeric,
                               storage_error::kTooLong, storage_error::kNullField};
  return std::find(kFaults.begin(), kFaults.end(), error.code()) != kFaults.end();
}

}  // namespace lokari
