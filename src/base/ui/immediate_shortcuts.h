// Buttons act on their shortcuts at once.
#pragma once

#include <QObject>

namespace lokari {

/// While it lives, the shortcut of a button clicks it at once. Qt shows the button pressed for a
/// tenth of a second first; a key that is typed meanwhile would go where the focus still is, such
/// as into the record that Alt+N is about to leave.
class ImmediateShortcuts final : public QObject {
 public:
  ImmediateShortcuts();

  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace lokari
