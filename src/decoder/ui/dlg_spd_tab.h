// `dlgSpdTab`, the speed table as a list of numbers. The curve behind it follows each of them.
#pragma once

#include <QDialog>
#include <QList>

#include <array>

#include "decoder/speed_table_list.h"

class QBoxLayout;

namespace lokari {

class ValueEdit;

class DlgSpdTab final : public QDialog {
  Q_OBJECT

 public:
  /// `list` must outlive the dialog.
  explicit DlgSpdTab(SpeedTableList& list, QWidget* parent = nullptr);

  /// Escape and the window manager's close button: the same as `cmdCancel`.
  void reject() override;

 private:
  void makeBoxes(QBoxLayout* rows);
  void makeButtons(QBoxLayout* rows);
  void showColour(int box);
  void boxLeft(int box);
  bool takeLeftBoxes();
  void accepted();
  ValueEdit* edit(int box) const { return txtSpdVl_[static_cast<size_t>(box - 1)]; }

  SpeedTableList& list_;
  std::array<ValueEdit*, SpeedTableList::kBoxes> txtSpdVl_{};
  QList<int> leftBoxes_;  // not yet taken
};

}  // namespace lokari
