#include "decoder/cv_grid.h"

#include <algorithm>

namespace lokari {

CvIndex CvGrid::cvAt(int row) const {
  return row >= 1 && row <= static_cast<int>(cvs_.size()) ? cvs_[static_cast<size_t>(row - 1)]
                                                          : CvIndex();
}

int CvGrid::rowOf(CvIndex cv) const {
  return cv.inRange() && !rows_.empty() ? rows_[static_cast<size_t>(cv.value())] : 0;
}

void CvGrid::rebuild(int rowCount, std::vector<CvIndex> cvs) {
  cvs_ = std::move(cvs);
  rowCount_ = std::max(rowCount, static_cast<int>(cvs_.size()) + 1);
  rows_.assign(kCvArraySize, 0);
  for (size_t i = 0; i < cvs_.size(); ++i) {
    rows_[static_cast<size_t>(cvs_[i].value())] = static_cast<int>(i) + 1;
  }
}

void CvGrid::select(int first, int last) {
  if (first == last) return;
  const auto [low, high] = std::minmax(first, last);
  if (low >= 1 && high < rowCount_) selection_ = {low, high};
}

}  // namespace lokari
