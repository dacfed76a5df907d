// The grid of all CVs as a Qt model: nothing is copied, each cell is asked from the bench when it
// is drawn.
#pragma once

#include <QAbstractTableModel>

#include "decoder/decoder_bench.h"

namespace lokari {

class CvTableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit CvTableModel(DecoderBench& bench, QObject* parent = nullptr);

  /// Rows of the model are the grid's data rows: model row 0 is grid row 1.
  static int gridRow(const QModelIndex& index) { return index.row() + 1; }
  QModelIndex indexOf(int gridRow, GridColumn column) const;

  /// What stands in a cell of the columns "Lesen", "Schreiben" and "Details".
  enum class Mark { None, Empty, Crossed, Bits };
  Mark mark(const QModelIndex& index) const;
  /// What makes a cell other than it looks: it is read-only, or its tick has no effect. Empty for
  /// most.
  QString limit(const QModelIndex& index) const;
  /// What is known of the value, else the limit.
  QString remark(const QModelIndex& index) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QString text(const GridRow& row, GridColumn column) const;

  DecoderBench& bench_;
};

}  // namespace lokari
