// What the workbench shows of itself: the main window, or a recorder in tests.
#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace lokari {

class Cab;
class DatabaseSession;
class Panel;
class SlotWindow;
class WaitWindow;

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
  /// The windows of cabs and panels; each keeps what it shows for as long as it lives.
  virtual std::unique_ptr<SlotWindow> makeCabWindow(std::shared_ptr<Cab> cab) = 0;
  virtual std::unique_ptr<SlotWindow> makePanelWindow(std::shared_ptr<Panel> panel) = 0;
  /// Says that a cab or a panel waits for the station; `giveUp` is the user's "Abbruch".
  virtual std::unique_ptr<WaitWindow> makeWaitWindow(const QString& text,
                                                     std::function<void()> giveUp) = 0;
};

}  // namespace lokari
