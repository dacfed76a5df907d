#include "decoder/cv_sets.h"

#include "base/numbers.h"
#include "decoder/fixed_fields.h"

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

void CvSets::takeStored(CvIndex cv, int value) {
  const auto byte = static_cast<char>(value);
  const qsizetype at = cv.arrayIndex();
  for (Set& set : sets_) {
    if (set.values[at] != byte) set.marks[at] = 0;
    set.values[at] = byte;
    set.unproved.erase(cv);
    set.lost.erase(cv);
    // An unsaved change goes on being one only where it was not copied over.
    set.settledValues[at] = byte;
    set.settledMarks[at] = set.marks[at];
  }
  if (cvValues[at] == byte) return;
  cvValues[at] = byte;
  setMark(cv, CvMark::None);
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
  cvValues[cv.arrayIndex()] = from.values[cv.arrayIndex()];
  cvMarks[cv.arrayIndex()] = from.marks[cv.arrayIndex()];
  unproved_.erase(cv);
  lost_.erase(cv);
  if (from.unproved.count(cv) > 0) unproved_.insert(cv);
  if (const auto lost = from.lost.find(cv); lost != from.lost.end()) lost_.insert(*lost);
}

void CvSets::setBits(CvIndex cv, int bits, int value) {
  const int before = this->value(cv);
  cvValues[cv.arrayIndex()] = static_cast<char>((before & ~bits) | (value & bits));
  auto lost = lost_.find(cv);
  // Remembered while the mark still tells of the failure: typing takes it.
  if (lost == lost_.end() && mark(cv) == CvMark::Failed) {
    lost = lost_.insert({cv, Lost{before, before}}).first;
  }
  if (lost != lost_.end()) lost->second.unseen &= ~bits;
}

void CvSets::setMark(CvIndex cv, CvMark mark) {
  // The value that stays is no better known for the loss of its colour.
  if (mark == CvMark::None && this->mark(cv) == CvMark::Failed) {
    lost_.insert({cv, Lost{value(cv), value(cv)}});
  }
  cvMarks[cv.arrayIndex()] = static_cast<char>(mark);
  unproved_.erase(cv);
  // Only an access that went well replaces the value that a failed read has taken the place of.
  if (mark == CvMark::Verified) lost_.erase(cv);
}

void CvSets::clearAddressMarks() {
  for (const int number : {cv::kAddress, cv::kLongAddressHigh, cv::kLongAddressLow}) {
    setMark(CvIndex(number), CvMark::None);
    lost_.erase(CvIndex(number));
  }
}

void CvSets::setWritten(CvIndex cv, bool proved) {
  setMark(cv, CvMark::Verified);
  if (!proved) unproved_.insert(cv);
}

void CvSets::setWriteFailed(CvIndex cv) {
  setMark(cv, CvMark::Failed);
  lost_.insert({cv, Lost{value(cv), value(cv), 0}});
}

void CvSets::takeFailedRead(CvIndex cv, int shown) {
  // A second failure must not take the first one's stand-in for the known value.
  const auto lost = lost_.find(cv);
  const int known = lost == lost_.end() ? value(cv) : lost->second.best(value(cv));
  cvValues[cv.arrayIndex()] = static_cast<char>(shown);
  setMark(cv, CvMark::Failed);
  // Not insert(): what was lost before the value was changed is history.
  lost_.insert_or_assign(cv, Lost{known, shown});
}

int CvSets::unseenBits(const Set& set, CvIndex cv) {
  const auto lost = set.lost.find(cv);
  if (lost != set.lost.end()) return lost->second.unseen;
  const auto mark = static_cast<CvMark>(set.marks[cv.arrayIndex()]);
  return mark == CvMark::Failed ? kAllBits : 0;
}

bool CvSets::isDoubtful(const Set& set, CvIndex cv) {
  const auto lost = set.lost.find(cv);
  if (lost == set.lost.end()) return false;
  const bool red = static_cast<CvMark>(set.marks[cv.arrayIndex()]) == CvMark::Failed;
  return lost->second.standsIn() || (lost->second.unseen != 0 && !red);
}

std::vector<CvIndex> CvSets::doubtful(SetNumber set) const {
  const Set& of = sets_[index(set)];
  std::vector<CvIndex> cvs;
  for (const auto& [cv, lost] : of.lost) {
    if (isDoubtful(of, cv)) cvs.push_back(cv);
  }
  return cvs;
}

std::vector<LostValue> CvSets::lostValues() const {
  std::vector<LostValue> all;
  for (int i = 1; i <= SetNumber::kCount; ++i) {
    const SetNumber number(i);
    const Set& set = sets_[index(number)];
    for (const auto& [cv, lost] : set.lost) {
      const int now = static_cast<quint8>(set.values[cv.arrayIndex()]);
      if (lost.standsIn()) all.push_back({number, cv, lost.best(now)});
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
