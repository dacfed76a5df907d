#include "base/ui/option_group.h"

#include <QAbstractButton>

namespace lokari {

OptionGroup::OptionGroup(QObject* parent) : QButtonGroup(parent) {
  connect(this, &QButtonGroup::buttonToggled, this, [this] { showStop(); });
}

void OptionGroup::add(QAbstractButton* option, int id) {
  addButton(option, id);
  showStop();
}

void OptionGroup::showStop() {
  const QAbstractButton* chosen = checkedButton();
  for (QAbstractButton* option : buttons()) {
    const bool stop = chosen == nullptr || option == chosen;
    option->setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

}  // namespace lokari
