#include "cli/console_view.h"

#include "cli/console.h"

namespace lokari {

void ConsoleView::setStatus(const QString& text) {
  console_.message(text);
}

void ConsoleView::setClosingText(const QString& text) {
  console_.result(text);
}

void ConsoleView::setRemark(const QString& text) {
  if (!text.isEmpty()) console_.message(text);
}

void ConsoleView::setProgress(double percent) {
  const int tenth = static_cast<int>(percent) / 10;
  if (tenth == shownTenth_) return;
  shownTenth_ = tenth;
  const QString head = QStringLiteral("%1%").arg(static_cast<int>(percent));
  console_.message(detail_.isEmpty() ? head : QStringLiteral("%1 (%2)").arg(head, detail_));
}

}  // namespace lokari
