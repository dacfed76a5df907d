#include "db/access_import.h"

#include <QFileInfo>

#include "base/paths.h"
#include "base/prompt.h"
#include "db/access_database.h"
#include "db/database.h"
#include "db/database_session.h"
#include "db/old_descriptions.h"
#include "db/take_over.h"
#include "db/v2_import.h"

namespace lokari {
namespace {

bool isOwnDatabase(const QString& path) {
  try {
    const Database database(path);
    return true;
  } catch (const StorageError&) {
    return false;
  }
}

}  // namespace

AccessContents contentsOf(ForeignDatabase& database) {
  const std::unique_ptr<ForeignTable> vehicles = database.table(QStringLiteral("LOCO_DAT"));
  if (vehicles == nullptr) return {};
  const bool current = vehicles->columns().contains(QStringLiteral("DC_COLL"), Qt::CaseInsensitive);
  return {current ? AccessKind::Current : AccessKind::V2, vehicles->rowCount()};
}

std::optional<TakeOverReport> takeOverAccess(const AccessReader& reader, const QString& path,
                                             const QString& target, const QString& appPath,
                                             Progress& progress) {
  progress.setPercent(0);
  try {
    AccessDatabase source(reader, path);
    TakeOver job(source, {findFile(appPath + QStringLiteral("/EMPTY.MDB")), target}, progress);
    if (job.run()) {
      progress.setStatus(job.report().closingText());
      return job.report();
    }
    progress.setStatus(QStringLiteral("Übernahme abgebrochen,\nes wurde nichts angelegt!"));
  } catch (const StorageError& error) {
    progress.setStatus(QStringLiteral("Fehler bei Übernahme (%1)\n%2\nEs wurde nichts angelegt!")
                           .arg(error.code())
                           .arg(error.text()));
  }
  return std::nullopt;
}

std::optional<int> AccessImport::vehicles(const QString& path) {
  if (!isAccessFile(path)) return std::nullopt;
  try {
    AccessDatabase database(parts_.reader, path);
    const AccessContents contents = contentsOf(database);
    if (contents.kind == AccessKind::V2) return contents.vehicles;
  } catch (const StorageError&) {
    // takeOver() tells what is wrong with the file.
  }
  return std::nullopt;
}

void AccessImport::ConvertDB(const QString& path, DatabaseSession& session) {
  ImportEnd end = ImportEnd::Broken;
  parts_.run([&](Progress& progress) {
    end = lokari::ConvertDB([&] { return std::make_unique<AccessDatabase>(parts_.reader, path); },
                            session, progress);
  });
  // Whoever has stopped it wants no more of the old installation now.
  if (end != ImportEnd::Broken) bring(path, session.database());
}

std::optional<QString> AccessImport::takeOver(const QString& path) {
  if (!isCurrent(path)) return QString();
  const QString target = chooseTarget(path);
  if (target.isEmpty() || QFileInfo::exists(target)) return target;
  bool taken = false;
  parts_.run([&](Progress& progress) {
    taken = takeOverAccess(parts_.reader, path, target, parts_.appPath, progress).has_value();
  });
  if (!taken) return QString();
  try {
    bring(path, Database(target));
  } catch (const StorageError&) {
    // Opening it tells what is wrong.
  }
  return target;
}

void AccessImport::bring(const QString& path, const Database& database) {
  try {
    bringDescriptions(parts_.prompt, path, database, parts_.appPath);
  } catch (const StorageError& error) {
    parts_.prompt.message(error.text());
  }
}

bool AccessImport::isCurrent(const QString& path) {
  QString fault =
      QStringLiteral("Die Access-Datenbank enthält keine Fahrzeuge (Tabelle LOCO_DAT).");
  try {
    AccessDatabase database(parts_.reader, path);
    if (contentsOf(database).kind == AccessKind::Current) return true;
  } catch (const StorageError& error) {
    fault = error.text();
  }
  parts_.prompt.message(QStringLiteral("Datenbankdatei ") + path + u'\n' + fault);
  return false;
}

QString AccessImport::chooseTarget(const QString& path) {
  const QString earlier = findFile(targetBeside(path));
  const QString target = freeTargetBeside(path);
  const QString name = fileNameOf(path);
  if (earlier.isEmpty() || !isOwnDatabase(earlier)) {
    const bool yes = parts_.prompt.ask(QStringLiteral("%1 ist eine Access-Datenbank.\n"
                                                      "In die neue Datenbank %2 übernehmen?\n\n"
                                                      "Die Access-Datei bleibt unverändert.")
                                           .arg(name, fileNameOf(target)),
                                       Buttons::YesNo, Icon::Question, {}) == Answer::Yes;
    return yes ? target : QString();
  }
  switch (parts_.prompt.ask(QStringLiteral("Die Access-Datenbank %1 ist schon übernommen.\n"
                                           "Die Datenbank %2 öffnen?\n\n"
                                           "Bei \"Nein\" wird sie noch einmal übernommen, in %3.")
                                .arg(name, fileNameOf(earlier), fileNameOf(target)),
                            Buttons::YesNoCancel, Icon::Question, {})) {
    case Answer::Yes:
      return earlier;
    case Answer::No:
      return target;
    default:
      return {};
  }
}

}  // namespace lokari
