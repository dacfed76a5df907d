// A value field: a line edit that tells when the user enters and leaves it.
#pragma once

#include <QLineEdit>

namespace lokari {

class ValueEdit final : public QLineEdit {
  Q_OBJECT

 public:
  explicit ValueEdit(QWidget* parent = nullptr) : QLineEdit(parent) {}

 signals:
  void entered();
  /// The focus went to another control of this window. Not told when another window comes to the
  /// front or a menu opens: the user comes back to the field then.
  void left();
  /// The mouse rests on the field, or has gone.
  void hovered(bool over);
  /// F2: the calculator.
  void calculatorWanted();

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace lokari
