#include "reports/ui/page_pictures.h"

#include <QPainterPath>

#include <cstring>

namespace lokari {
namespace {

constexpr int kPaperDots = 1200;   // of an inch, as in the PDF file
constexpr int kPictureDots = 200;  // enough to read small type on the screen
constexpr double kPointsPerInch = 72;
constexpr int kFastPacking = 1;

}  // namespace

void PassingEngine::setTarget(QPaintDevice& target, double scale, QPointF origin) {
  target_ = &target;
  toTarget_ =
      QTransform::fromScale(scale, scale) * QTransform::fromTranslate(origin.x(), origin.y());
}

bool PassingEngine::begin(QPaintDevice*) {
  if (target_ == nullptr || !painter_.begin(target_)) return false;
  painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                          QPainter::SmoothPixmapTransform);
  painter_.setTransform(toTarget_);
  setActive(true);
  return true;
}

bool PassingEngine::end() {
  setActive(false);
  return painter_.end();
}

void PassingEngine::updateState(const QPaintEngineState& now) {
  const DirtyFlags changed = now.state();
  if (changed & DirtyTransform) painter_.setTransform(now.transform() * toTarget_);
  if (changed & DirtyPen) painter_.setPen(now.pen());
  if (changed & DirtyBrush) painter_.setBrush(now.brush());
  if (changed & DirtyBrushOrigin) painter_.setBrushOrigin(now.brushOrigin());
  if (changed & DirtyFont) painter_.setFont(now.font());
  if (changed & DirtyBackground) painter_.setBackground(now.backgroundBrush());
  if (changed & DirtyBackgroundMode) painter_.setBackgroundMode(now.backgroundMode());
  if (changed & DirtyOpacity) painter_.setOpacity(now.opacity());
  if (changed & DirtyCompositionMode) painter_.setCompositionMode(now.compositionMode());
  if (changed & DirtyClipPath) painter_.setClipPath(now.clipPath(), now.clipOperation());
  if (changed & DirtyClipRegion) painter_.setClipRegion(now.clipRegion(), now.clipOperation());
  if (changed & DirtyClipEnabled) painter_.setClipping(now.isClipEnabled());
}

void PassingEngine::drawPath(const QPainterPath& path) {
  painter_.drawPath(path);
}

void PassingEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
  if (mode == PolylineMode) {
    painter_.drawPolyline(points, count);
  } else {
    painter_.drawPolygon(points, count, mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
  }
}

void PassingEngine::drawPixmap(const QRectF& place, const QPixmap& pixmap, const QRectF& part) {
  painter_.drawPixmap(place, pixmap, part);
}

void PassingEngine::drawImage(const QRectF& place, const QImage& image, const QRectF& part,
                              Qt::ImageConversionFlags flags) {
  painter_.drawImage(place, image, part, flags);
}

void PassingEngine::drawTextItem(const QPointF& place, const QTextItem& text) {
  painter_.drawTextItem(place, text);
}

PagePictures::PagePictures(const QPageLayout& layout)
    : QPdfWriter(static_cast<QIODevice*>(nullptr)) {
  setResolution(kPaperDots);
  setPageLayout(layout);
  picture_ = QImage(layout.fullRectPixels(kPictureDots).size(), QImage::Format_RGB32);
  picture_.setDotsPerMeterX(static_cast<int>(logicalDpiX() / 0.0254));
  picture_.setDotsPerMeterY(static_cast<int>(logicalDpiY() / 0.0254));
  engine_.setTarget(picture_, static_cast<double>(kPictureDots) / kPaperDots,
                    layout.paintRectPixels(kPictureDots).topLeft());
  clear();
}

void PagePictures::clear() {
  pages_.clear();
  picture_.fill(Qt::white);
}

void PagePictures::finish() {
  keepPage();
}

bool PagePictures::newPage() {
  keepPage();
  return true;
}

void PagePictures::keepPage() {
  // A copy of the picture would part it from the painter that is at work on it.
  pages_ << qCompress(picture_.constBits(), static_cast<int>(picture_.sizeInBytes()), kFastPacking);
  picture_.fill(Qt::white);
}

QImage PagePictures::page(qsizetype index) const {
  QImage image(picture_.size(), picture_.format());
  const QByteArray bytes = qUncompress(pages_.at(index));
  if (bytes.size() == image.sizeInBytes()) {
    std::memcpy(image.bits(), bytes.constData(), static_cast<size_t>(bytes.size()));
  }
  return image;
}

QSizeF PagePictures::pageSize() const {
  return QSizeF(picture_.size()) * kPointsPerInch / kPictureDots;
}

QPaintEngine* PagePictures::paintEngine() const {
  return &engine_;
}

}  // namespace lokari
