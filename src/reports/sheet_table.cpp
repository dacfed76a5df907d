#include "reports/sheet_table.h"

#include <algorithm>
#include <array>

#include "reports/sheet_canvas.h"
#include "reports/sheet_sign.h"
#include "reports/sheet_vehicle.h"

namespace lokari {
namespace {

// Lengths in points.
constexpr double kRow = 12;
constexpr double kGap = 10;
constexpr double kHairline = 0.3;
constexpr double kLine = 0.6;

const QColor kPale(200, 200, 200);

constexpr std::array<const char16_t*, 4> kCaptions{u"CV", u"Bezeichnung", u"Vorgabe", u"Wert"};

QString caption(size_t column) {
  return QString::fromUtf16(kCaptions[column]);
}

QString shownNumber(const PrintCv& cv) {
  return QStringLiteral("CV") + cv.numberText();
}

QString shownStandard(const PrintCv& cv) {
  return QStringLiteral("(%1)").arg(cv.standard);
}

}  // namespace

SheetTable::SheetTable(SheetCanvas& canvas, const SheetVehicle& vehicle,
                       std::span<const PrintCv> cvs)
    : canvas_(canvas),
      vehicle_(vehicle),
      left_(cvs.first((cvs.size() + 1) / 2)),
      right_(cvs.subspan(left_.size())),
      columns_(columns()) {}

size_t SheetTable::rowsIn(double height) const {
  const double rows = height / canvas_.dots(kRow) - 1;
  return static_cast<size_t>(std::max(1.0, rows));
}

void SheetTable::paint(double top, size_t from, size_t count) {
  const size_t rightFrom = std::min(from, right_.size());
  const size_t rightCount = std::min(count, right_.size() - rightFrom);
  paintHalf({0, top}, left_.subspan(from, count), count);
  paintHalf({halfWidth() + canvas_.dots(kGap), top}, right_.subspan(rightFrom, rightCount), count);
}

double SheetTable::halfWidth() const {
  return (canvas_.size().width() - canvas_.dots(kGap)) / 2;
}

SheetTable::Columns SheetTable::columns() const {
  const QFont plain = canvas_.font(kSheetType);
  const QFont bold = canvas_.font(kSheetType, true);
  const QFont head = canvas_.font(kSheetSmallType, true);
  Columns result;
  result.number = canvas_.width(head, caption(0));
  result.standard = canvas_.width(head, caption(2));
  result.value =
      std::max(canvas_.width(head, caption(3)), canvas_.width(bold, QStringLiteral("255")));
  for (const std::span<const PrintCv> half : {left_, right_}) {
    for (const PrintCv& cv : half) {
      result.number = std::max(result.number, canvas_.width(plain, shownNumber(cv)));
      result.standard = std::max(result.standard, canvas_.width(plain, shownStandard(cv)));
    }
  }
  const double spacing = canvas_.dots(2 * kSheetSpacing);
  result.number += spacing;
  result.standard += spacing;
  // The sign stands ahead of the value, so that the values stay in line.
  result.value += spacing + canvas_.dots(kSheetSign);
  result.name = halfWidth() - result.number - result.standard - result.value;
  return result;
}

void SheetTable::paintHalf(const QPointF& place, std::span<const PrintCv> cvs, size_t rows) {
  drawSheetFrame(place, rows);
  const std::array widths{columns_.number, columns_.name, columns_.standard, columns_.value};
  const std::array alignments{Qt::AlignLeft, Qt::AlignLeft, Qt::AlignRight, Qt::AlignRight};
  const double height = canvas_.dots(kRow);
  const double spacing = canvas_.dots(kSheetSpacing);
  double y = place.y();
  const auto paintRow = [&](const std::array<QString, 4>& texts, const QFont& font,
                            const QFont& valueFont) {
    double x = place.x();
    for (size_t cell = 0; cell < texts.size(); ++cell) {
      const QRectF room(x + spacing, y, widths[cell] - 2 * spacing, height);
      canvas_.drawText(room, cell + 1 == texts.size() ? valueFont : font, texts[cell],
                       alignments[cell]);
      x += widths[cell];
    }
    y += height;
  };
  const QFont head = canvas_.font(kSheetSmallType, true);
  canvas_.painter().setPen(kSheetGrey);
  paintRow({caption(0), caption(1), caption(2), caption(3)}, head, head);
  const QFont plain = canvas_.font(kSheetType);
  const QFont bold = canvas_.font(kSheetType, true);
  canvas_.painter().setPen(Qt::black);
  for (const PrintCv& cv : cvs) {
    const int value = static_cast<quint8>(vehicle_.values[cv.index.arrayIndex()]);
    if (const auto sign = signOf(vehicle_, cv)) {
      const double left = place.x() + halfWidth() - columns_.value;
      paintSign(canvas_, QRectF(left, y, canvas_.dots(kSheetSign), height), *sign);
    }
    paintRow({shownNumber(cv), cv.name, shownStandard(cv), QString::number(value)}, plain,
             value == cv.standard ? plain : bold);
  }
}

void SheetTable::drawSheetFrame(const QPointF& place, size_t rows) {
  const double height = canvas_.dots(kRow);
  const QRectF table(place, QSizeF(halfWidth(), static_cast<double>(rows + 1) * height));
  QPainter& painter = canvas_.painter();
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kPale, canvas_.dots(kHairline)));
  for (size_t row = 2; row <= rows; ++row) {
    const double y = table.top() + static_cast<double>(row) * height;
    painter.drawLine(QPointF(table.left(), y), QPointF(table.right(), y));
  }
  double x = table.left();
  for (const double width : {columns_.number, columns_.name, columns_.standard}) {
    x += width;
    painter.drawLine(QPointF(x, table.top()), QPointF(x, table.bottom()));
  }
  painter.setPen(QPen(Qt::black, canvas_.dots(kLine)));
  const double y = table.top() + height;
  painter.drawLine(QPointF(table.left(), y), QPointF(table.right(), y));
  painter.drawRect(table);
}

}  // namespace lokari
