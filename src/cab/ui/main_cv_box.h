// Programming on the main track in a cab: `cbCV`, `txtCV` and `udCV`.
#pragma once

#include <QWidget>

class QComboBox;

namespace lokari {

class Cab;
class CvStepper;

class MainCvBox final : public QWidget {
 public:
  /// `cab` must outlive it.
  MainCvBox(Cab& cab, QWidget* parent);

  /// Shows the list of the CVs and the one on show.
  void showList();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void showEntry();

  Cab& cab_;
  QComboBox* cbCV_;
  CvStepper* udCV_;
};

}  // namespace lokari
