#include "db/ui/list_grid_view.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QStyledItemDelegate>

#include <algorithm>

#include "db/list_grid.h"

namespace lokari {
namespace {

/// No column is narrower than a number of five digits.
constexpr char16_t kNumberSample[] = u"000000";

/// Lets no other cell become the current one before the edited row is stored.
class RowKeeper final : public QItemSelectionModel {
 public:
  RowKeeper(ListGrid& rows, QObject* parent) : QItemSelectionModel(&rows, parent), rows_(rows) {}

  using QItemSelectionModel::select;

  void setCurrentIndex(const QModelIndex& index, SelectionFlags command) override {
    const QPersistentModelIndex wanted(index);
    if (index.row() != rows_.editedRow() && !rows_.storeRow()) return;
    QItemSelectionModel::setCurrentIndex(wanted, NoUpdate);
    if (command != NoUpdate) QItemSelectionModel::select(wanted, command);
  }

  // A click selects what it did not make the current row.
  void select(const QItemSelection& selection, SelectionFlags command) override {
    if (!selection.isEmpty() && selection.first().top() != currentIndex().row()) return;
    QItemSelectionModel::select(selection, command);
  }

 private:
  ListGrid& rows_;
};

}  // namespace

class CellDelegate final : public QStyledItemDelegate {
 public:
  explicit CellDelegate(ListGridView& view) : QStyledItemDelegate(&view), view_(view) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                        const QModelIndex& index) const override {
    // The row ahead may have refused to be left.
    const QPersistentModelIndex place(index);
    if (index != view_.currentIndex() || !view_.rows_.mayEdit(index.row())) return nullptr;
    auto* editor = new QLineEdit(parent);
    editor->setFrame(false);
    editor->setAlignment(Qt::Alignment(place.data(Qt::TextAlignmentRole).toInt()));
    editor->setObjectName(QStringLiteral("gridText"));
    editor->setAccessibleName(
        view_.rows_.headerData(place.column(), Qt::Horizontal, Qt::DisplayRole).toString());
    view_.editor_ = editor;
    return editor;
  }

  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& index) const override {
    const QString text = static_cast<QLineEdit*>(editor)->text();
    view_.refused_ = !model->setData(index, text, Qt::EditRole);
  }

 private:
  ListGridView& view_;
};

ListGridView::ListGridView(ListGrid& rows, QWidget* parent) : QTableView(parent), rows_(rows) {
  setModel(&rows);
  setSelectionModel(new RowKeeper(rows, this));
  setItemDelegate(new CellDelegate(*this));
  setSelectionMode(SingleSelection);
  setEditTriggers(DoubleClicked | SelectedClicked | EditKeyPressed | AnyKeyPressed);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setAlternatingRowColors(true);
  setCornerButtonEnabled(false);
  setToolTip(
      QStringLiteral("Neue Zeilen beginnen in der Zeile mit *.\n"
                     "Esc verwirft eine Änderung, Entf löscht die Zeile."));
  QHeaderView* marks = verticalHeader();
  marks->setSectionResizeMode(QHeaderView::Fixed);
  marks->setDefaultSectionSize(fontMetrics().height() + 8);
  marks->setDefaultAlignment(Qt::AlignCenter);
  marks->setFixedWidth(fontMetrics().horizontalAdvance(u'M') * 2);
  marks->setSectionsClickable(true);
  connect(marks, &QHeaderView::sectionPressed, this, [this](int row) {
    setFocus();
    setCurrentIndex(model()->index(row, std::max(currentIndex().column(), 0)));
  });
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
  setCurrentIndex(rows.index(0, 0));
}

bool ListGridView::storeRow() {
  if (editor_ != nullptr) {
    refused_ = false;
    commitData(editor_);
    const bool refused = refused_;
    closeEditor(editor_, QAbstractItemDelegate::NoHint);
    if (refused) return false;
  }
  return rows_.storeRow();
}

int ListGridView::neededWidth(int column) const {
  return std::max({sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column),
                   fontMetrics().horizontalAdvance(QString::fromUtf16(kNumberSample))});
}

void ListGridView::stretch(int column) {
  horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
}

// After a refusal the user stays where he typed.
void ListGridView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  const bool stay = refused_ && hint != QAbstractItemDelegate::RevertModelCache;
  refused_ = false;
  editor_ = nullptr;
  QTableView::closeEditor(editor, stay ? QAbstractItemDelegate::NoHint : hint);
}

void ListGridView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Delete:
      deleteCurrentRow();
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // The one that ends a cell's edit comes by as well.
      if (state() != EditingState) setCurrentIndex(moveCursor(MoveDown, Qt::NoModifier));
      return;
    case Qt::Key_Escape:
      if (rows_.editedRow() < 0) break;
      rows_.revertRow();
      return;
    default:
      break;
  }
  QTableView::keyPressEvent(event);
}

void ListGridView::deleteCurrentRow() {
  if (currentIndex().isValid()) rows_.deleteRow(currentIndex().row());
}

void ListGridView::contextMenuEvent(QContextMenuEvent* event) {
  const QModelIndex pointed = event->reason() == QContextMenuEvent::Mouse
                                  ? indexAt(viewport()->mapFromGlobal(event->globalPos()))
                                  : currentIndex();
  if (!pointed.isValid() || pointed.row() == rows_.blankRow()) return;
  setCurrentIndex(pointed);
  if (currentIndex() != pointed) return;
  QMenu menu(this);
  QAction* remove = menu.addAction(QStringLiteral("Zeile &löschen\tEntf"));
  if (menu.exec(event->globalPos()) == remove) deleteCurrentRow();
}

}  // namespace lokari
