// The progress dialog on the command line: each new status is a line, each tenth of the way too.
// The closing text of a job is a result.
#pragma once

#include "link/comm_view.h"

namespace lokari {

class Console;

class ConsoleView final : public CommView {
 public:
  explicit ConsoleView(Console& console) : console_(console) {}

  void setStatus(const QString& text) override;
  void setClosingText(const QString& text) override;
  /// Told with the next tenth of the way.
  void setDetail(const QString& text) override { detail_ = text; }
  void setRemark(const QString& text) override;
  void setProgress(double percent) override;
  void resetProgress() override { shownTenth_ = 0; }
  void setProgressEnabled(bool) override {}
  void setCancelCaption(const QString&) override {}
  void hide() override {}

 private:
  Console& console_;
  QString detail_;
  int shownTenth_ = 0;
};

}  // namespace lokari
