// `frmCab`, the throttle of one vehicle. All state and logic is the cab's; the window shows it and
// hands the user's acts over.
#pragma once

#include "cab/ui/slot_form.h"

class QBoxLayout;
class QLabel;
class QPushButton;

namespace lokari {

class Cab;
class FunctionLamps;
class MainCvBox;
class PictureButton;
class PictureFrame;
class Pictures;
class SpeedBar;

class FrmCab final : public SlotForm {
  Q_OBJECT

 public:
  /// `scale` must outlive the window.
  FrmCab(const std::shared_ptr<Cab>& cab, const Pictures& pictures, const WindowScale& scale);

  QPoint designPlace() const override;

 protected:
  QWidget* keptInView() const override;
  /// The keys of the speed bar, and the space bar of the whole window.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool takesSpaceBar(QObject* watched, const QKeyEvent& key);
  void makeReread(QBoxLayout* rows);
  void makeSpeed(QBoxLayout* columns);
  void makeHeader(QBoxLayout* rows);
  void makeDriveButtons(QBoxLayout* rows, const Pictures& pictures);
  void makeScrolled(QBoxLayout* rows, const Pictures& pictures);
  void makeFooter(QBoxLayout* rows);
  void connectCab();

  void showAll();
  void showSpeed(int speed);
  void showDirection();
  void showManual();
  void showStopped();
  void showKnown();

  Cab& cab_;
  SpeedBar* vsbSpeed_ = nullptr;
  QLabel* labSpeed_ = nullptr;
  PictureFrame* picContainer_ = nullptr;
  QLabel* labName_ = nullptr;
  QLabel* labCollection_ = nullptr;
  PictureButton* imgDirForward_ = nullptr;
  PictureButton* imgDirBackward_ = nullptr;
  PictureButton* imgMan_ = nullptr;
  QLabel* labMan_ = nullptr;
  PictureButton* imgStop_ = nullptr;
  QLabel* labStop_ = nullptr;
  QLabel* labWhole_ = nullptr;  // whom the stop button is for
  QPushButton* cmdReread_ = nullptr;
  FunctionLamps* lamps_ = nullptr;
  MainCvBox* mainCvs_ = nullptr;
};

}  // namespace lokari
