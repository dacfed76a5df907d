// The three ways to count CVs, and the set number. They look alike and are not: each has a type, so
// that one never passes for another.
#pragma once

#include <compare>

namespace lokari {

inline constexpr int kHighestCvIndex = 4864;
/// Entries of every CV array: index 0 to 4864, the last one never addressed.
inline constexpr int kCvArraySize = kHighestCvIndex + 1;

/// A CV as the decoder counts it, from 1: what goes over the wire.
class CvNumber {
 public:
  constexpr explicit CvNumber(int value) : value_(value) {}
  constexpr int value() const { return value_; }
  auto operator<=>(const CvNumber&) const = default;

 private:
  int value_;
};

/// The internal index, 1 to 4864: the CV number up to 1023; the CVs of bank b from 2 to 16 lie at
/// (b - 2) x 256 + 1024 and upward. 0 stands for no CV.
class CvIndex {
 public:
  constexpr CvIndex() = default;
  constexpr explicit CvIndex(int value) : value_(value) {}
  constexpr int value() const { return value_; }
  /// Where `cvValues` and `cvMarks` hold it.
  constexpr int arrayIndex() const { return value_ - 1; }
  constexpr bool inRange() const { return value_ >= 1 && value_ <= kHighestCvIndex; }
  // NOLINTNEXTLINE(modernize-use-nullptr): the check is mistaken about <=>.
  auto operator<=>(const CvIndex&) const = default;

 private:
  int value_ = 0;
};

/// One of the five CV sets of a vehicle, 1 to 5.
class SetNumber {
 public:
  static constexpr int kCount = 5;
  constexpr explicit SetNumber(int value) : value_(value) {}
  constexpr int value() const { return value_; }
  constexpr int arrayIndex() const { return value_ - 1; }
  auto operator<=>(const SetNumber&) const = default;

 private:
  int value_;
};

/// CVs with a meaning of their own. Up to 1023 number and index agree.
namespace cv {
inline constexpr int kFirstTable = 67;
inline constexpr int kLastTable = 94;
/// Last CV of a table of 15 points.
inline constexpr int kLastShortTable = 81;
constexpr bool inTable(CvIndex index) {
  return index.value() >= kFirstTable && index.value() <= kLastTable;
}
}  // namespace cv

}  // namespace lokari
