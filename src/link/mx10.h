// The MX10 on the CAN bus, by key or over IP.
#pragma once

#include <optional>

#include "link/link_error.h"
#include "link/mod_can.h"
#include "link/station_protocol.h"

namespace lokari {

class Mx10Protocol final : public StationProtocol {
 public:
  explicit Mx10Protocol(StationLink& link);

  // -- session and waiting; what is waited for is an identifier, answered by one whose high word is
  // greater by 1 to 3

  /// Steps 1901 to 1922, or the driver's code, in the message of a failure.
  void open(bool progOn, int& step) override;
  void reopen(int users, int& step) override;
  void farewell(bool leaveMode, bool progOn) override;
  void close(bool lastUser) override;
  qint32 bufferCount() override { return static_cast<qint32>(canRxMsg.ID); }
  void beginWait() override { canRxMsg = {}; }
  bool arrived(qint32 want) override;

  std::unique_ptr<CvExchange> readCv(const CvRequest& request) override;
  std::unique_ptr<CvExchange> writeCv(const CvRequest& request) override;

  // -- messages; also for driving and status queries

  int canWrite(const CanMessage& message) { return can_.canWrite(message); }
  /// A question for a CV goes out: until the next one, only messages that answer it are accepted.
  void awaitCv(const CanMessage& question) { cvQuestion_ = question; }
  /// The operation has ended.
  void endCvOperation() { cvQuestion_.reset(); }
  /// The same for a question about a vehicle or a function unit.
  void awaitVehicle(const CanMessage& question) { vehicleQuestion_ = question; }
  void endVehicleQuestion() { vehicleQuestion_.reset(); }
  /// Nobody listens at the station's port.
  bool isRefused() const { return can_.isRefused(); }
  /// Empties the receive queue.
  void ClearMX10Input();
  /// Copies the data bytes 0 through `LEN`, one more than there are, into `data` (at least 17
  /// bytes) and gives `LEN`; gives 0 and copies nothing when there is no message.
  int getData(quint8* data) const;

  CanMessage canRxMsg;     ///< last accepted message; ID 0 means none
  qint16 mx10Nid = 0;      ///< the station's node; 0 when closed
  quint32 mx10Serial = 0;  ///< its serial number; 0 when closed

 private:
  LinkError whyNotOpen() const;
  /// Says goodbye as it would to an open session, and fails.
  [[noreturn]] void giveUp(bool progOn);
  void connectStation(int& step);
  void switchToProgrammingTrack(int& step);

  /// canRead(), with an ear for news of the layout.
  bool take(CanMessage& message);

  ModCan can_;
  std::optional<CanMessage> cvQuestion_;
  std::optional<CanMessage> vehicleQuestion_;
};

std::unique_ptr<StationProtocol> makeMx10Protocol(StationLink& link);

}  // namespace lokari
