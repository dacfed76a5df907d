// The session steps and the waiting that all stations on a serial port share.
#pragma once

#include "base/settings.h"
#include "link/station_protocol.h"

namespace lokari {

struct SerialSettings;

/// The line that a session of these settings opens: the port, and the rate that the user has set
/// or else the kind's.
SerialSettings sessionLine(const Settings& settings);

class SerialProtocol : public StationProtocol {
 public:
  using StationProtocol::StationProtocol;

  void open(bool progOn, int& step) final;
  void farewell(bool leaveMode, bool progOn) final;
  void close(bool lastUser) final;
  qint32 bufferCount() final;
  bool arrived(qint32 want) override;
  void dropInput() override;

 protected:
  /// First messages, right after the port has opened.
  virtual void greet() {}
  /// Last messages, before waiting input is dropped and the port closes.
  virtual void sayGoodbye(bool leaveMode) { Q_UNUSED(leaveMode) }
};

}  // namespace lokari
