// The LI100 in its two generations and the LI-USB: XpressNet messages on a serial port.
#pragma once

#include <memory>

#include "link/lenz_framing.h"
#include "link/serial_line.h"
#include "link/serial_protocol.h"
#include "link/station_link.h"

namespace lokari {

class LenzProtocol final : public SerialProtocol {
 public:
  LenzProtocol(StationLink& link, StationKind kind) : SerialProtocol(link), framing_(link, kind) {
    link.serial().onReceived = [this](const QByteArray& data) { framing_.hear(data); };
  }
  ~LenzProtocol() override { link().serial().onReceived = nullptr; }

  std::unique_ptr<CvExchange> readCv(const CvRequest& request) override;
  std::unique_ptr<CvExchange> writeCv(const CvRequest& request) override;

  /// For messages beyond CVs.
  LenzFraming& framing() { return framing_; }

 protected:
  void sayGoodbye(bool leaveMode) override;

 private:
  LenzFraming framing_;
};

std::unique_ptr<StationProtocol> makeLenzProtocol(StationLink& link);

}  // namespace lokari
