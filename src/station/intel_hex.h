// The reader of Intel HEX files. A record is one line:
//
//   :10010000214601360121470136007EFE09D2190140
//   |||   | |                               |
//   |||   | data: count bytes               checksum: with it the sum of all bytes is 0 modulo 256
//   |||   type, 00 for data
//   ||address of the first data byte
//   |count of data bytes
//   start
//
// Digits are hexadecimal in either case. The file ends with the line ":00000001FF"; what stands
// behind it, and what stands behind a record in its line, is not looked at. Other record types
// address more memory than a station has, and are refused.
#pragma once

#include <QString>

#include <variant>

#include "station/firmware.h"

class QIODevice;

namespace lokari {

/// What is wrong with a line; the checks run in this order but for the second look at the length,
/// which follows the type. The numbers are fixed.
enum class HexError {
  UnexpectedEnd = 1,
  LineStart = 2,
  LineTooShort = 3,
  LineType = 4,
  Address = 5,
  Checksum = 6,  ///< also a character that is no hexadecimal digit
};

/// German, without the place.
QString hexErrorText(HexError error);

struct HexFault {
  HexError error;
  int line = 0;  ///< from 1; behind the last line for an unexpected end
};

/// Reads an open file line by line (LF, CR LF or CR) up to its end line or the first fault.
std::variant<Firmware, HexFault> readIntelHex(QIODevice& file);

}  // namespace lokari
