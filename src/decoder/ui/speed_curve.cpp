#include "decoder/ui/speed_curve.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

#include "decoder/decoder_bench.h"
#include "decoder/ui/text_colour.h"

namespace lokari {
namespace {

TextColour colourOf(CvMark mark) {
  switch (mark) {
    case CvMark::Verified:
      return TextColour::Blue;
    case CvMark::Failed:
      return TextColour::Red;
    case CvMark::None:
      break;
  }
  return TextColour::Normal;
}

}  // namespace

SpeedCurve::SpeedCurve(DecoderBench& bench, QWidget* parent) : QWidget(parent), bench_(bench) {
  setMinimumSize(200, 140);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(&bench, &DecoderBench::speedTableChanged, this, qOverload<>(&QWidget::update));
  // The view and the number of points hang on these.
  connect(&bench.controls, &BenchControls::changed, this, [this](const QString& name) {
    if (name.startsWith(QStringLiteral("optDcDrv")) || name.startsWith(QStringLiteral("txtDcDrv")))
      update();
  });
}

bool SpeedCurve::tableInUse() const {
  return bench_.controls.at(QStringLiteral("optDcDrvSpdTblYes")).enabled &&
         !bench_.controls.at(QStringLiteral("optDcDrvSpdTblNo")).checked;
}

QList<SpeedCurve::Point> SpeedCurve::points() const {
  return tableInUse() ? tablePoints() : threePoints();
}

QList<SpeedCurve::Point> SpeedCurve::threePoints() const {
  const auto at = [this](int number, double step) -> Point {
    const CvIndex cv(number);
    const int top = bench_.description.info(cv).cvMax;
    const double scale = top > 0 ? top : bench_.description.INTERNALSTEPS;
    return {step, std::min(bench_.sets.value(cv) / scale, 1.0), colourOf(bench_.sets.mark(cv))};
  };
  const Point start = at(2, 0.0);
  Point middle = at(6, 0.5);
  const Point top = at(5, 1.0);
  if (bench_.sets.value(CvIndex(6)) == 0) middle.speed = (start.speed + top.speed) / 2;
  return {start, middle, top};
}

QList<SpeedCurve::Point> SpeedCurve::tablePoints() const {
  const DecoderDescription& description = bench_.description;
  const bool halved = bench_.controls.at(QStringLiteral("optDcDrvSteps14")).checked &&
                      description.tablePoints() == cv::kLastTable - cv::kFirstTable + 1;
  const int stride = halved ? 2 : 1;
  const int count = description.tablePoints() / stride;
  QList<Point> points;
  for (int k = 1; k <= count; ++k) {
    const CvIndex cv(cv::kFirstTable - 1 + stride * k);
    points << Point{static_cast<double>(k) / count,
                    std::min(bench_.sets.value(cv) * 1.0 / description.INTERNALSTEPS, 1.0),
                    colourOf(bench_.sets.mark(cv))};
  }
  return points;
}

void SpeedCurve::paintEvent(QPaintEvent*) {
  constexpr double kMargin = 6;
  constexpr double kDot = 3;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
  painter.fillRect(rect(), palette().color(group, QPalette::Base));
  const QRectF area = QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin);

  painter.setPen(QPen(palette().color(group, QPalette::Mid), 1));
  for (int quarter = 0; quarter < 4; ++quarter) {
    const double y = area.top() + area.height() * quarter / 4;
    painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
  }
  const QColor ink = palette().color(group, QPalette::Text);
  painter.setPen(QPen(ink, 1));
  painter.drawLine(area.bottomLeft(), area.topLeft());
  painter.drawLine(area.bottomLeft(), area.bottomRight());

  const QList<Point> curve = points();
  const auto place = [&area](const Point& point) {
    return QPointF(area.left() + point.step * area.width(),
                   area.bottom() - point.speed * area.height());
  };
  QPainterPath path(place(curve.first()));
  for (const Point& point : curve) path.lineTo(place(point));
  painter.setPen(QPen(ink, 1.5));
  painter.drawPath(path);
  for (const Point& point : curve) {
    const QColor colour = colourValue(point.colour);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour.isValid() ? colour : ink);
    painter.drawEllipse(place(point), kDot, kDot);
  }
}

}  // namespace lokari
