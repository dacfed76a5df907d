#include "decoder/batch_report.h"

#include <algorithm>

namespace lokari {
namespace {

bool isBefore(const CvReport& report, CvIndex cv) {
  return report.cv < cv;
}

}  // namespace

void BatchReport::add(const CvReport& report) {
  const auto place = std::lower_bound(cvs_.begin(), cvs_.end(), report.cv, isBefore);
  if (place == cvs_.end() || place->cv != report.cv) {
    cvs_.insert(place, report);
    return;
  }
  const int before = place->before;
  *place = report;
  place->before = before;
}

const CvReport* BatchReport::of(CvIndex cv) const {
  const auto place = std::lower_bound(cvs_.begin(), cvs_.end(), cv, isBefore);
  return place == cvs_.end() || place->cv != cv ? nullptr : &*place;
}

std::vector<CvIndex> BatchReport::with(CvDeed deed) const {
  std::vector<CvIndex> found;
  for (const CvReport& report : cvs_) {
    if (report.deed == deed) found.push_back(report.cv);
  }
  return found;
}

}  // namespace lokari
