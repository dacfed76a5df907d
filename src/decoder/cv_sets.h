// The five CV sets of one vehicle, and the one of them that is being worked on.
#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <vector>

#include "decoder/cv_numbers.h"

namespace lokari {

/// What is known about a CV's value: one byte of a marks array.
enum class CvMark : char {
  None = 0,        ///< entered by hand, or a default
  Verified = '1',  ///< read from the decoder, or written and verified
  Failed = '2',    ///< a read or write of it failed
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

  // ---- What nothing but this object holds -----------------------------------------------------

  /// The working copy as it stands is nobody's work: a type's defaults.
  void settle();
  /// The same for all five sets: they are what the record holds.
  void settleAll();
  /// How many CVs of the working copy were typed or read since. The address is none of them.
  int unstored() const;

  int value(CvIndex cv) const { return static_cast<quint8>(cvValues[cv.arrayIndex()]); }
  void setValue(CvIndex cv, int value) { cvValues[cv.arrayIndex()] = static_cast<char>(value); }
  CvMark mark(CvIndex cv) const { return static_cast<CvMark>(cvMarks[cv.arrayIndex()]); }
  void setMark(CvIndex cv, CvMark mark) { cvMarks[cv.arrayIndex()] = static_cast<char>(mark); }

 private:
  struct Set {
    QByteArray values;
    QByteArray marks;
    QString name;
    QByteArray settledValues = {};
    QByteArray settledMarks = {};
  };
  static size_t index(SetNumber set) { return static_cast<size_t>(set.arrayIndex()); }
  void load(SetNumber set);

  std::array<Set, SetNumber::kCount> sets_;
  SetNumber currentSet_{1};
};

}  // namespace lokari
