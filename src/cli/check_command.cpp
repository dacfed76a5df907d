#include "cli/check_command.h"

#include <QDir>

#include "base/paths.h"
#include "base/text_file.h"
#include "cli/command.h"
#include "cli/console.h"
#include "db/database.h"
#include "db/database_check.h"
#include "db/reference_lists.h"
#include "decoder/dec_checker.h"

namespace lokari {
namespace {

struct Fault {
  QString file;
  int line = 0;
  QString text;
};

QList<Fault> databaseFaults(const QString& path) {
  QList<Fault> faults;
  try {
    const Database database(placeFor(path));
    QStringList texts = database.integrityFaults();
    // What the engine cannot read has no tables to look at.
    if (texts.isEmpty()) texts = schemaFaults(database);
    if (texts.isEmpty()) checkSources(database);
    texts += valueFaults(database);
    for (const QString& text : std::as_const(texts)) faults.append({path, 0, text});
  } catch (const StorageError& error) {
    faults.append({path, 0, error.text()});
  }
  return faults;
}

/// The description files of the program: beside the data files, and one folder a maker.
QStringList descriptionFiles(const QString& basePath) {
  const QDir base(basePath);
  const QStringList mask{QStringLiteral("*.dec")};
  QStringList files;
  for (const QString& name : base.entryList(mask, QDir::Files, QDir::Name)) files.append(name);
  for (const QString& folder : base.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
    const QDir maker(base.filePath(folder));
    for (const QString& name : maker.entryList(mask, QDir::Files, QDir::Name)) {
      files.append(folder + u'/' + name);
    }
  }
  return files;
}

QList<Fault> descriptionFaults(const QString& basePath, const QString& file) {
  const std::optional<QString> text = readTextFile(QDir(basePath).filePath(file));
  if (!text) return {{file, 0, QStringLiteral("Die Datei kann nicht gelesen werden.")}};
  QList<Fault> faults;
  for (const DecFault& fault : checkDescription(*text)) {
    faults.append({file, fault.line, fault.text});
  }
  return faults;
}

}  // namespace

ExitStatus check(const Call&, CliContext& context) {
  QList<Fault> faults = databaseFaults(context.settings.dbPath);
  const QStringList files = descriptionFiles(context.paths.basePath);
  for (const QString& file : files) faults += descriptionFaults(context.paths.basePath, file);
  for (const Fault& fault : std::as_const(faults)) {
    context.results.line({{QStringLiteral("file"), fault.file},
                          {QStringLiteral("line"), fault.line},
                          {QStringLiteral("fault"), fault.text}});
  }
  context.console.message(
      QStringLiteral("Geprüft: die Datenbank und %1 Beschreibungsdateien, %2 Fehler.")
          .arg(files.size())
          .arg(faults.size()));
  return faults.isEmpty() ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace lokari
