// What the window has and the record does not, and the question before it is lost.
#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/prompt.h"
#include "decoder/dec_fields.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {

DecoderBench::Kept DecoderBench::present() const {
  return {.sets = sets,
          .address = controls.at(QStringLiteral("dc_adr")).text,
          .maker = controls.at(QStringLiteral("cbDcManuf")).text,
          .decoder = controls.at(QStringLiteral("cbDcDecoder")).text};
}

bool DecoderBench::inHand(const QString& field, CvIndex cv, const QString& range) const {
  // A number that leaving the field would take.
  const auto number = parseNumber(trimBlanks(fieldText(field)));
  if (!number) return false;
  const double rounded = std::nearbyint(*number);
  return QString::number(rounded) != heldText(field) && rounded >= 0 && rounded <= 255 &&
         cv.inRange() && rangeHolds(range, static_cast<int>(rounded));
}

bool DecoderBench::anyInHand() const {
  if (inHand(QStringLiteral("txtDcComConsist"), CvIndex(cv::kConsist), consistRange())) return true;
  const QString gridField = QStringLiteral("tabText");
  QStringList fields;
  if (gridEditRow_ > 0) fields << gridField;
  for (const FixedField& fixed : kFixedFields) fields << QString::fromLatin1(fixed.field);
  for (const PageRow& row : rows_) fields << row.fieldName();
  return std::any_of(fields.begin(), fields.end(), [this](const QString& field) {
    const CvIndex cv = cvOfField(field);
    // The field of a CV that the decoder lacks shows no value of it.
    return cv.inRange() && description.info(cv).exists() &&
           inHand(field, cv, description.info(cv).cvRange);
  });
}

bool DecoderBench::unsaved() const {
  const Kept now = present();
  return sets.differs(opened_.sets) || now.address != opened_.address ||
         now.maker != opened_.maker || now.decoder != opened_.decoder || anyInHand();
}

bool DecoderBench::unsavedOfType() const {
  return sets.unstored() > 0 || anyInHand();
}

Leave DecoderBench::askToLeave() {
  if (!unsaved()) return Leave::Drop;
  const QString written = listOfCvs({written_.begin(), written_.end()});
  const QString decoders = written.isEmpty()
                               ? QString()
                               : QStringLiteral(
                                     "\nSchreibbefehle gingen seit dem Öffnen an %1: Dort kann "
                                     "der Decoder anderes haben, als die Datenbank dann zeigt.")
                                     .arg(written);
  const int answer = parts_.prompt.choose(
      {.text = QStringLiteral("Die Änderungen in diesem Fenster sind nicht gespeichert!"),
       .more =
           QStringLiteral("Verwerfen lässt das Fahrzeug in der Datenbank, wie es vor dem Öffnen "
                          "war. Was in den Decoder geschrieben wurde, bleibt dort.") +
           decoders,
       .answers = {QStringLiteral("&Verwerfen"), QStringLiteral("&Speichern"),
                   QStringLiteral("&Zurück")},
       .safe = 2,
       .icon = Icon::Warning});
  constexpr Leave kAnswers[] = {Leave::Drop, Leave::Store, Leave::Stay};
  return kAnswers[answer];
}

}  // namespace lokari
