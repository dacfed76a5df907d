#include "cab/intellibox.h"

#include "base/prompt.h"
#include "cab/function_bits.h"
#include "cab/ibx_talk.h"
#include "cab/intellibox_codec.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// `locoCmd` is 80 lo hi.
class IntelliboxCab final : public CabProtocol {
 public:
  IntelliboxCab(CabLine& line, CabState& state, CabHooks hooks)
      : CabProtocol(line, state, std::move(hooks)), talk_(line) {}

  std::optional<FunctionMask> readState() override {
    if (!prepare()) return std::nullopt;
    const int address = state().address;
    const auto drive = ibx::driveReply(talk_.ask(ibx::askDrive(address), ibx::kDriveReplySize));
    if (!drive) return std::nullopt;
    const auto functions =
        ibx::functionReply(talk_.ask(ibx::askFunctions(address), ibx::kFunctionReplySize));
    if (!functions) return std::nullopt;
    state().speed = drive->speed;
    state().backward = drive->backward;
    return (drive->functions & 1U) | *functions;
  }

  bool sendSpeed() override {
    if (!prepare()) return false;
    const int flags = ibx::driveFlags(state().backward, state().funcOn[0]);
    return command(state().locoCmd + static_cast<char>(state().speed) + static_cast<char>(flags));
  }

  void sendDirection() override { sendSpeed(); }

  void sendFunction(int n) override {
    if (n == 0) {
      sendSpeed();
    } else if (n <= kLastFunction && prepare()) {
      command(ibx::switchFunctions(state().address, functionBits(state(), 1, kLastFunction)));
    }
  }

  void sendStopped() override {
    // By value: the reply may be taken by another cab, when this one has gone.
    talk_.tellAtOnce(state().stopped ? ibx::stop() : ibx::go(),
                     [told = hooks().stopFailed, stopped = state().stopped](StopFault fault) {
                       if (told) told(stopped, fault);
                     });
  }

 private:
  static constexpr int kLastFunction = 7;

  /// False for an address that has no command.
  bool prepare() {
    const auto drive = ibx::drive(state().address);
    if (drive) state().locoCmd = *drive;
    return drive.has_value();
  }

  /// No reply counts as refused.
  bool command(const QByteArray& msg) {
    const bool taken = talk_.tell(msg) == 0;
    if (!taken) link().prompt().beep();
    return taken;
  }

  IbxTalk talk_;
};

}  // namespace

std::unique_ptr<CabProtocol> makeIntelliboxCab(CabLine& line, CabState& state, CabHooks hooks) {
  return std::make_unique<IntelliboxCab>(line, state, std::move(hooks));
}

}  // namespace lokari
