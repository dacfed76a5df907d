// `dlgFuncMap`, the matrix of function keys and outputs.
#pragma once

#include <QDialog>
#include <QList>

#include <vector>

#include "decoder/func_map.h"

class QCheckBox;
class QGridLayout;

namespace lokari {

/// Each key has its eight boxes below the outputs that they switch, so shifted keys begin further
/// to the right. Box c of row r is `chkMap_<8r + c>`, a row's label `Label_func_<r>`, the heads are
/// `lblHdr1` and `lblHdr2`.
class DlgFuncMap final : public QDialog {
  Q_OBJECT

 public:
  explicit DlgFuncMap(const std::vector<FuncMapRow>& rows, QWidget* parent = nullptr);

  /// By row: the sum of the set boxes.
  std::vector<int> values() const;

 protected:
  /// The arrow keys go from box to box.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void makeHeads(QGridLayout* grid);
  void makeRow(QGridLayout* grid, int row, int line);
  QCheckBox* boxAt(int row, int output) const;

  std::vector<FuncMapRow> rows_;
  QList<QCheckBox*> chkMap_;
};

}  // namespace lokari
