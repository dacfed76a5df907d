#include "decoder/ui/dlg_spd_tab.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "decoder/ui/text_colour.h"
#include "decoder/ui/value_edit.h"

namespace lokari {
namespace {

constexpr int kMargin = 16;
/// Between a box and the label of the next column.
constexpr int kColumnGap = 18;
/// Lines of the grid: the numbers of steps fill their columns, or nearly so.
constexpr int kLines = 7;
constexpr int kLinesOfShortTable = 5;
constexpr int kShortTable = 15;

}  // namespace

DlgSpdTab::DlgSpdTab(SpeedTableList& list, QWidget* parent) : QDialog(parent), list_(list) {
  setObjectName(QStringLiteral("dlgSpdTab"));
  setWindowTitle(QStringLiteral("Geschwindigkeitstabelle"));
  setModal(true);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  rows->setSpacing(12);
  makeBoxes(rows);
  makeButtons(rows);
  edit(1)->setFocus();
}

void DlgSpdTab::makeBoxes(QBoxLayout* rows) {
  auto* grid = new QGridLayout;
  grid->setVerticalSpacing(6);
  rows->addLayout(grid, 1);
  const int lines = list_.count() == kShortTable ? kLinesOfShortTable : kLines;
  for (int box = 1; box <= SpeedTableList::kBoxes; ++box) {
    const QString number = QString::number(box);
    auto* label = new QLabel(QStringLiteral("Stufe %1:").arg(box), this);
    label->setObjectName(QStringLiteral("lblSpdVl_") + number);
    auto* field = new ValueEdit(this);
    txtSpdVl_[static_cast<size_t>(box - 1)] = field;
    field->setObjectName(QStringLiteral("txtSpdVl_") + number);
    label->setBuddy(field);
    const bool inUse = box <= list_.count();
    label->setVisible(inUse);
    field->setVisible(inUse);
    if (!inUse) continue;
    field->setAccessibleName(
        QStringLiteral("Stufe %1 (CV %2)").arg(box).arg(list_.cvOf(box).value()));
    field->setAlignment(Qt::AlignRight);
    field->setFixedWidth(field->fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 16);
    field->setText(list_.text(box));
    showColour(box);
    const int column = 3 * ((box - 1) / lines);
    grid->addWidget(label, (box - 1) % lines, column, Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(field, (box - 1) % lines, column + 1);
    if (column > 0) grid->setColumnMinimumWidth(column - 1, kColumnGap);
    // Behind the event: the click that gives the focus would undo the selection.
    connect(field, &ValueEdit::entered, field, &ValueEdit::selectAll, Qt::QueuedConnection);
    connect(field, &ValueEdit::left, this, [this, box] { boxLeft(box); });
    connect(field, &ValueEdit::textEdited, this,
            [field] { colourText(field, TextColour::Normal); });
  }
}

void DlgSpdTab::makeButtons(QBoxLayout* rows) {
  auto* line = new QHBoxLayout;
  line->addStretch();
  auto* cmdOK = new QPushButton(QStringLiteral("&OK"), this);
  cmdOK->setObjectName(QStringLiteral("cmdOK"));
  cmdOK->setDefault(true);
  connect(cmdOK, &QPushButton::clicked, this, &DlgSpdTab::accepted);
  auto* cmdCancel = new QPushButton(QStringLiteral("Abbruch"), this);
  cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
  cmdCancel->setAutoDefault(false);
  // A click leaves the focus where it is: a refused value must not keep the user from cancelling.
  cmdCancel->setFocusPolicy(Qt::TabFocus);
  connect(cmdCancel, &QPushButton::clicked, this, &DlgSpdTab::reject);
  line->addWidget(cmdOK);
  line->addWidget(cmdCancel);
  rows->addLayout(line);
}

void DlgSpdTab::showColour(int box) {
  colourText(edit(box), list_.colour(box));
}

void DlgSpdTab::boxLeft(int box) {
  // Not taken inside the change of focus: a message box there would swallow the click that caused
  // it and leave its button pressed.
  leftBoxes_ << box;
  QMetaObject::invokeMethod(this, &DlgSpdTab::takeLeftBoxes, Qt::QueuedConnection);
}

bool DlgSpdTab::takeLeftBoxes() {
  bool taken = true;
  while (!leftBoxes_.isEmpty()) {
    const int box = leftBoxes_.takeFirst();
    if (list_.leave(box, edit(box)->text())) {
      showColour(box);
      continue;
    }
    taken = false;
    edit(box)->setFocus();
    edit(box)->selectAll();
  }
  return taken;
}

void DlgSpdTab::accepted() {
  // The Enter key presses OK and leaves the focus in its box.
  if (auto* field = qobject_cast<ValueEdit*>(focusWidget())) emit field->left();
  if (!takeLeftBoxes()) return;
  QStringList texts;
  for (int box = 1; box <= list_.count(); ++box) texts << edit(box)->text();
  list_.ok(texts);
  accept();
}

void DlgSpdTab::reject() {
  leftBoxes_.clear();
  list_.cancel();
  QDialog::reject();
}

}  // namespace lokari
