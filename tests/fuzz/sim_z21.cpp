// Datagrams to the simulated Z21.
#include <cstdlib>

#include "sim/z21_messages.h"

using namespace lokari::sim;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  for (const Z21Message& message : splitZ21Datagram(input)) {
    if (message.data.size() > input.size()) std::abort();
    const auto command = z21CvCommand(message.data);
    if (command && (command->cv < 1 || command->value < 0 || command->value > 255)) std::abort();
  }
  return 0;
}
