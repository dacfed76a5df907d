// Bytes to the simulated Lenz interfaces. The first byte chooses the interface.
#include "fuzz_station.h"

using namespace lokari;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const QByteArray input(reinterpret_cast<const char*>(data + 1), static_cast<qsizetype>(size - 1));
  switch (data[0] % 3) {
    case 0:
      fuzz::runStation(u"LI100", input, QByteArray::fromHex("2181A0"),
                       QByteArray::fromHex("610160"));
      break;
    case 1:
      fuzz::runStation(u"LI100V3", input, QByteArray::fromHex("2181A0"),
                       QByteArray::fromHex("010405610160610160"));
      break;
    default:
      fuzz::runStation(u"LIUSB", input, QByteArray::fromHex("FFFE2181A0"),
                       QByteArray::fromHex("FFFE010405FFFE610160FFFE610160"));
  }
  return 0;
}
