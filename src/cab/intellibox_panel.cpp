#include "base/prompt.h"
#include "cab/ibx_talk.h"
#include "cab/intellibox.h"
#include "cab/intellibox_codec.h"
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
    return ibx::outputReply(talk_.ask(*question, ibx::kOutputReplySize), state().address);
  }

  void sendOutput(int n) override {
    if (!ibx::askOutputs(state().address)) return;
    state().panelCmd = ibx::switchOutput(state().address, n, state().outOn.at(n));
    if (talk_.tell(state().panelCmd) > 0) link().prompt().beep();
  }

 private:
  IbxTalk talk_;
};

}  // namespace

std::unique_ptr<PanelProtocol> makeIntelliboxPanel(CabLine& line, PanelState& state) {
  return std::make_unique<IntelliboxPanel>(line, state);
}

}  // namespace lokari
