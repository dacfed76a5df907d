#include "decoder/ui/value_edit.h"

#include <QEnterEvent>
#include <QFocusEvent>
#include <QKeyEvent>

namespace lokari {
namespace {

bool withinWindow(Qt::FocusReason reason) {
  return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
         reason != Qt::MenuBarFocusReason;
}

}  // namespace

void ValueEdit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (withinWindow(event->reason())) emit entered();
}

void ValueEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (withinWindow(event->reason())) emit left();
}

void ValueEdit::enterEvent(QEnterEvent* event) {
  QLineEdit::enterEvent(event);
  emit hovered(true);
}

void ValueEdit::leaveEvent(QEvent* event) {
  QLineEdit::leaveEvent(event);
  emit hovered(false);
}

void ValueEdit::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F2) {
    emit calculatorWanted();
    return;
  }
  QLineEdit::keyPressEvent(event);
}

}  // namespace lokari
