#include "sim/makers/p50x_programming.h"

#include <array>

#include "base/bytes.h"

namespace lokari::sim::makers {
namespace {

constexpr int kMainWrite = 0xDE;
constexpr int kMainRead = 0xDA;
constexpr int kWriteBit = 0xF3;

struct Row {
  int code;
  qsizetype size;
  bool write;
  Method method;
};
constexpr std::array kRows{
    Row{0xEC, 3, false, Method::Register},    Row{0xED, 4, true, Method::Register},
    Row{0xEE, 3, false, Method::Paged},       Row{0xEF, 4, true, Method::Paged},
    Row{0xF0, 3, false, Method::Direct},      Row{0xF2, 3, false, Method::Direct},
    Row{0xF1, 4, true, Method::Direct},       Row{kWriteBit, 5, true, Method::Direct},
    Row{kMainWrite, 6, true, Method::Direct}, Row{kMainRead, 5, false, Method::Direct},
};

const Row* rowOf(int operation) {
  for (const Row& row : kRows) {
    if (row.code == operation) return &row;
  }
  return nullptr;
}

int wordAt(const QByteArray& command, qsizetype at) {
  return byteAt(command, at) + 256 * byteAt(command, at + 1);
}

}  // namespace

bool P50xAccess::isGood() const {
  constexpr int kLastRegister = 8;
  if (bit && *bit > 7) return false;
  return cv >= 1 && cv <= (method == Method::Register ? kLastRegister : Decoder::kLastCv);
}

qsizetype p50xAccessSize(int operation) {
  const Row* row = rowOf(operation);
  return row == nullptr ? 0 : row->size;
}

P50xAccess p50xAccess(const QByteArray& command) {
  const Row& row = *rowOf(byteAt(command, 0));
  P50xAccess access{.main = row.code == kMainWrite || row.code == kMainRead,
                    .write = row.write,
                    .method = row.method};
  qsizetype at = 1;
  if (access.main) {
    access.address = wordAt(command, at);
    at += 2;
  }
  access.cv = wordAt(command, at);
  if (row.write) access.value = byteAt(command, row.size - 1);
  if (row.code == kWriteBit) access.bit = byteAt(command, 3);
  return access;
}

QByteArray p50xResult(const P50xAccess& access, const TrackResult& result) {
  switch (result.answer) {
    case TrackAnswer::NoAck:
      return bytes({0x01, 0xFE});
    case TrackAnswer::ShortCircuit:
      return bytes({0x01, 0xFD});
    case TrackAnswer::NoDecoder:
      return bytes({0x01, 0xFC});
    case TrackAnswer::Busy:
    case TrackAnswer::Value:
      break;
  }
  return access.write ? bytes({0x01, 0x00}) : bytes({0x02, 0x00, result.value});
}

}  // namespace lokari::sim::makers
