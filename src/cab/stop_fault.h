// What can become of a stop, or of the go that ends it, when it does not hold.
#pragma once

namespace lokari {

enum class StopFault {
  NotSent,  ///< nothing went out: the line is gone, or belongs to another kind of station
  Refused,  ///< the station said no
  Silent,   ///< it went out, and the station did not confirm it
};

}  // namespace lokari
