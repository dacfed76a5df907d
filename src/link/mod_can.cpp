#include "link/mod_can.h"

#include <array>

#include "base/bytes.h"
#include "link/can_log.h"
#include "link/can_message_text.h"
#include "link/dotted_address.h"

namespace lokari {
namespace {

constexpr int kFirstDriver = 1;
constexpr int kLastDriver = 8;
constexpr int kKeyOverIp = 9;

/// What the port number is raised by in the open call, by driver.
constexpr std::array kPortOffsets{0, 0, 0, 0, 0, 0, 0, 0, 20, 208};

}  // namespace

PackedAddress packAddress(const QString& ipAddr) {
  const auto packed = static_cast<qint32>(dottedAddress(ipAddr).value_or(0));
  return {.btr = wordHigh(packed), .p2 = wordLow(packed)};
}

ModCan::~ModCan() {
  if (isOpen()) driver_.close();
}

int ModCan::canOpen(int driver, int p1, int p2, int btr, const KeySettings& key) {
  if (isOpen()) {
    ++uses_;
    return kAlreadyOpen;
  }
  if (driver < kFirstDriver || driver > kLastDriver) return kNoSuchDriver;

  canDriver_ = driver == 7 ? 8 : driver;
  const bool isKey = canDriver_ == 6 || canDriver_ == 8;
  if (isKey && driver_.isPresent(canDriver_ + 1)) ++canDriver_;

  CanOpenCall call{
      .driver = canDriver_,
      .btr = static_cast<qint16>(btr),
      .p1 = static_cast<qint16>(p1 + kPortOffsets[static_cast<size_t>(canDriver_)]),
      .p2 = static_cast<qint16>(p2),
      .baudrate = key.baudrate,
  };
  if (canDriver_ == kKeyOverIp && p1 == 0) {
    const PackedAddress address = packAddress(key.ipAddr);
    call.btr = address.btr;
    call.p2 = address.p2;
  }
  int code = driver_.open(call);
  if (code == kHarmless) code = 0;
  if (code != 0) {
    canClose();
    log(QStringLiteral("CAN port open failed!"));
    return code;
  }
  ++uses_;
  log(QStringLiteral("CAN port opened."));
  return 0;
}

int ModCan::canClose() {
  if (uses_ > 0 && --uses_ > 0) return 0;
  const int code = driver_.close();
  log(QStringLiteral("CAN port closed."));
  return code;
}

int ModCan::canWrite(const CanMessage& message) {
  log(QStringLiteral("> ") + canMessageText(message));
  return driver_.write(message);
}

int ModCan::canRead(CanMessage& message) {
  const int code = driver_.read(message);
  if (code == 0) log(QStringLiteral("< ") + canMessageText(message));
  return code;
}

void ModCan::log(const QString& text) {
  if (log_ != nullptr) log_->write(text);
}

}  // namespace lokari
