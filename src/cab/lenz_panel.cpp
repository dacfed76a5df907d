#include "cab/lenz.h"
#include "cab/lenz_codec.h"
#include "cab/lenz_talk.h"
#include "link/lenz_codec.h"

namespace lokari {
namespace {

/// `panelCmd` is 52 grp 80; switching puts the output into its last byte.
class LenzPanel final : public PanelProtocol {
 public:
  LenzPanel(CabLine& line, PanelState& state) : PanelProtocol(line, state), talk_(line) {}

  std::optional<quint8> readState() override {
    if (!prepare()) return std::nullopt;
    const std::optional<int> low = askHalf(0);
    if (!low) return std::nullopt;
    const std::optional<int> high = askHalf(1);
    if (!high) return std::nullopt;
    return static_cast<quint8>(*high * 16 + *low);
  }

  void sendOutput(int n) override {
    if (state().panelCmd.isEmpty() && !prepare()) return;
    state().panelCmd[2] = static_cast<char>(lenz::outputByte(n, state().outOn.at(n)));
    talk_.send(lenz::withCheck(state().panelCmd));
  }

 private:
  /// False for an address that has no message.
  bool prepare() {
    if (!lenz::askOutputs(state().address, 0)) return false;
    state().panelCmd = lenz::switchOutput(state().address);
    return true;
  }

  std::optional<int> askHalf(int half) {
    const auto question = lenz::askOutputs(state().address, half);
    return lenz::outputState(talk_.ask(question.value(), lenz::kOutputStateSize));
  }

  LenzTalk talk_;
};

}  // namespace

std::unique_ptr<PanelProtocol> makeLenzPanel(CabLine& line, PanelState& state) {
  return std::make_unique<LenzPanel>(line, state);
}

}  // namespace lokari
