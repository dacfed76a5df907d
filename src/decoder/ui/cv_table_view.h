// `cvTable`: the grid of all CVs with its edit box `tabText`.
#pragma once

#include <QPixmap>
#include <QTableView>

#include "decoder/ui/cv_table_model.h"

namespace lokari {

class ControlBinder;
class Pictures;
class ValueEdit;

class CvTableView final : public QTableView {
  Q_OBJECT

 public:
  CvTableView(DecoderBench& bench, ControlBinder& binder, const Pictures& pictures,
              QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void press(const QModelIndex& index);
  void makeEditor();
  void showSelection();
  void openEditor(int gridRow);
  void placeEditor();
  void setColumnWidths();

  DecoderBench& bench_;
  ControlBinder& binder_;
  CvTableModel* model_;
  ValueEdit* tabText_ = nullptr;
  int editedRow_ = 0;  // grid row under the edit box, 0 for none
};

}  // namespace lokari
