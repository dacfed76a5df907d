// `dlgCalc`, the calculator behind F2: a value in three notations, in step.
#pragma once

#include <QDialog>

#include <array>

#include "decoder/calculator.h"

class QLineEdit;

namespace lokari {

class Prompt;

class DlgCalc final : public QDialog {
  Q_OBJECT

 public:
  /// `text` is that of the calling field. `prompt` must outlive the dialog.
  DlgCalc(const QString& text, Prompt& prompt, QWidget* parent = nullptr);

  /// What `butOK` puts into the calling field; never null.
  QString decimalText() const;

 private:
  void typed(Calculator::Box box);
  void show(Calculator::Box box);
  QLineEdit* edit(Calculator::Box box) const { return edits_[static_cast<size_t>(box)]; }

  Calculator calculator_;
  Prompt& prompt_;
  std::array<QLineEdit*, 3> edits_{};  // by box
};

}  // namespace lokari
