// The speed curve of the decoder window: which points it has, what they show, and how the user
// changes them. Without a user's table it is the line through CV 2, 6 and 5; with one, CV 67 to 94.
#pragma once

#include <QString>

#include <vector>

#include "decoder/bench_controls.h"
#include "decoder/cv_numbers.h"
#include "decoder/cv_sets.h"

namespace lokari {

class DecoderBench;
struct FixedField;

enum class SpeedView {
  ThreePoints,  ///< start, middle and top: CV 2, 6 and 5
  Table,        ///< one point per speed step
};

/// A point of the curve. `step` and `speed` are shares of the picture, from 0 at the left and lower
/// edge to 1 at the right and upper edge.
struct SpeedPoint {
  CvIndex cv;
  double step = 0;
  double speed = 0;
  TextColour colour = TextColour::Normal;
};

/// Points are counted from 1. Holds nothing but the bench, which must outlive it.
class SpeedTable {
 public:
  /// Points that a table has at most.
  static constexpr int kMostPoints = cv::kLastTable - cv::kFirstTable + 1;

  explicit SpeedTable(DecoderBench& bench) : bench_(bench) {}

  SpeedView view() const;
  /// The CVs that the picture shows: "CV 2, 6 und 5", "CV 67 bis 94".
  QString shownCvs() const;
  /// The CVs of the whole table: "CV 67 bis 94".
  QString tableCvs() const;
  /// The points of the view: 3, or those of the table.
  int pointCount() const;
  std::vector<SpeedPoint> points() const;
  CvIndex cvOf(int point) const;
  /// The value at the upper edge of the picture, 1 to 255.
  int highest(int point) const;
  /// False for a point whose CV the decoder lacks. It is shown as 0, whatever is stored for the CV.
  bool movable(int point) const;
  /// "Stufe 12 (CV 78): 130", "Mitte (CV 6): 80".
  QString pointText(int point) const;

  /// Gives a point the value at a share of the picture's height. The value is cut to what the point
  /// can take, so shares beyond 0 and 1 are welcome. False when the field of CV 2, 5 or 6 refused
  /// the value, with its message.
  bool moveTo(int point, double share);
  /// Moves a point by so many values from where it is seen, on to the next value that its CV can
  /// take.
  void nudge(int point, int by);

  // ---- The table, whichever view is shown -----------------------------------------------------

  /// Steps of the table: 28, or 14 when that many steps are chosen; 15 for a table of that size,
  /// whose points are never halved.
  int tableSteps() const;
  /// The CV of a step, from 1. With 14 steps every second CV is one: 68, 70 ... 94.
  CvIndex cvOfStep(int step) const;
  /// Takes a value that the user gave. A mark tells about the value it was set for, so it goes with
  /// that value.
  void store(CvIndex cv, int value);
  /// One pass of neighbour averaging. Each point already sees its lower neighbour smoothed; the one
  /// below the first is 0, and the last stays. Halves are rounded to the even number.
  void smooth();

 private:
  const FixedField& fieldOfPoint(int point) const;
  int shownValue(int point) const;
  SpeedPoint curvePoint(int point, double step) const;
  std::vector<SpeedPoint> threePoints() const;
  bool setPoint(int point, double value);
  bool takes(int point, int value) const;
  int lowest(int point) const;
  int cvsPerStep() const;

  DecoderBench& bench_;
};

}  // namespace lokari
