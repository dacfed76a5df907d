#include "app/ui/help_key.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QWindow>

#include "app/help_places.h"
#include "base/desktop.h"

namespace lokari {
namespace {

/// The window that has the keyboard.
QWidget* windowOf(const QObject* watched) {
  if (watched->isWidgetType()) return static_cast<const QWidget*>(watched)->window();
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return QApplication::activeWindow();
}

/// A window without a page of its own belongs to the one that it stands over.
HelpQuestion questionIn(const QWidget* window) {
  HelpQuestion question;
  while (window != nullptr && question.page.isEmpty()) {
    if (const auto* box = qobject_cast<const QMessageBox*>(window)) question.message = box->text();
    question.page = helpPlaceOf(window->objectName());
    window = window->parentWidget();
    if (window != nullptr) window = window->window();
  }
  return question;
}

}  // namespace

HelpKey::HelpKey(std::function<void(const HelpQuestion&)> ask, std::function<void()> search)
    : ask_(std::move(ask)), search_(std::move(search)) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_F1 || (key->modifiers() & ~Qt::ShiftModifier) != 0) return false;
  if (key->isAutoRepeat()) return true;
  const HelpQuestion question = questionIn(windowOf(watched));
  // A list that is folded out would keep the keyboard to itself.
  while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  if (key->modifiers() == Qt::ShiftModifier) {
    search_();
  } else {
    ask_(question);
  }
  return true;
}

}  // namespace lokari
