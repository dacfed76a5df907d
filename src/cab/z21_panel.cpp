#include "cab/cab_line.h"
#include "cab/unit_addresses.h"
#include "cab/z21.h"
#include "cab/z21_codec.h"
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
      const auto off = readOutput(i);
      if (!off) return {};
      if (*off) mask |= static_cast<quint8>(1U << (2 * i));
    }
    return mask;
  }

  void sendOutput(int n) override {
    if (!hasOutputs()) return;
    const bool on = state().outOn[static_cast<size_t>(n)];
    line().send([&] { station().z21Send(z21::outputText(outputAddress(n), on)); });
    link().Delay(0);
  }

 private:
  Z21Protocol& station() const { return dynamic_cast<Z21Protocol&>(link().protocol()); }

  /// The station counts outputs from 0.
  int outputAddress(int n) const {
    return (isInFours() ? unitOutput : unitOutputFromNumber)(state().address, n) - 1;
  }
  bool isInFours() const { return link().settings().makerForm; }
  /// Cut to the station's bits, the address would be that of somebody else's output.
  bool hasOutputs() const { return !isInFours() || state().address <= kLastUnit; }

  std::optional<bool> readOutput(int i) {
    // What came unasked, such as the news of another output, would be taken for the answer.
    station().dropInput();
    station().z21ReplyLen = 0;
    station().z21Wanted = z21::outputHead();
    line().send([&] { station().z21Send(z21::outputQuestion(outputAddress(i))); });
    link().Delay(0);
    link().WaitForData(z21::kOutputLength);
    if (station().z21ReplyLen < z21::kOutputLength) return {};
    return z21::outputIsOff(station().z21LastReply);
  }
};

}  // namespace

std::unique_ptr<PanelProtocol> makeZ21Panel(CabLine& line, PanelState& state) {
  return std::make_unique<Z21Panel>(line, state);
}

}  // namespace lokari
