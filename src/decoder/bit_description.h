// The bit description of a CV: what its value means bit by bit, and how the bit dialog shows it.
//
// A description is a list of groups separated by "|", from bit 0 upward. A group is a list
// separated by ",": its type, its title, the names of its choices (16 at most count).
//
//   type          meaning                                     type value
//   a number w    w bits                                      w
//   "A"           an address that two CVs hold together       -3
//   "#"           the units digit of a decimal number         -1
//   "#" or "A" right behind a group of type -1: the tens      -2
//
// A group of bits with choices becomes a set of options, one with only a title a number box; a
// number alone passes its bits over, and they are 0 in a new value; only a value that nothing of
// was changed keeps them. The bit position moves on by each group's type value, so it goes back
// behind a "#" or an "A", which is why these stand last.
//
// A group without a "," has no type but the number of bits it passes over. The one exception is a
// description that is "A" and nothing else: it is the address, with a title of its own.
#pragma once

#include <QStringList>

#include <optional>
#include <vector>

namespace lokari {

/// A group with a control in the dialog.
struct BitGroup {
  static constexpr int kUnits = -1;
  static constexpr int kTens = -2;
  static constexpr int kAddress = -3;

  int type = 0;         ///< number of bits, or one of the above
  int position = 0;     ///< of its lowest bit; below 0 there are no bits
  QString title;        ///< may be empty above options
  QStringList choices;  ///< none: a number box

  bool hasOptions() const { return !choices.isEmpty(); }
  /// Accepted numbers; of options the first and the last.
  int lowest() const;
  int highest() const;
  /// The number or option, counted from 0, that a CV's value has here. It may be above highest():
  /// no option is chosen then.
  int shown(int value) const;
  /// What a number or option adds to the CV's value.
  double weighed(int entry) const;
};

/// What a bit description makes of the entries of a dialog.
struct BitEntry {
  std::optional<int> value;  ///< the CV's new value, nothing when an entry was refused
  size_t refused = 0;        ///< the group whose entry was refused, if one was
};

class BitDescription {
 public:
  explicit BitDescription(const QString& text);

  /// The groups that have a control. A description may have none.
  const std::vector<BitGroup>& groups() const& { return groups_; }
  /// They live as long as the description: a temporary one would leave a loop over nothing.
  const std::vector<BitGroup>& groups() const&& = delete;

  /// The new value from one entry per group; an entry that is missing, out of its group's range, or
  /// that makes the value more than the CV holds, is refused.
  BitEntry accept(const std::vector<std::optional<int>>& entries) const;
  /// The same for a dialog that showed `before`: accepted entries that all are as they were shown
  /// give it back whole, with the bits that are passed over.
  BitEntry accept(const std::vector<std::optional<int>>& entries, int before) const;

  /// What a value loses with the first change: the part that no group shows. 0 for nothing.
  int passedOver(int value) const;
  /// The groups are digits or an address, so that a lost part is no matter of bits.
  bool isDecimal() const;

 private:
  std::vector<BitGroup> groups_;
  int highest_ = 0;  // of a whole value
};

}  // namespace lokari
