#include "station/flag_lines.h"

namespace lokari {

QStringList flagLines(int value, std::span<const FlagLine> table) {
  QStringList lines;
  for (const FlagLine& each : table) {
    if ((value & each.bit) != 0) lines << QString::fromUtf16(each.text);
  }
  return lines;
}

}  // namespace lokari
