// The five CV sets of one vehicle, and the one of them that is being worked on.
#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <map>
#include <set>
#include <vector>

#include "decoder/cv_numbers.h"

namespace lokari {

/// What is known about a CV's value: one byte of a marks array.
enum class CvMark : char {
  None = 0,        ///< entered by hand, or a default
  Verified = '1',  ///< read from the decoder, or written; isUnproved() tells what nobody read back
  Failed = '2',    ///< a read or write of it failed
};

/// A CV of one set whose value a failed read has taken the place of.
struct LostValue {
  SetNumber set;
  CvIndex cv;
  int known;  ///< the value before
};

/// Values and marks have 4865 bytes, byte k for internal index k + 1.
class CvSets {
 public:
  CvSets();

  /// Back to five empty sets; names and current set included.
  void clear();

  QByteArray& setValues(SetNumber set) { return sets_[index(set)].values; }
  QByteArray& setMarks(SetNumber set) { return sets_[index(set)].marks; }
  QString& setNames(SetNumber set) { return sets_[index(set)].name; }
  const QByteArray& setValues(SetNumber set) const { return sets_[index(set)].values; }
  const QByteArray& setMarks(SetNumber set) const { return sets_[index(set)].marks; }
  const QString& setNames(SetNumber set) const { return sets_[index(set)].name; }

  SetNumber currentSet() const { return currentSet_; }
  QString currentSetName;
  QByteArray cvValues;  ///< working copy of the current set; index is CV - 1
  QByteArray cvMarks;

  /// Fills a name that is empty or blank with "Set 1" to "Set 5".
  void nameTheNameless();
  /// Makes the set of that name the current one, set 1 when there is none, and loads its copy.
  void openAt(const QString& name);
  /// Puts the working copy back into its set.
  void storeCurrent();
  /// The current set becomes a copy of set 1, marks included.
  void copyAllOfFirst();
  /// The listed CVs take value and mark of set 1; then the working copy is stored.
  void copyOfFirst(const std::vector<CvIndex>& cvs);
  /// Stores the working copy and takes the first set of that name; false when there is none.
  bool change(const QString& name);

  /// A CV of all five sets holds this value on disk by now. One that changes loses its mark.
  void takeStored(CvIndex cv, int value);

  // ---- What nothing but this object holds -----------------------------------------------------

  /// The working copy as it stands is nobody's work: a type's defaults.
  void settle();
  /// The same for all five sets: they are what the record holds.
  void settleAll();
  /// How many CVs of the working copy were typed or read since. The address is none of them.
  int unstored() const;

  /// Whether any set holds other values or marks than that of another copy, or has another name.
  bool differs(const CvSets& from) const;

  int value(CvIndex cv) const { return static_cast<quint8>(cvValues[cv.arrayIndex()]); }
  /// Somebody has chosen the whole value.
  void setValue(CvIndex cv, int value) { setBits(cv, kAllBits, value); }
  /// Somebody has chosen these bits of `value`; the others are what they were.
  void setBits(CvIndex cv, int bits, int value);
  CvMark mark(CvIndex cv) const { return static_cast<CvMark>(cvMarks[cv.arrayIndex()]); }
  /// Also ends what isUnproved() tells of the CV; Verified ends what lostValues() tells.
  void setMark(CvIndex cv, CvMark mark);

  /// The address is another one by hand. Its three marks told of it, and of no value of these CVs.
  void clearAddressMarks();

  // ---- What the marks do not tell: known until the sets are cleared ----------------------------

  /// The mark of a CV that was written; `proved` when the decoder's value came back.
  void setWritten(CvIndex cv, bool proved);
  /// The mark of a CV whose write failed; its value is what somebody wanted to write.
  void setWriteFailed(CvIndex cv);
  /// Its value was written, and nothing has read it back since.
  bool isUnproved(CvIndex cv) const { return unproved_.count(cv) > 0; }
  std::vector<CvIndex> unproved() const { return {unproved_.begin(), unproved_.end()}; }
  /// Value, mark and all that is known of one CV, as another working copy has it.
  void takeCv(const CvSets& from, CvIndex cv);
  /// A read of the CV failed: `shown` takes the place of its value, which stays known.
  void takeFailedRead(CvIndex cv, int shown);
  /// The bits of a failed CV that nobody has read or chosen since; a mark that typing took away
  /// does not make them known.
  int unseenBits(CvIndex cv) const { return unseenBits(current(), cv); }
  /// Its value is not to go anywhere unasked: it stands in for one that could not be read, or has
  /// unseen bits and no colour that tells.
  bool isDoubtful(CvIndex cv) const { return isDoubtful(current(), cv); }
  /// All such CVs of a stored set.
  std::vector<CvIndex> doubtful(SetNumber set) const;
  /// The values of all sets that failed reads have taken the place of, and that nobody has changed
  /// since. The working copy counts as storeCurrent() left it.
  std::vector<LostValue> lostValues() const;
  /// Puts those values back, in the sets that were read; the marks stay.
  void restoreLostValues();

 private:
  static constexpr int kAllBits = 255;
  /// A value that a failed read has taken the place of, and what it put there.
  struct Lost {
    int known;
    int shown;
    int unseen = kAllBits;  ///< bits that nobody has read or chosen since

    bool standsIn() const { return ((known ^ shown) & unseen) != 0; }
    /// The best that is known of a CV whose value is `now`.
    int best(int now) const { return (now & ~unseen) | (known & unseen); }
  };
  using Unproved = std::set<CvIndex>;
  using LostByCv = std::map<CvIndex, Lost>;
  struct Set {
    QByteArray values;
    QByteArray marks;
    QString name;
    QByteArray settledValues = {};
    QByteArray settledMarks = {};
    Unproved unproved = {};
    LostByCv lost = {};
  };
  static size_t index(SetNumber set) { return static_cast<size_t>(set.arrayIndex()); }
  void load(SetNumber set);
  Set current() const {
    return {.values = cvValues,
            .marks = cvMarks,
            .name = currentSetName,
            .unproved = unproved_,
            .lost = lost_};
  }
  void takeCv(const Set& from, CvIndex cv);
  static int unseenBits(const Set& set, CvIndex cv);
  static bool isDoubtful(const Set& set, CvIndex cv);

  std::array<Set, SetNumber::kCount> sets_;
  SetNumber currentSet_{1};
  Unproved unproved_;  // of the working copy
  LostByCv lost_;
};

}  // namespace lokari
