// The menu bar of the main window.
#pragma once

#include <QMenuBar>

class QAction;

namespace lokari {

class MainMenu final : public QMenuBar {
 public:
  /// Every entry is disabled until somebody connects it: see enable().
  explicit MainMenu(QWidget* parent);

  /// The entry of that name, such as `mnuDbOpen`. A name that is not in the table is a programming
  /// error: std::logic_error.
  QAction* entry(const QString& name) const;

  /// Connects an entry and enables it.
  template <typename Act>
  QAction* enable(const QString& name, Act act) {
    QAction* action = entry(name);
    action->setEnabled(true);
    connect(action, &QAction::triggered, this, [act = std::move(act)] { act(); });
    return action;
  }
};

}  // namespace lokari
