// `dlgSpdTab` without a window: the steps of the speed table as a list of numbers. The curve
// follows each number that is entered, and giving up brings the whole table back.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "decoder/cv_sets.h"
#include "decoder/speed_table.h"

namespace lokari {

class Prompt;

/// Boxes are counted from 1. Both arguments must outlive the list.
class SpeedTableList {
 public:
  /// Keeps the table as it is, for cancel().
  SpeedTableList(DecoderBench& bench, Prompt& prompt);

  /// Boxes of the dialog, of which the first count() are in use.
  static constexpr int kBoxes = SpeedTable::kMostPoints;

  /// False when the user's table is switched off: there is nothing to list then.
  bool usable() const;
  int count() const { return table_.tableSteps(); }
  /// The highest value of a box, as the scale of the picture shows it.
  int limit() const;
  CvIndex cvOf(int box) const { return table_.cvOfStep(box); }
  QString text(int box) const;
  TextColour colour(int box) const;

  /// The user leaves a box: its value goes into the table. False, with a message, when the text is
  /// no number from 0 to limit(): the focus must return, the text be selected.
  bool leave(int box, const QString& text);
  /// Stores the boxes in use; `texts` begins with box 1. A text that leave() would refuse changes
  /// nothing.
  void ok(const QStringList& texts);
  /// Puts all 28 values back as they were when the list was made, and their marks.
  void cancel();

 private:
  bool take(int box, const QString& text);

  DecoderBench& bench_;
  Prompt& prompt_;
  SpeedTable table_;
  CvSets saved_;
};

}  // namespace lokari
