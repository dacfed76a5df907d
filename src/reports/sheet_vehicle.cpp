#include "reports/sheet_vehicle.h"

#include <QSqlQuery>

#include <algorithm>

#include "base/numbers.h"
#include "db/cv_record.h"
#include "db/database.h"
#include "db/record_set.h"

namespace lokari {
namespace {

constexpr int kVehicleType = 1;

QString manufacturerName(const Database& database, const QVariant& number) {
  QString name;
  if (number.isNull()) return name;
  database.query(
      QStringLiteral("SELECT DC_MANUF_TEXT FROM DCMANUFS WHERE DC_MANUF=%1").arg(number.toInt()),
      [&name](const QSqlQuery& row) { name = row.value(0).toString(); });
  return name;
}

/// The place of the set in use; names are compared as they stand. Sets that never got a name are
/// not in use by a record that names none: the decoder window opens the first set then.
size_t setInUse(const CvRecord& record) {
  if (record.recSetName.isEmpty()) return 0;
  const auto found = std::find(record.recCvName.begin(), record.recCvName.end(), record.recSetName);
  return found == record.recCvName.end() ? 0
                                         : static_cast<size_t>(found - record.recCvName.begin());
}

}  // namespace

bool hasSheet(const RecordSet& records) {
  return records.value(QStringLiteral("DC_TYPE")).toInt() == kVehicleType &&
         !records.value(QStringLiteral("DC_DECODER")).isNull();
}

SheetVehicle readSheetVehicle(const Database& database, RecordSet& records) {
  CvRecord cvs;
  loadCvRecord(records, cvs);
  const size_t set = setInUse(cvs);
  const QString& setName = cvs.recCvName[set];
  return {.collection = records.text(QStringLiteral("DC_COLL")),
          .address = records.text(QStringLiteral("DC_ADR")),
          .shortName = records.text(QStringLiteral("ST_SNAME")),
          .group = records.text(QStringLiteral("ST_GROUP")),
          .type = records.text(QStringLiteral("FZ_FTYPE")),
          .manufacturer = manufacturerName(database, records.value(QStringLiteral("DC_MANUF"))),
          .decoder = records.text(QStringLiteral("DC_DECODER")),
          .longName = records.text(QStringLiteral("FZ_LNAME")),
          .setName = setName.trimmed().isEmpty()
                         ? QStringLiteral("Set") + printed(static_cast<qint64>(set) + 1)
                         : setName,
          .values = cvs.recCvValues[set],
          .marks = cvs.recCvMarks[set],
          .picture = records.value(QStringLiteral("MD_PIC")).toByteArray()};
}

}  // namespace lokari
