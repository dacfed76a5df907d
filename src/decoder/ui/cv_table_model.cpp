#include "decoder/ui/cv_table_model.h"

#include <QApplication>

#include <algorithm>

#include "decoder/ui/text_colour.h"

namespace lokari {
namespace {

GridColumn columnOf(const QModelIndex& index) {
  return static_cast<GridColumn>(index.column());
}

QString spoken(CvTableModel::Mark mark) {
  switch (mark) {
    case CvTableModel::Mark::Empty:
      return QStringLiteral("nein");
    case CvTableModel::Mark::Crossed:
      return QStringLiteral("ja");
    case CvTableModel::Mark::Bits:
      return QStringLiteral("im Einzelnen");
    case CvTableModel::Mark::None:
      break;
  }
  return {};
}

}  // namespace

CvTableModel::CvTableModel(DecoderBench& bench, QObject* parent)
    : QAbstractTableModel(parent), bench_(bench) {
  connect(&bench, &DecoderBench::gridReset, this, [this] {
    beginResetModel();
    endResetModel();
  });
  connect(&bench, &DecoderBench::gridRowChanged, this, [this](int row) {
    if (row < 1 || row > rowCount()) return;
    emit dataChanged(indexOf(row, GridColumn::Cv), indexOf(row, GridColumn::Details));
  });
}

QModelIndex CvTableModel::indexOf(int gridRow, GridColumn column) const {
  return index(gridRow - 1, static_cast<int>(column));
}

int CvTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : std::max(0, bench_.grid().rowCount() - 1);
}

int CvTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kGridColumns.size());
}

QString CvTableModel::text(const GridRow& row, GridColumn column) const {
  switch (column) {
    case GridColumn::Cv:
      return row.number;
    case GridColumn::Name:
      return row.name;
    case GridColumn::Range:
      return row.range;
    case GridColumn::Value:
      return row.value;
    case GridColumn::Read:
    case GridColumn::Write:
    case GridColumn::Details:
      break;
  }
  return {};
}

CvTableModel::Mark CvTableModel::mark(const QModelIndex& index) const {
  const GridRow row = bench_.gridRow(gridRow(index));
  if (row.number.isEmpty()) return Mark::None;
  switch (columnOf(index)) {
    case GridColumn::Read:
      return row.read ? Mark::Crossed : Mark::Empty;
    case GridColumn::Write:
      return row.write ? Mark::Crossed : Mark::Empty;
    case GridColumn::Details:
      return row.details ? Mark::Bits : Mark::None;
    case GridColumn::Cv:
    case GridColumn::Name:
    case GridColumn::Range:
    case GridColumn::Value:
      break;
  }
  return Mark::None;
}

QString CvTableModel::limit(const QModelIndex& index) const {
  const GridRow row = bench_.gridRow(gridRow(index));
  if (row.number.isEmpty()) return {};
  const GridColumn column = columnOf(index);
  const bool ofWriting = column == GridColumn::Value || column == GridColumn::Write;
  if (ofWriting && row.readOnly) return QStringLiteral("Nur lesbar");
  const bool tick = column == GridColumn::Read || column == GridColumn::Write;
  return tick && !row.idle.isEmpty() ? QStringLiteral("Ohne Wirkung: ") + row.idle : QString();
}

QString CvTableModel::remark(const QModelIndex& index) const {
  const QString note =
      columnOf(index) == GridColumn::Value ? bench_.gridRow(gridRow(index)).note : QString();
  return note.isEmpty() ? limit(index) : note;
}

QVariant CvTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const GridColumn column = columnOf(index);
  switch (role) {
    case Qt::DisplayRole:
      return text(bench_.gridRow(gridRow(index)), column);
    case Qt::ToolTipRole:
      return column == GridColumn::Name || column == GridColumn::Range
                 ? text(bench_.gridRow(gridRow(index)), column)
                 : remark(index);
    case Qt::AccessibleDescriptionRole:
      return remark(index);
    case Qt::BackgroundRole: {
      const bool ofWriting = column == GridColumn::Value || column == GridColumn::Write;
      if (!ofWriting || !bench_.gridRow(gridRow(index)).readOnly) return {};
      return groundValue(Ground::ReadOnly, QApplication::palette());
    }
    case Qt::AccessibleTextRole:
      return column >= GridColumn::Read ? spoken(mark(index))
                                        : text(bench_.gridRow(gridRow(index)), column);
    case Qt::TextAlignmentRole:
      if (column == GridColumn::Value) return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
      return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ForegroundRole: {
      if (column != GridColumn::Value) return {};
      const QColor colour = colourValue(bench_.gridRow(gridRow(index)).colour);
      return colour.isValid() ? QVariant(colour) : QVariant();
    }
    default:
      return {};
  }
}

QVariant CvTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return QString::fromUtf16(kGridColumns[static_cast<size_t>(section)].caption);
}

}  // namespace lokari
