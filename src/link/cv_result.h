// Results of reading or writing one CV: a value 0 to 255, or a negative code.
#pragma once

#include <QString>

namespace lokari {

/// Codes with a meaning of their own. Others below 0 carry a station's error byte e: -1030 - e and
/// -1100 - e (Zimo binary), -1000 - e (Lenz), -e (Intellibox, MX1 text).
namespace cv_result {
inline constexpr int kNoReply = -1001;
inline constexpr int kCancelled = -1002;
inline constexpr int kWrongReply = -1003;
inline constexpr int kShortCircuit = -1018;
inline constexpr int kNoDecoder = -1019;
inline constexpr int kNotReady = -1020;
inline constexpr int kNoAck = -1021;
}  // namespace cv_result

/// The status line's text for a negative code; empty for kCancelled.
QString cvResultText(int code);

}  // namespace lokari
