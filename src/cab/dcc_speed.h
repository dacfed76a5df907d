// The speed of a vehicle as DCC has it on the track and most stations in their messages:
//
//   14 steps       000VVVV   0 stop, 1 emergency stop, 2 to 15 are steps 1 to 14
//   27, 28 steps   00vVVVV   VVVV 0 stop, 1 emergency stop; step n is n + 3, VVVV its upper bits
//                            and v its lowest one
//   128 steps      VVVVVVV   0 stop, 1 emergency stop, 2 to 127 are steps 1 to 126
#pragma once

namespace lokari {

/// The bits for the bar's position, 0 to 127. Above 0 the vehicle moves, at the bar's end it has
/// the last step; the emergency stop is never given.
int dccSpeedBits(int position, int steps);
/// The bar's position for the bits; dccSpeedBits() of it gives the same step again. Other bits of
/// the byte are passed over.
int dccBarPosition(int bits, int steps);

}  // namespace lokari
