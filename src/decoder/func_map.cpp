#include "decoder/func_map.h"

#include <algorithm>

#include "decoder/dec_fields.h"

namespace lokari {
namespace {

constexpr int kFirstCv = 33;
constexpr int kHighestValue = 255;

QString keyText(int row) {
  switch (row) {
    case 0:
      return QStringLiteral("F0 vorwärts");
    case 1:
      return QStringLiteral("F0 rückwärts");
    default:
      return QStringLiteral("F%1").arg(row - 1);
  }
}

int offsetOf(int row, const DecoderDescription& description) {
  if (row < description.FUNCCOUNT) return 0;
  return row < 2 * description.FUNCCOUNT ? description.FUNCSHIFT : 2 * description.FUNCSHIFT;
}

/// Whether the range holds a value with that bit set.
bool rangeAllows(const QString& range, int bit) {
  for (int value = 0; value <= kHighestValue; ++value)
    if ((value >> bit & 1) != 0 && rangeHolds(range, value)) return true;
  return false;
}

}  // namespace

int funcMapOutputs(const std::vector<FuncMapRow>& rows) {
  int highest = 0;
  for (const FuncMapRow& row : rows) highest = std::max(highest, row.offset);
  return highest + kFuncMapColumns;
}

std::vector<FuncMapRow> funcMapRows(const DecoderDescription& description,
                                    const QByteArray& values) {
  std::vector<FuncMapRow> rows;
  for (int r = 0; r <= description.FUNCTIONS; ++r) {
    FuncMapRow row;
    row.cv = CvIndex(kFirstCv + r);
    row.label = keyText(r);
    row.offset = offsetOf(r, description);
    row.value = static_cast<quint8>(values[row.cv.arrayIndex()]);
    const CvDescriptor& entry = description.info(row.cv);
    row.described = entry.exists();
    for (int c = 0; c < kFuncMapColumns; ++c) {
      row.offered[static_cast<size_t>(c)] =
          !row.described || (row.value >> c & 1) != 0 || rangeAllows(entry.cvRange, c);
    }
    rows.push_back(row);
  }
  return rows;
}

bool isStandardMapping(const FuncMapRow& row, int value) {
  const int exponent = row.cv.value() - kFirstCv - row.offset;
  return exponent >= 0 && exponent < kFuncMapColumns && value == 1 << exponent;
}

}  // namespace lokari
