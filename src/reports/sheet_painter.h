// The sheet of one vehicle on paper: a head, a rule, and its CVs in two columns; as many pages as
// they need.
#pragma once

#include <QDate>
#include <QFont>
#include <QPainter>

#include <span>

#include "reports/print_cv_list.h"

class QImage;
class QPagedPaintDevice;

namespace lokari {

struct SheetVehicle;

class SheetPainter {
 public:
  /// Begins to paint. All lengths are derived from the paper and its margins. Throws ReportError
  /// when the paper takes no painting.
  SheetPainter(QPagedPaintDevice& paper, QDate date);

  /// Paints the pages of a vehicle; each but the first of all begins a new page.
  void paint(const SheetVehicle& vehicle, std::span<const PrintCv> cvs);

 private:
  /// Widths of the cells of a row: number, name, default, value.
  struct Columns {
    double number = 0;
    double name = 0;
    double standard = 0;
    double value = 0;
  };

  QFont font(double points, bool bold = false) const;
  double width(const QFont& font, const QString& text) const;
  /// Cut with an ellipsis where it does not fit.
  void drawText(const QRectF& place, const QFont& font, const QString& text,
                Qt::Alignment alignment = Qt::AlignLeft);
  void drawHead(const SheetVehicle& vehicle);
  void drawPicture(const QRectF& frame, const QImage& picture);
  void drawFoot(const SheetVehicle& vehicle, int page, int pages);
  void drawHalf(const QPointF& place, const Columns& columns, std::span<const PrintCv> cvs,
                const SheetVehicle& vehicle, int rows);
  /// The lines of a half of the table: around it, below its captions, between rows and cells.
  void drawSheetFrame(const QPointF& place, const Columns& columns, int rows);
  Columns columnsFor(std::span<const PrintCv> cvs) const;
  double halfWidth() const;
  int rowsPerPage() const;

  QPagedPaintDevice& paper_;
  QDate date_;
  double unit_ = 1;  // dots of a point
  QRectF page_;      // in dots
  QPainter painter_;
  bool begun_ = false;
};

}  // namespace lokari
