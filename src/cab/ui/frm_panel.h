// `frmPanel`, the four switches of a function unit. All state and logic is the panel's; the window
// shows it and hands the user's acts over.
#pragma once

#include <array>

#include "cab/panel_state.h"
#include "cab/ui/slot_form.h"

class QBoxLayout;
class QLabel;

namespace lokari {

class Panel;
class PictureButton;
class Pictures;

class FrmPanel final : public SlotForm {
  Q_OBJECT

 public:
  /// `scale` must outlive the window.
  FrmPanel(const std::shared_ptr<Panel>& panel, const Pictures& pictures, const WindowScale& scale);

  QPoint designPlace() const override;

 protected:
  QWidget* keptInView() const override;
  /// The keys of the outputs.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void makeHeader(QBoxLayout* rows);
  void makeSwitches(QBoxLayout* rows, const Pictures& pictures);
  QLabel* makeNeverSign(int n);
  void makeFooter(QBoxLayout* rows);
  void showAll();
  void showOutput(int n, bool on);

  Panel& panel_;
  std::array<PictureButton*, PanelState::kOutputs> cmdFunc_{};
  std::array<QLabel*, PanelState::kOutputs> labNever_{};
  QWidget* cmdOK_ = nullptr;  // the lowest of all controls
};

}  // namespace lokari
