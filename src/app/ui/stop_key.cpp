#include "app/ui/stop_key.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "link/track_stop.h"

namespace lokari {

StopKey::StopKey(TrackStop& stop) : stop_(stop) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool StopKey::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_Pause) return false;
  // A key that is held down acts once.
  if (!key->isAutoRepeat()) stop_.pressAndTell();
  return true;
}

}  // namespace lokari
