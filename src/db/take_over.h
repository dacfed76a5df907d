// A database of another program, of the current schema, becomes one of this program.
//
// Everything is made in a folder of its own beside the target and gets its names when it is
// complete on disk: half a database never has the name of a whole one.
#pragma once

#include <QString>

#include "db/foreign_database.h"
#include "db/take_over_report.h"

namespace lokari {

class Database;
class KeptFiles;
class Progress;
class TakeOverRows;
struct TableInfo;

struct TakeOverPlan {
  QString templatePath;  ///< the empty database
  QString target;        ///< the new database, which must not exist
};

/// The folder beside a new database for what that has no place for.
QString keptFolderOf(const QString& target);

/// A name for the new database beside the file: "<stem>_Lokari.MDB", or, with another `number` than
/// 1, "<stem>_Lokari_<number>.MDB".
QString targetBeside(const QString& file, int number = 1);

/// The first of these names that neither a database nor a folder of kept files has.
QString freeTargetBeside(const QString& file);

class TakeOver {
 public:
  /// `source` and `progress` must outlive the take-over.
  TakeOver(ForeignDatabase& source, TakeOverPlan plan, Progress& progress);

  /// Takes all rows over: each table of this system that the source has replaces the template's
  /// rows, a table a transaction. Rows that the schema refuses are skipped and told. False when the
  /// user stopped it. Throws StorageError, kDamaged among others, when the source or the new file
  /// fails. In both cases nothing is left of it.
  bool run();

  const TakeOverReport& report() const { return report_; }

 private:
  void fill(Database& database, KeptFiles& kept);
  void takeTable(Database& database, const TableInfo& table, ForeignTable& rows, KeptFiles& kept);
  bool takeRow(Database& database, const TakeOverRows& taker, const QVariantList& row,
               const QString& rowName, KeptFiles& kept);
  /// False when the row got a new number, since another one has its own.
  static bool insertRow(Database& database, const TakeOverRows& taker, const QVariantList& values);
  void tellUnknownTables();
  void showRow(int row, int count);

  ForeignDatabase& source_;
  TakeOverPlan plan_;
  Progress& progress_;
  TakeOverReport report_;
  double percent_ = 0;  ///< behind the tables that are done
};

}  // namespace lokari
