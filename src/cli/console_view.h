// The progress dialog on the command line: each new status is a line, each tenth of the way too.
#pragma once

#include "link/comm_view.h"

namespace lokari {

class Console;

class ConsoleView final : public CommView {
 public:
  explicit ConsoleView(Console& console) : console_(console) {}

  void setStatus(const QString& text) override;
  void setProgress(double percent) override;
  void resetProgress() override { shownTenth_ = 0; }
  void setProgressEnabled(bool) override {}
  void setCancelCaption(const QString&) override {}
  void hide() override {}

 private:
  Console& console_;
  int shownTenth_ = 0;
};

}  // namespace lokari
