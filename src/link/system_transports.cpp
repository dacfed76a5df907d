#include "link/system_transports.h"

#include "link/can_driver.h"

namespace lokari {
namespace {

/// A machine without CAN drivers.
class NoCanDriver final : public CanDriver {
 public:
  bool isPresent(int) const override { return false; }
  int open(int, qint16, qint16, qint16) override { return kNoDriver; }
  int close() override { return kNoDriver; }
  int write(const CanMessage&) override { return kNoDriver; }
  int read(CanMessage&) override { return kNoDriver; }

 private:
  static constexpr int kNoDriver = 0x1000;
};

}  // namespace

SystemTransports::SystemTransports(const QString& appPath)
    : ports_(appPath), serial_(ports_), can_(std::make_unique<NoCanDriver>()) {}

SystemTransports::~SystemTransports() = default;

Transports SystemTransports::transports() {
  return {serial_, udp_, *can_};
}

}  // namespace lokari
