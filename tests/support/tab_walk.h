// Walks through a window with the Tab key, as somebody without a mouse does.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QRadioButton>
#include <QTest>
#include <QWidget>

namespace lokari::test {

inline QString nameOf(const QWidget* control) {
  QString name = control->objectName();
  for (const QWidget* at = control; name.isEmpty() && at != nullptr; at = at->parentWidget())
    name = QStringLiteral("in ") + at->objectName();
  return name + u' ' + QString::fromLatin1(control->metaObject()->className());
}

/// Whether Tab may stop here: an option of a group stands for the group when it is the chosen one,
/// or none is.
inline bool isStop(const QWidget* control) {
  const auto* option = qobject_cast<const QRadioButton*>(control);
  if (option == nullptr || option->isChecked()) return true;
  if (const QButtonGroup* group = option->group()) return group->checkedButton() == nullptr;
  for (const auto* other : option->parentWidget()->findChildren<QRadioButton*>()) {
    if (other->parentWidget() == option->parentWidget() && other->isChecked()) return false;
  }
  return true;
}

/// Presses Tab from the control that has the focus until it comes back there, and looks at every
/// stop. Gives the names of the stops.
inline QStringList walkWithTab(QWidget* window) {
  QStringList stops;
  QApplication::processEvents();
  QWidget* const first = window->focusWidget();
  EXPECT_NE(first, nullptr) << "nothing has the focus";
  if (first == nullptr) return stops;
  constexpr int kMost = 500;
  QWidget* at = first;
  int jumps = 0;
  for (int i = 0; i < kMost; ++i) {
    const std::string name = nameOf(at).toStdString();
    stops << at->objectName();
    EXPECT_TRUE(at->isVisible()) << name;
    EXPECT_TRUE(at->isEnabled()) << name;
    EXPECT_TRUE(isStop(at)) << name << " is not the chosen option of its group";
    // A scroll area brings what has the focus into view.
    EXPECT_FALSE(at->visibleRegion().isEmpty()) << name << " cannot be seen";
    const auto* button = qobject_cast<const QAbstractButton*>(at);
    EXPECT_FALSE(at->accessibleName().isEmpty() && (button == nullptr || button->text().isEmpty()))
        << name << " has no name for a screen reader";
    QTest::keyClick(at, Qt::Key_Tab);
    QApplication::processEvents();
    QWidget* next = window->focusWidget();
    if (next == at) {
      ADD_FAILURE() << "Tab does not leave " << name;
      return stops;
    }
    if (next == first) return stops;
    // Within one group the eye goes down a column or a line, and up only to the next column.
    if (next->parentWidget() == at->parentWidget()) {
      const QRect here = at->geometry();
      const QRect there = next->geometry();
      const bool back = there.bottom() <= here.top() && there.left() <= here.left();
      // From the end to the beginning, unless that was where the walk began.
      if (back) ++jumps;
      EXPECT_LE(jumps, 1) << "from " << name << " back up to " << nameOf(next).toStdString();
    }
    at = next;
  }
  ADD_FAILURE() << "Tab does not come round";
  return stops;
}

}  // namespace lokari::test
