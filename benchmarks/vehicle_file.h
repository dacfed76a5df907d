// Databases to measure with.
#pragma once

#include <QString>

namespace lokari::benchmarks {

inline constexpr int kFew = 20;
inline constexpr int kMany = 20000;  ///< the database of a club, or of many years

/// The collections of a database: "Sammlung 0" to "Sammlung 9", each with the addresses from 1 up.
inline constexpr int kCollections = 10;

/// The path of a database of so many vehicles (a multiple of kCollections, at most 100,000), each
/// with five whole CV sets: 20,000 of them take one gigabyte. It is made at the first call and goes
/// with the program. Throws std::runtime_error when it cannot be made.
QString vehicleFile(int vehicles);

}  // namespace lokari::benchmarks
