// A drop-down list whose choice costs something.
#pragma once

#include <QComboBox>

namespace lokari {

struct Control;

/// Keys turn over the entries of the closed list and choose none of them. Enter chooses the entry
/// on show, leaving the list does too, and Escape brings the chosen one back. An entry of the open
/// list is chosen as usual.
class ChoiceList final : public QComboBox {
  Q_OBJECT

 public:
  explicit ChoiceList(QWidget* parent);

  /// The entries and the chosen one, also when it is none of them.
  void showEntries(const Control& control);
  /// Chooses the entry on show if it is not the chosen one.
  void takeShown();
  /// An entry is on show that is not chosen yet.
  bool undecided() const { return chosenIndex_ >= 0; }

 signals:
  void chosen(const QString& entry);
  /// The list lost the focus with an entry on show that is not chosen.
  void leftUndecided();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void activate(int index);

  bool turning_ = false;  // a key is being handled
  int chosenIndex_ = -1;  // while undecided
};

}  // namespace lokari
