#include "link/owed_replies.h"

#include <algorithm>

#include "link/serial_line.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// What has not come so long after the last question does not come.
constexpr Millis kLatest = 10'000;

}  // namespace

void OwedReplies::asked() {
  ++owed_;
  askedLast_ = link_.clock().now();
}

void OwedReplies::taken(const QByteArray& text, int replies) {
  owed_ = std::max(owed_ - std::max(count_(text), replies), 0);
}

bool OwedReplies::settle() {
  if (owed_ == 0) return true;
  Clock& clock = link_.clock();
  SerialLine& line = link_.serial();
  QByteArray late;
  clock.pump();
  clock.waitUntil(
      [&] {
        late += line.read();
        return count_(late) >= owed_ || link_.cancelRequested;
      },
      askedLast_ + kLatest);
  if (count_(late) < owed_ && link_.cancelRequested) return false;
  owed_ = 0;
  return true;
}

}  // namespace lokari
