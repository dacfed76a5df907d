// The switch panel: four outputs of a function unit, all of it but its window.
#pragma once

#include "cab/panel_protocol.h"
#include "cab/panel_state.h"
#include "cab/slot_unit.h"

namespace lokari {

using PanelProtocolFactory =
    std::function<std::unique_ptr<PanelProtocol>(ProtocolFamily, CabLine&, PanelState&)>;

/// What panels work with; all of it must outlive them.
struct PanelParts {
  CabLine& line;
  Prompt& prompt;
  PanelProtocolFactory makeProtocol;
};

class Panel final : public SlotUnit {
  Q_OBJECT

 public:
  /// `shortName` is `st_sname` of the record on show.
  Panel(const PanelParts& parts, int address, const QString& shortName);
  ~Panel() override;

  const PanelState& state() const { return state_; }
  /// The station has told the outputs at load; until then the lamps stand as they were designed.
  bool hasState() const { return hasState_; }

  /// A press on lamp n, 0 to 3; nothing for another number.
  void cmdFunc(int n);
  /// A press on the button beside it: just the same.
  void cmdSwitch(int n) { cmdFunc(n); }
  /// A key pressed while a button or `dc_adr` has the focus: "1" to "4" are the outputs. False for
  /// any other.
  bool keyDown(QChar key);

 signals:
  /// Also when `neverSwitched` has changed.
  void outputChanged(int n, bool on);

 private:
  void onLoad() override;
  void show(quint8 mask);

  PanelParts parts_;
  PanelState state_;
  std::unique_ptr<PanelProtocol> protocol_;
  bool hasState_ = false;
};

}  // namespace lokari
