// What long work that does not use the station shows while it runs: printing, taking databases
// over. The window shows it in `dlg_comm`, the command line prints it, tests record it.
#pragma once

#include <QString>

#include <functional>

namespace lokari {

class Progress {
 public:
  virtual ~Progress() = default;

  /// The words of the moment; the last ones are the result and stay until the user has read them.
  virtual void setStatus(const QString& text) = 0;
  /// 0 to 100.
  virtual void setPercent(double percent) = 0;
  /// Lets waiting events run; whether the user has asked to stop.
  virtual bool cancelled() = 0;
};

/// Shows a progress, does the work, and comes back when it has ended and the user has closed what
/// was shown. What the work throws is thrown on.
using RunWithProgress = std::function<void(const std::function<void(Progress&)>& work)>;

}  // namespace lokari
