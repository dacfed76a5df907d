// What the storage reports about a column. Quotes in conditions and entry checks follow it.
#pragma once

#include <QString>

namespace lokari {

enum class ColumnType : int {
  Byte = 2,      ///< 0 to 255
  Integer = 3,   ///< 16 bits, signed
  Long = 4,      ///< 32 bits, signed
  Currency = 5,  ///< a number with four decimal places
  Text = 10,
  Binary = 11,
};

struct ColumnInfo {
  QString name;  ///< as in the table
  ColumnType type = ColumnType::Text;
  int size = 0;  ///< characters; 0 for everything but text

  bool isText() const { return type == ColumnType::Text; }
  bool isNumeric() const { return type >= ColumnType::Byte && type <= ColumnType::Currency; }
};

}  // namespace lokari
