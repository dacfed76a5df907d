// The transfer of new firmware into an MX1 of the 2000 series, from the session to the farewell.
//
// In the session the station is asked for its boot loader. Then the session leaves the port to a
// raw handle, on which the station is asked again when it did not understand, and gets the blocks.
// Once it has been asked, three dots send it back to normal operation on every road; after a cancel
// it is not asked any more.
#pragma once

#include "link/comm_view.h"
#include "station/firm_blocks.h"
#include "station/raw_port.h"

namespace lokari {

class StationLink;

class FirmTransfer {
 public:
  /// All arguments must outlive it. The user has confirmed `firmware`.
  FirmTransfer(StationLink& link, CommView& view, const Firmware& firmware);

  /// The whole job. Its texts, its progress and its end go to the view; nothing is thrown.
  FirmEnd SendFirm();

 private:
  FirmEnd transfer();
  bool askInSession();
  bool askOnHandle();
  bool cancelled() const;
  void status(const QString& text) { view_.setStatus(text); }
  /// The last text of the job, with a beep.
  FirmEnd close(FirmEnd end, const QString& text);
  void finishSession();
  void leaveBootLoader();
  /// Cabs that share the port would find it closed.
  void returnPort();

  StationLink& link_;
  CommView& view_;
  const Firmware& firmware_;
  RawPort port_;
  bool inSession_ = false;
  bool asked_ = false;  ///< the station may be in its boot loader
};

}  // namespace lokari
