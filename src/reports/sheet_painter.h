// The sheet of one vehicle on paper: a head, a rule, and its CVs in two columns; as many pages as
// they need.
#pragma once

#include <QDate>

#include <span>

#include "reports/print_cv_list.h"
#include "reports/sheet_canvas.h"

class QImage;

namespace lokari {

struct SheetVehicle;

class SheetPainter {
 public:
  /// Begins to paint; `date` is the day that the sheets tell. All lengths are derived from the
  /// paper and its margins. Throws ReportError when the paper takes no painting.
  SheetPainter(QPagedPaintDevice& paper, QDate date) : canvas_(paper), date_(date) {}

  /// Paints the pages of a vehicle; each but the first of all begins a new page.
  void paint(const SheetVehicle& vehicle, std::span<const PrintCv> cvs);

 private:
  void paintHead(const SheetVehicle& vehicle, const QImage& picture);
  void paintPicture(const QRectF& frame, const QImage& picture);
  void paintFoot(const SheetVehicle& vehicle, std::span<const PrintCv> cvs, size_t page,
                 size_t pages);

  SheetCanvas canvas_;
  QDate date_;
  bool begun_ = false;
};

}  // namespace lokari
