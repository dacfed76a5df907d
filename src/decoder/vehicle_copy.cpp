#include "decoder/vehicle_copy.h"

#include <array>

#include "db/cv_record.h"
#include "db/jet_sql.h"
#include "db/record_set.h"

namespace lokari {
namespace {

/// `DC_TYPE` of the group "Sonstiges".
constexpr int kTypeWithoutDecoder = 3;
/// Records between two reports: often enough for a smooth bar, seldom enough to cost nothing.
constexpr int kReportEvery = 20;

/// Leaves the transaction, which takes back what was written.
struct Ended {};

void openVehicles(RecordSet& records, Database& database, const QString& condition) {
  QString query = QStringLiteral("SELECT * FROM LOCO_DAT");
  const TableInfo* vehicles = database.schema().table(QStringLiteral("LOCO_DAT"));
  if (vehicles != nullptr && !condition.isEmpty()) query += provenWhere(*vehicles, condition);
  records.open(database, query);
}

bool hasDecoder(const RecordSet& records) {
  const QVariant type = records.value(QStringLiteral("DC_TYPE"));
  return type.isNull() || type.toInt() != kTypeWithoutDecoder;
}

/// One set of a record.
struct CvFields {
  QByteArray values;
  QByteArray marks;  ///< as stored
  bool marksChanged = false;
};

CvFields changedSet(const RecordSet& records, const CvColumns& columns,
                    const std::vector<CvValue>& cvs) {
  CvFields fields{.values = chkCVVar(records.value(QString::fromUtf16(columns.values))),
                  .marks = records.value(QString::fromUtf16(columns.marks)).toByteArray()};
  for (const CvValue& entry : cvs) {
    const int index = entry.cv.arrayIndex();
    const char value = static_cast<char>(entry.value);
    if (fields.values.at(index) == value) continue;
    fields.values[index] = value;
    // The mark told of the value that is gone.
    if (index >= fields.marks.size() || fields.marks.at(index) == 0) continue;
    fields.marks[index] = 0;
    fields.marksChanged = true;
  }
  return fields;
}

void copyInto(RecordSet& records, const std::vector<CvValue>& cvs) {
  std::array<CvFields, kCvSetCount> sets;
  for (size_t set = 0; set < kCvSetCount; ++set)
    sets[set] = changedSet(records, kCvColumns[set], cvs);
  records.Edit();
  for (size_t set = 0; set < kCvSetCount; ++set) {
    records.setValue(QString::fromUtf16(kCvColumns[set].values), sets[set].values);
    if (sets[set].marksChanged)
      records.setValue(QString::fromUtf16(kCvColumns[set].marks), sets[set].marks);
  }
  records.Update();
}

/// The condition, narrowed.
QString narrowed(const QString& condition, const QString& by) {
  return condition.isEmpty() ? by : QStringLiteral("(%1) AND %2").arg(condition, by);
}

int count(Database& database, const QString& condition) {
  RecordSet records;
  openVehicles(records, database, condition);
  return records.count();
}

}  // namespace

CopyTargets copyTargets(Database& database, const QString& condition, const CopySource& from) {
  const QString changed = narrowed(
      condition, QStringLiteral("(ISNULL(DC_TYPE) OR DC_TYPE <> %1)").arg(kTypeWithoutDecoder));
  const QString type = QString(from.decoder).replace(u'\'', QStringLiteral("''"));
  const QString other =
      narrowed(changed, QStringLiteral("(ISNULL(DC_MANUF) OR DC_MANUF <> %1 OR "
                                       "ISNULL(DC_DECODER) OR DC_DECODER <> '%2')")
                            .arg(QString::number(from.manufacturer), type));
  const bool own =
      from.key &&
      count(database, narrowed(changed, QStringLiteral("DC_RECNO = %1").arg(*from.key))) > 0;
  return {.records = count(database, condition),
          .vehicles = count(database, changed),
          .otherType = count(database, other),
          .own = own};
}

std::optional<int> copyCvsToVehicles(Database& database, const QString& condition,
                                     const std::vector<CvValue>& cvs,
                                     const CopyProgress& progress) {
  int changed = 0;
  try {
    database.transaction([&] {
      RecordSet records;
      openVehicles(records, database, condition);
      records.joinTransaction();
      for (int done = 0; done < records.count(); ++done) {
        if (done % kReportEvery == 0 && !progress(done, records.count())) throw Ended();
        if (hasDecoder(records)) {
          copyInto(records, cvs);
          ++changed;
        }
        records.MoveNext();
      }
      if (!progress(records.count(), records.count())) throw Ended();
    });
  } catch (const Ended&) {
    return std::nullopt;
  }
  return changed;
}

}  // namespace lokari
