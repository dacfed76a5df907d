#include "cli/export_commands.h"

#include "base/file_place.h"
#include "base/paths.h"
#include "cli/command.h"
#include "cli/console.h"
#include "cli/console_progress.h"
#include "db/database.h"
#include "reports/csv_export.h"
#include "reports/report_error.h"
#include "reports/report_template.h"
#include "reports/rzk_export.h"

namespace lokari {
namespace {

/// The one file that a call names.
QString targetFile(const Call& call) {
  const QString file = call.text(u"DATEI").value_or(QString());
  if (file.isEmpty()) throw WrongCall(QStringLiteral("Der Export braucht einen Dateinamen!"));
  return file;
}

}  // namespace

ExitStatus exportCsvFile(const Call& call, CliContext& context) {
  const auto place = FilePlace::chosen(targetFile(call), kCsvFile,
                                       ownFiles(context.paths, context.settings), context.prompt);
  if (!place) return ExitStatus::Failed;
  try {
    const Database database(placeFor(context.settings.dbPath));
    bool done = false;
    consoleProgress(context)([&](Progress& progress) {
      done = exportCsv(
          {.database = database,
           .templateFile = templatePlace(context.settings.csvReport, context.paths.installed),
           .formula = {}},
          *place, progress);
    });
    return done ? ExitStatus::Done : ExitStatus::Failed;
  } catch (const StorageError& error) {
    context.console.message(error.text());
  } catch (const ReportError& error) {
    context.console.message(QString(error.text()).replace(u'\r', u' '));
  }
  return ExitStatus::Failed;
}

ExitStatus exportRzk(const Call& call, CliContext& context) {
  const QString file = targetFile(call);
  try {
    Database database(placeFor(context.settings.dbPath));
    const auto text = RzkExport({.prompt = context.prompt,
                                 .busy = {},
                                 .own = ownFiles(context.paths, context.settings)},
                                database, {})
                          .exportTo(file);
    if (!text) return ExitStatus::Failed;
    context.console.result(QString(*text).replace(u'\r', u' '));
  } catch (const StorageError& error) {
    context.console.message(error.text());
    return ExitStatus::Failed;
  }
  return ExitStatus::Done;
}

}  // namespace lokari
