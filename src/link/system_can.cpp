#include "link/system_can.h"

#include <array>
#include <utility>

#include "base/bytes.h"
#include "link/can_code.h"

namespace lokari {
namespace {

constexpr int kFirstKey = 6;
constexpr int kKeyOverIp = 9;
/// What the port number in the open call is raised by, from driver 6 on.
constexpr std::array kPortOffsets{0, 0, 20, 208};

QString dotted(qint16 high, qint16 low) {
  return QStringLiteral("%1.%2.%3.%4")
      .arg(byteSecond(high))
      .arg(byteLow(high))
      .arg(byteSecond(low))
      .arg(byteLow(low));
}

}  // namespace

SystemCan::SystemCan(Clock& clock, SerialLine& line, UdpSocket& socket,
                     std::vector<CanInterface> interfaces)
    : bus_(std::move(interfaces), clock), serial_(line, clock), ip_(socket, clock) {}

bool SystemCan::isPresent(int driver) const {
  return driver >= kFirstKey ? driver <= kKeyOverIp : bus_.isPresent(driver);
}

int SystemCan::open(const CanOpenCall& call) {
  used_ = nullptr;
  const int code = openDriver(call);
  // A failure is followed by close(), which forgets it.
  fault_ = code != 0 && used_ != nullptr ? used_->fault() : QString();
  return code;
}

int SystemCan::openDriver(const CanOpenCall& call) {
  if (!isPresent(call.driver)) return can_code::kNoDevice;
  if (call.driver >= kFirstKey) return openKey(call);
  used_ = &bus_;
  return bus_.open(call.driver, call.btr);
}

int SystemCan::openKey(const CanOpenCall& call) {
  const int comPort = call.p1 - kPortOffsets[static_cast<size_t>(call.driver - kFirstKey)];
  if (comPort > 0) {
    used_ = &serial_;
    return serial_.open(comPort, call.baudrate != 0 ? call.baudrate : CanKeySerial::kDefaultRate);
  }
  // The other drivers have no place for an address.
  const bool hasAddress = call.driver == kKeyOverIp && (call.btr != 0 || call.p2 != 0);
  if (comPort < 0 || !hasAddress) return can_code::kBadAddress;
  used_ = &ip_;
  return ip_.open(dotted(call.btr, call.p2));
}

int SystemCan::close() {
  CanPort* const port = std::exchange(used_, nullptr);
  return port != nullptr ? port->close() : can_code::kNotOpen;
}

int SystemCan::write(const CanMessage& message) {
  return used_ != nullptr ? used_->write(message) : can_code::kNotOpen;
}

int SystemCan::read(CanMessage& message) {
  return used_ != nullptr ? used_->read(message) : can_code::kNotOpen;
}

}  // namespace lokari
