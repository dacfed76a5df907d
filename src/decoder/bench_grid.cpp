// The grid of all CVs.
#include "base/numbers.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {
namespace {

const QString& gridField() {
  static const QString name = QStringLiteral("tabText");
  return name;
}

}  // namespace

GridRow DecoderBench::gridRow(int row) const {
  const CvIndex cv = grid_.cvAt(row);
  if (!cv.inRange()) return {};
  const CvDescriptor& entry = description.info(cv);
  return {.number = description.numberText(cv),
          .name = entry.cvName,
          .range = entry.cvRange,
          .value = QString::number(sets.value(cv)),
          .colour = colourOf(cv),
          .note = noteOf(cv),
          .read = entry.cvRead,
          .write = entry.cvWrite,
          .details = !entry.cvBits.isEmpty(),
          .readOnly = !gridEditable(cv),
          .idle = idleReason(cv)};
}

void DecoderBench::makeTableNames() {
  if (missing_ || !description.SPEEDTABLE) return;
  for (int i = cv::kFirstTable; i <= cv::kLastTable; ++i) {
    CvDescriptor& entry = description.info(CvIndex(i));
    entry.cvName =
        QStringLiteral("Geschwindigkeits-Tabelle Wert") + printed(i - cv::kFirstTable + 1);
    entry.cvRange = QStringLiteral("0-%1").arg(description.INTERNALSTEPS);
    entry.ofTable = true;
  }
}

void DecoderBench::rebuildGrid() {
  if (missing_) {
    grid_.rebuild(1, {});
    emit gridReset();
    return;
  }
  std::vector<CvIndex> cvs;
  for (int i = 1; i <= kHighestCvIndex; ++i) {
    if (description.info(CvIndex(i)).exists()) cvs.push_back(CvIndex(i));
  }
  constexpr int kTableRows = cv::kLastTable - cv::kFirstTable + 1;
  grid_.rebuild(description.lineCount + 1 + (description.SPEEDTABLE ? kTableRows : 0),
                std::move(cvs));
  emit gridReset();
}

void DecoderBench::gridHeaderClicked(GridColumn column) {
  if (column != GridColumn::Read && column != GridColumn::Write) return;
  const bool write = column == GridColumn::Write;
  for (int row = grid_.selFirst(); row <= grid_.selLast(); ++row) {
    const CvIndex cv = grid_.cvAt(row);
    if (!cv.inRange()) continue;
    const CvDescriptor& entry = description.info(cv);
    setMark(write, cv, write ? !entry.cvWrite : !entry.cvRead);
  }
}

void DecoderBench::gridClicked(int row, GridColumn column) {
  const CvIndex cv = grid_.cvAt(row);
  if (!cv.inRange()) return;
  const CvDescriptor& entry = description.info(cv);
  switch (column) {
    case GridColumn::Value:
      if (gridEditable(cv)) openGridEdit(row);
      break;
    case GridColumn::Read:
      setMark(false, cv, !entry.cvRead);
      break;
    case GridColumn::Write:
      if (gridEditable(cv)) setMark(true, cv, !entry.cvWrite);
      break;
    case GridColumn::Details:
      editBits(cv, grid_.cvAt(row + 1));
      break;
    case GridColumn::Cv:
    case GridColumn::Name:
    case GridColumn::Range:
      break;
  }
}

void DecoderBench::openGridEdit(int row) {
  gridEditRow_ = row;
  const CvIndex cv = grid_.cvAt(row);
  gridEditKept_ = sets;
  controls.setTag(gridField(), QString::number(cv.value()));
  controls.setText(gridField(), QString::number(sets.value(cv)));
  controls.setVisible(gridField(), true);
  emit gridEditOpened(row);
}

void DecoderBench::closeGridEdit() {
  if (gridEditRow_ == 0) return;
  gridEditRow_ = 0;
  controls.setVisible(gridField(), false);
  emit gridEditClosed();
}

void DecoderBench::gridEditGivenUp() {
  const CvIndex cv = grid_.cvAt(gridEditRow_);
  if (!cv.inRange()) return;
  // Typing took the mark of a value that stays, and what else is known of it.
  sets.takeCv(gridEditKept_, cv);
  closeGridEdit();
  showValue(cv);
}

void DecoderBench::gridEditLeft() {
  const CvIndex cv = grid_.cvAt(gridEditRow_);
  if (!cv.inRange()) return;
  if (!CheckDcField(gridField(), cv, description.info(cv).cvRange)) return;
  if (calcOpen) return;
  closeGridEdit();
  showValue(cv);
}

}  // namespace lokari
