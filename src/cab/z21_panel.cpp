#include "cab/cab_line.h"
#include "cab/z21.h"
#include "cab/z21_codec.h"
#include "cab/z21_coding.h"
#include "link/station_link.h"
#include "link/z21.h"

namespace lokari {
namespace {

class Z21Panel final : public PanelProtocol {
 public:
  using PanelProtocol::PanelProtocol;

  std::optional<quint8> readState() override {
    if (!hasOutputs()) return {};
    quint8 mask = 0;
    for (int i = 0; i < PanelState::kOutputs; ++i) {
      const auto output = readOutput(i);
      if (!output) return {};
      if (output->off) mask |= static_cast<quint8>(1U << (2 * i));
      state().neverSwitched[static_cast<size_t>(i)] = output->neverSwitched;
    }
    return mask;
  }

  /// The pauses let a stop out; the message behind them goes out in any case.
  void sendOutput(int n) override {
    if (!hasOutputs()) return;
    const bool on = state().outOn[static_cast<size_t>(n)];
    for (const z21::OutputMessage& message : coding().outputMessages) {
      const QString text = z21::outputText(outputAddress(n), on ? message.on : message.off);
      line().send([&] { station().z21Send(text); });
      link().DelayMsec(static_cast<int>(message.pause));
    }
  }

 private:
  Z21Protocol& station() const { return dynamic_cast<Z21Protocol&>(link().protocol()); }
  const z21::Coding& coding() const { return z21::coding(link().settings()); }

  /// The station counts outputs from 0.
  int outputAddress(int n) const { return coding().output(state().address, n) - 1; }
  /// Cut to the station's bits, the address would be that of somebody else's output.
  bool hasOutputs() const { return state().address <= coding().lastUnit; }

  std::optional<z21::OutputState> readOutput(int i) {
    // What came unasked would be taken for the answer.
    station().dropInput();
    station().z21ReplyLen = 0;
    station().z21Wanted = z21::outputHead(outputAddress(i));
    line().send([&] { station().z21Send(z21::outputQuestion(outputAddress(i))); });
    link().Delay(0);
    link().WaitForData(z21::kOutputLength);
    if (station().z21ReplyLen < z21::kOutputLength) return {};
    return z21::outputState(station().z21LastReply);
  }
};

}  // namespace

std::unique_ptr<PanelProtocol> makeZ21Panel(CabLine& line, PanelState& state) {
  return std::make_unique<Z21Panel>(line, state);
}

}  // namespace lokari
