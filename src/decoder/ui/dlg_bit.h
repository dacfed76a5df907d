// `dlgBit`, the bits of a CV as named options and number boxes.
#pragma once

#include <QDialog>

#include <vector>

#include "decoder/bit_description.h"

class QBoxLayout;
class QButtonGroup;
class QGridLayout;
class QLineEdit;

namespace lokari {

/// Controls are counted from 1: frames `bitFrm_1`, the options of all frames `bitOpt_1`, number
/// boxes `bitTxt_1` with their labels `bitLab_1`.
class DlgBit final : public QDialog {
  Q_OBJECT

 public:
  DlgBit(int cvValue, const QString& bitText, const QString& caption, QWidget* parent = nullptr);

  /// The new value, after the dialog was accepted.
  int value() const { return value_; }

 private:
  /// The controls of a group; one of the two.
  struct Entry {
    QButtonGroup* options = nullptr;
    QLineEdit* number = nullptr;
  };

  QWidget* makeGroups(int cvValue);
  void makeOptions(const BitGroup& group, int shown, QGridLayout* grid, int row);
  void makeNumber(const BitGroup& group, int shown, QGridLayout* grid, int row);
  /// Takes the entries. False when one was refused; it has the focus then.
  bool exitBitDlg();
  void focusOn(const Entry& entry);

  BitDescription description_;
  std::vector<Entry> entries_;
  int frames_ = 0;
  int options_ = 0;
  int numbers_ = 0;
  int value_ = 0;
};

}  // namespace lokari
