// Bytes to the simulated station with the Zimo binary protocol.
#include <cstdlib>

#include "sim/zimo_binary_frames.h"

using namespace lokari::sim;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));

  // However the bytes are cut, the same frames come out.
  ZimoFrameReader whole;
  ZimoFrameReader single;
  const std::deque<ZimoFrame> frames = whole.feed(bytes);
  std::deque<ZimoFrame> others;
  for (const char byte : bytes) {
    for (const ZimoFrame& frame : single.feed(QByteArray(1, byte))) others.push_back(frame);
  }
  if (frames.size() != others.size()) std::abort();
  for (size_t i = 0; i < frames.size(); ++i) {
    if (frames[i].payload.isEmpty() || frames[i].payload != others[i].payload) std::abort();
  }
  return 0;
}
