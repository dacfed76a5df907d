// The switch panel on the MX1 with the text protocol.
#include "cab/cab_line.h"
#include "cab/mx1_text.h"
#include "cab/mx1_text_codec.h"
#include "link/mx1_text.h"
#include "link/serial_line.h"
#include "link/station_link.h"

namespace lokari {
namespace {

class Mx1TextPanel final : public PanelProtocol {
 public:
  using PanelProtocol::PanelProtocol;

  std::optional<quint8> readState() override {
    const int unit = state().address;
    // A command for another unit would go out if the address were cut to its nine bits.
    if (unit < 0 || unit > mx1cab::kHighestUnit) return {};
    state().panelCmd = mx1cab::switchCommand(unit);
    // What waits is no answer to it.
    link().protocol().dropInput();
    line().send([&] { link().serial().write(mx1cab::askOutputs(unit)); });
    link().WaitForData(mx1cab::kOutputsLength);
    return mx1cab::parseOutputs(link().serial().read());
  }

  void sendOutput(int n) override {
    if (state().panelCmd.isEmpty()) return;
    if (wasRefused()) sendCommand();
    mx1cab::setOutput(state().panelCmd, state().address, n,
                      state().outOn.at(static_cast<size_t>(n)));
    sendCommand();
  }

 private:
  bool wasRefused() {
    auto* const station = dynamic_cast<Mx1TextProtocol*>(&link().protocol());
    return station != nullptr && station->takeSwitchRefusal();
  }

  void sendCommand() {
    line().send([&] { link().serial().write(state().panelCmd); });
  }
};

}  // namespace

std::unique_ptr<PanelProtocol> makeMx1TextPanel(CabLine& line, PanelState& state) {
  return std::make_unique<Mx1TextPanel>(line, state);
}

}  // namespace lokari
