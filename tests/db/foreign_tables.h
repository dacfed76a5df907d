// A foreign database in memory, and a progress that writes down what it was told.
#pragma once

#include <functional>
#include <optional>

#include "base/progress.h"
#include "db/foreign_database.h"
#include "db/storage_error.h"

namespace lokari::test {

struct MemoryTable {
  QString name;
  QStringList columns;
  QList<QVariantList> rows;
  std::optional<qsizetype> breaksAt;  ///< the row that cannot be read
};

class MemoryForeignTable final : public ForeignTable {
 public:
  explicit MemoryForeignTable(const MemoryTable& table) : table_(table) {}

  const QStringList& columns() const override { return table_.columns; }
  int rowCount() const override { return static_cast<int>(table_.rows.size()); }
  bool next(QVariantList& row) override {
    if (table_.breaksAt && at_ == *table_.breaksAt) {
      throw StorageError(storage_error::kDamaged, QStringLiteral("Die Datei ist beschädigt."));
    }
    if (at_ >= table_.rows.size()) return false;
    row = table_.rows[at_++];
    return true;
  }

 private:
  const MemoryTable& table_;
  qsizetype at_ = 0;
};

class MemoryForeignDatabase final : public ForeignDatabase {
 public:
  explicit MemoryForeignDatabase(const QList<MemoryTable>& tables) : tables_(tables) {}

  QStringList tables() const override {
    QStringList names;
    for (const MemoryTable& table : tables_) names << table.name;
    return names;
  }
  std::unique_ptr<ForeignTable> table(const QString& name) override {
    for (const MemoryTable& table : tables_) {
      if (table.name.compare(name, Qt::CaseInsensitive) == 0) {
        return std::make_unique<MemoryForeignTable>(table);
      }
    }
    return nullptr;
  }

 private:
  const QList<MemoryTable>& tables_;
};

class RecordingProgress final : public Progress {
 public:
  void setStatus(const QString& text) override { statuses << text; }
  void setPercent(double percent) override { percents << percent; }
  bool cancelled() override { return asked++ >= cancelAfter; }

  QStringList statuses;
  QList<double> percents;
  int asked = 0;
  int cancelAfter = 1000000;  ///< how often the user lets the work go on
};

}  // namespace lokari::test
