// What one batch did: handed back by it, so that nobody has to derive it from marks and colours,
// which also tell of earlier runs.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

#include "decoder/cv_numbers.h"

namespace lokari {

/// What a run did with one CV.
enum class CvDeed {
  Read,      ///< the decoder's value
  Proved,    ///< written, and the value came back
  Unproved,  ///< written; the station tells no value of the decoder
  Failed,
};

struct CvReport {
  CvIndex cv;  ///< CV 1 is the address, whichever CVs carry it
  CvDeed deed = CvDeed::Failed;
  int value = 0;   ///< read or sent; of the address its number; of a failure without meaning
  int before = 0;  ///< in the working set ahead of the run; of the address without meaning
  QString reason;  ///< of a failure: its text
};

class BatchReport {
 public:
  /// A later report on a CV takes the place of an earlier one, and keeps its `before`.
  void add(const CvReport& report);
  /// The report on a CV, or nullptr when the run did nothing with it.
  const CvReport* of(CvIndex cv) const;
  /// In order of the CVs.
  const std::vector<CvReport>& cvs() const { return cvs_; }
  std::vector<CvIndex> with(CvDeed deed) const;

  /// What else the user has to know at the end, one sentence each.
  QStringList remarks;

 private:
  std::vector<CvReport> cvs_;
};

}  // namespace lokari
