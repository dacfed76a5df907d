// The table of a sheet: the CVs in two halves side by side.
#pragma once

#include <QPointF>

#include <span>

#include "reports/print_cv_list.h"

namespace lokari {

class SheetCanvas;
struct SheetVehicle;

class SheetTable {
 public:
  /// All must outlive the table.
  SheetTable(SheetCanvas& canvas, const SheetVehicle& vehicle, std::span<const PrintCv> cvs);

  /// Rows of the longer, left half.
  size_t rows() const { return left_.size(); }
  /// Rows that have room in a height, below the captions; 1 at least.
  size_t rowsIn(double height) const;
  /// Paints the rows from `from` on, `count` of them, of both halves.
  void paint(double top, size_t from, size_t count);

 private:
  /// Widths of the cells of a row: number, name, default, value.
  struct Columns {
    double number = 0;
    double name = 0;
    double standard = 0;
    double value = 0;
  };

  Columns columns() const;
  double halfWidth() const;
  void paintHalf(const QPointF& place, std::span<const PrintCv> cvs, size_t rows);
  /// The lines of a half: around it, below its captions, between rows and cells.
  void drawSheetFrame(const QPointF& place, size_t rows);

  SheetCanvas& canvas_;
  const SheetVehicle& vehicle_;
  std::span<const PrintCv> left_;
  std::span<const PrintCv> right_;
  Columns columns_;
};

}  // namespace lokari
