#include "reports/ui/page_view.h"

#include <QLabel>
#include <QScrollBar>

#include <algorithm>

namespace lokari {
namespace {

constexpr double kPointsPerInch = 72;
constexpr double kSmallest = 0.1;
constexpr double kLargest = 5;
/// What is left free around a page that fits, in pixels.
constexpr int kMargin = 8;

}  // namespace

PageView::PageView(QWidget* parent) : QScrollArea(parent), page_(new QLabel(this)) {
  page_->setScaledContents(true);
  setWidget(page_);
  setAlignment(Qt::AlignCenter);
  setBackgroundRole(QPalette::Dark);
  setFocusPolicy(Qt::StrongFocus);
}

void PageView::setPage(const QImage& page, const QSizeF& points) {
  image_ = page;
  points_ = points;
  fit();
  paintPage();
  verticalScrollBar()->setValue(0);
}

QSizeF PageView::naturalSize() const {
  return {points_.width() * logicalDpiX() / kPointsPerInch,
          points_.height() * logicalDpiY() / kPointsPerInch};
}

void PageView::setZoom(double zoom) {
  fit_ = Fit::Free;
  zoom_ = std::clamp(zoom, kSmallest, kLargest);
  paintPage();
}

void PageView::setFit(Fit fit) {
  fit_ = fit;
  this->fit();
  paintPage();
}

void PageView::fit() {
  const QSizeF natural = naturalSize();
  if (fit_ == Fit::Free || natural.isEmpty()) return;
  const QSizeF room = maximumViewportSize();
  const double bar = verticalScrollBar()->sizeHint().width();
  const double byHeight = (room.height() - 2 * kMargin) / natural.height();
  double byWidth = (room.width() - 2 * kMargin) / natural.width();
  // A page that is longer than the window takes a scroll bar's width from it.
  if (fit_ == Fit::Width && byWidth > byHeight) {
    byWidth = (room.width() - 2 * kMargin - bar) / natural.width();
  }
  zoom_ =
      std::clamp(fit_ == Fit::Width ? byWidth : std::min(byWidth, byHeight), kSmallest, kLargest);
}

void PageView::paintPage() {
  if (image_.isNull()) return;
  const QSize size = (naturalSize() * zoom_).toSize();
  // Made smaller here, since the label's own way leaves out lines.
  const QSize dots = size * devicePixelRatioF();
  QImage shown = dots.width() < image_.width()
                     ? image_.scaled(dots, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                     : image_;
  page_->setPixmap(QPixmap::fromImage(std::move(shown)));
  page_->resize(size);
}

void PageView::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  if (fit_ == Fit::Free) return;
  fit();
  paintPage();
}

}  // namespace lokari
