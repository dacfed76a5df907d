#include "db/database_session.h"

#include <utility>

#include "base/ini_file.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/plain_file.h"
#include "base/prompt.h"
#include "db/catalogue_update.h"
#include "db/new_database.h"
#include "db/reference_lists.h"

namespace lokari {
namespace {

constexpr char16_t kFilter[] = u"Access-Datenbanken|*.mdb|Alle Dateien (*.*)|*.*";
constexpr char16_t kNoAccess[] = u"oder Zugriff nicht möglich!";

constexpr char16_t kTemplateAdvice[] =
    u"EMPTY.MDB ist die Vorlage jeder neuen Datenbank: Sie ist aus der Installation zurückzuholen. "
    u"Es wurde nichts angelegt und nichts geändert.";

QString faultOf(const QString& path, const QString& fault) {
  return QStringLiteral("Datenbankdatei ") + path + u'\n' + fault;
}

QString databaseFolder(const QString& appPath) {
  return placeFor(appPath + QStringLiteral("/DB"));
}

bool isReadable(const QString& path) {
  return !path.isEmpty() && PlainFile(path).open();
}

}  // namespace

DatabaseSession::DatabaseSession(const RecordFormParts& parts, QString dbPath, OldFormat& oldFormat,
                                 QObject* parent)
    : QObject(parent),
      parts_(parts),
      dbPath_(std::move(dbPath)),
      oldFormat_(oldFormat),
      form_(parts) {}

DatabaseSession::~DatabaseSession() = default;

int DatabaseSession::InitDB() {
  refusal_.clear();
  const QString file = findFile(dbPath_);
  if (!isReadable(file)) {
    parts_.prompt.message(QStringLiteral("Datenbankdatei ") + dbPath_ +
                              QStringLiteral(" nicht gefunden\n") + QString::fromUtf16(kNoAccess) +
                              QStringLiteral("\nProgrammneuinstallation kann erforderlich sein."),
                          Icon::Warning, specialFileFault(file));
    return 1;
  }
  try {
    openDatabase(file);
  } catch (const StorageError& error) {
    return openingFailed(error);
  }
  showFirst();
  return 0;
}

// Everything that can fail happens to the new database before the old one goes.
void DatabaseSession::openDatabase(const QString& file) {
  auto database = std::make_unique<Database>(file);
  checkSources(*database);
  RecordSet vehicles;
  vehicles.open(*database, QString::fromUtf16(kDefaultQuery));
  form_.loadingRecord = true;
  form_.bind(*database, std::move(vehicles));
  catalogue_.bind(database.get());
  database_ = std::move(database);
  openPath_ = dbPath_;
}

void DatabaseSession::showFirst() {
  if (form_.records().count() == 0) {
    form_.butNew();
  } else if (form_.isRead() && numericPrefix(form_.text(QStringLiteral("dc_adr"))) == 0) {
    form_.butDelete();
  }
  form_.loadingRecord = false;
  form_.quietDelete = false;
}

void DatabaseSession::requery() {
  if (!hasDatabase()) return;
  RecordSet vehicles;
  try {
    vehicles.open(*database_, QString::fromUtf16(kDefaultQuery));
  } catch (const StorageError& error) {
    parts_.prompt.message(error.text());
    return;
  }
  form_.loadingRecord = true;
  form_.bind(*database_, std::move(vehicles));
  if (form_.records().count() == 0) form_.butNew();
  form_.loadingRecord = false;
}

int DatabaseSession::openingFailed(const StorageError& error) {
  const QString file = findFile(dbPath_);
  if (const std::optional<int> vehicles = oldFormat_.vehicles(file)) {
    if (*vehicles > 0) return offerImport(file);
    // One without vehicles has nothing to give; it is refused without a word.
    refusal_ = faultOf(dbPath_, QStringLiteral("Sie ist noch im Format von Lokari V2 und enthält "
                                               "keine Fahrzeuge."));
    return 1;
  }
  if (error.code() == storage_error::kAccessFile) {
    if (const std::optional<QString> taken = oldFormat_.takeOver(file)) {
      if (taken->isEmpty()) return 1;
      dbPath_ = *taken;
      return InitDB();
    }
  }
  const QString fault = faultOf(dbPath_, error.text());
  // A file that is simply none of ours is refused without a word.
  if (error.code() == storage_error::kNoDatabase || error.code() == storage_error::kUnknownName) {
    refusal_ = fault;
  } else {
    parts_.prompt.message(fault);
  }
  return 1;
}

void DatabaseSession::tellRefusal() {
  if (refusal_.isEmpty()) return;
  const QString advice =
      hasDatabase() ? QStringLiteral(
                          "Die Datei bleibt, wie sie ist, und %1 bleibt geöffnet. Öffnen lassen "
                          "sich Datenbanken, die mit Lokari angelegt oder übernommen wurden.")
                          .arg(fileNameOf(openPath_))
                    : QStringLiteral(
                          "Die Datei bleibt, wie sie ist. Eine Sicherung der Datenbank an ihre "
                          "Stelle legen, oder in %1 unter DBPath eine andere Datenbank nennen.")
                          .arg(parts_.ini.path());
  parts_.prompt.message(std::exchange(refusal_, {}), Icon::Warning, advice);
}

// The name is that of the open file again when the new one cannot be opened.
bool DatabaseSession::openNamed(const QString& path) {
  const QString before = std::exchange(dbPath_, path);
  if (InitDB() == 0) return true;
  tellRefusal();
  dbPath_ = before;
  return false;
}

int DatabaseSession::offerImport(const QString& file) {
  dbPath_ = openPath_;
  if (parts_.prompt.ask(QStringLiteral("Die Datenbank is noch im Format von Lokari V2.\n"
                                       "In aktuelle V3-Datenbank importieren?"),
                        Buttons::YesNo, Icon::Question, {}) == Answer::Yes) {
    oldFormat_.ConvertDB(file, *this);
  }
  return 0;
}

void DatabaseSession::mnuDbOpen() {
  if (!form_.storeEdit()) return;
  const QString path =
      parts_.prompt.openFile({QStringLiteral("Datenbank öffnen"), QString::fromUtf16(kFilter),
                              databaseFolder(parts_.appPath), QString()});
  if (path.isEmpty() || !openNamed(path)) return;
  emit opened();
  if (form_.position() < 0) form_.InitDcData();
}

void DatabaseSession::mnuDbNew() {
  if (!form_.storeEdit()) return;
  QString path =
      parts_.prompt.saveFile({QStringLiteral("Neue Datenbank anlegen"), QString::fromUtf16(kFilter),
                              databaseFolder(parts_.appPath), QStringLiteral("NEUE_DB.MDB")});
  if (path.isEmpty()) return;
  if (!isReadable(findFile(templatePath()))) {
    parts_.prompt.message(QStringLiteral("Datenbankdatei ") + templatePath() +
                          QStringLiteral(" nicht gefunden\n") + QString::fromUtf16(kNoAccess));
    return;
  }
  if (!fileNameOf(path).contains(u'.')) path += QStringLiteral(".MDB");
  if (!findFile(path).isEmpty()) {
    parts_.prompt.message(QStringLiteral("Datenbankdatei ") + path +
                          QStringLiteral(" exisitiert bereits\n") + QString::fromUtf16(kNoAccess));
    return;
  }
  createDatabase(path);
}

QString DatabaseSession::templatePath() const {
  return parts_.appPath + QStringLiteral("/EMPTY.MDB");
}

void DatabaseSession::createDatabase(const QString& path) {
  const QString source = findFile(templatePath());
  const QString fault = templateFault(source);
  if (!fault.isEmpty()) {
    parts_.prompt.message(faultOf(templatePath(), fault), Icon::Warning,
                          QString::fromUtf16(kTemplateAdvice));
    return;
  }
  const QString file = placeFor(path);
  emit busyChanged(true);
  const bool copied = copyTemplate(source, file);
  emit busyChanged(false);
  if (!copied) {
    parts_.prompt.beep();
    parts_.prompt.message(
        QStringLiteral("Fehler beim Kopieren der Datenbank!"), Icon::Warning,
        QStringLiteral("Es wurde keine Datei angelegt. Gibt es den Ordner %1, ist er "
                       "beschreibbar, und ist auf dem Datenträger Platz?")
            .arg(folderOf(file)));
    return;
  }
  // An empty database begins with a new record, working copy and caption included.
  if (openNamed(path)) {
    emit opened();
  } else {
    removeDatabase(file);
  }
}

void DatabaseSession::mnuUpdDB() {
  if (!hasDatabase()) return;
  if (parts_.prompt.ask(QStringLiteral("Neue Decoderhersteller und -typen einspielen?"),
                        Buttons::OkCancel) != Answer::Ok) {
    return;
  }
  emit busyChanged(true);
  QString file = templatePath();
  QString failure;
  try {
    const Database source(findFile(file));
    file = openPath_;
    updateCatalogue(source, *database_);
  } catch (const StorageError& error) {
    failure = error.text();
  }
  emit busyChanged(false);
  if (!failure.isEmpty()) {
    parts_.prompt.message(faultOf(file, failure), Icon::Warning,
                          file == openPath_ ? QString() : QString::fromUtf16(kTemplateAdvice));
    return;
  }
  form_.refreshMaker();
  parts_.prompt.beep();
  parts_.prompt.message(QStringLiteral("Datenbankerweiterung erfolgreich abgeschlossen!"),
                        Icon::Information);
}

}  // namespace lokari
