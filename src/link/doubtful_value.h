// A value whose checksum says that something came wrong: it is asked for once more, and believed
// when the same comes twice. So a station with a checksum of its own can still be read, and a byte
// that came wrong never passes for a value.
#pragma once

#include <optional>

#include "link/cv_result.h"

namespace lokari {

class DoubtfulValue {
 public:
  /// A value has come; `sound` tells what its checksum says. Gives the result of the operation, or
  /// nothing: then it is to be asked for once more.
  std::optional<int> take(int value, bool sound) {
    if (first_) return value == *first_ ? value : cv_result::kWrongReply;
    if (sound) return value;
    first_ = value;
    return std::nullopt;
  }

  /// A failure has come instead of a value; gives the result of the operation.
  int failure(int code) const {
    return first_ && code != cv_result::kCancelled ? cv_result::kWrongReply : code;
  }

 private:
  std::optional<int> first_;
};

}  // namespace lokari
