#include "reports/sheet_painter.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPagedPaintDevice>

#include <algorithm>
#include <array>

#include "db/picture_fit.h"
#include "reports/report_error.h"
#include "reports/sheet_vehicle.h"

namespace lokari {
namespace {

// Lengths in points.
constexpr double kSpacing = 3;  // 60 twips
constexpr double kHeadRow = 18;
constexpr int kHeadRows = 4;
constexpr double kHead = kHeadRow * kHeadRows;
constexpr double kPictureWidth = 108;
constexpr double kRuleBelowHead = 6;
constexpr double kTable = kHead + 18;
constexpr double kRow = 12;
constexpr double kGap = 10;
constexpr double kFoot = 16;
constexpr double kHairline = 0.3;
constexpr double kLine = 0.6;
constexpr double kRule = 1.2;

// Sizes of type, in points.
constexpr double kCaptionType = 8.5;
constexpr double kHeadType = 9.5;
constexpr double kTableType = 8;
constexpr double kSmallType = 7;

const QColor kGrey(90, 90, 90);
const QColor kPale(200, 200, 200);

struct HeadField {
  int row;
  bool right;
  bool wide;
  const char16_t* caption;
  QString (*text)(const SheetVehicle& vehicle);
};

const std::array kHeadFields{
    HeadField{0, false, false, u"Sammlung: ", [](const SheetVehicle& v) { return v.collection; }},
    HeadField{0, true, false, u"Adresse: ", [](const SheetVehicle& v) { return v.address; }},
    HeadField{1, false, false, u"Kurzbezeichnung: ",
              [](const SheetVehicle& v) { return v.shortName; }},
    HeadField{1, true, false, u"Gruppe: ", [](const SheetVehicle& v) { return v.group; }},
    HeadField{2, false, false, u"Fahrzeugtype: ", [](const SheetVehicle& v) { return v.type; }},
    HeadField{2, true, false, u"Decoder: ",
              [](const SheetVehicle& v) { return QString(v.manufacturer + u' ' + v.decoder).trimmed(); }},
    HeadField{3, false, true, u"Langbezeichnung: ",
              [](const SheetVehicle& v) { return v.longName; }},
};

constexpr std::array<const char16_t*, 4> kCaptions{u"CV", u"Bezeichnung", u"Vorgabe", u"Wert"};

QString shownNumber(const PrintCv& cv) {
  return QStringLiteral("CV") + cv.numberText();
}

QString shownStandard(const PrintCv& cv) {
  return QStringLiteral("(%1)").arg(cv.standard);
}

}  // namespace

SheetPainter::SheetPainter(QPagedPaintDevice& paper, QDate date)
    : paper_(paper), date_(date), unit_(paper.logicalDpiX() / 72.0) {
  if (!painter_.begin(&paper)) {
    throw ReportError(QStringLiteral("Der Drucker nimmt keine Seiten an!"));
  }
  const QRect room = paper.pageLayout().paintRectPixels(paper.logicalDpiX());
  page_ = QRectF(QPointF(0, 0), QSizeF(room.size()));
}

void SheetPainter::paint(const SheetVehicle& vehicle, std::span<const PrintCv> cvs) {
  const size_t half = (cvs.size() + 1) / 2;
  const auto perPage = static_cast<size_t>(rowsPerPage());
  const size_t pages = std::max<size_t>(1, (half + perPage - 1) / perPage);
  const std::span<const PrintCv> left = cvs.first(half);
  const std::span<const PrintCv> right = cvs.subspan(half);
  const Columns columns = columnsFor(cvs);
  for (size_t page = 0; page < pages; ++page) {
    if (begun_) paper_.newPage();
    begun_ = true;
    drawHead(vehicle);
    drawFoot(vehicle, static_cast<int>(page) + 1, static_cast<int>(pages));
    const size_t from = page * perPage;
    const size_t rows = std::min(perPage, half - from);
    if (rows == 0) continue;
    const size_t rightRows = std::min(rows, right.size() - std::min(right.size(), from));
    const QPointF place(0, kTable * unit_);
    const QPointF beside(halfWidth() + kGap * unit_, kTable * unit_);
    drawHalf(place, columns, left.subspan(from, rows), vehicle, static_cast<int>(rows));
    drawHalf(beside, columns, right.subspan(std::min(right.size(), from), rightRows), vehicle,
             static_cast<int>(rows));
  }
}

double SheetPainter::halfWidth() const {
  return (page_.width() - kGap * unit_) / 2;
}

int SheetPainter::rowsPerPage() const {
  // One row of the table holds its captions.
  const double room = page_.height() - (kTable + kRow + kFoot) * unit_;
  return std::max(1, static_cast<int>(room / (kRow * unit_)));
}

QFont SheetPainter::font(double points, bool bold) const {
  QFont result;
  result.setPixelSize(std::max(1, qRound(points * unit_)));
  result.setBold(bold);
  return result;
}

double SheetPainter::width(const QFont& font, const QString& text) const {
  return QFontMetricsF(font, &paper_).horizontalAdvance(text);
}

void SheetPainter::drawText(const QRectF& place, const QFont& font, const QString& text,
                            Qt::Alignment alignment) {
  const QFontMetricsF metrics(font, &paper_);
  // What fits to a hair must not be cut for a rounding.
  const QString shown = metrics.horizontalAdvance(text) <= place.width() + unit_ / 2
                            ? text
                            : metrics.elidedText(text, Qt::ElideRight, place.width());
  painter_.setFont(font);
  painter_.drawText(
      place, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip,
      shown);
}

void SheetPainter::drawHead(const SheetVehicle& vehicle) {
  double room = page_.width();
  if (const QImage picture = QImage::fromData(vehicle.picture); !picture.isNull()) {
    const QRectF frame((room - kPictureWidth * unit_), 0, kPictureWidth * unit_, kHead * unit_);
    drawPicture(frame, picture);
    room -= (kPictureWidth + kGap) * unit_;
  }
  const QFont captionFont = font(kCaptionType, true);
  const QFont textFont = font(kHeadType, true);
  std::array<double, 2> captions{};
  for (const HeadField& field : kHeadFields) {
    double& widest = captions[field.right ? 1 : 0];
    widest = std::max(widest, width(captionFont, QString::fromUtf16(field.caption)));
  }
  const double middle = room * 0.56;
  for (const HeadField& field : kHeadFields) {
    const double x = field.right ? middle : 0;
    const double end = field.right || field.wide ? room : middle - kSpacing * unit_;
    const double caption = captions[field.right ? 1 : 0] + kSpacing * unit_;
    const QRectF row(x, field.row * kHeadRow * unit_, end - x, kHeadRow * unit_);
    painter_.setPen(kGrey);
    drawText(row, captionFont, QString::fromUtf16(field.caption));
    painter_.setPen(Qt::black);
    drawText(row.adjusted(caption, 0, 0, 0), textFont, field.text(vehicle));
  }
  painter_.setPen(QPen(Qt::black, kRule * unit_));
  const double y = (kHead + kRuleBelowHead) * unit_;
  painter_.drawLine(QPointF(0, y), QPointF(page_.width(), y));
}

void SheetPainter::drawPicture(const QRectF& frame, const QImage& picture) {
  const QRectF place =
      fitPicture(QSizeF(picture.size()), frame.size()).translated(frame.topLeft());
  painter_.setRenderHint(QPainter::SmoothPixmapTransform);
  painter_.drawImage(place, picture);
}

void SheetPainter::drawFoot(const SheetVehicle& vehicle, int page, int pages) {
  const QRectF foot(0, page_.height() - (kFoot - kSpacing) * unit_, page_.width(),
                    (kFoot - kSpacing) * unit_);
  const QFont small = font(kSmallType);
  painter_.setPen(kGrey);
  drawText(foot, small,
           QStringLiteral("CV-Satz „%1“, Stand %2")
               .arg(vehicle.setName, date_.toString(QStringLiteral("dd.MM.yyyy"))));
  drawText(foot, small, QStringLiteral("Fett: weicht von der Vorgabe ab"), Qt::AlignHCenter);
  drawText(foot, small, QStringLiteral("Seite %1 von %2").arg(page).arg(pages), Qt::AlignRight);
}

SheetPainter::Columns SheetPainter::columnsFor(std::span<const PrintCv> cvs) const {
  const QFont plain = font(kTableType);
  const QFont bold = font(kTableType, true);
  const QFont caption = font(kSmallType, true);
  Columns columns;
  columns.number = width(caption, QString::fromUtf16(kCaptions[0]));
  columns.standard = width(caption, QString::fromUtf16(kCaptions[2]));
  columns.value = std::max(width(caption, QString::fromUtf16(kCaptions[3])),
                           width(bold, QStringLiteral("255")));
  for (const PrintCv& cv : cvs) {
    columns.number = std::max(columns.number, width(plain, shownNumber(cv)));
    columns.standard = std::max(columns.standard, width(plain, shownStandard(cv)));
  }
  const double spacing = 2 * kSpacing * unit_;
  columns.number += spacing;
  columns.standard += spacing;
  columns.value += spacing;
  columns.name = halfWidth() - columns.number - columns.standard - columns.value;
  return columns;
}

void SheetPainter::drawHalf(const QPointF& place, const Columns& columns,
                            std::span<const PrintCv> cvs, const SheetVehicle& vehicle, int rows) {
  drawSheetFrame(place, columns, rows);
  const std::array widths{columns.number, columns.name, columns.standard, columns.value};
  const std::array alignments{Qt::AlignLeft, Qt::AlignLeft, Qt::AlignRight, Qt::AlignRight};
  const auto drawRow = [&](int row, const std::array<QString, 4>& texts,
                           const std::array<QFont, 4>& fonts) {
    double x = place.x();
    for (size_t cell = 0; cell < texts.size(); ++cell) {
      const QRectF room(x, place.y() + row * kRow * unit_, widths[cell], kRow * unit_);
      drawText(room.adjusted(kSpacing * unit_, 0, -kSpacing * unit_, 0), fonts[cell], texts[cell],
               alignments[cell]);
      x += widths[cell];
    }
  };
  const QFont caption = font(kSmallType, true);
  painter_.setPen(kGrey);
  drawRow(0,
          {QString::fromUtf16(kCaptions[0]), QString::fromUtf16(kCaptions[1]),
           QString::fromUtf16(kCaptions[2]), QString::fromUtf16(kCaptions[3])},
          {caption, caption, caption, caption});
  const QFont plain = font(kTableType);
  const QFont bold = font(kTableType, true);
  painter_.setPen(Qt::black);
  int row = 1;
  for (const PrintCv& cv : cvs) {
    const int value = static_cast<quint8>(vehicle.values[cv.index.arrayIndex()]);
    drawRow(row++, {shownNumber(cv), cv.name, shownStandard(cv), QString::number(value)},
            {plain, plain, plain, value == cv.standard ? plain : bold});
  }
}

void SheetPainter::drawSheetFrame(const QPointF& place, const Columns& columns, int rows) {
  const QRectF table(place, QSizeF(halfWidth(), (rows + 1) * kRow * unit_));
  painter_.setBrush(Qt::NoBrush);
  painter_.setPen(QPen(kPale, kHairline * unit_));
  for (int row = 2; row <= rows; ++row) {
    const double y = table.top() + row * kRow * unit_;
    painter_.drawLine(QPointF(table.left(), y), QPointF(table.right(), y));
  }
  double x = table.left();
  for (const double width : {columns.number, columns.name, columns.standard}) {
    x += width;
    painter_.drawLine(QPointF(x, table.top()), QPointF(x, table.bottom()));
  }
  painter_.setPen(QPen(Qt::black, kLine * unit_));
  const double y = table.top() + kRow * unit_;
  painter_.drawLine(QPointF(table.left(), y), QPointF(table.right(), y));
  painter_.drawRect(table);
}

}  // namespace lokari
