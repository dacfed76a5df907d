#include "decoder/ui/speed_curve.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

#include "decoder/decoder_bench.h"
#include "decoder/ui/speed_chart.h"

namespace lokari {
namespace {

constexpr double kTwipsPerPixel = 15.0;
constexpr int kPage = 10;

}  // namespace

SpeedCurve::SpeedCurve(DecoderBench& bench, QWidget* parent) : QWidget(parent), table_(bench) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setCursor(Qt::CrossCursor);
  setAttribute(Qt::WA_OpaquePaintEvent);
  connect(&bench, &DecoderBench::speedTableChanged, this, &SpeedCurve::showChange);
  // The view and the number of points hang on these.
  connect(&bench.controls, &BenchControls::changed, this, [this](const QString& name) {
    if (name.startsWith(QStringLiteral("optDcDrv")) || name == QStringLiteral("lblDcDrvLeg2"))
      showChange();
  });
  placeArea();
}

QSize SpeedCurve::sizeHint() const {
  return {52 * fontMetrics().averageCharWidth(), 17 * fontMetrics().height()};
}

QSize SpeedCurve::minimumSizeHint() const {
  return {40 * fontMetrics().averageCharWidth(), 11 * fontMetrics().height()};
}

// ---- Places -----------------------------------------------------------------------------------

QRectF SpeedCurve::area() const {
  return chartArea(size(), QFontMetricsF(font()));
}

void SpeedCurve::placeArea() {
  const QRectF at = area();
  picture_.area = {at.left() * kTwipsPerPixel, at.width() * kTwipsPerPixel,
                   at.height() * kTwipsPerPixel};
}

QPointF SpeedCurve::toTwips(QPointF mouse) const {
  return QPointF(mouse.x(), mouse.y() - area().top()) * kTwipsPerPixel;
}

QPointF SpeedCurve::positionOf(int point) const {
  const QPointF at = picture_.positions().at(static_cast<size_t>(point - 1)) / kTwipsPerPixel;
  return {at.x(), at.y() + area().top()};
}

void SpeedCurve::resizeEvent(QResizeEvent* event) {
  placeArea();
  QWidget::resizeEvent(event);
}

void SpeedCurve::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) placeArea();
  QWidget::changeEvent(event);
}

// ---- Showing ----------------------------------------------------------------------------------

int SpeedCurve::selectedPoint() const {
  return std::min(selected_, table_.pointCount());
}

QString SpeedCurve::note() const {
  if (!mouse_) return hasFocus() ? table_.pointText(selectedPoint()) : QString();
  const QPointF at = toTwips(*mouse_);
  const int dragged = picture_.dragPoint();
  const int point = dragged > 0 ? dragged : picture_.nearestTo(at.x());
  const double share = std::clamp(picture_.shareAt(at.y()), 0.0, 1.0);
  return QStringLiteral("%1 · Zeiger: %2")
      .arg(table_.pointText(point))
      .arg(std::nearbyint(share * table_.highest(point)));
}

void SpeedCurve::showChange() {
  setAccessibleDescription(table_.pointText(selectedPoint()));
  update();
  emit shown();
}

void SpeedCurve::paintEvent(QPaintEvent*) {
  SpeedChart chart;
  chart.points = table_.points();
  chart.values = valueTicks(table_);
  chart.steps = stepTicks(table_);
  chart.mouse = mouse_;
  chart.note = note();
  if (picture_.dragPoint() > 0) {
    chart.ringed = picture_.dragPoint();
  } else if (hasFocus()) {
    chart.ringed = selectedPoint();
  }
  QPainter painter(this);
  paintChart(painter, chart, rect(), palette(),
             isEnabled() ? QPalette::Active : QPalette::Disabled);
}

// ---- Mouse ------------------------------------------------------------------------------------

void SpeedCurve::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  dragged_ = event->position();
  picture_.press(toTwips(event->position()));
  if (picture_.dragPoint() > 0) select(picture_.dragPoint());
  update();
}

void SpeedCurve::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  mouse_ = area().contains(at) ? std::optional(at) : std::nullopt;
  // A message box that came up under the button has swallowed its release.
  if (!event->buttons().testFlag(Qt::LeftButton)) picture_.release();
  if (picture_.dragPoint() > 0) {
    drag(at);
  } else {
    const int point = picture_.pointAt(toTwips(at));
    setCursor(point > 0 && table_.movable(point) ? Qt::SizeVerCursor : Qt::CrossCursor);
  }
  update();
}

void SpeedCurve::drag(QPointF mouse) {
  // A quick hand is told of a few places only; what lies between them was moved over as well. The
  // three points are none to sweep over.
  const QPointF from = std::exchange(dragged_, mouse);
  if (table_.view() == SpeedView::Table) sweep(from, mouse);
  picture_.drag(toTwips(mouse));
  if (picture_.dragPoint() > 0) select(picture_.dragPoint());
}

void SpeedCurve::sweep(QPointF from, QPointF to) {
  const int under = picture_.pointAt(toTwips(from).x());
  const int last = picture_.pointAt(toTwips(to).x());
  const int points = table_.pointCount();
  const bool onward = to.x() > from.x();
  for (int i = 1; i <= points; ++i) {
    const int point = onward ? i : points + 1 - i;
    const double x = positionOf(point).x();
    const bool passed = onward ? from.x() < x && x < to.x() : to.x() < x && x < from.x();
    if (!passed || point == under || point == last) continue;
    const double share = (x - from.x()) / (to.x() - from.x());
    picture_.drag(toTwips(from + (to - from) * share));
  }
}

void SpeedCurve::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  picture_.release();
  update();
}

void SpeedCurve::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  mouse_.reset();
  update();
}

// ---- Keyboard ---------------------------------------------------------------------------------

void SpeedCurve::select(int point) {
  selected_ = point;
  showChange();
}

void SpeedCurve::selectMovable(int from, int direction) {
  for (int point = from; point >= 1 && point <= table_.pointCount(); point += direction) {
    if (!table_.movable(point)) continue;
    select(point);
    return;
  }
}

bool SpeedCurve::chooseByKey(int key) {
  const int point = selectedPoint();
  const int last = table_.pointCount();
  const struct {
    int key, from, direction;
  } choices[] = {
      {Qt::Key_Left, point - 1, -1},
      {Qt::Key_Right, point + 1, 1},
      {Qt::Key_Home, 1, 1},
      {Qt::Key_End, last, -1},
  };
  for (const auto& choice : choices) {
    if (choice.key != key) continue;
    selectMovable(choice.from, choice.direction);
    return true;
  }
  return false;
}

bool SpeedCurve::moveByKey(int key) {
  constexpr struct {
    int key, by;
  } kMoves[] = {
      {Qt::Key_Up, 1},
      {Qt::Key_Down, -1},
      {Qt::Key_PageUp, kPage},
      {Qt::Key_PageDown, -kPage},
  };
  for (const auto& move : kMoves) {
    if (move.key != key) continue;
    if (table_.movable(selectedPoint())) table_.nudge(selectedPoint(), move.by);
    return true;
  }
  return false;
}

void SpeedCurve::keyPressEvent(QKeyEvent* event) {
  if (!chooseByKey(event->key()) && !moveByKey(event->key())) {
    QWidget::keyPressEvent(event);
    return;
  }
  // The keys speak of the point they choose; a mouse that still lies there no longer does.
  mouse_.reset();
  update();
}

void SpeedCurve::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  if (!table_.movable(selectedPoint())) selectMovable(1, 1);
  update();
}

void SpeedCurve::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

}  // namespace lokari
