#include "link/can_bus.h"

#include <QCanBus>

#include <algorithm>

#include "base/bytes.h"
#include "base/clock.h"
#include "link/link_error.h"

namespace lokari {
namespace {

constexpr int kOscillator = 16'000'000;
constexpr Millis kConnectTime = 2000;
constexpr int kMostData = 8;
constexpr quint8 kLongIdentifier = 2;

}  // namespace

int bitRateOf(qint16 btr) {
  const int prescaler = (byteSecond(btr) & 0x3F) + 1;
  const int beforeSample = (byteLow(btr) & 0x0F) + 1;
  const int afterSample = (byteLow(btr) >> 4 & 0x07) + 1;
  return kOscillator / (2 * prescaler * (1 + beforeSample + afterSample));
}

std::vector<CanInterface> CanBus::systemInterfaces() {
  const QString library = QStringLiteral("peakcan");
  const QString kernel = QStringLiteral("socketcan");
  // The kernel numbers its interfaces without telling what they are plugged into.
  const QString first = QStringLiteral("can0");
  return {
      {1, library, QStringLiteral("isa0")}, {1, kernel, first},
      {2, library, QStringLiteral("dng0")}, {2, kernel, first},
      {3, library, QStringLiteral("dnp0")}, {3, kernel, first},
      {4, library, QStringLiteral("pci0")}, {4, kernel, first},
      {5, library, QStringLiteral("usb0")}, {5, kernel, first},
  };
}

CanBus::~CanBus() {
  close();
}

bool CanBus::isPresent(int driver) const {
  const QStringList plugins = QCanBus::instance()->plugins();
  return std::any_of(interfaces_.begin(), interfaces_.end(), [&](const CanInterface& where) {
    return where.driver == driver && plugins.contains(where.plugin);
  });
}

int CanBus::open(int driver, qint16 btr) {
  close();
  for (const CanInterface& where : interfaces_) {
    if (where.driver == driver && connectTo(where, bitRateOf(btr))) return 0;
  }
  return can_code::kNoDevice;
}

bool CanBus::connectTo(const CanInterface& where, int bitRate) {
  device_.reset(QCanBus::instance()->createDevice(where.plugin, where.name));
  if (!device_) return false;
  QObject::connect(device_.get(), &QCanBusDevice::framesReceived, device_.get(),
                   [this] { receive(); });
  device_->setConfigurationParameter(QCanBusDevice::BitRateKey, bitRate);
  const auto settled = [this] { return device_->state() != QCanBusDevice::ConnectingState; };
  if (device_->connectDevice() && clock_.waitUntil(settled, clock_.now() + kConnectTime) &&
      device_->state() == QCanBusDevice::ConnectedState) {
    return true;
  }
  device_->disconnectDevice();
  device_.reset();
  return false;
}

int CanBus::close() {
  if (device_) device_->disconnectDevice();
  device_.reset();
  queue_.clear();
  return 0;
}

int CanBus::write(const CanMessage& message) {
  if (!device_) return can_code::kNotOpen;
  if (message.LEN > kMostData) return can_code::kTooLong;
  const QByteArray data(reinterpret_cast<const char*>(message.DATA.data()), message.LEN);
  QCanBusFrame frame(message.ID, data);
  frame.setExtendedFrameFormat((message.MSGTYPE & kLongIdentifier) != 0);
  return frame.isValid() && device_->writeFrame(frame) ? 0 : can_code::kWriteFailed;
}

int CanBus::read(CanMessage& message) {
  if (!device_) return can_code::kNotOpen;
  const int code = queue_.take(message);
  if (code != 0 && device_->state() != QCanBusDevice::ConnectedState) {
    throw LinkError(QStringLiteral("Die CAN-Schnittstelle ist nicht mehr da!"));
  }
  return code;
}

void CanBus::receive() {
  while (device_->framesAvailable() > 0) {
    const QCanBusFrame frame = device_->readFrame();
    const QByteArray data = frame.payload();
    if (frame.frameType() != QCanBusFrame::DataFrame || data.size() > kMostData) continue;
    CanMessage message;
    message.ID = frame.frameId();
    message.MSGTYPE = frame.hasExtendedFrameFormat() ? kLongIdentifier : quint8{0};
    message.LEN = static_cast<quint8>(data.size());
    std::copy(data.begin(), data.end(), message.DATA.begin());
    queue_.put(message);
  }
}

}  // namespace lokari
