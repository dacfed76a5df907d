#include "link/z21_track.h"

#include "link/z21_codec.h"

namespace lokari {

void Z21Track::hear(const QByteArray& message) {
  if (z21::tellsOff(message)) state_ = State::Stands;
  if (z21::tellsOn(message)) state_ = State::On;
}

}  // namespace lokari
