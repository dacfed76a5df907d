// The line at the foot of a cab or panel that tells what is wrong with the line to the station.
#pragma once

#include <QWidget>

class QLabel;

namespace lokari {

/// Nothing while all is well. A text appears below everything else, so that no button moves away
/// from under the mouse, and the window grows and shrinks by what it takes.
class NoticeLine final : public QWidget {
 public:
  explicit NoticeLine(QWidget* parent);

  void showText(const QString& text);

 protected:
  /// The text wraps, and is never cut.
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void takeColour();
  void keepWhole();

  QLabel* sign_;
  QLabel* labNotice_;
};

}  // namespace lokari
