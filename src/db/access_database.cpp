#include "db/access_database.h"

#include "base/plain_file.h"
#include "db/storage_error.h"

namespace lokari {
namespace {

// Behind four bytes that differ from version to version.
constexpr qint64 kNamePlace = 4;
constexpr qint64 kNameLength = 15;

class AccessTable final : public ForeignTable {
 public:
  explicit AccessTable(std::unique_ptr<AccessReading> reading) : reading_(std::move(reading)) {}

  /// Reads up to the first row. False when there is no such table.
  bool begin() {
    for (;;) {
      switch (reading_->record()) {
        case AccessRecord::Column:
          columns_.append(reading_->text());
          break;
        case AccessRecord::RowCount:
          rowCount_ = reading_->count();
          return true;
        case AccessRecord::Failure:
          return false;
        default:
          AccessReading::throwDamaged();
      }
    }
  }

  const QStringList& columns() const override { return columns_; }
  int rowCount() const override { return rowCount_; }

  bool next(QVariantList& row) override {
    row.clear();
    if (reading_ == nullptr) return false;
    const AccessRecord record = reading_->record();
    if (record == AccessRecord::End) {
      reading_.reset();
      // libmdb passes over what it cannot read.
      if (read_ < rowCount_) AccessReading::throwDamaged();
      return false;
    }
    if (record != AccessRecord::Row) AccessReading::throwDamaged();
    row.reserve(columns_.size());
    for (qsizetype i = 0; i < columns_.size(); ++i) row.append(reading_->value());
    ++read_;
    return true;
  }

 private:
  std::unique_ptr<AccessReading> reading_;  // until the last row
  QStringList columns_;
  int rowCount_ = 0;
  int read_ = 0;
};

}  // namespace

bool isAccessFile(const QString& path) {
  PlainFile file(path);
  if (!file.open() || !file.seek(kNamePlace)) return false;
  const QByteArray name = file.read(kNameLength);
  return name == "Standard Jet DB" || name == "Standard ACE DB";
}

AccessDatabase::AccessDatabase(AccessReader reader, QString path)
    : reader_(std::move(reader)), path_(std::move(path)) {
  if (!isAccessFile(path_)) AccessReading::throwDamaged();
  AccessReading reading(reader_, path_, QString::fromLatin1(kAccessTables));
  for (;;) {
    const AccessRecord record = reading.record();
    if (record == AccessRecord::End) return;
    if (record != AccessRecord::Table) AccessReading::throwDamaged();
    tables_.append(reading.text());
  }
}

std::unique_ptr<ForeignTable> AccessDatabase::table(const QString& name) {
  auto table = std::make_unique<AccessTable>(std::make_unique<AccessReading>(
      reader_, path_, QString::fromLatin1(kAccessTable), QStringList{name}));
  return table->begin() ? std::move(table) : nullptr;
}

}  // namespace lokari
