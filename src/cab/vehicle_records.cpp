#include "cab/vehicle_records.h"

#include "base/prompt.h"
#include "db/database_session.h"
#include "db/record_set.h"

namespace lokari {
namespace {

QString valuesColumn(int set) {
  return QString::fromUtf16(kCvColumns[static_cast<size_t>(set - 1)].values);
}

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

void VehicleRecords::storeCVs(const CabRecord& record, int set,
                              const std::vector<ChangedCV>& changes) {
  if (session_ == nullptr || record.recNo <= 0) return;
  if (!session_->hasDatabase() || session_->database().path() != record.database) {
    // A number means another vehicle there.
    prompt_.message(QStringLiteral("Die geänderten CV-Werte von \"%1\" werden nicht gespeichert: "
                                   "Es ist eine andere Datenbank geöffnet.")
                        .arg(record.shortName));
    return;
  }
  // A transaction that is taken back would take these values with it.
  session_->database().whenFree([this, record, set, changes] { store(record, set, changes); });
}

void VehicleRecords::store(const CabRecord& record, int set,
                           const std::vector<ChangedCV>& changes) {
  try {
    RecordSet records;
    openRow(records, session_->database(), "DC_RECNO", record.recNo);
    if (records.position() < 0) return;
    const bool onShow = isOnShow(record);
    RecordForm& form = session_->form();
    const auto changed = [&changes](QByteArray values) {
      for (const ChangedCV& change : changes) {
        values[change.number - 1] = static_cast<char>(change.value);
      }
      return values;
    };
    // The row as it is by now: what the window holds of it may be older, or not stored yet.
    const QByteArray values = changed(chkCVVar(records.value(valuesColumn(set))));
    records.Edit();
    records.setValue(valuesColumn(set), values);
    records.Update();
    if (!onShow) return;
    const QByteArray kept = form.workingCopy().recCvValues[static_cast<size_t>(set - 1)];
    form.takeCvValues(set, form.editMode() == EditMode::Edit ? changed(kept) : values);
  } catch (const StorageError& error) {
    prompt_.message(error.text());
  }
}

}  // namespace lokari
