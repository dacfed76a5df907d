// The switch panel on the MX1 and the MX1ULF with the Zimo binary protocol.
#include "cab/zimo_binary.h"
#include "cab/zimo_binary_codec.h"
#include "cab/zimo_binary_exchange.h"
#include "link/zimo_binary_framing.h"

namespace lokari {
namespace {

class ZimoBinaryPanel final : public PanelProtocol {
 public:
  using PanelProtocol::PanelProtocol;

  std::optional<quint8> readState() override {
    std::optional<quint8> mask;
    withZimoFraming(link(), [&](ZimoBinaryFraming& framing) {
      const auto answer = askZimoBinary(link(), framing, zbincab::askOutputs(state().address),
                                        zbincab::kLeastOutputs);
      if (!answer) return;
      const auto told = zbincab::parseOutputs(*answer);
      state().panelCmd = told.command;
      mask = told.mask;
    });
    return mask;
  }

  /// Without an answer to the reading there is no command that a value could complete.
  void sendOutput(int n) override {
    if (state().panelCmd.isEmpty()) return;
    const bool on = state().outOn.at(static_cast<size_t>(n));
    withZimoFraming(link(), [&](ZimoBinaryFraming& framing) {
      framing.zbinSendMsg(zbincab::switchCommand(state().panelCmd, n, on));
    });
  }
};

}  // namespace

std::unique_ptr<PanelProtocol> makeZimoBinaryPanel(CabLine& line, PanelState& state) {
  return std::make_unique<ZimoBinaryPanel>(line, state);
}

}  // namespace lokari
