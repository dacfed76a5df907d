#include "sim/ibx_status.h"

namespace lokari::sim {

int ibxState(const Layout& layout) {
  int state = 0;
  if (layout.trackPower()) state |= 0x08;
  if (layout.overloaded()) state |= 0x04;
  if (layout.stopped()) state |= 0x10;
  return state;
}

}  // namespace lokari::sim
