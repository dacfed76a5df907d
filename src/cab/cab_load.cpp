// Loading a cab, its display, and what its timer brings in later.
#include "base/prompt.h"
#include "cab/cab.h"
#include "cab/cab_line.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

constexpr int kReadings = 2;
/// The name of an exchange: asked for twice, it is read once.
constexpr int kReread = 2;

bool holds(FunctionMask mask, int n) {
  return (mask >> n & 1U) != 0;
}

}  // namespace

void Cab::onLoad() {
  if (!noRecord_) programming_.load(record_, parts_.basePath, kind());
  emit programmingChanged();
  loading_ = true;
  state_.funcCount = kind().cab.funcCount;
  const std::optional<FunctionMask> mask = readWithOneRetry();
  hasState_ = mask.has_value();
  emit answered();
  if (!hasState_ && isGivenUp()) {
    loading_ = false;
    return unload();
  }
  if (!hasState_) tellNoAnswer();
  display(mask.value_or(0));
  state_.canBusy = false;
  loading_ = false;
  wasRead_ = true;
  if (hasSession() && !isUnloading()) startTimer();
}

void Cab::reread() {
  if (!isStateMissing() || isUnloading()) return;
  exchange(kReread, [this] {
    if (!hasState_ && !readAnew()) prompt().beep();
  });
}

bool Cab::readAnew() {
  // A CAN session that heard nothing has been given back.
  if (!hasSession() && !openSession()) throw LinkError(line().goneReason());
  if (kind().cab.dropsInputAtLoad) link().protocol().dropInput();
  const auto mask = protocol_->readState();
  state_.canBusy = false;
  if (!mask) return false;
  hasState_ = true;
  unsent_ = false;
  display(*mask);
  emit noticeChanged();
  if (!cabTimer_) startTimer();
  return true;
}

void Cab::lineChanged() {
  if (!line().isGone()) reread();
}

std::optional<FunctionMask> Cab::readWithOneRetry() {
  for (int readings = 0; readings < kReadings; ++readings) {
    // Where the link stays open, the cab has come with a session and only lost it if reading
    // failed.
    const bool isOpen = (kind().cab.linkStaysOpen && hasSession()) || openSession();
    if (isOpen) {
      if (const auto mask = readState()) return mask;
    }
    // At the end of the program, or of the user's patience.
    if (link().cancelRequested) break;
    // A CAN session that hears nothing is worth being opened anew.
    if (kind().transport == Transport::Can) finishSessions();
  }
  return std::nullopt;
}

std::optional<FunctionMask> Cab::readState() {
  try {
    if (kind().cab.dropsInputAtLoad) link().protocol().dropInput();
    return protocol_->readState();
  } catch (const LinkError& error) {
    // A port that did not open has told why already.
    if (!line().isGone()) line().noteGone(error.message());
    return std::nullopt;
  }
}

void Cab::display(FunctionMask mask) {
  showFunctions(mask, state_.funcCount);
  emit directionChanged(state_.backward);
  emit manualChanged(state_.manual);
  bar_ = state_.speed;
  inSpeedChange_ = true;
  emit barMoved(bar_);
  inSpeedChange_ = false;
  emit speedShown(bar_);
  taken_ = state_.speed;
}

void Cab::showFunctions(FunctionMask mask, int highest) {
  for (int n = 0; n <= highest; ++n) {
    state_.funcOn[static_cast<size_t>(n)] = holds(mask, n);
    emit functionChanged(n, holds(mask, n));
  }
}

// The bar stays where the user has put it: it and the label can part.
void Cab::stateArrived(FunctionMask mask) {
  showFunctions(mask, CabState::kHighestFunction);
  emit directionChanged(state_.backward);
  emit speedShown(state_.speed);
  taken_ = state_.speed;
}

void Cab::startTimer() {
  if (kind().cab.timerMs == 0) return;
  cabTimer_ = link().clock().after(kind().cab.timerMs, [this] { tick(); });
}

void Cab::tick() {
  startTimer();
  background([this] {
    if (!isUnloading() && !state_.canBusy) protocol_->tick();
  });
}

}  // namespace lokari
