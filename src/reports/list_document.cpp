#include "reports/list_document.h"

#include <QPagedPaintDevice>
#include <QPainter>

#include "base/paths.h"
#include "base/progress.h"
#include "db/database.h"
#include "reports/list_pages.h"
#include "reports/report_error.h"

namespace lokari {
namespace {

// Lengths in points.
constexpr double kPointsPerInch = 72;
constexpr double kFoot = 22;
constexpr double kFootText = 11;
constexpr double kFootType = 7;
constexpr double kHairline = 0.3;
/// The least space there is, in dots.
constexpr double kHair = 1.0 / 64;

constexpr double kWhole = 100;
/// The part of the work, in percent, that dividing into pages is.
constexpr double kDividing = 75;

const QColor kGrey(90, 90, 90);

double share(size_t done, size_t all) {
  return all == 0 ? 1 : static_cast<double>(done) / static_cast<double>(all);
}

/// Paints pages on paper, each with the same foot.
class PagePainter {
 public:
  PagePainter(QPagedPaintDevice& paper, const ReportSource& source)
      : paper_(paper),
        unit_(paper.logicalDpiY() / kPointsPerInch),
        size_(paper.pageLayout().paintRectPixels(paper.logicalDpiY()).size()),
        left_(fileNameOf(source.database.path())),
        middle_(QStringLiteral("Stand ") + source.made.toString(u"dd.MM.yyyy")) {}

  /// What the template has of a page.
  QSizeF room() const { return {size_.width(), size_.height() - kFoot * unit_}; }

  bool paint(const std::vector<std::unique_ptr<ListPage>>& pages, Progress& progress) {
    require(painter_.begin(&paper_));
    for (size_t i = 0; i < pages.size(); ++i) {
      if (progress.cancelled()) return false;
      progress.setStatus(QStringLiteral("Seite %1 von %2").arg(i + 1).arg(pages.size()));
      if (i > 0) require(paper_.newPage());
      pages[i]->draw(painter_);
      drawFoot(i + 1, pages.size());
      progress.setPercent(kDividing + (kWhole - kDividing) * share(i + 1, pages.size()));
    }
    require(painter_.end());
    return true;
  }

 private:
  static void require(bool accepted) {
    if (!accepted) throw ReportError(QStringLiteral("Der Drucker nimmt keine Seiten an!"));
  }

  void drawFoot(size_t page, size_t pages) {
    const QRectF foot(0, size_.height() - kFootText * unit_, size_.width(), kFootText * unit_);
    QFont font;
    font.setPixelSize(std::max(1, qRound(kFootType * unit_)));
    // Letters with a space between them are not joined.
    font.setLetterSpacing(QFont::AbsoluteSpacing, kHair);
    painter_.setFont(font);
    painter_.setPen(QPen(kGrey, kHairline * unit_));
    painter_.drawLine(foot.topLeft(), foot.topRight());
    painter_.drawText(foot, Qt::AlignLeft | Qt::AlignBottom, left_);
    painter_.drawText(foot, Qt::AlignHCenter | Qt::AlignBottom, middle_);
    painter_.drawText(foot, Qt::AlignRight | Qt::AlignBottom,
                      QStringLiteral("Seite %1 von %2").arg(page).arg(pages));
  }

  QPagedPaintDevice& paper_;
  double unit_;  // dots of a point
  QSizeF size_;  // in dots
  QString left_;
  QString middle_;
  QPainter painter_;
};

}  // namespace

bool ListDocument::paint(QPagedPaintDevice& paper, Progress& progress) {
  const ReportTemplate layout(source_.templateFile, reportFields(vehicleColumns(source_.database)));
  progress.setStatus(QStringLiteral("Die Fahrzeuge werden gelesen …"));
  const std::optional<ReportRows> rows =
      ReportRows::read(source_, layout.usedFields(), {htmlEncoded, htmlEncoded}, progress);
  if (!rows) return false;

  PagePainter painter(paper, source_);
  ListPages pages(source_, layout, *rows, paper, painter.room());
  while (!pages.isDone()) {
    if (progress.cancelled()) return false;
    pages.makeNext();
    progress.setStatus(QStringLiteral("Die Seiten werden eingeteilt: %1 von %2 Fahrzeugen")
                           .arg(pages.taken())
                           .arg(rows->count()));
    progress.setPercent(kDividing * share(pages.taken(), rows->count()));
  }
  return painter.paint(pages.pages(), progress);
}

}  // namespace lokari
