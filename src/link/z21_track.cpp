#include "link/z21_track.h"

#include "link/z21_codec.h"

namespace lokari {

void Z21Track::hear(const QByteArray& message) {
  if (z21::tellsOff(message)) {
    state_ = z21::tellsNoPower(message) ? State::WithoutPower : State::Halted;
  }
  if (z21::tellsOn(message)) state_ = State::On;
}

}  // namespace lokari
