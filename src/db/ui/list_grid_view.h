// The view of a ListGrid: typing, F2 or a double click edits a cell, Tab goes on to the next one.
// Leaving a row stores it; Escape gives up first the cell, then the row; Entf deletes the row.
#pragma once

#include <QPointer>
#include <QTableView>

namespace lokari {

class ListGrid;

class ListGridView final : public QTableView {
  Q_OBJECT

 public:
  /// `rows` must outlive the view.
  ListGridView(ListGrid& rows, QWidget* parent);

  /// Takes what is being typed and stores the row. False when either was refused, after a message.
  bool storeRow();

  /// The width that shows the caption and everything that stands in a column uncut.
  int neededWidth(int column) const;
  /// Gives a column the room that the others leave.
  void stretch(int column);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

 private:
  friend class CellDelegate;
  void deleteCurrentRow();

  ListGrid& rows_;
  QPointer<QWidget> editor_;  // while a cell is being edited
  bool refused_ = false;      // the last text that was typed
};

}  // namespace lokari
