// A CAN message as a line of the traffic log shows it.
#pragma once

#include <QString>

#include "link/can_driver.h"

namespace lokari {

/// Identifier, length and data, numbers hexadecimal but the length.
///
/// A 29-bit identifier is split into its group, the two low bits of its first byte, and the second
/// byte and the node: "0A 2 29 86C2". When its first digit is "F" the two bits are not divided off:
/// "F1 29 86C2". An 11-bit one has five digits, and its three low bits behind " 0": "00123 03".
/// Then " Len: 8" and " Data: " with up to 16 bytes, a blank between them.
QString canMessageText(const CanMessage& message);

}  // namespace lokari
