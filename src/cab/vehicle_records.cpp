#include "cab/vehicle_records.h"

#include "base/prompt.h"
#include "db/database_session.h"
#include "db/lock_wait.h"
#include "db/record_set.h"

namespace lokari {
namespace {

/// The first row with that number in a column.
void openRow(RecordSet& records, Database& database, const char* column, qint64 number) {
  records.open(
      database,
      QStringLiteral("SELECT * FROM LOCO_DAT WHERE %1=%2").arg(QLatin1String(column)).arg(number));
}

}  // namespace

CabRecord VehicleRecords::onShow() const {
  if (session_ == nullptr || !session_->hasDatabase()) return {};
  RecordForm& form = session_->form();
  if (!form.workingCopy().hasArrays()) form.InitDcData();
  const CvRecord& cvs = form.workingCopy();
  const auto maker = session_->catalogue().makerByNumber(cvs.recManuf);
  return {.database = session_->database().path(),
          .recNo = form.text(QStringLiteral("dc_recno")).toLongLong(),
          .shortName = form.text(QStringLiteral("st_sname")),
          .collection = form.text(QStringLiteral("dc_coll")),
          .maker = maker ? maker->name : QString(),
          .cvs = cvs,
          .picture = form.picture()};
}

QString VehicleRecords::nameOf(int address) const {
  if (session_ == nullptr || !session_->hasDatabase()) return {};
  try {
    RecordSet records;
    openRow(records, session_->database(), "DC_ADR", address);
    if (records.position() >= 0) return records.text(QStringLiteral("ST_SNAME"));
  } catch (const StorageError&) {
    // A title without the name is no reason to refuse the cab.
  }
  return {};
}

bool VehicleRecords::isOnShow(const CabRecord& record) const {
  const RecordForm& form = session_->form();
  return form.position() >= 0 && form.editMode() != EditMode::Add &&
         form.text(QStringLiteral("dc_recno")).toLongLong() == record.recNo;
}

void VehicleRecords::whenFree(const std::function<void()>& work) {
  if (session_ == nullptr || !session_->hasDatabase()) return work();
  session_->database().whenFree(work);
}

bool VehicleRecords::isOpen(const CabRecord& record) const {
  return session_->hasDatabase() && session_->database().path() == record.database;
}

bool VehicleRecords::awaitFree(const CabRecord& record,
                               const std::function<std::shared_ptr<void>()>& beside) {
  if (session_ == nullptr || record.recNo <= 0 || !isOpen(record)) return true;
  const auto wait = [&](const QString& fault, const std::function<bool()>& done) {
    const auto aside = beside();
    return prompt_.waitUntil(fault + QStringLiteral("\nEs wird gewartet, bis sie frei ist ..."),
                             done);
  };
  Database& database = session_->database();
  if (database.inTransaction()) return true;
  try {
    whileLocked(database, wait, [&database] { database.transaction([] {}); });
  } catch (const StorageError& error) {
    // Whatever else is wrong with the file, storing tells it.
    return error.code() != storage_error::kLocked;
  }
  return true;
}

StoredChange VehicleRecords::storeCV(const CabRecord& record, int set, int number,
                                     const StoredCV& cv) {
  if (session_ == nullptr || record.recNo <= 0) return {};
  if (!isOpen(record)) {
    // A number means another vehicle there.
    return {.outcome = StoredChange::Outcome::Failed,
            .fault = QStringLiteral("Die geänderten CV-Werte von \"%1\" werden nicht gespeichert: "
                                    "Es ist eine andere Datenbank geöffnet.")
                         .arg(record.shortName)};
  }
  try {
    return store(record, set, number, cv);
  } catch (const StorageError& error) {
    return {.outcome = StoredChange::Outcome::Failed, .fault = error.text()};
  }
}

StoredChange VehicleRecords::store(const CabRecord& record, int set, int number,
                                   const StoredCV& cv) {
  RecordSet records;
  openRow(records, session_->database(), "DC_RECNO", record.recNo);
  if (records.position() < 0) return {};
  const CvColumns& columns = kCvColumns[static_cast<size_t>(set - 1)];
  const QString valuesName = QString::fromUtf16(columns.values);
  const QString marksName = QString::fromUtf16(columns.marks);
  // The row as it is by now: what the window holds of it may be older, or not stored yet.
  const QVariant values = records.value(valuesName);
  const QVariant marks = records.value(marksName);
  const qsizetype place = number - 1;
  const StoredCV before{static_cast<quint8>(chkCVVar(values)[place]), chkCVVar(marks)[place]};
  const CvPlace stored{.set = set, .number = number, .value = cv.value, .mark = cv.mark};
  records.Edit();
  records.setValue(valuesName, withValue(values, stored));
  records.setValue(marksName, withMark(marks, stored));
  records.Update();
  if (isOnShow(record)) session_->form().takeStoredCv(stored);
  return {.outcome = StoredChange::Outcome::Stored, .before = before};
}

}  // namespace lokari
