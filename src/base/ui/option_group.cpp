#include "base/ui/option_group.h"

#include <QAbstractButton>

#include <algorithm>

namespace lokari {

OptionGroup::OptionGroup(QObject* parent) : QButtonGroup(parent) {
  connect(this, &QButtonGroup::buttonToggled, this, [this] { showStop(); });
}

void OptionGroup::add(QAbstractButton* option, int id) {
  addButton(option, id);
  showStop();
}

void OptionGroup::showStop() {
  // The group's own memory of it is not true while it is being cleared.
  const QList<QAbstractButton*> options = buttons();
  const bool chosen = std::any_of(options.begin(), options.end(),
                                  [](const QAbstractButton* each) { return each->isChecked(); });
  for (QAbstractButton* option : options) {
    const bool stop = !chosen || option->isChecked();
    option->setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

}  // namespace lokari
