#include "app/ui/alt_letters.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

namespace lokari {

AltLetters::AltLetters() {
  QCoreApplication::instance()->installEventFilter(this);
}

// The keys of buttons and menus are told as shortcuts, ahead of this. The right Alt key, which
// types signs of the third level, is another modifier.
bool AltLetters::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  const auto* key = static_cast<const QKeyEvent*>(event);
  const bool alt =
      key->modifiers().testFlag(Qt::AltModifier) && !key->modifiers().testFlag(Qt::ControlModifier);
  const QString text = key->text();
  if (!alt || text.isEmpty() || !text.front().isPrint()) return false;
  // An open menu has letters of its own.
  return qobject_cast<const QMenu*>(watched) == nullptr &&
         qobject_cast<const QMenuBar*>(watched) == nullptr;
}

}  // namespace lokari
