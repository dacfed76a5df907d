// The smallest screens that every window is to fit: 960 x 540 and 910 x 512, without the frame that
// a window manager puts around it.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>

#include <initializer_list>

namespace lokari::test {

inline constexpr QSize kSmallScreens[] = {{960 - 8, 540 - 32}, {910 - 8, 512 - 32}};

inline void expectWholeInView(QWidget* window, const QString& name) {
  for (QWidget* control : window->findChildren<QWidget*>(name)) {
    if (!control->isVisible()) continue;
    EXPECT_EQ(control->visibleRegion().boundingRect(), control->rect()) << name.toStdString();
  }
}

/// The window takes the size of each small screen, and these controls are whole in view then.
inline void expectFits(QWidget* window, std::initializer_list<const char*> inView) {
  for (const QSize screen : kSmallScreens) {
    window->resize(screen);
    QApplication::processEvents();
    EXPECT_LE(window->height(), screen.height()) << window->objectName().toStdString();
    EXPECT_LE(window->width(), screen.width()) << window->objectName().toStdString();
    for (const char* name : inView) expectWholeInView(window, QString::fromLatin1(name));
  }
}

}  // namespace lokari::test
