// The Intellibox: binary commands on a serial port.
#pragma once

#include <memory>

#include "link/serial_protocol.h"

namespace lokari {

class IntelliboxProtocol final : public SerialProtocol {
 public:
  using SerialProtocol::SerialProtocol;

  std::unique_ptr<CvExchange> readCv(const CvRequest& request) override;
  std::unique_ptr<CvExchange> writeCv(const CvRequest& request) override;
};

std::unique_ptr<StationProtocol> makeIntelliboxProtocol(StationLink& link);

}  // namespace lokari
