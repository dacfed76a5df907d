// Driving and switching commands that an Intellibox and a Tams MC share, behind the letter "x". An
// address is its low byte and its high byte.
//
//   80 lo hi speed flags   drives: speed 0 to 127; flags 20 forward, 10 light
//   84 lo hi               00 speed flags speed; flags as above, and F1 to F4 in the low four bits
//   88 lo hi mask          F1 to F7 in bits 0 to 6
//   8C lo hi               00 mask
//   90 lo fl               switches output fl and 7, lo: 40 must be set, 80 is on
//   95 group               00 outputs: the eight of the group, which counts from 1, bit set for on
//   A5                     stops every vehicle
//   A7                     power on, everything may run
//
// All but the questions are answered 00.
#pragma once

#include <QByteArray>

#include "sim/layout.h"

namespace lokari::sim {

/// Bytes of a command by its first one, which is counted; 0 for none of these.
qsizetype ibxDrivingSize(int operation);

/// Obeys a whole command of these and gives the answer.
QByteArray obeyIbxDriving(Layout& layout, const QByteArray& command);

}  // namespace lokari::sim
