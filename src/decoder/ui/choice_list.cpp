#include "decoder/ui/choice_list.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include <utility>

#include "decoder/bench_controls.h"

namespace lokari {

ChoiceList::ChoiceList(QWidget* parent) : QComboBox(parent) {
  connect(this, &QComboBox::activated, this, &ChoiceList::activate);
}

void ChoiceList::showEntries(const Control& control) {
  chosenIndex_ = -1;
  QStringList entries = control.items;
  if (!control.text.isEmpty() && !entries.contains(control.text)) entries << control.text;
  QStringList shown;
  for (int i = 0; i < count(); ++i) shown << itemText(i);
  if (shown != entries) {
    clear();
    addItems(entries);
  }
  setCurrentIndex(static_cast<int>(entries.indexOf(control.text)));
}

void ChoiceList::activate(int index) {
  // A text that is typed into the list is no entry to turn over.
  if (turning_ && !isEditable()) return;
  chosenIndex_ = -1;
  emit chosen(itemText(index));
}

void ChoiceList::takeShown() {
  if (!undecided()) return;
  chosenIndex_ = -1;
  emit chosen(currentText());
}

void ChoiceList::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (undecided() && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
    takeShown();
    return;
  }
  if (undecided() && key == Qt::Key_Escape) {
    setCurrentIndex(std::exchange(chosenIndex_, -1));
    return;
  }
  const int before = undecided() ? chosenIndex_ : currentIndex();
  turning_ = true;
  QComboBox::keyPressEvent(event);
  turning_ = false;
  if (!isEditable()) chosenIndex_ = currentIndex() == before ? -1 : before;
}

void ChoiceList::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  const bool stays = event->reason() == Qt::PopupFocusReason ||
                     event->reason() == Qt::ActiveWindowFocusReason ||
                     event->reason() == Qt::MenuBarFocusReason;
  if (undecided() && !stays) emit leftUndecided();
}

}  // namespace lokari
