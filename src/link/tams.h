// The Tams MC on a serial port. Its own texts program; a station that answers none of them, and the
// makers' documents, have the binary commands of p50x_access.h.
#pragma once

#include <memory>

#include "link/owed_replies.h"
#include "link/serial_protocol.h"

namespace lokari {

class TamsProtocol final : public SerialProtocol {
 public:
  explicit TamsProtocol(StationLink& link);
  ~TamsProtocol() override;

  std::unique_ptr<CvExchange> readCv(const CvRequest& request) override;
  std::unique_ptr<CvExchange> writeCv(const CvRequest& request) override;
  void dropInput() override;
  /// A text that has its bracket is there, however short it is.
  bool arrived(qint32 want) override;

  /// From the sending of a text command on, what arrives is heard.
  void beginText();
  void endText();
  /// The reply has come up to its bracket.
  bool hasWholeText() const { return heard_.contains(']'); }
  OwedReplies& owed() { return owed_; }

  /// The station has answered binary commands and none of the texts.
  bool knowsNoText = false;

 private:
  bool speaksBinary() const;

  OwedReplies owed_;
  QByteArray heard_;
  bool awaitsText_ = false;
};

std::unique_ptr<StationProtocol> makeTamsProtocol(StationLink& link);

}  // namespace lokari
