// Lines to the simulated Lenz decoder programmer.
#include "fuzz_station.h"

using namespace lokari;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  fuzz::runStation(u"LIDP", input, "\r01\r", "OK\r\n");
  return 0;
}
