// The calculator behind F2: one value of 0 to 255 in three boxes, binary, decimal and hexadecimal.
#pragma once

#include <QString>

#include <array>

namespace lokari {

class Calculator {
 public:
  enum class Box { Bin, Dec, Hex };

  /// What became of a text that the user typed into a box.
  enum class Typed {
    Taken,       ///< the box has it, upper-cased if hexadecimal; the two others follow
    Swallowed,   ///< it holds a character that the box does not take: everything stays
    OutOfRange,  ///< it is above 255: everything stays, and the user is to be told
  };

  /// Begins with a field's text. One that is no whole number from 0 to 255 leaves the boxes empty.
  explicit Calculator(const QString& text);

  /// The binary text that the program sets has 8 digits, the hexadecimal one two.
  const QString& text(Box box) const { return texts_[static_cast<size_t>(box)]; }
  Typed type(Box box, const QString& typed);

 private:
  QString& at(Box box) { return texts_[static_cast<size_t>(box)]; }
  void show(int value);

  std::array<QString, 3> texts_;
};

}  // namespace lokari
