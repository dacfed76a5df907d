// The Tams MC: a text protocol on a serial port.
#pragma once

#include <memory>

#include "link/owed_replies.h"
#include "link/serial_protocol.h"

namespace lokari {

class TamsProtocol final : public SerialProtocol {
 public:
  explicit TamsProtocol(StationLink& link);

  std::unique_ptr<CvExchange> readCv(const CvRequest& request) override;
  std::unique_ptr<CvExchange> writeCv(const CvRequest& request) override;
  void dropInput() override;

 private:
  OwedReplies owed_;
};

std::unique_ptr<StationProtocol> makeTamsProtocol(StationLink& link);

}  // namespace lokari
