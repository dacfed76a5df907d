// A workbench without a main window.
#pragma once

#include <QStringList>

#include "app/opening.h"
#include "app/workbench_view.h"
#include "cab/cab.h"
#include "cab/panel.h"
#include "db/database_session.h"
#include "support/fake_slot_window.h"
#include "support/scripted_prompt.h"

namespace lokari::test {

/// Writes the steps of the start-up down.
class RecordingWorkbenchView final : public WorkbenchView {
 public:
  explicit RecordingWorkbenchView(ScriptedPrompt& prompt) : prompt_(prompt) {}

  void setCaption(const QString& caption) override {
    steps << QStringLiteral("caption ") + caption;
  }
  void setHelpAvailable(bool available) override {
    steps << (available ? QStringLiteral("help") : QStringLiteral("no help"));
  }
  void setUpScaling(int resizeMode) override {
    steps << QStringLiteral("scaling %1, boxes %2").arg(resizeMode).arg(prompt_.shown.size());
  }
  void showSplash() override { steps << QStringLiteral("splash"); }
  void bind(DatabaseSession& session) override {
    steps << QStringLiteral("bind %1").arg(session.hasDatabase() ? 1 : 0);
  }

  std::unique_ptr<SlotWindow> makeCabWindow(std::shared_ptr<Cab> cab) override {
    return std::make_unique<FakeWindow>(windows, std::move(cab));
  }
  std::unique_ptr<SlotWindow> makePanelWindow(std::shared_ptr<Panel> panel) override {
    return std::make_unique<FakeWindow>(windows, std::move(panel));
  }

  std::unique_ptr<WaitWindow> makeWaitWindow(const QString& text,
                                             std::function<void()> giveUp) override {
    steps << QStringLiteral("wait ") + text;
    giveUpWaiting = std::move(giveUp);
    return std::make_unique<Waiting>(waiting);
  }

  int waiting = 0;                      ///< wait windows that are up
  std::function<void()> giveUpWaiting;  ///< of the last one
  QStringList steps;
  WindowLog windows;

 private:
  class Waiting final : public WaitWindow {
   public:
    explicit Waiting(int& count) : count_(count) { ++count_; }
    ~Waiting() override { --count_; }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

   private:
    int& count_;
  };

  ScriptedPrompt& prompt_;
};

}  // namespace lokari::test
