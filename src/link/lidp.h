// The Lenz decoder programmer: a text protocol on a serial port, for a programming track only.
#pragma once

#include <memory>

#include "link/owed_replies.h"
#include "link/serial_protocol.h"

namespace lokari {

class LidpProtocol final : public SerialProtocol {
 public:
  explicit LidpProtocol(StationLink& link);

  std::unique_ptr<CvExchange> readCv(const CvRequest& request) override;
  std::unique_ptr<CvExchange> writeCv(const CvRequest& request) override;
  void dropInput() override;

 protected:
  void sayGoodbye(bool leaveMode) override;

 private:
  OwedReplies owed_;
};

std::unique_ptr<StationProtocol> makeLidpProtocol(StationLink& link);

}  // namespace lokari
