// The key F1 opens the manual at the page of the window that it is pressed in.
#pragma once

#include <QObject>

#include <functional>

namespace lokari {

struct HelpQuestion;

class HelpKey final : public QObject {
 public:
  /// Listens to all windows of the running application. `ask` opens the manual at a page, `search`
  /// at its search (Shift+F1).
  HelpKey(std::function<void(const HelpQuestion&)> ask, std::function<void()> search);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<void(const HelpQuestion&)> ask_;
  std::function<void()> search_;
};

}  // namespace lokari
