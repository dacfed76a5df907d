#include "support/mnemonic_watch.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QEvent>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTimer>

#include <algorithm>
#include <iterator>

namespace lokari::test {
namespace {

class Letters {
 public:
  void add(const QString& text, const QString& name) {
    const QKeySequence letter = QKeySequence::mnemonic(text);
    if (!letter.isEmpty()) names_[letter.toString()] << name;
  }

  QStringList clashes() const {
    QStringList result;
    for (auto each = names_.cbegin(); each != names_.cend(); ++each) {
      if (each->size() > 1)
        result << each.key() + QStringLiteral(": ") + each->join(QStringLiteral(" and "));
    }
    return result;
  }

 private:
  QMap<QString, QStringList> names_;
};

QString named(const QObject& object, const QString& text) {
  return QStringLiteral("%1 \"%2\"").arg(object.objectName(), text);
}

void addAction(Letters& letters, const QAction& action) {
  if (action.isVisible()) letters.add(action.text(), named(action, action.text()));
}

/// Entries whose captions are told as they are; the key goes from one to the other.
constexpr const char16_t* kTold[] = {u"mnuHelpContents", u"mnuHelpInfo"};

bool isTold(const QAction& action) {
  return std::any_of(std::begin(kTold), std::end(kTold), [&action](const char16_t* name) {
    return action.objectName() == QStringView(name);
  });
}

QStringList clashesOf(const QMenu& menu) {
  Letters letters;
  QStringList result;
  for (const QAction* action : menu.actions()) {
    if (!isTold(*action)) addAction(letters, *action);
    if (action->menu() != nullptr) result += clashesOf(*action->menu());
  }
  return letters.clashes() + result;
}

void addWidget(Letters& letters, const QWidget& widget) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
    letters.add(button->text(), named(widget, button->text()));
  } else if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    if (label->buddy() != nullptr) letters.add(label->text(), named(widget, label->text()));
  } else if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
    letters.add(group->title(), named(widget, group->title()));
  } else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
    for (int tab = 0; tab < tabs->count(); ++tab) {
      letters.add(tabs->tabText(tab), named(widget, tabs->tabText(tab)));
    }
  } else if (const auto* bar = qobject_cast<const QMenuBar*>(&widget)) {
    for (const QAction* action : bar->actions()) addAction(letters, *action);
  }
}

}  // namespace

QStringList clashingMnemonics(const QWidget& window) {
  Letters letters;
  QStringList menus;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    if (!widget->isVisible() || widget->window() != &window) continue;
    addWidget(letters, *widget);
    if (const auto* bar = qobject_cast<const QMenuBar*>(widget)) {
      for (const QAction* action : bar->actions()) {
        if (action->menu() != nullptr) menus += clashesOf(*action->menu());
      }
    }
  }
  return letters.clashes() + menus;
}

bool MnemonicWatch::eventFilter(QObject* watched, QEvent* event) {
  if ((event->type() != QEvent::Show && event->type() != QEvent::Hide) ||
      !watched->isWidgetType()) {
    return false;
  }
  QWidget* window = static_cast<QWidget*>(watched)->window();
  if (due_.contains(window)) return false;
  due_.insert(window);
  // Behind whatever shows and hides several of them at once.
  QTimer::singleShot(0, this, [this, window, alive = QPointer<QWidget>(window)] {
    due_.remove(window);
    if (!alive || !alive->isVisible()) return;
    for (const QString& clash : clashingMnemonics(*alive)) {
      ADD_FAILURE() << alive->objectName().toStdString() << ": " << clash.toStdString();
    }
  });
  return false;
}

}  // namespace lokari::test
