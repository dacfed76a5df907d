#include "cli/import_command.h"

#include "base/paths.h"
#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/console.h"
#include "cli/console_progress.h"
#include "db/access_database.h"
#include "db/access_import.h"
#include "db/database.h"
#include "db/take_over.h"
#include "db/v2_import.h"

namespace lokari {
namespace {

bool importV2(const AccessReader& reader, const QString& file, CliContext& context) {
  Database target(placeFor(context.settings.dbPath));
  bool whole = false;
  consoleProgress(context)([&](Progress& progress) {
    whole = importVehicles([&] { return std::make_unique<AccessDatabase>(reader, file); }, target,
                           progress);
  });
  return whole;
}

bool takeOverCurrent(const AccessReader& reader, const QString& file, CliContext& context) {
  bool whole = false;
  consoleProgress(context)([&](Progress& progress) {
    const auto report =
        takeOverAccess(reader, file, freeTargetBeside(file), context.paths.appPath, progress);
    whole = report && report->skipped == 0;
  });
  return whole;
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

ExitStatus importAccess(const QStringList& arguments, CliContext& context) {
  const QStringList files = Arguments(arguments).takeRest();
  if (files.size() != 1) {
    throw WrongCall(QStringLiteral("import access braucht einen Dateinamen!"));
  }
  const QString file = placeFor(files.front());
  if (!isAccessFile(file)) {
    context.console.message(
        QStringLiteral("%1 ist keine lesbare Access-Datenbank!").arg(files.front()));
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
