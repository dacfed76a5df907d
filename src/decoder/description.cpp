#include "decoder/description.h"

#include "base/numbers.h"

namespace lokari {

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
