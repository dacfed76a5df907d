// The vehicles as a table: what `dlgTable` shows, sorts and looks through. Rows are read once, as
// plain texts and without arrays and pictures, so that 20,000 of them are there at once.
#pragma once

#include <QAbstractTableModel>

#include <array>
#include <vector>

namespace lokari {

class Database;

class VehicleList final : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Collection, Address, ShortName, VehicleType, Line, Maker, Decoder, kColumns };

  explicit VehicleList(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

  /// Reads the vehicles that meet `filter`, all when it is empty, in the order of collections (Null
  /// last) and addresses. Throws StorageError; the list stays as it was.
  void load(const Database& database, const QString& filter);

  /// The first row that meets a condition, -1 when none does. Throws StorageError when the
  /// condition is not understood.
  int firstRow(const Database& database, const QString& condition) const;

  /// The condition that finds the vehicle of a row again by collection and address. A Null
  /// collection is asked for as an empty one, which is another collection.
  QString condition(int row) const;

  /// The next row from `from` on, going round at the end, that holds `text` in any column without
  /// regard to case; -1 when there is none.
  int rowWith(const QString& text, int from) const;

  /// By a column: numbers as numbers, texts in German order, Null behind every text. Rows that are
  /// alike keep the order of load(), which is also the order of column -1.
  void sort(int column, Qt::SortOrder order) override;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Row {
    qint64 record = 0;  ///< DC_RECNO
    int place = 0;      ///< in the order of load()
    int address = 0;
    std::array<QString, kColumns> texts;
  };
  void sortTexts(std::vector<Row>& rows, Column column, bool descending) const;

  std::vector<Row> rows_;
};

}  // namespace lokari
