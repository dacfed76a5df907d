#include "link/layout_order.h"

#include <utility>

#include "base/prompt.h"
#include "link/link_error.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr Millis kListenEvery = 100;

}  // namespace

void LayoutOrder::await(Order order) {
  order_ = std::move(order);
  outcome_ = Outcome::Awaited;
  deadline_.reset();
  listening_.reset();
  if (order_.listen) listenOn();
}

void LayoutOrder::noteSent() {
  if (outcome_ != Outcome::Awaited) return;
  deadline_ = link_.clock().after(kPatience, [this] { fail(Outcome::Silent); });
}

void LayoutOrder::listenOn() {
  listening_ = link_.clock().after(kListenEvery, [this] {
    try {
      order_.listen();
    } catch (const LinkError&) {
      // The next message meets the broken line itself.
    }
    if (outcome_ == Outcome::Awaited) listenOn();
  });
}

void LayoutOrder::drop() {
  order_ = {};
  outcome_ = Outcome::None;
  deadline_.reset();
  listening_.reset();
}

void LayoutOrder::settle() {
  // One that has to wait for its line may wait for whoever calls this: its patience begins here.
  if (!deadline_) noteSent();
  link_.clock().waitUntil(
      [this] { return outcome_ != Outcome::Awaited || link_.isFarewellHurried(); }, Clock::kNever);
}

void LayoutOrder::hear(LayoutNews news) {
  if (outcome_ == Outcome::None || outcome_ == Outcome::Confirmed) return;
  if (news == LayoutNews::Refused) return fail(Outcome::Refused);
  // Behind a refusal, which may have been meant for another message, only the layout itself counts.
  const bool holds = news == (order_.stops ? LayoutNews::Off : LayoutNews::On) ||
                     (news == LayoutNews::Accepted && outcome_ != Outcome::Refused);
  if (!holds) return;
  const bool late = std::exchange(outcome_, Outcome::Confirmed) != Outcome::Awaited;
  deadline_.reset();
  if (late && order_.held) order_.held();
}

void LayoutOrder::fail(Outcome outcome) {
  if (outcome_ != Outcome::Awaited) return;
  outcome_ = outcome;
  link_.prompt().beep();
  // The alarm that calls this goes, and what is told may order anew.
  const auto failed = order_.failed;
  deadline_.reset();
  if (failed) failed(outcome);
}

void LayoutOrder::disprove() {
  if (outcome_ == Outcome::Confirmed) outcome_ = Outcome::Awaited;
  fail(Outcome::Silent);
}

}  // namespace lokari
