// The MX1 and the MX1ULF with the Zimo binary protocol.
#pragma once

#include <memory>

#include "link/serial_line.h"
#include "link/serial_protocol.h"
#include "link/station_link.h"
#include "link/zimo_binary_framing.h"

namespace lokari {

class ZimoBinaryProtocol final : public SerialProtocol {
 public:
  explicit ZimoBinaryProtocol(StationLink& link) : SerialProtocol(link), framing_(link) {
    link.serial().onReceived = [this](const QByteArray& data) { framing_.hear(data); };
  }
  ~ZimoBinaryProtocol() override { link().serial().onReceived = nullptr; }

  void beginSession() override { framing_.zbinSeq = 0; }
  void dropInput() override;
  std::unique_ptr<CvExchange> readCv(const CvRequest& request) override;
  std::unique_ptr<CvExchange> writeCv(const CvRequest& request) override;

  /// For messages beyond CVs.
  ZimoBinaryFraming& framing() { return framing_; }

 protected:
  void greet() override;
  void sayGoodbye(bool leaveMode) override;

 private:
  /// Sends a message of the session, whose reply is not judged.
  void tell(const QByteArray& msg);

  ZimoBinaryFraming framing_;
};

std::unique_ptr<StationProtocol> makeZimoBinaryProtocol(StationLink& link);

}  // namespace lokari
