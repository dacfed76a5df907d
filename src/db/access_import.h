// Databases of Access: what stands in one, and how it comes into a database of this program.
#pragma once

#include "base/progress.h"
#include "db/access_reading.h"
#include "db/foreign_database.h"
#include "db/old_format.h"
#include "db/take_over_report.h"

namespace lokari {

class Database;
class Prompt;

enum class AccessKind {
  Foreign,  ///< no table of vehicles
  V2,       ///< vehicles without collections
  Current,
};

struct AccessContents {
  AccessKind kind = AccessKind::Foreign;
  int vehicles = 0;
};

/// Throws StorageError.
AccessContents contentsOf(ForeignDatabase& database);

/// Takes a current Access file over into the new database `target`, a copy of the template in
/// `appPath` at first. Its words go to `progress`, the last ones are the report; nothing is thrown.
/// Nothing when it was stopped or failed: there is no new database then.
std::optional<TakeOverReport> takeOverAccess(const AccessReader& reader, const QString& path,
                                             const QString& target, const QString& appPath,
                                             Progress& progress);

struct AccessImportParts {
  Prompt& prompt;
  QString appPath;
  AccessReader reader;
  RunWithProgress run;
};

class AccessImport final : public OldFormat {
 public:
  explicit AccessImport(AccessImportParts parts) : parts_(std::move(parts)) {}

  std::optional<int> vehicles(const QString& path) override;
  void ConvertDB(const QString& path, DatabaseSession& session) override;
  std::optional<QString> takeOver(const QString& path) override;

 private:
  bool isCurrent(const QString& path);
  void bring(const QString& path, const Database& database);
  /// The database to open: one that was taken over before, or a new name; empty when the user wants
  /// neither.
  QString chooseTarget(const QString& path);

  AccessImportParts parts_;
};

}  // namespace lokari
