// `dlgTable`, the vehicle list: the record set as a table, to look something up in and to jump
// from.
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QTableView;
class QVBoxLayout;

namespace lokari {

class Prompt;
class RecordForm;
class VehicleList;
class WindowScale;

class DlgTable final : public QDialog {
  Q_OBJECT

 public:
  /// The vehicles of the form's database, as far as its filter lets them through, standing on the
  /// one that the form's `pendingFind` names. Throws StorageError when they cannot be read.
  DlgTable(RecordForm& form, const WindowScale& scale, QWidget* parent);

  /// Keeps the widths of the columns, whichever way the dialog is closed.
  void done(int result) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addSearch(QVBoxLayout& rows);
  void addGrid(QVBoxLayout& rows);
  void addButtons(QVBoxLayout& rows);
  void restoreWidths();
  void standAtPending();
  void select(int row);
  void search(int from);
  void searchNext();
  void choose();

  RecordForm& form_;
  const WindowScale& scale_;
  VehicleList* list_;
  QLineEdit* txtSearch_ = nullptr;
  QLabel* labSearch_ = nullptr;
  QTableView* grid_ = nullptr;
};

/// The command `butTable`: shows the list and, when a vehicle was chosen, goes to it. Storage
/// failures are shown.
void butTable(RecordForm& form, Prompt& prompt, const WindowScale& scale, QWidget* parent);

}  // namespace lokari
