// `dlgBit`, the bits of a CV as named options and number boxes.
#pragma once

#include <QDialog>

#include <vector>

#include "decoder/bit_description.h"

class QBoxLayout;
class QButtonGroup;
class QGridLayout;
class QLabel;
class QLineEdit;

namespace lokari {

/// Controls are counted from 1: frames `bitFrm_1`, the options of all frames `bitOpt_1`, number
/// boxes `bitTxt_1` with their labels `bitLab_1`. A group that cannot show the value says below its
/// control what it waits for: `bitHint_1`. What OK would lose stands beside it: `lblNote`.
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

  QWidget* makeGroups();
  void makeOptions(const BitGroup& group, int shown, QGridLayout* grid, int row);
  void makeNumber(const BitGroup& group, int shown, QGridLayout* grid, int row);
  QLabel* makeHint(const QString& text);
  QLabel* makeNote();
  std::vector<std::optional<int>> given() const;
  void showNote(const QString& refused = {});
  QString waitsFor(size_t group) const;
  /// Takes the entries. False when one was refused; it has the focus then.
  bool exitBitDlg();
  void focusOn(const Entry& entry);

  BitDescription description_;
  const int before_;
  std::vector<Entry> entries_;
  QLabel* lblNote_ = nullptr;
  int frames_ = 0;
  int options_ = 0;
  int numbers_ = 0;
  int hints_ = 0;
  int value_ = 0;
};

}  // namespace lokari
