#include "db/ui/grid_dialog.h"

#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/ui/window_scale.h"
#include "db/list_grid.h"
#include "db/ui/list_grid_view.h"

namespace lokari {

GridDialog::GridDialog(const QString& name, const QString& title, const WindowScale& scale,
                       QWidget* parent)
    : QDialog(parent), scale_(scale), top_(new QVBoxLayout), bottom_(new QVBoxLayout) {
  setObjectName(name);
  setWindowTitle(title);
  setModal(true);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(12, 12, 12, 12);
  all->setSpacing(10);
  all->addLayout(top_);
  all->addLayout(bottom_);
}

void GridDialog::build(std::unique_ptr<ListGrid> rows, const QString& source) {
  rows_ = rows.release();
  rows_->setParent(this);
  rows_->setObjectName(source);
  grid_ = new ListGridView(*rows_, this);
  grid_->setObjectName(QStringLiteral("DBGrid1"));
  grid_->setAccessibleName(windowTitle());
  // A row that is stored goes to its place.
  connect(rows_, &QAbstractItemModel::layoutChanged, this, &GridDialog::widenColumns);
  auto* cancel = new QPushButton(QStringLiteral("S&chließen"), this);
  cancel->setObjectName(QStringLiteral("cmdCancel"));
  cancel->setAccessibleName(QStringLiteral("Schließen"));
  cancel->setAutoDefault(false);
  // A click must not take the focus: what is being typed would be judged, with a box perhaps,
  // between pressing and releasing the button.
  cancel->setFocusPolicy(Qt::TabFocus);
  connect(cancel, &QPushButton::clicked, this, &GridDialog::reject);

  auto* all = static_cast<QVBoxLayout*>(layout());
  all->insertWidget(1, grid_, 1);
  auto* line = new QHBoxLayout;
  line->addStretch();
  line->addWidget(cancel);
  all->addLayout(line);
  grid_->setFocus();
}

void GridDialog::done(int result) {
  if (grid_->storeRow()) QDialog::done(result);
}

void GridDialog::setColumnWidths() {
  for (int column = 0; column < rows_->columnCount(); ++column) {
    grid_->setColumnWidth(
        column, static_cast<int>(std::lround(grid_->neededWidth(column) * scale_.scaleX)));
  }
}

void GridDialog::widenColumns() {
  for (int column = 0; column < rows_->columnCount(); ++column) {
    grid_->setColumnWidth(column, std::max(grid_->columnWidth(column), grid_->neededWidth(column)));
  }
}

bool GridDialog::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) setColumnWidths();
  return QDialog::event(event);
}

}  // namespace lokari
