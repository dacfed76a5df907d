#include "base/ui/immediate_shortcuts.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QShortcutEvent>

namespace lokari {

ImmediateShortcuts::ImmediateShortcuts() {
  QCoreApplication::instance()->installEventFilter(this);
}

bool ImmediateShortcuts::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Shortcut) return false;
  auto* button = qobject_cast<QAbstractButton*>(watched);
  // An ambiguous one moves the focus from button to button.
  if (button == nullptr || static_cast<QShortcutEvent*>(event)->isAmbiguous()) return false;
  if (button->isCheckable() && (button->focusPolicy() & Qt::ClickFocus) != 0) button->setFocus();
  button->click();
  return true;
}

}  // namespace lokari
