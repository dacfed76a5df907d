// The dialogs that edit a CV in a friendlier form than a number: bits, function mapping,
// calculator.
#include <algorithm>

#include "decoder/decoder_bench.h"

namespace lokari {
namespace {

constexpr int kAddressHighMask = 63;
constexpr int kAddressHighMark = 192;
/// The caption names banks up to this one; a CV of the last bank goes by its index.
constexpr int kLastCaptionBank = 15;

const QString& addressField() {
  static const QString name = QStringLiteral("dc_adr");
  return name;
}

}  // namespace

// ---- Bits -------------------------------------------------------------------------------------

std::optional<int> DecoderBench::bitDialog(int cvValue, const QString& bitText, CvIndex cv) {
  if (bitText.isEmpty() || !bitDialogBox) return std::nullopt;
  const bool named = description.info(cv).cvBank <= kLastCaptionBank;
  const QString caption = QStringLiteral("Detaileingabe CV ") +
                          (named ? description.numberText(cv) : QString::number(cv.value()));
  const int result = bitDialogBox(cvValue, bitText, caption);
  return result < 0 ? std::nullopt : std::optional(result);
}

void DecoderBench::rowBitClicked(int row) {
  const PageRow& clicked = rows_[static_cast<size_t>(row)];
  editBits(clicked.cv, CvIndex(clicked.cv.value() + 1));
}

void DecoderBench::editBits(CvIndex cv, CvIndex next) {
  const QString bits = description.info(cv).cvBits;
  int value = sets.value(cv);
  if (bits == u"A" && next.inRange()) {
    value = (value & kAddressHighMask) * 256 + sets.value(next);
  }
  const std::optional<int> result = bitDialog(value, bits, cv);
  // An address that stays would still gain its two high bits.
  if (!result || *result == value) return;
  // An address in two CVs, in the way of CV 17 and 18.
  if (bits.startsWith(u'A')) {
    takeUserValue(cv, (*result / 256) | kAddressHighMark);
    if (next.inRange()) takeUserValue(next, *result % 256);
  } else {
    takeUserValue(cv, *result);
  }
}

void DecoderBench::takeUserValue(CvIndex cv, int value) {
  const int taken = std::clamp(value, 0, 255);
  // What is known about a value that stays is still true.
  if (taken == sets.value(cv)) return;
  sets.setValue(cv, taken);
  if (userChange()) sets.setMark(cv, CvMark::None);
  showValue(cv);
}

// ---- Function mapping -------------------------------------------------------------------------

void DecoderBench::cmdFuncMap() {
  finishChoice();
  if (!funcMapBox || !description.FUNCMAP) return;
  const std::vector<FuncMapRow> rows = funcMapRows(description, sets.cvValues);
  const auto values = funcMapBox(rows);
  if (!values) return;
  const QByteArray& first = sets.setValues(SetNumber(1));
  // The first set itself stands in the working copy; what is stored of it is older than its jobs.
  const bool ofFirst = sets.currentSet() == SetNumber(1);
  for (size_t r = 0; r < rows.size() && r < values->size(); ++r) {
    const FuncMapRow& row = rows[r];
    const int value = values->at(r);
    if (row.label.isEmpty()) continue;
    if (value != row.value) {
      // The standard mapping that the first set holds as well is that set's, as after a copy.
      const int stored = static_cast<quint8>(first[row.cv.arrayIndex()]);
      if (!ofFirst && isStandardMapping(row, value) && stored == value) {
        sets.copyOfFirst({row.cv});
      } else {
        sets.setMark(row.cv, CvMark::None);
      }
    }
    setCvval(value, row.cv.arrayIndex());
  }
}

// ---- Calculator -------------------------------------------------------------------------------

void DecoderBench::fieldF2(const QString& name) {
  // An address is no byte, and what cannot be edited cannot be calculated either.
  const int row = rowNamed(name);
  const bool locked = row >= 0 ? rows_[static_cast<size_t>(row)].locked : controls.at(name).locked;
  if (!calculatorBox || calcOpen || locked || name == addressField()) return;
  // While it is set, the field that loses the focus to the dialog is not checked.
  calcOpen = true;
  const QString text = calculatorBox(fieldText(name));
  calcOpen = false;
  if (!text.isNull()) setFieldText(name, text);
}

void DecoderBench::rowF2(int row) {
  fieldF2(rows_[static_cast<size_t>(row)].fieldName());
}

}  // namespace lokari
