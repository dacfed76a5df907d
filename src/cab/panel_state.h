// What one switch panel knows of its function unit.
#pragma once

#include <QByteArray>

#include <array>

namespace lokari {

struct PanelState {
  static constexpr int kOutputs = 4;

  int address = 0;              ///< `dc_adr`
  std::array<bool, 5> outOn{};  ///< outputs 0 to 3; 4 has no switch
  /// The station has never switched them: how they stand, it does not know.
  std::array<bool, kOutputs> neverSwitched{};
  QByteArray panelCmd;  ///< the station's command, kept as a template
};

}  // namespace lokari
