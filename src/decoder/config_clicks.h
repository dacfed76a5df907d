// Which bits of CV 29 the user has chosen by clicking its options.
#pragma once

namespace lokari {

/// A bit that was clicked back to what it was counts as not clicked, so it excuses nothing that is
/// done to it; nor does a click excuse the opposite of what was clicked.
class ConfigClicks {
 public:
  ConfigClicks() = default;
  /// `value` is what the options are clicked from.
  explicit ConfigClicks(int value) : base_(value) {}

  void click(int bit, bool on) {
    on_ = on ? on_ | bit : on_ & ~bit;
    off_ = on ? off_ & ~bit : off_ | bit;
    on_ &= ~base_;
    off_ &= base_;
  }
  /// Those of the changes from `before` to `after` that nobody clicked.
  int unclicked(int before, int after) const {
    const int goesOn = ~before & after;
    const int goesOff = before & ~after;
    return (goesOn & ~on_) | (goesOff & ~off_);
  }
  /// `value` with the clicks put into it.
  int appliedTo(int value) const { return (value | on_) & ~off_; }

 private:
  int base_ = 0;
  int on_ = 0;
  int off_ = 0;
};

}  // namespace lokari
