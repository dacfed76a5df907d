#include "decoder/description.h"

#include "base/numbers.h"
#include "decoder/fixed_fields.h"

namespace lokari {

bool DecoderDescription::reachable(CvIndex index) const {
  const int number = index.value();
  if (number < 2 || number > kHighestCvIndex) return false;
  // Paged and register mode reach the first four CVs and the configuration only.
  if (number <= 4 || number == cv::kConfig) return true;
  if (PROGMODE != 0) return false;
  if (number <= 6 || number == cv::kConsist) return true;
  if (cv::inTable(index)) return FAMILY != 1 || number <= cv::kLastShortTable;
  // What is on no page is shown in the grid and left to its values.
  return info(index).exists() && info(index).cvPage >= page::kDrive;
}

CvNumber DecoderDescription::realNumber(CvIndex index) const {
  const CvDescriptor& entry = info(index);
  if (!entry.inBank()) return CvNumber(index.value());
  const CvBank& bank = bankOf(entry);
  return CvNumber(index.value() - bank.bankBase + bank.bankFirst);
}

QString DecoderDescription::numberText(CvIndex index) const {
  const QString number = QString::number(realNumber(index).value());
  const CvDescriptor& entry = info(index);
  return entry.inBank() ? QStringLiteral("%1 (%2)").arg(number).arg(entry.cvBank) : number;
}

QString DecoderDescription::cvText(CvIndex index) const {
  return QStringLiteral("CV ") + numberText(index);
}

CvIndex DecoderDescription::getCvIndex(const QString& text) const {
  const int number = static_cast<int>(numericPrefix(text));
  const qsizetype bracket = text.indexOf(u'(');
  CvIndex index(number);
  if (bracket >= 0) {
    const int bank = static_cast<int>(numericPrefix(QStringView(text).mid(bracket + 1)));
    if (bank < 1 || bank >= static_cast<int>(bankMap.size())) return {};
    const CvBank& entry = bankMap[static_cast<size_t>(bank)];
    index = CvIndex(number - entry.bankFirst + entry.bankBase);
  }
  return index.inRange() ? index : CvIndex();
}

}  // namespace lokari
