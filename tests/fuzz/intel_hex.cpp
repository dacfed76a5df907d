// Any bytes as an Intel HEX file: the reader must come to an end with a whole image, or with a line
// that the file has or could have next.
#include "station/intel_hex.h"

#include <QBuffer>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace lokari;
  QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  QBuffer file(&text);
  if (!file.open(QIODevice::ReadOnly)) __builtin_trap();
  const auto result = readIntelHex(file);
  if (const auto* fault = std::get_if<HexFault>(&result)) {
    const auto lines = text.count('\n') + text.count('\r') + 2;
    const bool known = !hexErrorText(fault->error).isEmpty();
    if (!known || fault->line < 1 || fault->line > lines) __builtin_trap();
    return 0;
  }
  const auto& firmware = std::get<Firmware>(result);
  if (firmware.firmImage.size() != firmSize || firmware.firmBlocks < 1) __builtin_trap();
  return 0;
}
