#include "decoder/cv_sets.h"

#include "base/numbers.h"

namespace lokari {

CvSets::CvSets() {
  clear();
}

void CvSets::clear() {
  const QByteArray zeros(kCvArraySize, '\0');
  for (Set& set : sets_) {
    set = {
        .values = zeros, .marks = zeros, .name = {}, .settledValues = zeros, .settledMarks = zeros};
  }
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
  Set& set = sets_[index(currentSet_)];
  set.values = cvValues;
  set.marks = cvMarks;
  set.unproved = unproved_;
  set.lost = lost_;
}

void CvSets::copyAllOfFirst() {
  load(SetNumber(1));
  storeCurrent();
}

void CvSets::copyOfFirst(const std::vector<CvIndex>& cvs) {
  for (const CvIndex cv : cvs) takeCv(sets_[index(SetNumber(1))], cv);
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

bool CvSets::differs(const CvSets& from) const {
  CvSets here = *this;
  CvSets there = from;
  here.storeCurrent();
  there.storeCurrent();
  for (size_t i = 0; i < sets_.size(); ++i) {
    const Set& a = here.sets_[i];
    const Set& b = there.sets_[i];
    if (a.values != b.values || a.marks != b.marks || a.name != b.name) return true;
  }
  return false;
}

void CvSets::load(SetNumber set) {
  const Set& loaded = sets_[index(set)];
  cvValues = loaded.values;
  cvMarks = loaded.marks;
  unproved_ = loaded.unproved;
  lost_ = loaded.lost;
}

void CvSets::takeCv(const CvSets& from, CvIndex cv) {
  takeCv(from.current(), cv);
}

void CvSets::takeCv(const Set& from, CvIndex cv) {
  setValue(cv, static_cast<quint8>(from.values[cv.arrayIndex()]));
  setMark(cv, static_cast<CvMark>(from.marks[cv.arrayIndex()]));
  if (from.unproved.count(cv) > 0) unproved_.insert(cv);
  if (const auto lost = from.lost.find(cv); lost != from.lost.end()) lost_.insert(*lost);
}

void CvSets::setMark(CvIndex cv, CvMark mark) {
  cvMarks[cv.arrayIndex()] = static_cast<char>(mark);
  unproved_.erase(cv);
  // Only an access that went well replaces the value that a failed read has taken the place of.
  if (mark == CvMark::Verified) lost_.erase(cv);
}

void CvSets::setWritten(CvIndex cv, bool proved) {
  setMark(cv, CvMark::Verified);
  if (!proved) unproved_.insert(cv);
}

void CvSets::takeFailedRead(CvIndex cv, int shown) {
  // A second failure must not take the first one's stand-in for the known value.
  const auto lost = lost_.find(cv);
  const bool lostBefore = lost != lost_.end() && lost->second.shown == value(cv);
  const int known = lostBefore ? lost->second.known : value(cv);
  setValue(cv, shown);
  setMark(cv, CvMark::Failed);
  // Not insert(): what was lost before the value was changed is history.
  lost_.insert_or_assign(cv, Lost{known, shown});
}

std::vector<LostValue> CvSets::lostValues() const {
  std::vector<LostValue> all;
  for (int i = 1; i <= SetNumber::kCount; ++i) {
    const SetNumber number(i);
    const Set& set = sets_[index(number)];
    for (const auto& [cv, lost] : set.lost) {
      const int now = static_cast<quint8>(set.values[cv.arrayIndex()]);
      if (now == lost.shown && now != lost.known) all.push_back({number, cv, lost.known});
    }
  }
  return all;
}

void CvSets::restoreLostValues() {
  for (const LostValue& lost : lostValues()) {
    setValues(lost.set)[lost.cv.arrayIndex()] = static_cast<char>(lost.known);
  }
}

}  // namespace lokari
