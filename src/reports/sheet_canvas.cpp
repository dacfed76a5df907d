#include "reports/sheet_canvas.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>

#include <algorithm>

#include "reports/report_error.h"

namespace lokari {
namespace {

constexpr double kPointsPerInch = 72;
/// The least space there is, in dots.
constexpr double kHair = 1.0 / 64;

}  // namespace

SheetCanvas::SheetCanvas(QPagedPaintDevice& paper)
    : paper_(paper),
      unit_(paper.logicalDpiX() / kPointsPerInch),
      size_(paper.pageLayout().paintRectPixels(paper.logicalDpiX()).size()) {
  if (!painter_.begin(&paper)) {
    throw ReportError(QStringLiteral("Der Drucker nimmt keine Seiten an!"));
  }
}

void SheetCanvas::newPage() {
  paper_.newPage();
}

QFont SheetCanvas::font(double points, bool bold) const {
  QFont result;
  result.setPixelSize(std::max(1, qRound(dots(points))));
  result.setBold(bold);
  // Letters with a space between them are not joined: "Auflösung" has no "fl".
  result.setLetterSpacing(QFont::AbsoluteSpacing, kHair);
  return result;
}

double SheetCanvas::width(const QFont& font, const QString& text) const {
  return QFontMetricsF(font, &paper_).horizontalAdvance(text);
}

void SheetCanvas::drawText(const QRectF& place, const QFont& font, const QString& text,
                           Qt::Alignment alignment) {
  const QFontMetricsF metrics(font, &paper_);
  // What fits to a hair must not be cut for a rounding.
  const bool fits = metrics.horizontalAdvance(text) <= place.width() + unit_ / 2;
  painter_.setFont(font);
  painter_.drawText(
      place, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip,
      fits ? text : metrics.elidedText(text, Qt::ElideRight, place.width()));
}

}  // namespace lokari
