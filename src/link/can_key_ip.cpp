#include "link/can_key_ip.h"

#include "link/can_key_codec.h"
#include "link/link_error.h"
#include "link/udp_socket.h"

namespace lokari {
namespace {

constexpr Millis kOpenTime = 2000;
/// Below the 30 s after which the station takes a client for gone, with a margin for a busy loop.
constexpr Millis kLongestSilence = 20'000;

constexpr CanMessage kOpening{.ID = 0x0A1986C2, .MSGTYPE = 2, .LEN = 0, .DATA = {}};
constexpr CanMessage kClosing{.ID = 0x0A1D86C2, .MSGTYPE = 2, .LEN = 0, .DATA = {}};

}  // namespace

CanKeyIp::~CanKeyIp() {
  if (alarm_) close();
}

int CanKeyIp::open(const QString& address) {
  queue_.clear();
  socket_.onArrival = [this](qsizetype) { receive(); };
  socket_.onRefused = [this] { refused_ = true; };
  socket_.onClosed = nullptr;
  socket_.open(address, kStationPort, kLocalPort);
  const auto isOpen = [this] { return socket_.state() == UdpSocket::kOpen; };
  clock_.waitUntil([&] { return isOpen() || !socket_.fault().isEmpty(); },
                   clock_.now() + kOpenTime);
  fault_ = socket_.fault();
  if (!isOpen()) {
    socket_.close();
    return can_code::kNoDevice;
  }
  return write(kOpening);
}

int CanKeyIp::close() {
  if (alarm_) write(kClosing);
  alarm_.reset();
  socket_.onArrival = nullptr;
  socket_.onRefused = nullptr;
  socket_.close();
  queue_.clear();
  return 0;
}

int CanKeyIp::write(const CanMessage& message) {
  const auto datagram = can_key::datagram(message);
  if (!datagram) return can_code::kTooLong;
  try {
    socket_.send(*datagram);
    refused_ = false;
  } catch (const LinkError&) {
    return can_code::kWriteFailed;
  }
  alarm_ = clock_.after(kLongestSilence, [this] { keepAlive(); });
  return 0;
}

void CanKeyIp::keepAlive() {
  // A network that is down for a moment must not end the keeping alive.
  if (write(kOpening) != 0) alarm_ = clock_.after(kLongestSilence, [this] { keepAlive(); });
}

void CanKeyIp::receive() {
  if (const auto message = can_key::fromDatagram(socket_.takeDatagram())) queue_.put(*message);
}

}  // namespace lokari
