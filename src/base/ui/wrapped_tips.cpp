#include "base/ui/wrapped_tips.h"

#include <QAbstractItemView>
#include <QHeaderView>
#include <QHelpEvent>
#include <QStringList>
#include <QTextDocument>
#include <QToolTip>

namespace lokari {
namespace {

constexpr qsizetype kLineLength = 60;

QString tipAt(const QWidget& widget, QPoint position) {
  if (!widget.toolTip().isEmpty()) return widget.toolTip();
  // A view hands the event to its viewport, and asks its cells.
  const auto* view = qobject_cast<const QAbstractItemView*>(widget.parentWidget());
  if (view == nullptr || qobject_cast<const QHeaderView*>(view) != nullptr) return {};
  return view->indexAt(position).data(Qt::ToolTipRole).toString();
}

}  // namespace

QString wrappedTip(const QString& text) {
  QStringList lines;
  for (const QString& paragraph : text.split(u'\n')) {
    QString line;
    for (const QString& word : paragraph.split(u' ')) {
      if (!line.isEmpty() && line.size() + 1 + word.size() > kLineLength) {
        lines << line;
        line.clear();
      }
      line += line.isEmpty() ? word : u' ' + word;
    }
    lines << line;
  }
  return lines.join(u'\n');
}

bool WrappedTips::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ToolTip || !watched->isWidgetType()) return false;
  auto* widget = static_cast<QWidget*>(watched);
  const auto* help = static_cast<const QHelpEvent*>(event);
  const QString tip = tipAt(*widget, help->pos());
  // Markup wraps by itself.
  if (tip.isEmpty() || Qt::mightBeRichText(tip)) return false;
  QToolTip::showText(help->globalPos(), wrappedTip(tip), widget);
  return true;
}

}  // namespace lokari
