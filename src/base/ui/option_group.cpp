#include "base/ui/option_group.h"

#include <QAbstractButton>
#include <QEvent>

#include <algorithm>

namespace lokari {
namespace {

/// By itself: a window that is not shown yet hides none of them.
bool isPutAway(const QAbstractButton* option) {
  return option->isHidden() && option->testAttribute(Qt::WA_WState_ExplicitShowHide);
}

}  // namespace

OptionGroup::OptionGroup(QObject* parent) : QButtonGroup(parent) {
  connect(this, &QButtonGroup::buttonToggled, this, [this] { showStop(); });
}

void OptionGroup::add(QAbstractButton* option, int id) {
  addButton(option, id);
  option->installEventFilter(this);
  showStop();
}

bool OptionGroup::eventFilter(QObject* option, QEvent* event) {
  if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) showStop();
  return QButtonGroup::eventFilter(option, event);
}

void OptionGroup::showStop() {
  // The group's own memory of it is not true while it is being cleared.
  const QList<QAbstractButton*> options = buttons();
  const bool chosen = std::any_of(options.begin(), options.end(), [](const QAbstractButton* each) {
    return each->isChecked() && !isPutAway(each);
  });
  for (QAbstractButton* option : options) {
    const bool stop = !chosen || option->isChecked();
    option->setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

}  // namespace lokari
