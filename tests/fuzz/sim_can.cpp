// Bytes and datagrams to the simulated MX10.
#include <cstdlib>

#include "sim/can_frames.h"

using namespace lokari::sim;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));

  // However the bytes are cut, the same messages come out.
  KeyReader whole;
  KeyReader single;
  const QList<KeyReader::Item> items = whole.feed(input);
  QList<KeyReader::Item> others;
  for (const char byte : input) others += single.feed(QByteArray(1, byte));
  if (items.size() != others.size()) std::abort();
  for (qsizetype i = 0; i < items.size(); ++i) {
    if (items[i].wakeUp != others[i].wakeUp) std::abort();
    if (items[i].message.data != others[i].message.data) std::abort();
  }

  const auto message = fromIpDatagram(input);
  if (message && message->data.size() > input.size()) std::abort();
  return 0;
}
