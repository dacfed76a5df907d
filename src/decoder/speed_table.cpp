#include "decoder/speed_table.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"
#include "decoder/dec_fields.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {
namespace {

struct CurvePoint {
  int cv;
  double step;
  const char16_t* name;
};

constexpr std::array<CurvePoint, 3> kCurvePoints{{
    {2, 0.0, u"Anfang"},
    {6, 0.5, u"Mitte"},
    {5, 1.0, u"Höchstwert"},
}};
constexpr int kMiddle = 2;

const CurvePoint& curvePointOf(int point) {
  return kCurvePoints.at(static_cast<size_t>(point - 1));
}

}  // namespace

// ---- What the curve shows ---------------------------------------------------------------------

SpeedView SpeedTable::view() const {
  const bool possible = bench_.controls.at(QStringLiteral("optDcDrvSpdTblYes")).enabled;
  const bool off = bench_.controls.at(QStringLiteral("optDcDrvSpdTblNo")).checked;
  return possible && !off ? SpeedView::Table : SpeedView::ThreePoints;
}

QString SpeedTable::tableCvs() const {
  return QStringLiteral("CV %1 bis %2")
      .arg(cv::kFirstTable)
      .arg(cv::kFirstTable - 1 + bench_.description.tablePoints());
}

QString SpeedTable::shownCvs() const {
  if (view() == SpeedView::ThreePoints) return QStringLiteral("CV 2, 6 und 5");
  if (cvsPerStep() == 1) return tableCvs();
  return QStringLiteral("CV %1 bis %2, jede zweite")
      .arg(cvOfStep(1).value())
      .arg(cvOfStep(tableSteps()).value());
}

int SpeedTable::pointCount() const {
  return view() == SpeedView::Table ? tableSteps() : static_cast<int>(kCurvePoints.size());
}

CvIndex SpeedTable::cvOf(int point) const {
  return view() == SpeedView::Table ? cvOfStep(point) : CvIndex(curvePointOf(point).cv);
}

int SpeedTable::highest(int point) const {
  const int top = bench_.description.info(cvOf(point)).cvMax;
  return view() == SpeedView::ThreePoints && top > 0 ? top : bench_.description.INTERNALSTEPS;
}

int SpeedTable::lowest(int point) const {
  return view() == SpeedView::Table ? 0 : bench_.description.info(cvOf(point)).cvMin;
}

const FixedField& SpeedTable::fieldOfPoint(int point) const {
  const int cv = curvePointOf(point).cv;
  return *std::find_if(kFixedFields.begin(), kFixedFields.end(),
                       [cv](const FixedField& fixed) { return fixed.cv == cv; });
}

bool SpeedTable::movable(int point) const {
  return bench_.description.info(cvOf(point)).exists();
}

int SpeedTable::shownValue(int point) const {
  return movable(point) ? bench_.sets.value(cvOf(point)) : 0;
}

QString SpeedTable::pointText(int point) const {
  const CvIndex cv = cvOf(point);
  const QString name = view() == SpeedView::Table ? QStringLiteral("Stufe %1").arg(point)
                                                  : QString::fromUtf16(curvePointOf(point).name);
  if (!movable(point)) {
    return QStringLiteral("%1 (CV %2): fehlt diesem Decoder").arg(name).arg(cv.value());
  }
  return QStringLiteral("%1 (CV %2): %3").arg(name).arg(cv.value()).arg(shownValue(point));
}

SpeedPoint SpeedTable::curvePoint(int point, double step) const {
  const CvIndex cv = cvOf(point);
  const double speed = static_cast<double>(shownValue(point)) / highest(point);
  return {cv, step, std::min(speed, 1.0),
          movable(point) ? bench_.colourOf(cv) : TextColour::Normal};
}

std::vector<SpeedPoint> SpeedTable::threePoints() const {
  std::vector<SpeedPoint> points;
  for (int point = 1; point <= static_cast<int>(kCurvePoints.size()); ++point) {
    points.push_back(curvePoint(point, curvePointOf(point).step));
  }
  // A middle of 0 lets the decoder take the straight line.
  SpeedPoint& middle = points[kMiddle - 1];
  if (shownValue(kMiddle) == 0) {
    middle.speed = (points.front().speed + points.back().speed) / 2;
  }
  return points;
}

std::vector<SpeedPoint> SpeedTable::points() const {
  if (view() == SpeedView::ThreePoints) return threePoints();
  std::vector<SpeedPoint> points;
  const int count = tableSteps();
  for (int point = 1; point <= count; ++point) {
    points.push_back(curvePoint(point, static_cast<double>(point) / count));
  }
  return points;
}

// ---- Moving a point ---------------------------------------------------------------------------

bool SpeedTable::setPoint(int point, double value) {
  const double cut = std::clamp<double>(value, lowest(point), highest(point));
  const int whole = static_cast<int>(std::nearbyint(cut));
  const CvIndex cv = cvOf(point);
  if (view() == SpeedView::Table) {
    bench_.sets.setValue(cv, whole);
    bench_.sets.setMark(cv, CvMark::None);
    bench_.setCvval(whole, cv.arrayIndex());
    return true;
  }
  const QString field = QString::fromLatin1(fieldOfPoint(point).field);
  bench_.fieldEdited(field, QString::number(whole));
  return bench_.CheckDcField(field, cv, bench_.description.info(cv).cvRange);
}

bool SpeedTable::moveTo(int point, double share) {
  return setPoint(point, share * highest(point));
}

bool SpeedTable::takes(int point, int value) const {
  return view() == SpeedView::Table ||
         rangeHolds(bench_.description.info(cvOf(point)).cvRange, value);
}

void SpeedTable::nudge(int point, int by) {
  const SpeedPoint seen = points().at(static_cast<size_t>(point - 1));
  const int from = static_cast<int>(std::nearbyint(seen.speed * highest(point)));
  const int low = lowest(point);
  const int high = highest(point);
  const int wanted = std::clamp(from + by, low, high);
  const int onward = by < 0 ? -1 : 1;
  // A range may have gaps: the next value beyond one, or the last one ahead of it.
  for (const int direction : {onward, -onward}) {
    for (int value = wanted; value >= low && value <= high; value += direction) {
      if (!takes(point, value)) continue;
      if (value != from) setPoint(point, value);
      return;
    }
  }
}

// ---- The table --------------------------------------------------------------------------------

int SpeedTable::cvsPerStep() const {
  const bool halved = bench_.controls.at(QStringLiteral("optDcDrvSteps14")).checked &&
                      bench_.description.tablePoints() == kMostPoints;
  return halved ? 2 : 1;
}

int SpeedTable::tableSteps() const {
  return bench_.description.tablePoints() / cvsPerStep();
}

CvIndex SpeedTable::cvOfStep(int step) const {
  return CvIndex(cv::kFirstTable - 1 + cvsPerStep() * step);
}

void SpeedTable::store(CvIndex cv, int value) {
  if (bench_.sets.value(cv) == value) return;
  bench_.sets.setMark(cv, CvMark::None);
  bench_.setCvval(value, cv.arrayIndex());
}

void SpeedTable::smooth() {
  for (int step = 1; step < tableSteps(); ++step) {
    const int lower = step == 1 ? 0 : bench_.sets.value(cvOfStep(step - 1));
    const int upper = bench_.sets.value(cvOfStep(step + 1));
    store(cvOfStep(step), toCvByte((lower + upper) / 2.0));
  }
}

}  // namespace lokari
