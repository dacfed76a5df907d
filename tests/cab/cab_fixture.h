// A cab's and a panel's protocol on a strict script, in virtual time, with the session open.
#pragma once

#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "support/link_fixture.h"

namespace lokari::test {

class CabFixture : public LinkFixture {
 protected:
  explicit CabFixture(StationKind kind) : LinkFixture(kind) {
    EXPECT_EQ(link.initComm(true, false, false), "");
    state.address = 3;
    panelState.address = 3;
    const ProtocolFamily family = stationKind(kind).family;
    cab = makeCabProtocol(family, cabLine, state, {});
    panel = makePanelProtocol(family, cabLine, panelState);
  }

  static QByteArray fromHex(const char* text) { return QByteArray::fromHex(text); }

  std::optional<FunctionMask> read() {
    std::optional<FunctionMask> mask;
    cabLine.exchange(this, 0, [&] { mask = cab->readState(); });
    return mask;
  }
  void speed(int position) {
    state.speed = position;
    cabLine.exchange(this, 1, [this] { cab->sendSpeed(); });
  }
  void direction(bool backward) {
    state.backward = backward;
    cabLine.exchange(this, 2, [this] { cab->sendDirection(); });
  }
  void function(int n, bool on) {
    state.funcOn.at(n) = on;
    cabLine.exchange(this, 100 + n, [this, n] { cab->sendFunction(n); });
  }
  void stop(bool stopped) {
    state.stopped = stopped;
    cabLine.urgent([this] { cab->sendStopped(); });
  }

  std::optional<quint8> readPanel() {
    std::optional<quint8> mask;
    cabLine.exchange(this, 0, [&] { mask = panel->readState(); });
    return mask;
  }
  void output(int n, bool on) {
    panelState.outOn.at(n) = on;
    cabLine.exchange(this, n, [this, n] { panel->sendOutput(n); });
  }

  CabLine cabLine{link};
  CabState state;
  PanelState panelState;
  std::unique_ptr<CabProtocol> cab;
  std::unique_ptr<PanelProtocol> panel;
};

}  // namespace lokari::test
