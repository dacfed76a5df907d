#include "cab/ui/speed_bar.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

#include "cab/cab_state.h"

namespace lokari {
namespace {

constexpr double kGripHeight = 24;
constexpr double kGripWidth = 46;
constexpr double kTroughWidth = 14;
constexpr double kEdge = 2;
constexpr double kTickGap = 4;
constexpr double kTick = 5;
constexpr int kTickEvery = 16;
constexpr int kNumberEvery = 32;
/// Steps of the page keys.
constexpr int kPage = 10;

}  // namespace

SpeedBar::SpeedBar(QWidget* parent) : QSlider(Qt::Vertical, parent) {
  setObjectName(QStringLiteral("vsbSpeed"));
  setAccessibleName(QStringLiteral("Geschwindigkeit"));
  setRange(0, CabState::kHighestSpeed);
  setPageStep(kPage);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

QSize SpeedBar::sizeHint() const {
  const double numbers = fontMetrics().horizontalAdvance(QStringLiteral("000"));
  return {static_cast<int>(std::ceil(2 * kEdge + kGripWidth + kTickGap + kTick + 3 + numbers)),
          260};
}

QSize SpeedBar::minimumSizeHint() const {
  return {sizeHint().width(), 120};
}

QRectF SpeedBar::trough() const {
  return {kEdge + (kGripWidth - kTroughWidth) / 2, kEdge, kTroughWidth, height() - 2 * kEdge};
}

double SpeedBar::centreOf(int value) const {
  const double way = height() - 2 * kEdge - kGripHeight;
  return height() - kEdge - kGripHeight / 2 - way * value / maximum();
}

int SpeedBar::valueAt(double y) const {
  const double way = height() - 2 * kEdge - kGripHeight;
  if (way <= 0) return value();
  const double value = (height() - kEdge - kGripHeight / 2 - y) * maximum() / way;
  return std::clamp(static_cast<int>(std::lround(value)), minimum(), maximum());
}

QRectF SpeedBar::grip() const {
  return {kEdge, centreOf(value()) - kGripHeight / 2, kGripWidth, kGripHeight};
}

bool SpeedBar::meetLabel() {
  if (value() == start_) return false;
  const QSignalBlocker quiet(this);
  setValue(start_);
  return true;
}

void SpeedBar::sliderChange(SliderChange change) {
  if (change == SliderValueChange) start_ = value();
  QSlider::sliderChange(change);
}

void SpeedBar::keyPressEvent(QKeyEvent* event) {
  const bool toAnEnd = event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
  const bool byKey = toAnEnd || event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                     event->key() == Qt::Key_Left || event->key() == Qt::Key_Right ||
                     event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
  const bool parted = byKey && meetLabel();
  const int before = value();
  QSlider::keyPressEvent(event);
  // Asked for in so many words, an end is sent also when the label says that it is reached.
  if (parted && toAnEnd && value() == before) emit valueChanged(before);
}

void SpeedBar::wheelEvent(QWheelEvent* event) {
  if (!event->angleDelta().isNull()) meetLabel();
  QSlider::wheelEvent(event);
}

void SpeedBar::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    event->ignore();
    return;
  }
  event->accept();
  if (grip().contains(event->position())) {
    taken_ = event->position().y() - centreOf(value());
    setSliderDown(true);
    return;
  }
  const bool faster = event->position().y() < centreOf(value());
  meetLabel();
  triggerAction(faster ? SliderPageStepAdd : SliderPageStepSub);
}

void SpeedBar::mouseMoveEvent(QMouseEvent* event) {
  if (!isSliderDown()) return;
  setValue(valueAt(event->position().y() - taken_));
  event->accept();
}

void SpeedBar::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  setSliderDown(false);
  update();
  event->accept();
}

void SpeedBar::paintScale(QPainter& painter) const {
  const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
  painter.setPen(QPen(palette().color(group, QPalette::WindowText), 1));
  const double left = kEdge + kGripWidth + kTickGap;
  for (int step = 0; step <= maximum() + 1; step += kTickEvery) {
    const int at = std::min(step, maximum());
    const double y = std::round(centreOf(at)) + 0.5;
    painter.drawLine(QPointF(left, y), QPointF(left + kTick, y));
    if (step % kNumberEvery != 0) continue;
    const QRectF room(left + kTick + 3, y - fontMetrics().height() / 2.0, width(),
                      fontMetrics().height());
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, QString::number(at));
  }
}

void SpeedBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
  const auto colour = [&](QPalette::ColorRole role) { return palette().color(group, role); };
  paintScale(painter);

  const QRectF way = trough();
  painter.setPen(QPen(colour(QPalette::Mid), 1));
  painter.setBrush(colour(QPalette::Base));
  painter.drawRoundedRect(way, kTroughWidth / 2, kTroughWidth / 2);
  if (value() > 0) {
    QRectF filled = way.adjusted(1, 0, -1, -1);
    filled.setTop(centreOf(value()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour(QPalette::Highlight));
    painter.drawRoundedRect(filled, kTroughWidth / 2 - 1, kTroughWidth / 2 - 1);
  }

  const QRectF knob = grip().adjusted(0.5, 0.5, -0.5, -0.5);
  QLinearGradient face(knob.topLeft(), knob.bottomLeft());
  face.setColorAt(0, colour(QPalette::Button).lighter(isSliderDown() ? 100 : 112));
  face.setColorAt(1, colour(QPalette::Button).darker(isSliderDown() ? 115 : 106));
  painter.setBrush(face);
  painter.setPen(hasFocus() ? QPen(colour(QPalette::Highlight), 2)
                            : QPen(colour(QPalette::Shadow).lighter(180), 1));
  painter.drawRoundedRect(knob, 5, 5);
  painter.setPen(QPen(colour(QPalette::ButtonText), 1.5));
  for (const double offset : {-4.0, 0.0, 4.0}) {
    const double y = knob.center().y() + offset;
    painter.drawLine(QPointF(knob.left() + 12, y), QPointF(knob.right() - 12, y));
  }
}

}  // namespace lokari
