// What the parts of a sheet paint on: a page that knows its size and how long a point is.
#pragma once

#include <QFont>
#include <QPainter>
#include <QRectF>

class QPagedPaintDevice;

namespace lokari {

/// Space between things on a sheet, in points: 60 twips.
inline constexpr double kSheetSpacing = 3;
/// Sizes of type on a sheet, in points.
inline constexpr double kSheetType = 8;
inline constexpr double kSheetSmallType = 7;
/// What stands beside the data: captions, the foot.
inline const QColor kSheetGrey(90, 90, 90);

/// Places are in dots of the paper, lengths of the layout in points.
class SheetCanvas {
 public:
  /// Begins to paint. Throws ReportError when the paper takes no painting.
  explicit SheetCanvas(QPagedPaintDevice& paper);

  /// Ends the page; the first one is there from the beginning.
  void newPage();
  QPainter& painter() { return painter_; }
  /// The room inside of the paper's margins.
  const QSizeF& size() const { return size_; }
  double dots(double points) const { return points * unit_; }

  QFont font(double points, bool bold = false) const;
  double width(const QFont& font, const QString& text) const;
  /// In one line, cut with an ellipsis where it does not fit.
  void drawText(const QRectF& place, const QFont& font, const QString& text,
                Qt::Alignment alignment = Qt::AlignLeft);

 private:
  QPagedPaintDevice& paper_;
  double unit_;
  QSizeF size_;
  QPainter painter_;
};

}  // namespace lokari
