// What start-up shows of itself: the main window, or a recorder in tests.
#pragma once

#include <QString>

namespace lokari {

class DatabaseSession;

class WorkbenchView {
 public:
  virtual ~WorkbenchView() = default;

  /// The caption of the main window.
  virtual void setCaption(const QString& caption) = 0;
  /// `mnuHelpContents` and `mnuHelpSearch` can be used.
  virtual void setHelpAvailable(bool available) = 0;
  /// The window scaling, with the setting `Resize` as `resizeMode`.
  virtual void setUpScaling(int resizeMode) = 0;
  virtual void showSplash() = 0;
  /// The session that is about to open the database: connect to it now.
  virtual void bind(DatabaseSession& session) = 0;
};

}  // namespace lokari
