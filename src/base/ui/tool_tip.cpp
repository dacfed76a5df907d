#include "base/ui/tool_tip.h"

#include <QToolTip>

#include <algorithm>

#include "base/ui/wrapped_tips.h"

namespace lokari {
namespace {

constexpr int kGap = 2;

}  // namespace

ToolTip::ToolTip(QWidget* window, Clock& clock) : QLabel(window), clock_(clock) {
  setObjectName(QStringLiteral("toolTip"));
  setTextFormat(Qt::PlainText);
  setPalette(QToolTip::palette());
  setBackgroundRole(QPalette::ToolTipBase);
  setForegroundRole(QPalette::ToolTipText);
  setAutoFillBackground(true);
  setFrameStyle(QFrame::Box | QFrame::Plain);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  hide();
}

void ToolTip::showFor(const QWidget* control, const QString& text) {
  if (text.isEmpty()) {
    hideTip();
    return;
  }
  setText(u' ' + wrappedTip(text).replace(u'\n', QStringLiteral(" \n ")) + u' ');
  adjustSize();
  const QWidget* window = parentWidget();
  const QPoint corner = control->mapTo(window, QPoint(0, 0));
  int y = corner.y() + control->height() + kGap;
  if (y + height() > window->height()) y = corner.y() - height() - kGap;
  const int x = std::clamp(corner.x(), 0, std::max(0, window->width() - width()));
  move(x, y);
  raise();
  show();
  timer1_ = clock_.after(kShown, [this] { hideTip(); });
}

void ToolTip::hideTip() {
  timer1_.reset();
  hide();
}

}  // namespace lokari
