#include "station/ui/address_part.h"

#include <QFocusEvent>
#include <QRegularExpressionValidator>

#include "station/options.h"

namespace lokari {
namespace {

constexpr int kDigits = 3;

/// Reasons of a loss that is not a step to another field.
bool isTemporary(Qt::FocusReason reason) {
  return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
         reason == Qt::MenuBarFocusReason;
}

}  // namespace

AddressPart::AddressPart(QWidget* parent) : QLineEdit(parent) {
  setValidator(
      new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,3}")), this));
  setMaxLength(kDigits);
  setAlignment(Qt::AlignHCenter);
  setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 24);
}

void AddressPart::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (isTemporary(event->reason()) || !isVisible() || isAddressPart(text())) return;
  // The other field gets the focus first; it is taken back once that is over.
  const auto takeBack = [this] {
    if (!isVisible()) return;
    setFocus();
    selectAll();
  };
  QMetaObject::invokeMethod(this, takeBack, Qt::QueuedConnection);
}

}  // namespace lokari
