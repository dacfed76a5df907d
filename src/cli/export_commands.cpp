#include "cli/export_commands.h"

#include "base/paths.h"
#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/console.h"
#include "db/database.h"
#include "reports/rzk_export.h"

namespace lokari {

ExitStatus exportRzk(const QStringList& arguments, CliContext& context) {
  const QStringList files = Arguments(arguments).takeRest();
  if (files.size() != 1) throw WrongCall(QStringLiteral("export rzk braucht einen Dateinamen!"));
  try {
    Database database(placeFor(context.settings.dbPath));
    const auto text = RzkExport({context.prompt, {}}, database, {}).exportTo(files.front());
    if (!text) return ExitStatus::Failed;
    context.console.result(QString(*text).replace(u'\r', u' '));
  } catch (const StorageError& error) {
    context.console.message(error.text());
    return ExitStatus::Failed;
  }
  return ExitStatus::Done;
}

}  // namespace lokari
