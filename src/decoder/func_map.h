// Function mapping: which outputs a function key switches. CV 33 and those behind it hold one byte
// for each key, bit c for output c + 1; for higher keys the outputs are shifted, because eight bits
// do not reach them all.
#pragma once

#include <QString>

#include <array>
#include <vector>

#include "decoder/cv_numbers.h"
#include "decoder/description.h"

namespace lokari {

/// Outputs that one key can switch.
inline constexpr int kFuncMapColumns = 8;

/// One function key, with the CV that holds its outputs.
struct FuncMapRow {
  CvIndex cv;
  QString label;   ///< a row without one is not stored
  int offset = 0;  ///< column c stands for output c + 1 + offset
  int value = 0;   ///< of the CV
  /// The decoder's description has the CV; without it, it is kept with the vehicle but not written.
  bool described = false;
  /// Columns that the CV's range allows, or that are set all the same.
  std::array<bool, kFuncMapColumns> offered{};
};

/// Output numbers that the rows reach together.
int funcMapOutputs(const std::vector<FuncMapRow>& rows);

/// The rows 0 to FUNCTIONS of a description. `values` are the CV values; index is CV - 1.
std::vector<FuncMapRow> funcMapRows(const DecoderDescription& description,
                                    const QByteArray& values);

/// Whether a row's value is the standard mapping, key by key one output further: 2^(r - offset)
/// for row r.
bool isStandardMapping(const FuncMapRow& row, int value);

}  // namespace lokari
