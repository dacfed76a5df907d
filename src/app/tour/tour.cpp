#include "app/tour/tour.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTextStream>
#include <QTimer>

namespace lokari {
namespace {

constexpr int kTickMs = 20;
constexpr qint64 kPatienceMs = 120'000;

void say(const QString& line) {
  QTextStream(stdout) << line << Qt::endl;
}

}  // namespace

Tour::Tour(QString pictures) : pictures_(std::move(pictures)) {
  QDir().mkpath(pictures_);
}

void Tour::step(const QString& title, std::function<bool()> ready, std::function<void()> act) {
  steps_.push_back({title, std::move(ready), std::move(act)});
}

int Tour::run() {
  waiting_.start();
  tickLater();
  // A main window that closes ends the event loop, as it ends the program; the tour goes on.
  int status = 0;
  do {
    status = QApplication::exec();
  } while (!ended_);
  return status;
}

void Tour::tickLater() {
  // A timer of its own each time: one that is being served does not fire again inside the modal
  // window that its step has opened.
  QTimer::singleShot(kTickMs, this, &Tour::tick);
}

void Tour::tick() {
  if (ended_) return;
  tickLater();
  if (next_ == steps_.size()) {
    finish(0);
    return;
  }
  const Step& step = steps_[next_];
  if (!step.ready()) {
    if (waiting_.elapsed() > kPatienceMs) current_ = next_;
    const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box != nullptr) {
      fail(QStringLiteral("unerwartete Meldung: ") + box->text());
    } else if (waiting_.elapsed() > kPatienceMs) {
      fail(QStringLiteral("zu lange gewartet"));
    }
    return;
  }
  if (!inFront()) return;
  current_ = next_++;
  say(QStringLiteral("%1. %2").arg(next_).arg(step.title));
  // A step that opens a modal window comes back only when that has closed.
  step.act();
  waiting_.restart();
}

bool Tour::inFront() {
  // Without a window manager nobody gives a new window the keyboard, and a field that never has it
  // is never left either.
  QWidget* window = QApplication::activeModalWidget();
  if (window == nullptr) window = shownControl(QStringLiteral("main_win"));
  if (window == nullptr || window->isActiveWindow()) return true;
  window->activateWindow();
  return false;
}

void Tour::fail(const QString& why) {
  if (failing_) return;
  failing_ = true;
  say(QStringLiteral("FEHLER bei Schritt „%1“: %2").arg(steps_[current_].title, why));
  // Without a window manager no window counts as active; the modal one is in front in any case.
  QWidget* window = QApplication::activeModalWidget();
  if (window == nullptr) window = shownControl(QStringLiteral("main_win"));
  if (window != nullptr) picture(window, QStringLiteral("fehler"));
  finish(1);
}

void Tour::finish(int status) {
  ended_ = true;
  // Modal windows have loops of their own; each has to end before the application's can.
  while (QWidget* window = QApplication::activeModalWidget()) {
    window->close();
    if (QApplication::activeModalWidget() == window) break;
  }
  QApplication::exit(status);
}

void Tour::picture(QWidget* window, const QString& name) {
  const QString file = QStringLiteral("%1/%2-%3.png")
                           .arg(pictures_)
                           .arg(++pictureNumber_, 2, 10, QChar(u'0'))
                           .arg(name);
  if (window == nullptr || !window->grab().save(file)) {
    fail(QStringLiteral("das Bild %1 lässt sich nicht ablegen").arg(file));
    return;
  }
  say(QStringLiteral("   Bild: ") + file);
}

QWidget* shownControl(const QString& name) {
  if (QWidget* modal = QApplication::activeModalWidget()) {
    if (modal->objectName() == name) return modal;
    auto* inside = modal->findChild<QWidget*>(name);
    return inside != nullptr && inside->isVisible() ? inside : nullptr;
  }
  for (QWidget* widget : QApplication::allWidgets()) {
    if (widget->objectName() == name && widget->isVisible()) return widget;
  }
  return nullptr;
}

QString shownText(const QString& name) {
  QWidget* control = shownControl(name);
  if (const auto* edit = qobject_cast<QLineEdit*>(control)) return edit->text();
  if (const auto* box = qobject_cast<QComboBox*>(control)) return box->currentText();
  if (const auto* label = qobject_cast<QLabel*>(control)) return label->text();
  if (const auto* button = qobject_cast<QAbstractButton*>(control)) return button->text();
  return {};
}

bool click(const QString& name) {
  QWidget* control = shownControl(name);
  if (control == nullptr || !control->isEnabled()) return false;
  QTest::mouseClick(control, Qt::LeftButton);
  return true;
}

bool type(const QString& name, const QString& text) {
  QWidget* control = shownControl(name);
  if (control == nullptr || !control->isEnabled()) return false;
  control->setFocus();
  QTest::keyClick(control, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(control, text);
  QTest::keyClick(control, Qt::Key_Tab);
  return true;
}

}  // namespace lokari
