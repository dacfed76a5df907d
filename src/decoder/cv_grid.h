// The grid of all CVs: one header row, then one row per CV. Row 0 is the header.
#pragma once

#include <QString>

#include <array>
#include <optional>
#include <vector>

#include "decoder/bench_controls.h"
#include "decoder/cv_numbers.h"

namespace lokari {

enum class GridColumn : int { Cv, Name, Range, Value, Read, Write, Details };

struct GridColumnHead {
  const char16_t* caption;
  int width;  ///< twips
};

inline constexpr std::array<GridColumnHead, 7> kGridColumns{{
    {u"CV", 660},
    {u"Bezeichnung", 3680},
    {u"Bereich", 1260},
    {u"Wert", 1000},
    {u"Lesen", 700},
    {u"Schreiben", 1000},
    {u"Details", 700},
}};

/// What a data row shows. A row without a CV is empty.
struct GridRow {
  QString number;  ///< "30", or "257 (2)"
  QString name;
  QString range;
  QString value;
  TextColour colour = TextColour::Normal;  ///< of the value
  QString note = {};                       ///< what the colour does not tell
  bool read = false;                       ///< picture chkbox_x.bmp, else chkbox.bmp
  bool write = false;
  bool details = false;   ///< picture bitbut.bmp
  bool readOnly = false;  ///< neither the value nor the tick for writing can be changed
  QString idle = {};      ///< why no job acts upon its ticks; empty when one does
};

/// Which CV stands in which row, and the range that a click on a header works on.
class CvGrid {
 public:
  /// Rows with the header. A file with several lines for one CV leaves empty rows at the end.
  int rowCount() const { return rowCount_; }
  /// The CV of a data row; none for the header and an empty row.
  CvIndex cvAt(int row) const;
  /// The row of a CV, or 0.
  int rowOf(CvIndex cv) const;

  void rebuild(int rowCount, std::vector<CvIndex> cvs);

  /// Takes a selection of several rows; the ends may come in any order.
  void select(int first, int last);
  bool hasSelection() const { return selection_.has_value(); }
  int selFirst() const { return selection_ ? selection_->first : 1; }
  int selLast() const { return selection_ ? selection_->second : rowCount_ - 1; }

 private:
  int rowCount_ = 1;
  std::vector<CvIndex> cvs_;  // of row 1, 2, ...
  std::vector<int> rows_;     // by internal index
  std::optional<std::pair<int, int>> selection_;
};

}  // namespace lokari
