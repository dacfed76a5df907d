// Bytes to the simulated Intellibox.
#include "fuzz_station.h"

using namespace lokari;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  fuzz::runStation(u"IBX", input, QByteArray::fromHex("78E278CE"), QByteArray::fromHex("00F5"));
  return 0;
}
