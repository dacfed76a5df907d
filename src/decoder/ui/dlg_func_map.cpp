#include "decoder/ui/dlg_func_map.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

#include "base/ui/fit_area.h"
#include "decoder/ui/dialog_buttons.h"

namespace lokari {
namespace {

constexpr int kHeadLines = 2;
constexpr int kBlockGap = 8;

}  // namespace

DlgFuncMap::DlgFuncMap(const std::vector<FuncMapRow>& rows, QWidget* parent)
    : QDialog(parent), rows_(rows) {
  setObjectName(QStringLiteral("dlgFuncMap"));
  setWindowTitle(QStringLiteral("Funktionszuordnung"));
  setModal(true);
  auto* lines = new QVBoxLayout(this);
  lines->setContentsMargins(16, 16, 16, 16);
  lines->setSpacing(12);
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(6);
  grid->setVerticalSpacing(4);
  auto* area = new FitArea(this);
  auto* matrix = new QWidget(area);
  auto* stack = new QVBoxLayout(matrix);
  stack->setContentsMargins(0, 0, 0, 0);
  stack->addLayout(grid);
  stack->addStretch();
  lines->addWidget(area, 1);
  makeHeads(grid);
  int line = kHeadLines;
  for (int row = 0; row < static_cast<int>(rows_.size()); ++row) {
    // A gap where the outputs are shifted.
    if (row > 0 &&
        rows_[static_cast<size_t>(row)].offset != rows_[static_cast<size_t>(row) - 1].offset)
      grid->setRowMinimumHeight(line++, kBlockGap);
    makeRow(grid, row, line++);
  }
  if (std::any_of(rows_.begin(), rows_.end(), [](const FuncMapRow& r) { return !r.described; })) {
    auto* note = new QLabel(
        QStringLiteral("Grau: nicht in der Beschreibung des Decoders, wird nicht geschrieben."),
        this);
    note->setObjectName(QStringLiteral("lblNote"));
    lines->addWidget(note);
  }
  area->take(matrix);
  addOkAndCancel(this, lines, QStringLiteral("cmdOK"), QStringLiteral("cmdCancel"),
                 [this] { accept(); });
  chkMap_.front()->setFocus();
}

void DlgFuncMap::makeHeads(QGridLayout* grid) {
  const int outputs = funcMapOutputs(rows_);
  auto* lblHdr1 = new QLabel(QStringLiteral("Funktion"), this);
  lblHdr1->setObjectName(QStringLiteral("lblHdr1"));
  auto* lblHdr2 = new QLabel(QStringLiteral("Ausgang"), this);
  lblHdr2->setObjectName(QStringLiteral("lblHdr2"));
  grid->addWidget(lblHdr1, 1, 0);
  grid->addWidget(lblHdr2, 0, 1, 1, outputs, Qt::AlignHCenter);
  grid->setColumnMinimumWidth(0,
                              fontMetrics().horizontalAdvance(QStringLiteral("F0 rückwärts")) + 16);
  for (int output = 1; output <= outputs; ++output) {
    grid->addWidget(new QLabel(QString::number(output), this), 1, output, Qt::AlignHCenter);
    grid->setColumnMinimumWidth(output, fontMetrics().horizontalAdvance(QStringLiteral("0000")));
    grid->setColumnStretch(output, 1);
  }
}

void DlgFuncMap::makeRow(QGridLayout* grid, int row, int line) {
  const FuncMapRow& key = rows_[static_cast<size_t>(row)];
  auto* label = new QLabel(key.label, this);
  label->setObjectName(QStringLiteral("Label_func_%1").arg(row));
  label->setToolTip(QStringLiteral("CV %1").arg(key.cv.value()));
  label->setEnabled(key.described);
  grid->addWidget(label, line, 0);
  for (int c = 0; c < kFuncMapColumns; ++c) {
    const int output = c + 1 + key.offset;
    auto* box = new QCheckBox(this);
    box->setObjectName(QStringLiteral("chkMap_%1").arg(row * kFuncMapColumns + c));
    box->setAccessibleName(QStringLiteral("%1, Ausgang %2").arg(key.label).arg(output));
    box->setToolTip(
        QStringLiteral("Ausgang %1 (CV %2, Bit %3)").arg(output).arg(key.cv.value()).arg(c));
    box->setChecked((key.value >> c & 1) != 0);
    box->setEnabled(key.offered[static_cast<size_t>(c)]);
    box->installEventFilter(this);
    grid->addWidget(box, line, output, Qt::AlignHCenter);
    chkMap_ << box;
  }
}

std::vector<int> DlgFuncMap::values() const {
  std::vector<int> values(rows_.size(), 0);
  for (qsizetype i = 0; i < chkMap_.size(); ++i) {
    if (!chkMap_[i]->isChecked()) continue;
    values[static_cast<size_t>(i / kFuncMapColumns)] |= 1 << i % kFuncMapColumns;
  }
  return values;
}

QCheckBox* DlgFuncMap::boxAt(int row, int output) const {
  if (row < 0 || row >= static_cast<int>(rows_.size())) return nullptr;
  const int c = output - 1 - rows_[static_cast<size_t>(row)].offset;
  return c < 0 || c >= kFuncMapColumns ? nullptr : chkMap_[row * kFuncMapColumns + c];
}

bool DlgFuncMap::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  int down = 0;
  int right = 0;
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
      down = -1;
      break;
    case Qt::Key_Down:
      down = 1;
      break;
    case Qt::Key_Left:
      right = -1;
      break;
    case Qt::Key_Right:
      right = 1;
      break;
    default:
      return QDialog::eventFilter(watched, event);
  }
  const int at = static_cast<int>(chkMap_.indexOf(static_cast<QCheckBox*>(watched)));
  int row = at / kFuncMapColumns;
  int output = at % kFuncMapColumns + 1 + rows_[static_cast<size_t>(row)].offset;
  // Past boxes that cannot be set, and no further than the edge.
  do {
    row += down;
    output += right;
    QCheckBox* box = boxAt(row, output);
    if (box == nullptr) break;
    if (!box->isEnabled()) continue;
    box->setFocus();
    break;
  } while (true);
  return true;
}

}  // namespace lokari
