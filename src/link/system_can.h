// The nine CAN drivers of this machine: 1 to 5 are interfaces of the operating system, 6 to 9 the
// CAN key.
#pragma once

#include "link/can_bus.h"
#include "link/can_key_ip.h"
#include "link/can_key_serial.h"

namespace lokari {

class SystemCan final : public CanDriver {
 public:
  /// All arguments must outlive the drivers. `line` and `socket` are the key's own or shared with
  /// stations of other kinds, which are never open at the same time.
  SystemCan(Clock& clock, SerialLine& line, UdpSocket& socket,
            std::vector<CanInterface> interfaces = CanBus::systemInterfaces());

  bool isPresent(int driver) const override;
  /// 1 to 5: `btr` are the bit timing registers. 6 to 9: `p1` is the COM port, on 8 raised by 20
  /// and on 9 by 208. On 9 without a port `btr` and `p2` are the station's IP address.
  int open(const CanOpenCall& call) override;
  int close() override;
  int write(const CanMessage& message) override;
  int read(CanMessage& message) override;
  QString fault() const override { return fault_; }
  bool isRefused() const override { return used_ != nullptr && used_->isRefused(); }

 private:
  int openDriver(const CanOpenCall& call);
  int openKey(const CanOpenCall& call);

  CanBus bus_;
  CanKeySerial serial_;
  CanKeyIp ip_;
  CanPort* used_ = nullptr;  ///< what was opened last
  QString fault_;            ///< of the last open()
};

}  // namespace lokari
