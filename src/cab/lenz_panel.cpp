#include "cab/lenz.h"
#include "cab/lenz_codec.h"
#include "cab/lenz_coding.h"
#include "cab/lenz_talk.h"
#include "link/lenz_codec.h"
#include "link/station_link.h"

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
    const int mask = *high * 16 + *low;
    for (int n = 0; n < PanelState::kOutputs; ++n) {
      state().neverSwitched.at(n) = lenz::isNeverSwitched(mask, n);
    }
    return static_cast<quint8>(mask);
  }

  void sendOutput(int n) override {
    if (state().panelCmd.isEmpty() && !prepare()) return;
    const bool on = state().outOn.at(n);
    send(lenz::outputByte(n, on));
    const Millis pulse = lenz::coding(link().settings()).pulse;
    if (pulse == 0) return;
    // The pause lets a stop out; the message behind it goes out in any case.
    link().DelayMsec(static_cast<int>(pulse));
    send(lenz::outputOffByte(n, on));
  }

 private:
  void send(int what) {
    state().panelCmd[2] = static_cast<char>(what);
    talk_.send(lenz::withCheck(state().panelCmd));
  }

  /// False for an address that has no message.
  bool prepare() {
    if (!lenz::askOutputs(state().address, 0)) return false;
    state().panelCmd = lenz::switchOutput(state().address);
    return true;
  }

  std::optional<int> askHalf(int half) {
    const QByteArray question = lenz::askOutputs(state().address, half).value();
    QByteArray reply = talk_.ask(question, lenz::kOutputStateSize);
    // Another group's is news of it, unless this station names them so.
    if (lenz::outputState(reply) && lenz::groupOf(reply) != lenz::groupOf(question)) {
      reply = talk_.ask(question, lenz::kOutputStateSize);
    }
    return lenz::outputState(reply);
  }

  LenzTalk talk_;
};

}  // namespace

std::unique_ptr<PanelProtocol> makeLenzPanel(CabLine& line, PanelState& state) {
  return std::make_unique<LenzPanel>(line, state);
}

}  // namespace lokari
