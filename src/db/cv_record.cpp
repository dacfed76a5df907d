#include "db/cv_record.h"

#include "db/record_set.h"

namespace lokari {
namespace {

QString name(const char16_t* column) {
  return QString::fromUtf16(column);
}

}  // namespace

void CvRecord::InitDcData() {
  *this = CvRecord();
  for (size_t set = 0; set < kCvSetCount; ++set) {
    recCvValues[set] = QByteArray(kCvFieldBytes, '\0');
    recCvMarks[set] = QByteArray(kCvFieldBytes, '\0');
  }
}

void CvRecord::clearAddressMarks() {
  for (QByteArray& marks : recCvMarks) marks = withoutAddressMarks(marks);
}

QByteArray withoutAddressMarks(QByteArray marks) {
  constexpr std::array kPlaces{0, 16, 17};  // CV 1, 17 and 18
  for (const int place : kPlaces) {
    if (place < marks.size()) marks[place] = '\0';
  }
  return marks;
}

QByteArray chkCVVar(const QVariant& field) {
  QByteArray target = field.toByteArray();
  if (target.size() < kCvFieldBytes) target.append(kCvFieldBytes - target.size(), '\0');
  return target;
}

QByteArray withValue(const QVariant& values, const CvPlace& cv) {
  QByteArray array = chkCVVar(values);
  array[cv.number - 1] = static_cast<char>(cv.value);
  return array;
}

QVariant withMark(const QVariant& marks, const CvPlace& cv) {
  QByteArray array = chkCVVar(marks);
  if (array[cv.number - 1] == cv.mark) return marks;
  array[cv.number - 1] = cv.mark;
  return array;
}

QStringList cvRecordColumns() {
  QStringList columns;
  for (const CvColumns& set : kCvColumns) {
    columns << name(set.values) << name(set.marks) << name(set.name);
  }
  return columns << QStringLiteral("DC_MANUF") << QStringLiteral("DC_DECODER")
                 << QStringLiteral("DC_DEC_VER");
}

void loadCvRecord(RecordSet& records, CvRecord& record) {
  CvRecord loaded;
  for (size_t set = 0; set < kCvSetCount; ++set) {
    const CvColumns& columns = kCvColumns[set];
    loaded.recCvValues[set] = chkCVVar(records.value(name(columns.values)));
    loaded.recCvMarks[set] = chkCVVar(records.value(name(columns.marks)));
    loaded.recCvName[set] = records.text(name(columns.name));
  }
  loaded.recManuf = static_cast<qint16>(records.value(QStringLiteral("DC_MANUF")).toInt());
  loaded.recDecoder = records.text(QStringLiteral("DC_DECODER"));
  loaded.recSetName = records.text(QStringLiteral("DC_DEC_VER"));
  record = loaded;
}

namespace {

/// What the row holds already is no change: on a row that others changed too, theirs would go. A
/// Null or a short array is brought to full size.
void assign(RecordSet& records, const QString& column, const QVariant& value) {
  const QVariant before = records.value(column);
  const bool same = !before.isNull() && (value.typeId() == QMetaType::QByteArray
                                             ? before.toByteArray() == value.toByteArray()
                                             : before.toString() == value.toString());
  if (!same) records.setValue(column, value);
}

}  // namespace

void assignCvRecord(RecordSet& records, const CvRecord& record) {
  for (size_t set = 0; set < kCvSetCount; ++set) {
    const CvColumns& columns = kCvColumns[set];
    assign(records, name(columns.values), record.recCvValues[set]);
    assign(records, name(columns.marks), record.recCvMarks[set]);
    assign(records, name(columns.name), record.recCvName[set]);
  }
  assign(records, QStringLiteral("DC_MANUF"), record.recManuf);
  assign(records, QStringLiteral("DC_DECODER"), record.recDecoder);
  assign(records, QStringLiteral("DC_DEC_VER"), record.recSetName);
}

}  // namespace lokari
