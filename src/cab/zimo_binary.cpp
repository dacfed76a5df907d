#include "cab/zimo_binary.h"

#include "cab/cab_line.h"
#include "cab/speed_steps.h"
#include "cab/zimo_binary_codec.h"
#include "cab/zimo_binary_exchange.h"
#include "cab/zimo_flags.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "link/track_stop.h"
#include "link/zimo_binary_framing.h"

namespace lokari {
namespace {

using zbincab::Field;

constexpr int kOpeningPauseMs = 100;

/// The driving command of the vehicle is kept as the station told it; each operation changes its
/// own field and sends the whole of it until it is confirmed.
class ZimoBinaryCab final : public CabProtocol {
 public:
  using CabProtocol::CabProtocol;
  ~ZimoBinaryCab() override { line().forget(this); }

  std::optional<FunctionMask> readState() override;

  FunctionMask toldFunctions() const override {
    return tellsF9To12_ ? ~FunctionMask{0} : zimo::kUpToF8;
  }

  bool sendSpeed() override {
    zbincab::setField(state().locoCmd, Field::Speed, cutStationSteps(state().speed, state().steps));
    return sendCommand();
  }

  void sendDirection() override { sendFlag(zimo::kBackward, state().backward); }
  void sendManual() override { sendFlag(zimo::kManual, state().manual); }
  void sendFunction(int n) override;
  void sendStopped() override;

 private:
  static constexpr int kSettle = 1;

  FunctionMask take(const QByteArray& answer);
  void openStation(ZimoBinaryFraming& framing);
  void settle();

  void sendFlag(int bit, bool set) {
    zbincab::setBits(state().locoCmd, Field::Flags, bit, set);
    sendCommand();
  }
  /// False when it is not confirmed.
  bool sendCommand();

  bool hasOpened_ = false;
  bool tellsF9To12_ = false;
};

std::optional<FunctionMask> ZimoBinaryCab::readState() {
  std::optional<FunctionMask> functions;
  withZimoFraming(link(), [&](ZimoBinaryFraming& framing) {
    openStation(framing);
    state().locoCmd = zbincab::defaultCommand(state().address);
    const auto answer =
        askZimoBinary(link(), framing, zbincab::askState(state().address), zbincab::kLeastState);
    if (answer) functions = take(*answer);
  });
  return functions;
}

/// The MX1ULF tells of vehicles once its track power is on. Reading must not undo a stop that was
/// pressed behind the question whether it may switch on, nor one after the first reading.
void ZimoBinaryCab::openStation(ZimoBinaryFraming& framing) {
  if (!link().settings().station().switchesOn.cab) return;
  if (hasOpened_ && framing.zbinAhead == zbincab::trackPower(false)) return;
  if (link().trackStop().mayStand()) return;
  hasOpened_ = true;
  framing.zbinSettle();
  framing.zbinSend(zbincab::trackPower(true), false);
  link().DelayMsec(kOpeningPauseMs);
  framing.zbinReceive();
}

FunctionMask ZimoBinaryCab::take(const QByteArray& answer) {
  tellsF9To12_ = answer.size() > zbincab::kLeastState;
  const auto told = zbincab::parseState(answer, link().settings().zimoFunctionCount);
  state().locoCmd = told.command;
  state().steps = zimo::stepsOf(told.flags);
  state().speed = barPosition(told.speed, state().steps);
  state().backward = (told.flags & zimo::kBackward) != 0;
  state().manual = (told.flags & zimo::kManual) != 0;
  return told.functions;
}

void ZimoBinaryCab::sendFunction(int n) {
  const bool on = state().funcOn.at(static_cast<size_t>(n));
  if (n == 0) return sendFlag(zimo::kLight, on);
  if (n > zimo::kLastOfHighByte) return;
  const bool isHigh = n >= zimo::kFirstOfHighByte;
  zbincab::setBits(state().locoCmd, isHigh ? Field::Functions9To12 : Field::Functions1To8,
                   1 << (n - (isHigh ? zimo::kFirstOfHighByte : zimo::kFirstOfLowByte)), on);
  sendCommand();
}

bool ZimoBinaryCab::sendCommand() {
  bool taken = false;
  if (state().locoCmd.isEmpty()) return taken;
  withZimoFraming(
      link(), [&](ZimoBinaryFraming& framing) { taken = framing.zbinSendMsg(state().locoCmd); });
  return taken;
}

/// Goes out ahead of what waits for its answer, and is confirmed behind it.
void ZimoBinaryCab::sendStopped() {
  order([this] {
    withZimoFraming(link(), [&](ZimoBinaryFraming& framing) {
      line().send([&] { framing.zbinSendAhead(zbincab::trackPower(!state().stopped)); });
    });
  });
  line().exchangeNext(this, kSettle, [this] { settle(); });
}

/// Its own exchange, with nobody around it who would take the failure.
void ZimoBinaryCab::settle() {
  LayoutOrder& order = link().trackStop().order();
  const ZimoBinaryFraming* const session = zimoFraming(link());
  if (session != nullptr && !session->isUnsettled() && !session->zbinAheadFailed) return;
  // A cancel belongs to the job before, unless it stays.
  link().cancelRequested = link().cancelRequested && link().cancelStays;
  try {
    withZimoFraming(link(), [&](ZimoBinaryFraming& framing) {
      framing.zbinSettle();
      if (framing.zbinAheadFailed) order.fail(LayoutOrder::Outcome::Silent);
    });
  } catch (const LinkError& error) {
    line().noteGone(error.message());
    order.fail(LayoutOrder::Outcome::Silent);
  }
}

}  // namespace

std::unique_ptr<CabProtocol> makeZimoBinaryCab(CabLine& line, CabState& state, CabHooks hooks) {
  return std::make_unique<ZimoBinaryCab>(line, state, std::move(hooks));
}

}  // namespace lokari
