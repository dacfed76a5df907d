// Fails the running test when a window shows two controls with the same Alt key.
#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>

class QWidget;

namespace lokari::test {

/// Looks at every window of the test programs, each time that something in it comes up or goes:
/// a second control with a letter would only move the focus about instead of doing what it says.
class MnemonicWatch final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QSet<QWidget*> due_;
};

/// The clashes among what the window shows, "Alt+F: butPicDel and mnuFile". Menus are looked at by
/// themselves.
QStringList clashingMnemonics(const QWidget& window);

}  // namespace lokari::test
