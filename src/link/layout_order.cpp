#include "link/layout_order.h"

#include <utility>

#include "base/prompt.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

constexpr Millis kListenEvery = 100;

}  // namespace

void LayoutOrder::await(Order order) {
  const bool shares =
      outcome_ == Outcome::Awaited && !orders_.empty() && orders_.back().stops == order.stops;
  if (!shares) orders_.clear();
  orders_.push_back(std::move(order));
  outcome_ = Outcome::Awaited;
  deadline_.reset();
  listening_.reset();
  if (orders_.back().listen) listenOn();
}

void LayoutOrder::noteSent() {
  if (outcome_ != Outcome::Awaited) return;
  deadline_ = link_.clock().after(kPatience, [this] { fail(Outcome::Silent); });
}

void LayoutOrder::listenOn() {
  listening_ = link_.clock().after(kListenEvery, [this] {
    try {
      orders_.back().listen();
    } catch (const LinkError&) {
      // The next message meets the broken line itself.
    }
    if (outcome_ == Outcome::Awaited) listenOn();
  });
}

void LayoutOrder::drop() {
  orders_.clear();
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
  const bool holds = news == (orders_.back().stops ? LayoutNews::Off : LayoutNews::On) ||
                     (news == LayoutNews::Accepted && outcome_ != Outcome::Refused);
  if (!holds) return;
  outcome_ = Outcome::Confirmed;
  deadline_.reset();
  // What is told may order anew.
  for (const Order& each : std::vector(orders_)) {
    if (each.held) each.held();
  }
}

void LayoutOrder::fail(Outcome outcome) {
  if (outcome_ != Outcome::Awaited) return;
  outcome_ = outcome;
  link_.prompt().beep();
  // The alarm that calls this goes, and what is told may order anew.
  const std::vector<Order> orders = orders_;
  deadline_.reset();
  for (const Order& each : orders) {
    if (each.failed) each.failed(outcome);
  }
}

void LayoutOrder::disprove() {
  if (outcome_ == Outcome::Confirmed) {
    outcome_ = Outcome::Awaited;
    link_.trackStop().noteDisproved();
  }
  fail(Outcome::Silent);
}

}  // namespace lokari
