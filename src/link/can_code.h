// Codes of the CAN drivers of this machine, as they stand in the message of a session that could
// not be opened.
#pragma once

namespace lokari::can_code {

inline constexpr int kNoMessage = 0x20;     ///< nothing to read
inline constexpr int kNoDevice = 0x100;     ///< interface or port is not there, or is in use
inline constexpr int kBadAddress = 0x101;   ///< no usable IP address or port number
inline constexpr int kNotOpen = 0x102;      ///< no driver is open
inline constexpr int kWriteFailed = 0x103;  ///< the device did not take the message
inline constexpr int kTooLong = 0x104;      ///< more data than the bus can carry

}  // namespace lokari::can_code
