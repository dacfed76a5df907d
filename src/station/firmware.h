// New firmware for a command station, as it stands in the memory of the program.
#pragma once

#include <QByteArray>

namespace lokari {

/// Bytes of the station's memory: addresses 0 to 65535.
inline constexpr int firmSize = 65536;

struct Firmware {
  /// One byte per memory address; 255, an erased cell, where the file says nothing.
  QByteArray firmImage = QByteArray(firmSize, '\xFF');
  /// Sixteenths of the file's data bytes, rounded, at least 1. Measures the progress only.
  int firmBlocks = 1;
};

}  // namespace lokari
