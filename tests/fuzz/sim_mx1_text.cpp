// Lines to the simulated MX1 with the text protocol.
#include <cstdlib>

#include "sim/mx1_text_driving.h"
#include "sim/mx1_text_lines.h"

using namespace lokari::sim;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray line(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (const std::optional<Mx1Driving> driving = mx1DrivingFrom(line)) {
    const bool inRange = driving->number >= 0 && driving->number <= 255 && driving->unit >= 0 &&
                         driving->unit <= 511 && driving->value >= 0 && driving->value <= 127;
    if (!inRange) std::abort();
  }
  const std::optional<Mx1Command> command = mx1CommandFrom(line);
  if (!command) return 0;
  const bool sane = command->value >= 0 && command->value <= 255 && command->index >= 0 &&
                    command->index <= 255 && command->cv >= 0 && command->cv <= 0x10000 &&
                    command->address >= 0 && command->address <= 0xFFFF;
  if (!sane) std::abort();
  return 0;
}
