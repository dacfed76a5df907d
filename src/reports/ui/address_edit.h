// A field for an address: it selects its text whenever it gets the focus.
#pragma once

#include <QFocusEvent>
#include <QLineEdit>

namespace lokari {

class AddressEdit final : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;

 protected:
  void focusInEvent(QFocusEvent* event) override {
    QLineEdit::focusInEvent(event);
    // The press of the mouse that brought the focus would set the cursor behind it.
    if (event->reason() == Qt::MouseFocusReason) {
      QMetaObject::invokeMethod(this, &QLineEdit::selectAll, Qt::QueuedConnection);
    } else {
      selectAll();
    }
  }
};

}  // namespace lokari
