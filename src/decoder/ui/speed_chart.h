// The drawing of the speed curve: axes with their marks, the grid, the line and its points.
#pragma once

#include <QPainter>
#include <QPalette>

#include <optional>
#include <vector>

#include "decoder/speed_axis.h"
#include "decoder/speed_table.h"

namespace lokari {

/// What one drawing shows.
struct SpeedChart {
  std::vector<SpeedPoint> points;
  std::vector<AxisTick> values;
  std::vector<AxisTick> steps;
  int ringed = 0;                ///< the point that is meant, from 1; 0 for none
  std::optional<QPointF> mouse;  ///< where the cross hairs stand
  QString note;                  ///< above the chart, on the right
};

/// Where the curve lies in a picture of that size: the rest is for the labels.
QRectF chartArea(const QSizeF& picture, const QFontMetricsF& metrics);

/// Draws the whole picture with the font and the colours of the widget that `painter` paints on.
void paintChart(QPainter& painter, const SpeedChart& chart, const QRectF& picture,
                const QPalette& palette, QPalette::ColorGroup group);

}  // namespace lokari
