// One page on the screen, at the size that the user wants.
#pragma once

#include <QImage>
#include <QScrollArea>

class QLabel;

namespace lokari {

class PageView final : public QScrollArea {
  Q_OBJECT

 public:
  explicit PageView(QWidget* parent);

  /// Shows a page of that size in points, from its top. The zoom stays.
  void setPage(const QImage& page, const QSizeF& points);

  /// 1 is the size on paper.
  double zoomFactor() const { return zoom_; }
  void zoomIn() { setZoom(zoom_ * kStep); }
  void zoomOut() { setZoom(zoom_ / kStep); }
  /// The page as large as the window has room, also after the window's size has changed.
  void fitInView() { setFit(Fit::Page); }
  void fitToWidth() { setFit(Fit::Width); }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  enum class Fit { Free, Page, Width };
  static constexpr double kStep = 1.25;

  void setZoom(double zoom);
  void setFit(Fit fit);
  void fit();
  void paintPage();
  /// The page's size on this screen at a zoom of 1.
  QSizeF naturalSize() const;

  QLabel* page_;
  QImage image_;
  QSizeF points_;
  double zoom_ = 1;
  Fit fit_ = Fit::Page;
};

}  // namespace lokari
