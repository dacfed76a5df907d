// The MX1 in its two generations with a line protocol, which differ in the handshaking only.
#pragma once

#include <memory>

#include "link/serial_protocol.h"

namespace lokari {

class Mx1TextProtocol final : public SerialProtocol {
 public:
  using SerialProtocol::SerialProtocol;

  std::unique_ptr<CvExchange> readCv(const CvRequest& request) override;
  std::unique_ptr<CvExchange> writeCv(const CvRequest& request) override;
  int addrIndex(int address) override;

 protected:
  void greet() override;
  void sayGoodbye(bool leaveMode) override;

 private:
  void reportRefusal();
};

std::unique_ptr<StationProtocol> makeMx1TextProtocol(StationLink& link);

}  // namespace lokari
