#include "app/ui/beside_modal.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace lokari {

BesideModal::BesideModal(QWidget& kept) : kept_(kept) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool BesideModal::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &kept_) {
    if (event->type() == QEvent::WindowBlocked || event->type() == QEvent::Show) follow();
    return false;
  }
  if (event->type() == QEvent::Hide && watched->isWidgetType()) {
    const auto* window = static_cast<QWidget*>(watched);
    if (window->isWindow() && window->isModal()) follow();
  }
  return false;
}

void BesideModal::follow() {
  QWindow* own = kept_.windowHandle();
  if (own == nullptr) return;
  const QWidget* modal = QApplication::activeModalWidget();
  QWindow* over = modal == nullptr ? nullptr : modal->windowHandle();
  // What was opened from the kept window itself stands over it, and not below.
  if (over != nullptr && own->isAncestorOf(over, QWindow::IncludeTransients)) return;
  own->setTransientParent(over);
}

}  // namespace lokari
