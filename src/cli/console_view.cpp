#include "cli/console_view.h"

#include "cli/console.h"

namespace lokari {

void ConsoleView::setStatus(const QString& text) {
  console_.message(text);
}

void ConsoleView::setProgress(double percent) {
  const int tenth = static_cast<int>(percent) / 10;
  if (tenth == shownTenth_) return;
  shownTenth_ = tenth;
  console_.message(QStringLiteral("%1%").arg(static_cast<int>(percent)));
}

}  // namespace lokari
