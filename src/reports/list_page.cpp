#include "reports/list_page.h"

#include <QAbstractTextDocumentLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextBlock>
#include <QTextTable>
#include <QUrl>

#include <algorithm>
#include <limits>

#include "reports/report_error.h"

namespace lokari {
namespace {

/// What a template that says nothing about its type is set in, in points.
constexpr double kType = 9;
/// The least space there is, in dots.
constexpr double kHair = 1.0 / 64;

void collectTables(const QTextFrame& frame, std::vector<const QTextTable*>& tables) {
  for (const QTextFrame* child : frame.childFrames()) {
    if (const auto* table = qobject_cast<const QTextTable*>(child)) tables.push_back(table);
    collectTables(*child, tables);
  }
}

/// The vehicles stand in the longest table; others are the template's furniture.
const QTextTable* longestTable(const QTextDocument& text) {
  std::vector<const QTextTable*> tables;
  collectTables(*text.rootFrame(), tables);
  const auto longest = std::max_element(
      tables.begin(), tables.end(),
      [](const QTextTable* a, const QTextTable* b) { return a->rows() < b->rows(); });
  return longest == tables.end() ? nullptr : *longest;
}

struct Extent {
  double top = std::numeric_limits<double>::max();
  double bottom = 0;
};

/// From the highest to the lowest text of a row.
Extent extentOf(const QTextTable& table, int row, const QAbstractTextDocumentLayout& layout) {
  Extent extent;
  for (int column = 0; column < table.columns(); ++column) {
    const QTextTableCell cell = table.cellAt(row, column);
    const QRectF first = layout.blockBoundingRect(cell.firstCursorPosition().block());
    const QRectF last = layout.blockBoundingRect(cell.lastCursorPosition().block());
    extent.top = std::min(extent.top, first.top());
    extent.bottom = std::max(extent.bottom, last.bottom());
  }
  return extent;
}

}  // namespace

ListPage::ListPage(const std::string& html, const QString& folder, size_t vehicles,
                   QPagedPaintDevice& paper, QSizeF room)
    : room_(room) {
  QFont font;
  font.setPointSizeF(kType);
  // Letters with a space between them are not joined: "Dampflok" has no "fl".
  font.setLetterSpacing(QFont::AbsoluteSpacing, kHair);
  text_.setUndoRedoEnabled(false);
  text_.setDefaultFont(font);
  text_.setDocumentMargin(0);
  text_.setBaseUrl(QUrl::fromLocalFile(folder));
  text_.documentLayout()->setPaintDevice(&paper);
  // The width comes first, else the text would be laid out twice.
  text_.setTextWidth(room.width());
  text_.setHtml(QString::fromStdString(html));
  height_ = std::min(text_.size().height(), room.height());
  if (vehicles > 0) findRows(vehicles);
}

void ListPage::findRows(size_t vehicles) {
  const QTextTable* table = longestTable(text_);
  const int count = static_cast<int>(vehicles);
  const int rows =
      table == nullptr ? 0 : table->rows() - table->format().toTableFormat().headerRowCount();
  if (rows < count || rows % count != 0) {
    throw ReportError(
        QStringLiteral("Die Vorlage der Liste zeigt die Fahrzeuge nicht als Zeilen einer Tabelle.\r"
                       "Im Abschnitt \"fahrzeuge\" stehen ganze Zeilen (<tr>), die Spaltenköpfe "
                       "davor in <thead>."));
  }
  findBounds(*table, rows / count);
}

void ListPage::findBounds(const QTextTable& table, int rowsOfVehicle) {
  const QAbstractTextDocumentLayout& layout = *text_.documentLayout();
  const int heads = table.format().toTableFormat().headerRowCount();
  begin_ = extentOf(table, heads, layout).top;
  for (int row = heads + rowsOfVehicle; row < table.rows(); row += rowsOfVehicle) {
    // Cells have the same room above and below their texts.
    const Extent above = extentOf(table, row - 1, layout);
    const Extent below = extentOf(table, row, layout);
    ends_.push_back((above.bottom + below.top) / 2);
  }
  ends_.push_back(layout.frameBoundingRect(const_cast<QTextTable*>(&table)).bottom());
}

bool ListPage::isCrowdedOut() const {
  if (ends_.empty() || ends_.front() <= room_.height()) return false;
  return ends_.front() - begin_ <= room_.height();
}

size_t ListPage::vehiclesWithRoom() const {
  const auto firstWithout = std::upper_bound(ends_.begin(), ends_.end(), room_.height());
  return static_cast<size_t>(firstWithout - ends_.begin());
}

void ListPage::cutBehind(size_t vehicles) {
  height_ = std::min(ends_.at(vehicles - 1), room_.height());
}

void ListPage::draw(QPainter& painter) {
  QAbstractTextDocumentLayout::PaintContext context;
  // What only touches the edge would go into the file, unseen.
  context.clip = QRectF(0, 0, text_.textWidth(), height_ - 1);
  // Paper is white, whatever the colours of the desktop are.
  context.palette.setColor(QPalette::Text, Qt::black);
  painter.save();
  painter.setClipRect(QRectF(0, 0, text_.textWidth(), height_));
  text_.documentLayout()->draw(&painter, context);
  painter.restore();
}

}  // namespace lokari
