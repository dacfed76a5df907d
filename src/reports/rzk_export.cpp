#include "reports/rzk_export.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>

#include <stdexcept>

#include "base/file_place.h"
#include "base/paths.h"
#include "base/plain_file.h"
#include "base/prompt.h"
#include "base/whole_file.h"
#include "db/database.h"
#include "db/jet_sql.h"
#include "reports/rzk_merge.h"

namespace lokari {
namespace {

constexpr qsizetype kExtension = 3;
constexpr int kIncompatible = -1;

/// A file that cannot be read or written; the text is German.
class FileError : public std::runtime_error {
 public:
  explicit FileError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

[[noreturn]] void fail(const QString& what, const QString& file, const QString& reason) {
  throw FileError(QStringLiteral("%1\r%2\r(%3)\rDie Fahrzeugdatei ist unverändert.")
                      .arg(what, QDir::toNativeSeparators(file), reason));
}

[[noreturn]] void fail(const QString& what, const QFile& file) {
  fail(what, file.fileName(), file.errorString());
}

/// A record, or nothing at the end of the file.
std::optional<QByteArray> readRecord(QFile& file) {
  QByteArray record = file.read(kRzkRecordSize);
  if (file.error() != QFileDevice::NoError) fail(QStringLiteral("Fehler beim Lesen von"), file);
  if (record.size() < kRzkRecordSize) return {};
  return record;
}

/// Whoever broke the file off may have lost more than its last record.
void requireWhole(const QFile& file) {
  const qint64 torn = file.size() % kRzkRecordSize;
  if (torn == 0) return;
  fail(QStringLiteral("Die Fahrzeugdatei ist beschädigt:"), file.fileName(),
       QStringLiteral("vom letzten Fahrzeug sind nur %1 von %2 Bytes da")
           .arg(torn)
           .arg(kRzkRecordSize));
}

void requirePlace(const QString& file, const QStringList& own, const QString& what) {
  try {
    FilePlace::ofProgram(file, kVehicleFile, own);
  } catch (const PlaceRefused& refused) {
    fail(what, file, refused.reason());
  }
}

/// A link to a vehicle file is that file: it and not the link is read and replaced.
QString behindLinks(const QString& file) {
  const QString canonical = QFileInfo(file).canonicalFilePath();
  return canonical.isEmpty() ? file : canonical;
}

RzkVehicle vehicleOf(const QSqlQuery& row) {
  return {.shortName = row.value(1).toString(),
          .longName = row.value(2).toString(),
          .group = static_cast<qint16>(row.value(3).toInt()),
          .address = static_cast<qint16>(row.value(0).toInt())};
}

/// Busy for a scope.
class Busy {
 public:
  explicit Busy(const std::function<void(bool)>& tell) : tell_(tell) {
    if (tell_) tell_(true);
  }
  ~Busy() {
    if (tell_) tell_(false);
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  const std::function<void(bool)>& tell_;
};

QString withExtension(const QString& name) {
  return fileNameOf(name).contains(u'.') ? name : name + QStringLiteral(".DAT");
}

}  // namespace

QString rzkTemporary(const QString& file) {
  return folderOf(file) + fileNameOf(file).chopped(std::min(kExtension, fileNameOf(file).size())) +
         QStringLiteral("TMP");
}

void RzkExport::mnuExpRZK(const QString& folder) {
  for (;;) {
    const QString chosen = parts_.prompt.saveFile(
        {.title = QStringLiteral("RZK Fahrzeugdatei wählen"),
         .filter = QStringLiteral("RZK Fahrzeugdateien (*.DAT)|*.DAT|Alle Dateien (*.*)|*.*"),
         .folder = folder,
         .presetName = QStringLiteral("RZK_LOCO.DAT")});
    if (chosen.isEmpty()) return;
    const QString name = withExtension(chosen);
    const Target target = targetOf(name);
    if (target == Target::OtherFile) continue;
    if (target == Target::Cancelled) return;
    const std::optional<QString> text = run(name, target == Target::New);
    if (text) parts_.prompt.message(*text, Icon::Information);
    return;
  }
}

std::optional<QString> RzkExport::exportTo(const QString& name) {
  if (name.isEmpty()) return {};
  const QString whole = withExtension(name);
  const Target target = targetOf(whole);
  if (target == Target::Cancelled || target == Target::OtherFile) return {};
  return run(whole, target == Target::New);
}

RzkExport::Target RzkExport::targetOf(const QString& name) const {
  if (rzkTemporary(name).compare(name, Qt::CaseInsensitive) == 0) {
    // The temporary file would be the vehicle file itself.
    parts_.prompt.message(
        QStringLiteral("Die Endung TMP ist für die Zwischendatei der Übernahme vergeben.\r"
                       "Bitte einen anderen Namen wählen."));
    return Target::OtherFile;
  }
  if (!findFile(name).isEmpty()) return Target::Existing;
  const Answer answer =
      parts_.prompt.ask(QStringLiteral("RZK Fahrzeugdatei %1 nicht gefunden\r"
                                       "oder Zugriff nicht möglich! Datei neu anlegen?")
                            .arg(QDir::toNativeSeparators(name)),
                        Buttons::YesNoCancel);
  if (answer == Answer::Yes) return Target::New;
  return answer == Answer::No ? Target::OtherFile : Target::Cancelled;
}

std::optional<QString> RzkExport::run(const QString& name, bool isNew) {
  const QString file = behindLinks(placeFor(name));
  int count = 0;
  QString failure;
  {
    const Busy busy(parts_.busy);
    try {
      count = merge(file, placeFor(rzkTemporary(file)), isNew);
    } catch (const StorageError& error) {
      failure = error.text();
    } catch (const FileError& error) {
      failure = QString::fromUtf8(error.what());
    }
  }
  if (!failure.isEmpty()) {
    parts_.prompt.message(failure);
    return {};
  }
  if (count == kIncompatible) {
    parts_.prompt.message(QStringLiteral("RZK_LOCO.DAT nicht kompatibel, Übernahme abgebrochen."));
    return {};
  }
  return QStringLiteral("Export beendet,\r%1 Fahrzeuge übernommen.").arg(count);
}

int RzkExport::merge(const QString& fileName, const QString& temporary, bool isNew) {
  const QString where =
      sqlFilter_.isEmpty() ? QString() : QStringLiteral("WHERE ") + sqlFilter_ + u' ';
  const QString vehicles =
      QStringLiteral("SELECT DC_ADR, ST_SNAME, FZ_LNAME, ST_GROUP FROM LOCO_DAT ") + where +
      QStringLiteral("ORDER BY DC_ADR");
  // A filter that is none is told before any file is touched.
  translateSelect(database_.schema(), vehicles);
  // An old file tells by its head that it is another program's.
  requirePlace(fileName, isNew ? parts_.own : QStringList(),
               QStringLiteral("Kann Datei nicht öffnen:"));
  requirePlace(temporary, parts_.own, QStringLiteral("Kann Datei nicht anlegen:"));
  QFile::remove(temporary);
  WholeFile target(fileName, temporary);
  if (!target.begin()) fail(QStringLiteral("Kann Datei nicht anlegen:"), temporary, target.fault());
  PlainFile old(fileName);
  RzkMerge::NextRecord nextOld;
  if (!isNew) {
    if (!old.open()) fail(QStringLiteral("Kann Datei nicht öffnen:"), old);
    if (const auto head = readRecord(old); !head || !isRzkHead(*head)) return kIncompatible;
    requireWhole(old);
    nextOld = [&old] { return readRecord(old); };
  }
  RzkMerge merge(nextOld, [&target](const QByteArray& record) { target.write(record); });
  database_.query(vehicles, [&merge](const QSqlQuery& row) {
    // A record without an address is no vehicle that could be controlled.
    if (!row.isNull(0)) merge.add(vehicleOf(row));
  });
  const int count = merge.finish();
  old.close();
  if (!target.commit()) {
    fail(QStringLiteral("Fehler beim Schreiben von"), fileName, target.fault());
  }
  return count;
}

}  // namespace lokari
