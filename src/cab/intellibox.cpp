#include "cab/intellibox.h"

#include <algorithm>

#include "base/bytes.h"
#include "base/prompt.h"
#include "cab/function_bits.h"
#include "cab/ibx_form.h"
#include "cab/ibx_talk.h"
#include "cab/intellibox_codec.h"
#include "link/p50x_codes.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// What the code of a command that was taken says of the layout.
LayoutStands layoutIn(int code) {
  if (code == p50x::kInHalt) return LayoutStands::Halted;
  return code == p50x::kWithoutPower ? LayoutStands::WithoutPower : LayoutStands::No;
}

void tellLayout(const CabHooks& hooks, int code) {
  if (hooks.layoutTold && p50x::isTaken(code)) hooks.layoutTold(layoutIn(code));
}

/// `locoCmd` is 80 lo hi.
class IntelliboxCab final : public CabProtocol {
 public:
  IntelliboxCab(CabLine& line, CabState& state, CabHooks hooks)
      : CabProtocol(line, state, std::move(hooks)), talk_(line) {}

  std::optional<FunctionMask> readState() override {
    if (!prepare()) return std::nullopt;
    const auto drive =
        ibx::driveReply(talk_.ask(ibx::askDrive(state().address), ibx::kDriveReplySize));
    if (!drive) return std::nullopt;
    const auto functions = readFunctions();
    if (!functions) return std::nullopt;
    state().speed = form().positionOf(drive->speed);
    state().backward = drive->backward;
    state().funcCount = highest_;
    return (drive->functions & 1U) | *functions;
  }

  FunctionMask toldFunctions() const override { return (FunctionMask{2} << highest_) - 1; }

  bool sendSpeed() override {
    if (!prepare()) return false;
    const int flags = ibx::driveFlags(state().backward, state().funcOn[0]);
    return command(state().locoCmd + static_cast<char>(form().speedOf(state().speed)) +
                   static_cast<char>(flags));
  }

  void sendDirection() override { sendSpeed(); }

  void sendFunction(int n) override {
    if (n == 0) sendSpeed();
    for (const ibx::FunctionRange& range : form().functions) {
      if (n < range.first || n > range.last || n > highest_ || !prepare()) continue;
      command(ibx::switchFunctions(state().address, maskOf(range), range));
    }
  }

  void sendStopped() override {
    // By value: the reply may be taken by another cab, when this one has gone.
    talk_.tellAtOnce(
        state().stopped ? ibx::stop() : ibx::go(),
        [told = hooks(), stopped = state().stopped](int code) { tellOrder(told, stopped, code); });
  }

 private:
  const IbxForm& form() const { return ibxForm(link()); }

  /// A go that was taken while the layout stands all the same does not hold.
  static void tellOrder(const CabHooks& hooks, bool stopped, int code) {
    const bool holds = p50x::isTaken(code) && (stopped || layoutIn(code) == LayoutStands::No);
    if (holds && hooks.stopHeld) hooks.stopHeld(stopped);
    if (!holds && hooks.stopFailed) {
      hooks.stopFailed(stopped, code < 0 ? StopFault::Silent : StopFault::Refused);
    }
    if (!stopped) tellLayout(hooks, code);
  }

  /// False for an address that has no command.
  bool prepare() {
    const auto drive = ibx::drive(state().address);
    if (drive) state().locoCmd = *drive;
    return drive.has_value();
  }

  /// As far as the station has them.
  std::optional<FunctionMask> readFunctions() {
    FunctionMask all = 0;
    highest_ = 0;
    for (const ibx::FunctionRange& range : form().functions) {
      const QByteArray reply =
          talk_.ask(ibx::askFunctions(state().address, range), range.replySize());
      if (highest_ > 0 && (reply.isEmpty() || p50x::isUnknown(byteAt(reply, 0)))) break;
      const auto functions = ibx::functionReply(reply, range);
      if (!functions) return std::nullopt;
      all |= *functions;
      highest_ = range.last;
      rest_ = ibx::restOf(reply, range);
    }
    return all;
  }

  int maskOf(const ibx::FunctionRange& range) const {
    int mask = 0;
    for (int first = range.first; first <= range.last; first += 8) {
      mask |= functionBits(state(), first, std::min(first + 7, range.last))
              << (first - range.first);
    }
    return range.keepsRest ? mask | rest_ : mask;
  }

  /// No reply counts as refused.
  bool command(const QByteArray& msg) {
    const int code = talk_.tell(msg);
    const bool taken = p50x::isTaken(code);
    if (!taken) link().prompt().beep();
    tellLayout(hooks(), code);
    return taken;
  }

  IbxTalk talk_;
  int highest_ = CabState::kHighestFunction;  ///< function that the station has
  int rest_ = 0;                              ///< functions beyond those that a cab has
};

}  // namespace

std::unique_ptr<CabProtocol> makeIntelliboxCab(CabLine& line, CabState& state, CabHooks hooks) {
  return std::make_unique<IntelliboxCab>(line, state, std::move(hooks));
}

}  // namespace lokari
