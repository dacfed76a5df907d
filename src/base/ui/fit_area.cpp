#include "base/ui/fit_area.h"

#include <QEvent>
#include <QScrollBar>

namespace lokari {
namespace {

/// Smaller than this no window is of use.
constexpr QSize kLeast(560, 96);

}  // namespace

FitArea::FitArea(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  // The controls inside have the focus, and bring themselves into view.
  setFocusPolicy(Qt::NoFocus);
}

void FitArea::take(QWidget* contents) {
  setWidget(contents);
  // The ground is that of the page or the window around it.
  viewport()->setAutoFillBackground(false);
  contents->setAutoFillBackground(false);
  contents->installEventFilter(this);
}

QSize FitArea::withBar(QSize size) const {
  return {size.width() + verticalScrollBar()->sizeHint().width(), size.height()};
}

QSize FitArea::sizeHint() const {
  if (widget() == nullptr) return QScrollArea::sizeHint();
  return withBar(widget()->sizeHint().expandedTo(widget()->minimumSize()));
}

QSize FitArea::minimumSizeHint() const {
  if (widget() == nullptr) return QScrollArea::minimumSizeHint();
  const QSize least = widget()->minimumSizeHint().expandedTo(widget()->minimumSize());
  return withBar(least).boundedTo(kLeast);
}

bool FitArea::eventFilter(QObject* watched, QEvent* event) {
  if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace lokari
