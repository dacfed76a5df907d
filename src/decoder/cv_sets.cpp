#include "decoder/cv_sets.h"

#include "base/numbers.h"

namespace lokari {

CvSets::CvSets() {
  clear();
}

void CvSets::clear() {
  const QByteArray zeros(kCvArraySize, '\0');
  for (Set& set : sets_) set = {zeros, zeros, {}, zeros, zeros};
  currentSet_ = SetNumber(1);
  currentSetName.clear();
  load(currentSet_);
}

void CvSets::nameTheNameless() {
  for (int i = 1; i <= SetNumber::kCount; ++i) {
    QString& name = setNames(SetNumber(i));
    if (name.trimmed().isEmpty()) name = QStringLiteral("Set") + printed(i);
  }
}

void CvSets::openAt(const QString& name) {
  SetNumber found(1);
  for (int i = SetNumber::kCount; i >= 1; --i) {
    if (setNames(SetNumber(i)) == name) found = SetNumber(i);
  }
  currentSet_ = found;
  currentSetName = setNames(found);
  load(found);
}

void CvSets::storeCurrent() {
  setValues(currentSet_) = cvValues;
  setMarks(currentSet_) = cvMarks;
}

void CvSets::copyAllOfFirst() {
  load(SetNumber(1));
  storeCurrent();
}

void CvSets::copyOfFirst(const std::vector<CvIndex>& cvs) {
  const SetNumber first(1);
  for (const CvIndex cv : cvs) {
    cvValues[cv.arrayIndex()] = setValues(first)[cv.arrayIndex()];
    cvMarks[cv.arrayIndex()] = setMarks(first)[cv.arrayIndex()];
  }
  storeCurrent();
}

bool CvSets::change(const QString& name) {
  for (int i = 1; i <= SetNumber::kCount; ++i) {
    const SetNumber set(i);
    if (setNames(set) != name) continue;
    storeCurrent();
    currentSet_ = set;
    currentSetName = name;
    load(set);
    return true;
  }
  return false;
}

void CvSets::settle() {
  Set& set = sets_[index(currentSet_)];
  set.settledValues = cvValues;
  set.settledMarks = cvMarks;
}

void CvSets::settleAll() {
  for (Set& set : sets_) {
    set.settledValues = set.values;
    set.settledMarks = set.marks;
  }
  settle();
}

int CvSets::unstored() const {
  const Set& set = sets_[index(currentSet_)];
  int count = 0;
  for (qsizetype i = CvIndex(2).arrayIndex(); i <= CvIndex(kHighestCvIndex).arrayIndex(); ++i) {
    const bool typed = cvValues[i] != set.settledValues[i];
    // A mark that was cleared says nothing; one that was set came over the line.
    const bool accessed = cvMarks[i] != '\0' && cvMarks[i] != set.settledMarks[i];
    if (typed || accessed) ++count;
  }
  return count;
}

void CvSets::load(SetNumber set) {
  cvValues = setValues(set);
  cvMarks = setMarks(set);
}

}  // namespace lokari
