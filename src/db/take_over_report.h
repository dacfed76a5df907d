// What a take-over took, what it did not take, and why.
#pragma once

#include <QString>
#include <QStringList>

namespace lokari {

/// Remarks that the closing text shows, as many as have room on a small screen; the report's file
/// has them all.
inline constexpr int kShownRemarks = 5;

struct TakeOverReport {
  QString target;       ///< full path of the new database
  QString kept;         ///< full path of the folder of what was kept beside it; empty: none
  int vehicles = 0;     ///< taken
  int entries = 0;      ///< taken into the other tables
  QStringList skipped;  ///< one sentence for each row, of whatever table, that was not taken
  QStringList changed;  ///< one sentence for each thing that did not go over as it stood

  /// Both, what is lost first.
  QStringList remarks() const { return skipped + changed; }

  /// The words that end the work: the numbers, the new name, the first remarks.
  QString closingText() const;
  /// The numbers and all remarks.
  QString fullText() const;

 private:
  QStringList numbers() const;
};

/// The name of the file with the full text, in the folder `kept`.
QString reportFileName();

}  // namespace lokari
