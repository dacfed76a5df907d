#include "reports/sheet_sign.h"

#include <algorithm>
#include <array>

#include "reports/sheet_canvas.h"
#include "reports/sheet_vehicle.h"

namespace lokari {
namespace {

// Lengths in points.
constexpr double kRadius = 1.8;
constexpr double kStroke = 0.7;

constexpr char kVerified = '1';
constexpr char kFailed = '2';

struct Meaning {
  SheetSign sign;
  const char16_t* words;
};
constexpr std::array kMeanings{
    Meaning{SheetSign::NotRead, u"nicht aus dem Decoder gelesen oder geprüft"},
    Meaning{SheetSign::Failed, u"Lesen oder Schreiben misslungen"},
};

}  // namespace

std::optional<SheetSign> signOf(const SheetVehicle& vehicle, const PrintCv& cv) {
  const char mark = vehicle.marks[cv.index.arrayIndex()];
  if (mark == kVerified) return {};
  return mark == kFailed ? SheetSign::Failed : SheetSign::NotRead;
}

void paintSign(SheetCanvas& canvas, const QRectF& place, SheetSign sign) {
  QPainter& painter = canvas.painter();
  const double radius = canvas.dots(kRadius);
  const QPointF middle = place.center();
  painter.setPen(QPen(Qt::black, canvas.dots(kStroke)));
  painter.setBrush(Qt::NoBrush);
  if (sign == SheetSign::NotRead) {
    painter.drawEllipse(middle, radius, radius);
    return;
  }
  const QPointF down(radius, radius);
  const QPointF up(radius, -radius);
  painter.drawLine(middle - down, middle + down);
  painter.drawLine(middle - up, middle + up);
}

void paintLegend(SheetCanvas& canvas, const QRectF& line, const SheetVehicle& vehicle,
                 std::span<const PrintCv> cvs) {
  const QFont small = canvas.font(kSheetSmallType);
  const double sign = canvas.dots(kSheetSign);
  double x = line.left();
  for (const Meaning& meaning : kMeanings) {
    const bool occurs = std::any_of(cvs.begin(), cvs.end(), [&](const PrintCv& cv) {
      return signOf(vehicle, cv) == meaning.sign;
    });
    if (!occurs) continue;
    paintSign(canvas, QRectF(x, line.top(), sign, line.height()), meaning.sign);
    x += sign + canvas.dots(kSheetSpacing);
    const QString words = QString::fromUtf16(meaning.words);
    const double width = canvas.width(small, words);
    canvas.painter().setPen(kSheetGrey);
    canvas.drawText(QRectF(x, line.top(), width, line.height()), small, words);
    x += width + canvas.dots(4 * kSheetSpacing);
  }
}

}  // namespace lokari
