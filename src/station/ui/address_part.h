// One of the four fields of a network address.
#pragma once

#include <QLineEdit>

namespace lokari {

/// Takes digits only. It keeps the focus while its text is no number from 0 to 255.
class AddressPart final : public QLineEdit {
  Q_OBJECT

 public:
  explicit AddressPart(QWidget* parent);

 protected:
  void focusOutEvent(QFocusEvent* event) override;
};

}  // namespace lokari
