#include "decoder/ui/speed_chart.h"

#include <QPainterPath>

#include <algorithm>

#include "decoder/ui/text_colour.h"

namespace lokari {
namespace {

/// Between a label and its axis, and around the picture.
constexpr double kGap = 5;
constexpr double kDot = 3.5;
constexpr double kRing = 7;
constexpr double kLine = 1.5;

QString widestValue() {
  return QStringLiteral("100 %");
}

class ChartPainter {
 public:
  ChartPainter(QPainter& painter, const SpeedChart& chart, const QRectF& picture,
               const QPalette& palette, QPalette::ColorGroup group)
      : painter_(painter),
        chart_(chart),
        picture_(picture),
        metrics_(painter.font()),
        area_(chartArea(picture.size(), metrics_)),
        base_(palette.color(group, QPalette::Base)),
        ink_(palette.color(group, QPalette::Text)),
        faint_(palette.color(group, QPalette::Midlight)),
        accent_(palette.color(group, QPalette::Highlight)) {}

  void paint() {
    painter_.fillRect(picture_, base_);
    painter_.setRenderHint(QPainter::Antialiasing);
    paintGrid();
    paintLabels();
    paintMouse();
    paintCurve();
  }

 private:
  QPointF place(double step, double speed) const {
    return {area_.left() + step * area_.width(), area_.bottom() - speed * area_.height()};
  }

  void paintGrid() {
    painter_.setPen(QPen(faint_, 1));
    for (const AxisTick& tick : chart_.values) {
      painter_.drawLine(place(0, tick.share), place(1, tick.share));
    }
    for (const AxisTick& tick : chart_.steps) {
      painter_.drawLine(place(tick.share, 0), place(tick.share, 1));
    }
    painter_.setPen(QPen(ink_, 1));
    painter_.drawLine(area_.bottomLeft(), area_.topLeft());
    painter_.drawLine(area_.bottomLeft(), area_.bottomRight());
  }

  void paintLabels() {
    const double height = metrics_.height();
    painter_.setPen(ink_);
    for (const AxisTick& tick : chart_.values) {
      const double y = place(0, tick.share).y();
      painter_.drawText(QRectF(0, y - height / 2, area_.left() - kGap, height),
                        Qt::AlignRight | Qt::AlignVCenter, tick.label);
    }
    for (const AxisTick& tick : chart_.steps) {
      const double width = metrics_.horizontalAdvance(tick.label) + 2 * kGap;
      // The outer labels stay in the picture.
      const double left =
          std::clamp(place(tick.share, 0).x() - width / 2, 0.0, picture_.width() - width);
      painter_.drawText(QRectF(left, area_.bottom() + kGap, width, height), Qt::AlignCenter,
                        tick.label);
    }
    const QRectF foot(0, area_.bottom() + kGap + height, picture_.width() - kGap, height);
    painter_.drawText(foot, Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("Fahrstufe"));
    const QRectF head(kGap, kGap, picture_.width() - 2 * kGap, height);
    painter_.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Wert"));
    painter_.drawText(head, Qt::AlignRight | Qt::AlignVCenter, chart_.note);
  }

  void paintMouse() {
    if (!chart_.mouse) return;
    painter_.setPen(QPen(accent_, 1, Qt::DotLine));
    painter_.drawLine(QPointF(area_.left(), chart_.mouse->y()),
                      QPointF(area_.right(), chart_.mouse->y()));
    painter_.drawLine(QPointF(chart_.mouse->x(), area_.top()),
                      QPointF(chart_.mouse->x(), area_.bottom()));
  }

  void paintCurve() {
    QPainterPath path;
    path.moveTo(place(chart_.points.front().step, chart_.points.front().speed));
    for (const SpeedPoint& point : chart_.points) path.lineTo(place(point.step, point.speed));
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(ink_, kLine));
    painter_.drawPath(path);
    int number = 0;
    for (const SpeedPoint& point : chart_.points) {
      const QPointF at = place(point.step, point.speed);
      if (++number == chart_.ringed) {
        painter_.setPen(QPen(accent_, 2));
        painter_.setBrush(base_);
        painter_.drawEllipse(at, kRing, kRing);
      }
      const QColor colour = colourValue(point.colour);
      painter_.setPen(QPen(base_, 1));
      painter_.setBrush(colour.isValid() ? colour : ink_);
      painter_.drawEllipse(at, kDot, kDot);
    }
  }

  QPainter& painter_;
  const SpeedChart& chart_;
  QRectF picture_;
  QFontMetricsF metrics_;
  QRectF area_;
  QColor base_;
  QColor ink_;
  QColor faint_;
  QColor accent_;
};

}  // namespace

QRectF chartArea(const QSizeF& picture, const QFontMetricsF& metrics) {
  const double left = metrics.horizontalAdvance(widestValue()) + 2 * kGap;
  const double top = metrics.height() + kGap + kRing + kGap;
  const double right = kRing + kGap;
  const double bottom = 2 * metrics.height() + 2 * kGap;
  return {left, top, picture.width() - left - right, picture.height() - top - bottom};
}

void paintChart(QPainter& painter, const SpeedChart& chart, const QRectF& picture,
                const QPalette& palette, QPalette::ColorGroup group) {
  ChartPainter(painter, chart, picture, palette, group).paint();
}

}  // namespace lokari
