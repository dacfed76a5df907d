#include "reports/rzk_merge.h"

#include <utility>

namespace lokari {

RzkMerge::RzkMerge(NextRecord nextOld, Write write)
    : nextOld_(std::move(nextOld)), write_(std::move(write)) {
  write_(rzkHead());
  if (nextOld_) old_ = nextOld_();
}

void RzkMerge::add(const RzkVehicle& vehicle) {
  while (old_ && vehicle.address >= rzkAddress(*old_)) {
    const bool known = rzkAddress(*old_) == vehicle.address;
    writeOld();
    if (known) return;
  }
  if (lastAddress_ == vehicle.address) return;
  write_(rzkRecord(vehicle));
  lastAddress_ = vehicle.address;
  ++count_;
}

int RzkMerge::finish() {
  while (old_) writeOld();
  return count_;
}

/// As bytes: the other program's texts are not ours to read.
void RzkMerge::writeOld() {
  write_(*old_);
  lastAddress_ = rzkAddress(*old_);
  old_ = nextOld_();
}

}  // namespace lokari
