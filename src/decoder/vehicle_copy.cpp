#include "decoder/vehicle_copy.h"

#include <array>

#include "db/cv_record.h"
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
  if (!condition.isEmpty()) query += QStringLiteral(" WHERE ") + condition;
  records.open(database, query);
}

bool hasDecoder(const RecordSet& records) {
  const QVariant type = records.value(QStringLiteral("DC_TYPE"));
  return type.isNull() || type.toInt() != kTypeWithoutDecoder;
}

void copyInto(RecordSet& records, const std::vector<CvValue>& cvs) {
  std::array<QByteArray, kCvSetCount> sets;
  for (size_t set = 0; set < kCvSetCount; ++set) {
    sets[set] = chkCVVar(records.value(QString::fromUtf16(kCvColumns[set].values)));
    for (const CvValue& entry : cvs)
      sets[set][entry.cv.arrayIndex()] = static_cast<char>(entry.value);
  }
  records.Edit();
  for (size_t set = 0; set < kCvSetCount; ++set)
    records.setValue(QString::fromUtf16(kCvColumns[set].values), sets[set]);
  records.Update();
}

}  // namespace

int countVehicles(Database& database, const QString& condition) {
  RecordSet records;
  openVehicles(records, database, condition);
  return records.count();
}

std::optional<int> copyCvsToVehicles(Database& database, const QString& condition,
                                     const std::vector<CvValue>& cvs,
                                     const CopyProgress& progress) {
  int changed = 0;
  try {
    database.transaction([&] {
      RecordSet records;
      openVehicles(records, database, condition);
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
