// Paper that keeps its pages as pictures, for the screen.
#pragma once

#include <QImage>
#include <QList>
#include <QPaintEngine>
#include <QPainter>
#include <QPdfWriter>

namespace lokari {

/// Hands everything that is painted on over to another painter, in its scale.
class PassingEngine final : public QPaintEngine {
 public:
  PassingEngine() : QPaintEngine(QPaintEngine::AllFeatures) {}

  /// Where it goes from now on, and how long and where the first dot of the paper is there.
  void setTarget(QPaintDevice& target, double scale, QPointF origin);

  bool begin(QPaintDevice* device) override;
  bool end() override;
  void updateState(const QPaintEngineState& now) override;
  using QPaintEngine::drawPolygon;
  void drawPath(const QPainterPath& path) override;
  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
  void drawPixmap(const QRectF& place, const QPixmap& pixmap, const QRectF& part) override;
  void drawImage(const QRectF& place, const QImage& image, const QRectF& part,
                 Qt::ImageConversionFlags flags) override;
  void drawTextItem(const QPointF& place, const QTextItem& text) override;
  Type type() const override { return QPaintEngine::User; }

 private:
  QPaintDevice* target_ = nullptr;
  QTransform toTarget_;
  QPainter painter_;
};

/// It has the dots of a printer, so that pages are laid out as on paper. Nothing of it asks the
/// system for its printers.
class PagePictures final : public QPdfWriter {
 public:
  explicit PagePictures(const QPageLayout& layout);

  /// Begins anew, without a page.
  void clear();
  /// The last page is complete as well.
  void finish();
  qsizetype count() const { return pages_.size(); }
  QImage page(qsizetype index) const;
  /// The size of each page in points.
  QSizeF pageSize() const;

  bool newPage() override;

 protected:
  QPaintEngine* paintEngine() const override;

 private:
  void keepPage();

  QImage picture_;
  mutable PassingEngine engine_;
  QList<QByteArray> pages_;  // packed: most of a page is white
};

}  // namespace lokari
