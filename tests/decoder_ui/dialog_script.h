// Runs a script inside the modal dialog that the next action opens.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>

#include <functional>
#include <stdexcept>

namespace lokari::test {

/// The dialog is cancelled when the script leaves it open. A dialog that does not come up, or has
/// another name, fails the test.
inline void inDialog(const char* name, const std::function<void(QDialog&)>& script) {
  QMetaObject::invokeMethod(
      qApp,
      [name, script] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->objectName().toStdString(), name);
        if (dialog->objectName() == QLatin1String(name)) script(*dialog);
        if (dialog->isVisible() && dialog->objectName() != u"frmDecoder") dialog->reject();
      },
      Qt::QueuedConnection);
}

template <typename T>
T* in(const QDialog& dialog, const char* name) {
  T* found = dialog.findChild<T*>(QString::fromLatin1(name));
  if (!found) throw std::logic_error(std::string("no control ") + name);
  return found;
}

}  // namespace lokari::test
