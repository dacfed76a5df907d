#include "base/prompt.h"
#include "cab/ibx_form.h"
#include "cab/ibx_talk.h"
#include "cab/intellibox.h"
#include "cab/intellibox_codec.h"
#include "cab/unit_addresses.h"
#include "link/p50x_codes.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// `panelCmd` is 90 lo fl.
class IntelliboxPanel final : public PanelProtocol {
 public:
  IntelliboxPanel(CabLine& line, PanelState& state) : PanelProtocol(line, state), talk_(line) {}

  std::optional<quint8> readState() override {
    const auto question = ibx::askOutputs(state().address);
    if (!question) return std::nullopt;
    state().panelCmd = ibx::switchOutput(state().address);
    return ibx::outputReply(talk_.ask(*question, form().outputReplySize), state().address);
  }

  void sendOutput(int n) override {
    if (!ibx::askOutputs(state().address)) return;
    const bool on = state().outOn.at(n);
    state().panelCmd = ibx::switchOutput(state().address, n, on);
    // Without an answer nobody knows whether the coil has its power.
    if (!tell(state().panelCmd) || !form().switchesOff) return;
    talk_.pause(static_cast<int>(kCoilPulse));
    tell(ibx::endPulse(state().address, n, on));
  }

 private:
  const IbxForm& form() const { return ibxForm(link()); }

  /// False when the station has refused it. That beeps, and so does what it has taken without power
  /// on the track.
  bool tell(const QByteArray& command) {
    const int code = talk_.tell(command);
    const bool refused = code >= 0 && !p50x::isTaken(code);
    if (refused || code == p50x::kWithoutPower) link().prompt().beep();
    return !refused;
  }

  IbxTalk talk_;
};

}  // namespace

std::unique_ptr<PanelProtocol> makeIntelliboxPanel(CabLine& line, PanelState& state) {
  return std::make_unique<IntelliboxPanel>(line, state);
}

}  // namespace lokari
