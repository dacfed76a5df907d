// What the dialogs of the lists and of the catalogue have in common: a grid `DBGrid1` that is
// edited in place, and `cmdCancel`, which closes the dialog.
#pragma once

#include <QDialog>

#include <memory>

class QVBoxLayout;

namespace lokari {

class ListGrid;
class ListGridView;
class WindowScale;

class GridDialog : public QDialog {
  Q_OBJECT

 public:
  /// Closing stores the row that is being edited. When it cannot be stored the dialog stays open;
  /// the user has been told.
  void done(int result) override;

 protected:
  GridDialog(const QString& name, const QString& title, const WindowScale& scale, QWidget* parent);

  /// What stands above the grid, and between it and the button.
  QVBoxLayout& top() const { return *top_; }
  QVBoxLayout& bottom() const { return *bottom_; }
  /// Adds the grid over `rows`, which is open under the name of its source, and the button. Called
  /// once, when what stands above the grid is there: that is the order of the tab key.
  void build(std::unique_ptr<ListGrid> rows, const QString& source);

  ListGrid& rows() const { return *rows_; }
  ListGridView& grid() const { return *grid_; }
  const WindowScale& scale() const { return scale_; }

  /// Called whenever the dialog becomes the active window. The columns get what they need at the
  /// main window's scale.
  virtual void setColumnWidths();

  bool event(QEvent* event) override;

 private:
  /// Gives what was typed the room it needs; no column gets narrower.
  void widenColumns();

  const WindowScale& scale_;
  QVBoxLayout* top_;
  QVBoxLayout* bottom_;
  ListGrid* rows_ = nullptr;
  ListGridView* grid_ = nullptr;
};

}  // namespace lokari
