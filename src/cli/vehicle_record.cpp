#include "cli/vehicle_record.h"

#include "base/numbers.h"
#include "base/paths.h"
#include "base/prompt.h"
#include "cli/command.h"
#include "db/lock_wait.h"

namespace lokari {
namespace {

constexpr int kTypeFunctionUnit = 2;

QString condition(const QString& collection, int address) {
  const QString text = QString(collection).replace(u'\'', QStringLiteral("''"));
  const QString ofCollection = text.isEmpty() ? QStringLiteral("(ISNULL(DC_COLL) OR DC_COLL = '')")
                                              : QStringLiteral("DC_COLL = '%1'").arg(text);
  return QStringLiteral("%1 AND DC_ADR = %2").arg(ofCollection).arg(address);
}

}  // namespace

VehicleRecord::VehicleRecord(const QString& dbPath, const QString& collection, int address)
    : database_(placeFor(dbPath)) {
  records_.open(database_,
                QStringLiteral("SELECT * FROM LOCO_DAT WHERE ") + condition(collection, address));
  if (records_.count() == 0) {
    throw WrongCall(QStringLiteral("Das Fahrzeug %1 der Sammlung \"%2\" gibt es nicht!")
                        .arg(address)
                        .arg(collection));
  }
  const QString type = records_.text(QStringLiteral("DC_TYPE"));
  if (!isNumeric(type)) throw WrongCall(QStringLiteral("Type nicht festgelegt!"));
  if (toInt16(type) == kTypeFunctionUnit) {
    throw WrongCall(QStringLiteral("Programmierfenster für Funktionsteile nicht verfügbar!"));
  }
  load();
  opened_ = cvs;
  openedAddress_ = this->address();
}

void VehicleRecord::load() {
  loadCvRecord(records_, cvs);
  if (cvs.recManuf == 0) cvs.recDecoder.clear();
}

VehicleRecord::Stored VehicleRecord::store(Prompt& prompt,
                                           const std::function<void(CvRecord&)>& take,
                                           const std::optional<QString>& address) {
  Stored stored = Stored::Done;
  const auto wait = [&prompt](const QString& fault, const std::function<bool()>& done) {
    return prompt.waitUntil(fault + QStringLiteral(" Es wird gewartet ..."), done);
  };
  whileLocked(database_, wait, [&] { stored = storeOnce(take, address); });
  return stored;
}

VehicleRecord::Stored VehicleRecord::storeOnce(const std::function<void(CvRecord&)>& take,
                                               const std::optional<QString>& address) {
  records_.CancelUpdate();
  records_.reread();
  load();
  found_ = cvs;
  const bool sameDecoder = cvs.recManuf == opened_.recManuf &&
                           cvs.recDecoder == opened_.recDecoder &&
                           this->address() == openedAddress_;
  if (!sameDecoder) return Stored::NotTheSameDecoder;
  take(cvs);
  records_.Edit();
  assignCvRecord(records_, cvs);
  if (address) records_.setValue(QStringLiteral("DC_ADR"), toInt16(*address));
  records_.Update();
  return Stored::Done;
}

}  // namespace lokari
