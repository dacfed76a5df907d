// Handing the vehicles over to a railway control program: its vehicle file takes in the addresses
// that are new to it.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace lokari {

class Database;
class Prompt;

struct RzkExportParts {
  Prompt& prompt;
  /// The busy pointer comes or goes; may be empty.
  std::function<void(bool)> busy;
  QStringList own;  ///< files that the program lives on
};

class RzkExport {
 public:
  /// All must outlive the export. `sqlFilter` is the condition of the active filter, empty for all
  /// vehicles.
  RzkExport(RzkExportParts parts, Database& database, QString sqlFilter)
      : parts_(std::move(parts)), database_(database), sqlFilter_(std::move(sqlFilter)) {}

  /// Asks for the file, starting in `folder`, and exports.
  void mnuExpRZK(const QString& folder);

  /// Exports into the file of that name, ".DAT" appended where it has no ".". Asks before a new
  /// file is made. Gives the closing text; nothing when it was refused or failed: the user has been
  /// told.
  std::optional<QString> exportTo(const QString& name);

 private:
  /// Whether the file is there or is to be made; nothing for another choice of file.
  enum class Target { Existing, New, Cancelled, OtherFile };

  Target targetOf(const QString& name) const;
  std::optional<QString> run(const QString& file, bool isNew);
  int merge(const QString& file, const QString& temporary, bool isNew);

  RzkExportParts parts_;
  Database& database_;
  QString sqlFilter_;
};

/// The file that the new state is written to before it takes the place of `file`: its name with
/// "TMP" for its last three characters.
QString rzkTemporary(const QString& file);

}  // namespace lokari
