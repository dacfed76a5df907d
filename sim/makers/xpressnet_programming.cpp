#include "sim/makers/xpressnet_programming.h"

#include <algorithm>
#include <array>
#include <set>

#include "base/bytes.h"
#include "sim/makers/xpressnet_driving.h"

namespace lokari::sim::makers {
namespace {

constexpr int kLastRegister = 8;
constexpr int kRegisterResult = 0x10;
constexpr int kDirectResult = 0x14;

struct Row {
  int code;
  bool write;
  Method method;
  int base;  ///< added to the byte
  int zero;  ///< what 00 stands for
  int result;
  int version;
};
constexpr std::array kRows{
    Row{0x11, false, Method::Register, 0, 0, kRegisterResult, kXpressNet30},
    Row{0x12, true, Method::Register, 0, 0, kRegisterResult, kXpressNet30},
    Row{0x14, false, Method::Paged, 0, 256, kRegisterResult, kXpressNet30},
    Row{0x17, true, Method::Paged, 0, 256, kRegisterResult, kXpressNet30},
    Row{0x15, false, Method::Direct, 0, 1024, kDirectResult, kXpressNet36},
    Row{0x16, true, Method::Direct, 0, 1024, kDirectResult, kXpressNet36},
    Row{0x15, false, Method::Direct, 0, 256, kDirectResult, kXpressNet30},
    Row{0x16, true, Method::Direct, 0, 256, kDirectResult, kXpressNet30},
    Row{0x18, false, Method::Direct, 0, 1024, 0x14, kXpressNet36},
    Row{0x19, false, Method::Direct, 256, 256, 0x15, kXpressNet36},
    Row{0x1A, false, Method::Direct, 512, 512, 0x16, kXpressNet36},
    Row{0x1B, false, Method::Direct, 768, 768, 0x17, kXpressNet36},
    Row{0x1C, true, Method::Direct, 0, 1024, 0x14, kXpressNet36},
    Row{0x1D, true, Method::Direct, 256, 256, 0x15, kXpressNet36},
    Row{0x1E, true, Method::Direct, 512, 512, 0x16, kXpressNet36},
    Row{0x1F, true, Method::Direct, 768, 768, 0x17, kXpressNet36},
};

/// Registers that are the CV of their number; 5 is CV 29, 6 the page.
constexpr std::array kRegisterCvs{1, 2, 3, 4, 7, 8};

bool isRegisterCv(int cv) {
  return std::find(kRegisterCvs.begin(), kRegisterCvs.end(), cv) != kRegisterCvs.end();
}

}  // namespace

std::optional<ServiceAccess> serviceAccess(const QByteArray& message, int version) {
  const int header = byteAt(message, 0);
  if (header != 0x22 && header != 0x23) return {};
  for (const Row& row : kRows) {
    if (row.code != byteAt(message, 1) || row.version > version) continue;
    if (row.write != (header == 0x23)) continue;
    const int shown = byteAt(message, 2);
    const int cv = shown == 0 ? row.zero : row.base + shown;
    if (row.method == Method::Register && (cv < 1 || cv > kLastRegister)) return {};
    return ServiceAccess{.write = row.write,
                         .method = row.method,
                         .cv = cv,
                         .shown = shown,
                         .value = row.write ? byteAt(message, 3) : 0,
                         .result = row.result};
  }
  return {};
}

ServiceAccess fallenBack(const ServiceAccess& access, const Decoder* decoder) {
  if (decoder == nullptr || access.write || access.method != Method::Direct) return access;
  const bool registersOnly = decoder->methods == std::set{Method::Register};
  if (!registersOnly || !isRegisterCv(access.cv)) return access;
  ServiceAccess other = access;
  other.method = Method::Register;
  other.result = kRegisterResult;
  return other;
}

QByteArray serviceResult(const ServiceAccess& access, const TrackResult& result, int version) {
  switch (result.answer) {
    case TrackAnswer::ShortCircuit:
      return bytes({0x61, 0x12});
    case TrackAnswer::NoDecoder:
    case TrackAnswer::NoAck:
      return bytes({0x61, 0x13});
    case TrackAnswer::Busy:
      return bytes({0x61, 0x81});
    case TrackAnswer::Value:
      break;
  }
  // "Ready" is what a station has to say of a write; the old ones do not use it.
  if (access.write && version >= kXpressNet36) return bytes({0x61, 0x11});
  return bytes({0x63, access.result, access.shown, result.value});
}

}  // namespace lokari::sim::makers
