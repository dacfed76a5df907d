// What a protocol family does for a switch panel. One object serves one panel; messages go out
// through CabLine::send(), operations are called one at a time for the whole link.
#pragma once

#include <QtGlobal>

#include <optional>

#include "cab/panel_state.h"

namespace lokari {

class CabLine;
class StationLink;

/// Every operation throws LinkError when its message finds no way out.
class PanelProtocol {
 public:
  PanelProtocol(CabLine& line, PanelState& state) : line_(line), state_(state) {}
  virtual ~PanelProtocol() = default;
  PanelProtocol(const PanelProtocol&) = delete;
  PanelProtocol& operator=(const PanelProtocol&) = delete;

  /// The reading at load; the session is open. Two bits per output: a set bit 2i means that output
  /// i is off. Sets `panelCmd` where the family keeps one, and `neverSwitched` where the station
  /// tells it. Nothing when it failed.
  virtual std::optional<quint8> readState() = 0;
  /// Sends `outOn[n]`, n from 0 to 3. A station that refuses it beeps.
  virtual void sendOutput(int n) = 0;

 protected:
  CabLine& line() const { return line_; }
  StationLink& link() const;
  PanelState& state() const { return state_; }

 private:
  CabLine& line_;
  PanelState& state_;
};

}  // namespace lokari
