// The vehicles of a report: what its template shows of them, read at once in the order of the
// report.
#pragma once

#include <QStringList>

#include <optional>
#include <string>
#include <vector>

#include "reports/report_source.h"

namespace lokari {

class Progress;

class ReportRows {
 public:
  /// Reads `fields` of the vehicles that the source selects. Nothing when the
  /// user cancelled. Throws ReportError for a formula that is not understood, StorageError for a
  /// database that refuses.
  static std::optional<ReportRows> read(const ReportSource& source, const QStringList& fields,
                                        const ReportEncodings& encode, Progress& progress);

  size_t count() const { return count_; }
  /// `field` counts in the fields that were asked for.
  const std::string& value(size_t row, size_t field) const { return values_[row * width_ + field]; }

 private:
  size_t width_ = 0;
  size_t count_ = 0;
  std::vector<std::string> values_;  ///< row by row
};

}  // namespace lokari
