// What lokari-access-reader tells the program. Both sides include this file and nothing else of
// each other.
//
// The stream begins with kMagic; behind it stand records until End or Failure, each a byte of
// `AccessRecord` and what belongs to it. Numbers are little-endian; a text is its length in bytes
// (32 bits) and UTF-8, without a byte-order mark.
//
//   Table    text                one for each table of the file
//   Column   text                one for each column, in the file's order
//   RowCount 32 bits             the rows that the file claims; the columns end here
//   Row      one value a column  a byte of `AccessValue` and what belongs to it
//   End                          everything has been told
//   Failure  8 bits              one of `AccessFailure`; nothing follows
//
// A stream without End or Failure is that of a reader that died, one without kMagic is of none.
#pragma once

#include <cstdint>

namespace lokari {

inline constexpr char kAccessMagic[] = {'L', 'K', 'A', 'R', '1'};

enum class AccessRecord : std::uint8_t {
  Table = 'T',
  Column = 'C',
  RowCount = 'N',
  Row = 'R',
  End = 'E',
  Failure = 'F',
};

enum class AccessValue : std::uint8_t {
  Null = '0',
  Number = 'i',  ///< 32 bits, signed; a truth value is -1 or 0
  Amount = 'm',  ///< 64 bits, signed: ten-thousandths
  Real = 'd',    ///< 64 bits, IEEE 754
  Text = 's',    ///< a text; a date as libmdb writes it
  Bytes = 'b',   ///< length in bytes (32 bits) and the bytes
};

enum class AccessFailure : std::uint8_t {
  CannotOpen = 1,  ///< missing, unreadable, or no database of Access
  NoTable = 2,     ///< no table of that name
  Damaged = 3,
};

/// Commands of the reader: `lokari-access-reader tables FILE` and
/// `lokari-access-reader table FILE NAME`; the name of a table has no case.
inline constexpr char kAccessTables[] = "tables";
inline constexpr char kAccessTable[] = "table";

}  // namespace lokari
