#include "link/can_key_serial.h"

#include "base/clock.h"
#include "link/can_code.h"
#include "link/link_error.h"
#include "link/serial_line.h"

namespace lokari {
namespace {

constexpr int kTries = 3;
constexpr Millis kTryTime = 500;

}  // namespace

int CanKeySerial::open(int comPort, int baudrate) {
  reader_.clear();
  fault_.clear();
  try {
    line_.open({.comPort = comPort, .baudrate = baudrate, .handshaking = Handshaking::None});
    bool awake = false;
    for (int i = 0; i < kTries && !awake; ++i) {
      line_.write(can_key::opening());
      awake = clock_.waitUntil([this] { return heard(); }, clock_.now() + kTryTime);
    }
  } catch (const LinkError& error) {
    fault_ = error.message();
    line_.close();
    return can_code::kNoDevice;
  }
  return 0;
}

bool CanKeySerial::heard() {
  return line_.inBufferCount() > 0;
}

int CanKeySerial::close() {
  line_.close();
  reader_.clear();
  return 0;
}

int CanKeySerial::write(const CanMessage& message) {
  const auto frame = can_key::frame(message);
  if (!frame) return can_code::kTooLong;
  try {
    line_.write(*frame);
  } catch (const LinkError&) {
    return can_code::kWriteFailed;
  }
  return 0;
}

int CanKeySerial::read(CanMessage& message) {
  reader_.feed(line_.read());
  const auto next = reader_.next();
  if (!next) return can_code::kNoMessage;
  message = *next;
  return 0;
}

}  // namespace lokari
