// The programming track on XpressNet. Messages without their checksum; r is a register, c the low
// byte of a CV.
//
//   22 11 r, 23 12 r v         register mode, 1 to 8         result 63 10 r v
//   22 14 c, 23 17 c v         paged, CV 1 to 256, 00 is 256 result 63 10 c v
//   22 15 c, 23 16 c v         direct, CV 1 to 255; 00 is 256, from version 3.6 on 1024
//                                                            result 63 14 c v
//   22 18 c, 23 1C c v         direct from version 3.6: CV 1 to 255 and 00 = 1024, result 63 14;
//   ... 22 1B c, 23 1F c v     256 to 511, 512 to 767, 768 to 1023, result 63 15, 16, 17
//
// A decoder that knows registers only answers a direct read of a register's CV as a register.
#pragma once

#include <QByteArray>

#include <optional>

#include "sim/station.h"

namespace lokari::sim::makers {

struct ServiceAccess {
  bool write = false;
  Method method = Method::Direct;
  int cv = 0;     ///< or register
  int shown = 0;  ///< the byte that stands for it
  int value = 0;
  int result = 0;  ///< second byte of the result
};

/// The access that a message asks a station of this version for.
std::optional<ServiceAccess> serviceAccess(const QByteArray& message, int version);

/// The same access as this decoder can be reached; null for no decoder.
ServiceAccess fallenBack(const ServiceAccess& access, const Decoder* decoder);

/// What the question for the result is answered.
QByteArray serviceResult(const ServiceAccess& access, const TrackResult& result, int version);

}  // namespace lokari::sim::makers
