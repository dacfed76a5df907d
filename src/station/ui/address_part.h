// One of the four fields of a network address. Together they take what people write: the dot goes
// on to the next field, digits behind the third one as well, and a whole address that is pasted
// into any of them fills all four.
#pragma once

#include <QLineEdit>

#include <array>

namespace lokari {

/// Takes digits only. It keeps the focus while its text is no number from 0 to 255.
class AddressPart final : public QLineEdit {
  Q_OBJECT

 public:
  using All = std::array<AddressPart*, 4>;

  explicit AddressPart(QWidget* parent);

  /// Makes the fields one address, from its first part to its last.
  static void join(const All& parts);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  AddressPart* neighbour(int step) const;
  void goOn();
  void typeDigit(QKeyEvent* event);
  void pasteText();

  All parts_{};
};

}  // namespace lokari
