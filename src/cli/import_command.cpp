#include "cli/import_command.h"

#include "base/paths.h"
#include "base/plain_file.h"
#include "cli/command.h"
#include "cli/console.h"
#include "cli/console_progress.h"
#include "db/access_database.h"
#include "db/access_import.h"
#include "db/database.h"
#include "db/old_descriptions.h"
#include "db/take_over.h"
#include "db/v2_import.h"

namespace lokari {
namespace {

/// The database of the settings. Its faults are not taken for those of the file.
Database openTarget(const QString& dbPath) {
  try {
    return Database(placeFor(dbPath));
  } catch (const StorageError& error) {
    throw StorageError(error.code(),
                       QStringLiteral("Datenbankdatei %1\n%2").arg(dbPath, error.text()));
  }
}

/// The descriptions of the older installation, as the window offers them: the console's prompt
/// shows the question, and `--yes` copies.
void bring(const QString& file, const Database& database, CliContext& context) {
  if (!context.interrupt.raised) {
    bringDescriptions(context.prompt, file, database, context.paths.appPath);
  }
}

bool importV2(const AccessReader& reader, const QString& file, CliContext& context) {
  Database target = openTarget(context.settings.dbPath);
  ImportEnd end = ImportEnd::Broken;
  consoleProgress(context)([&](Progress& progress) {
    end = importVehicles([&] { return std::make_unique<AccessDatabase>(reader, file); }, target,
                         progress);
  });
  if (end != ImportEnd::Broken) bring(file, target, context);
  return end == ImportEnd::Whole;
}

bool takeOverCurrent(const AccessReader& reader, const QString& file, CliContext& context) {
  const QString target = freeTargetBeside(file);
  std::optional<TakeOverReport> report;
  consoleProgress(context)([&](Progress& progress) {
    report = takeOverAccess(reader, file, target, context.paths.appPath, progress);
  });
  if (!report) return false;
  bring(file, Database(target), context);
  return report->skipped.isEmpty();
}

bool import(const QString& file, CliContext& context) {
  const AccessReader reader = accessReaderIn(context.programs);
  AccessDatabase database(reader, file);
  switch (contentsOf(database).kind) {
    case AccessKind::V2:
      return importV2(reader, file, context);
    case AccessKind::Current:
      return takeOverCurrent(reader, file, context);
    case AccessKind::Foreign:
      break;
  }
  throw StorageError(storage_error::kUnknownName,
                     QStringLiteral("Die Datei hat keine Tabelle LOCO_DAT."));
}

}  // namespace

ExitStatus importAccess(const Call& call, CliContext& context) {
  const QString name = call.text(u"DATEI").value_or(QString());
  const QString file = placeFor(name);
  if (!PlainFile(file).open()) {
    context.console.message(QStringLiteral("Datenbankdatei %1 nicht gefunden\n"
                                           "oder Zugriff nicht möglich!")
                                .arg(name));
    const QString special = specialFileFault(file);
    if (!special.isEmpty()) context.console.message(special);
    return ExitStatus::Failed;
  }
  if (!isAccessFile(file)) {
    context.console.message(QStringLiteral("%1 ist keine Access-Datenbank!").arg(name));
    return ExitStatus::Failed;
  }
  try {
    return import(file, context) ? ExitStatus::Done : ExitStatus::Failed;
  } catch (const StorageError& error) {
    context.console.message(error.text());
    return ExitStatus::Failed;
  }
}

}  // namespace lokari
