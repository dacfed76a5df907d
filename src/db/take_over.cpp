#include "db/take_over.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <array>

#include "base/paths.h"
#include "base/progress.h"
#include "db/database.h"
#include "db/folder_lock.h"
#include "db/kept_files.h"
#include "db/new_database.h"
#include "db/row_faults.h"
#include "db/take_over_rows.h"

namespace lokari {
namespace {

struct Table {
  const char16_t* name;
  double share;  ///< of the way, in percent
};
constexpr std::array kTables{
    Table{u"DCMANUFS", 1}, Table{u"DECODERS", 1}, Table{u"MANUFS", 1}, Table{u"MOTORS", 1},
    Table{u"ERAS", 1},     Table{u"LINES", 1},    Table{u"FTYPES", 1}, Table{u"LOCO_DAT", 93},
};
/// Rows between two looks at the user.
constexpr int kPause = 32;

/// The hidden folder in which a database is made.
constexpr char16_t kWorkshop[] = u".lokari-uebernahme-";

/// A take-over that was killed leaves its folder; the next one knows by its lock that nobody works
/// in there any more.
void removeLeftovers(const QDir& folder) {
  const QStringList names = folder.entryList({QString::fromUtf16(kWorkshop) + u'*'},
                                             QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
  for (const QString& name : names) {
    QDir left(folder.filePath(name));
    if (!FolderLock(left.path()).isHeld()) continue;
    left.removeRecursively();
  }
}

/// The user has had enough.
struct Stopped {};

QString refusal(const TakeOverRows& taker, const StorageError& error) {
  return taker.areVehicles() && error.code() == storage_error::kDuplicateKey
             ? QStringLiteral("Diese Adresse gibt es in der Sammlung schon.")
             : error.text();
}

StorageError cannotWrite(const QString& path) {
  return {storage_error::kMediumFailed,
          QStringLiteral("%1 kann nicht angelegt werden.").arg(QDir::toNativeSeparators(path))};
}

StorageError noTemplate() {
  return {storage_error::kMediumFailed,
          QStringLiteral("Die Vorlage EMPTY.MDB ist nicht gefunden oder nicht lesbar.")};
}

}  // namespace

QString keptFolderOf(const QString& target) {
  const QFileInfo file(target);
  return file.dir().filePath(file.completeBaseName() + QStringLiteral("-Dateien"));
}

QString targetBeside(const QString& file, int number) {
  const QFileInfo info(file);
  const QString suffix = number == 1 ? QString() : QStringLiteral("_%1").arg(number);
  return info.dir().filePath(info.completeBaseName() + QStringLiteral("_Lokari") + suffix +
                             QStringLiteral(".MDB"));
}

QString freeTargetBeside(const QString& file) {
  int number = 1;
  while (!findFile(targetBeside(file, number)).isEmpty() ||
         !findFile(keptFolderOf(targetBeside(file, number))).isEmpty()) {
    ++number;
  }
  return targetBeside(file, number);
}

TakeOver::TakeOver(ForeignDatabase& source, TakeOverPlan plan, Progress& progress)
    : source_(source), plan_(std::move(plan)), progress_(progress) {
  report_.target = plan_.target;
}

bool TakeOver::run() {
  const QDir folder = QFileInfo(plan_.target).dir();
  removeLeftovers(folder);
  const QTemporaryDir workshop(folder.filePath(QString::fromUtf16(kWorkshop)) +
                               QStringLiteral("XXXXXX"));
  const FolderLock working(workshop.path());
  const QString file = workshop.filePath(QStringLiteral("neu.MDB"));
  if (!QFileInfo(plan_.templatePath).isReadable()) throw noTemplate();
  if (const QString fault = templateFault(plan_.templatePath); !fault.isEmpty()) {
    throw StorageError(storage_error::kMediumFailed,
                       QStringLiteral("Die Vorlage EMPTY.MDB ist nicht brauchbar: ") + fault);
  }
  if (!workshop.isValid() || !copyTemplate(plan_.templatePath, file)) {
    throw cannotWrite(plan_.target);
  }
  KeptFiles kept(workshop.filePath(QStringLiteral("Dateien")));
  try {
    Database database(file);
    // Until it is complete nobody needs this file after a crash; it goes to the medium as a whole.
    database.write(QStringLiteral("PRAGMA synchronous = OFF"), {});
    fill(database, kept);
  } catch (const Stopped&) {
    return false;
  }
  if (!report_.remarks().isEmpty()) {
    report_.kept = keptFolderOf(plan_.target);
    kept.keepAs(reportFileName(), report_.fullText().toUtf8());
    if (!moveIntoPlace(kept.folder(), report_.kept)) throw cannotWrite(report_.kept);
  }
  if (!syncToDisk(file) || !moveIntoPlace(file, plan_.target)) {
    if (!report_.kept.isEmpty()) QDir(report_.kept).removeRecursively();
    throw cannotWrite(plan_.target);
  }
  syncToDisk(folder.path());
  return true;
}

void TakeOver::fill(Database& database, KeptFiles& kept) {
  for (const Table& known : kTables) {
    const QString name = QString::fromUtf16(known.name);
    progress_.setStatus(QStringLiteral("Übernehme Tabelle %1...\n\n").arg(name));
    const std::unique_ptr<ForeignTable> rows = source_.table(name);
    if (rows == nullptr && &known == &kTables.back()) {
      throw StorageError(storage_error::kUnknownName,
                         QStringLiteral("Die Datei hat keine Tabelle LOCO_DAT."));
    }
    if (rows == nullptr) {
      report_.changed
          << QStringLiteral("Die Tabelle %1 fehlt, es bleibt bei der Vorlage.").arg(name);
    } else {
      database.transaction(
          [&] { takeTable(database, *database.schema().table(name), *rows, kept); });
    }
    percent_ += known.share;
    progress_.setPercent(percent_);
  }
  // The maker that every decoder may have.
  database.write(QStringLiteral("INSERT OR IGNORE INTO DCMANUFS (DC_MANUF, DC_MANUF_TEXT) "
                                "VALUES (0, 'Standard')"),
                 {});
  tellUnknownTables();
}

void TakeOver::takeTable(Database& database, const TableInfo& table, ForeignTable& rows,
                         KeptFiles& kept) {
  const TakeOverRows taker(table, rows.columns());
  for (const QString& column : taker.unknownColumns()) {
    report_.changed << QStringLiteral("Die Spalte %1 der Tabelle %2 kennt Lokari nicht.")
                           .arg(column, table.name);
  }
  if (taker.isEmpty()) return;
  database.write(QStringLiteral("DELETE FROM ") + table.name, {});
  int& taken = taker.areVehicles() ? report_.vehicles : report_.entries;
  QVariantList row;
  for (int number = 1; rows.next(row); ++number) {
    if (number % kPause == 0) showRow(number, rows.rowCount());
    if (takeRow(database, taker, row, taker.rowName(row, number), kept)) ++taken;
  }
  if (progress_.cancelled()) throw Stopped();
}

bool TakeOver::takeRow(Database& database, const TakeOverRows& taker, const QVariantList& row,
                       const QString& rowName, KeptFiles& kept) {
  try {
    const TakenRow values = taker.take(row);
    if (!insertRow(database, taker, values.values)) {
      report_.changed << QStringLiteral("%1 hat eine neue Satznummer.").arg(rowName);
    }
    for (const KeptValue& value : values.kept) {
      report_.changed << QStringLiteral("%1: %2 in \"%3\".")
                             .arg(rowName, value.reason,
                                  kept.keep(value.column, value.extension, value.data));
    }
    return true;
  } catch (const StorageError& error) {
    if (!concernsRow(error)) throw;
    report_.skipped
        << QStringLiteral("%1 ist nicht übernommen: %2").arg(rowName, refusal(taker, error));
    return false;
  }
}

bool TakeOver::insertRow(Database& database, const TakeOverRows& taker,
                         const QVariantList& values) {
  try {
    database.write(taker.statement(), values);
    return true;
  } catch (const StorageError& error) {
    const QVariantList unnumbered = taker.withoutNumber(values);
    if (error.code() != storage_error::kDuplicateKey || unnumbered == values) throw;
    database.write(taker.statement(), unnumbered);
    return false;
  }
}

void TakeOver::showRow(int row, int count) {
  if (progress_.cancelled()) throw Stopped();
  const double share = kTables.back().share;
  if (percent_ < 100 - share) return;
  progress_.setStatus(
      QStringLiteral("Übernehme Fahrzeuge...\n\nSatz %1 von %2").arg(row).arg(count));
  progress_.setPercent(percent_ + share * std::min(1.0, double(row) / std::max(1, count)));
}

void TakeOver::tellUnknownTables() {
  for (const QString& name : source_.tables()) {
    const bool known = std::any_of(kTables.begin(), kTables.end(), [&](const Table& table) {
      return name.compare(QStringView(table.name), Qt::CaseInsensitive) == 0;
    });
    if (!known) report_.changed << QStringLiteral("Die Tabelle %1 kennt Lokari nicht.").arg(name);
  }
}

}  // namespace lokari
