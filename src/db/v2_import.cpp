#include "db/v2_import.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>

#include <algorithm>
#include <optional>

#include "base/numbers.h"
#include "base/paths.h"
#include "base/progress.h"
#include "base/text_file.h"
#include "db/column_values.h"
#include "db/cv_record.h"
#include "db/database_session.h"
#include "db/ole_picture.h"
#include "db/row_faults.h"
#include "db/take_over_report.h"

namespace lokari {
namespace {

constexpr char16_t kVehicles[] = u"LOCO_DAT";
/// A name for a vehicle that has none.
constexpr char16_t kNoName[] = u"...";

QString name(const char16_t* column) {
  return QString::fromUtf16(column);
}

struct Counts {
  int imported = 0;
  int failed = 0;
  int doubled = 0;
  int foreignPictures = 0;  ///< of imported rows
};

/// What an import did.
struct Outcome {
  Counts counts;
  QStringList left;  ///< a sentence for each row that was not taken, with its reason
  std::optional<StorageError> broken;  ///< why the source could not be read to its end
  bool stopped = false;                ///< by the user

  ImportEnd end() const {
    if (broken || stopped) return ImportEnd::Broken;
    return counts.failed == 0 ? ImportEnd::Whole : ImportEnd::RowsFailed;
  }
};

QString errorText(const StorageError& error) {
  return QStringLiteral("Fehler bei Import (%1)\r").arg(error.code()) + error.text();
}

QString report(const Outcome& outcome) {
  const Counts& counts = outcome.counts;
  QString text = counts.failed > 0 ? QStringLiteral("Import abgeschlossen,")
                                   : QStringLiteral("Import erfolgreich abgeschlossen,");
  if (outcome.broken) text = errorText(*outcome.broken);
  text += u'\r' + printed(counts.imported) + QStringLiteral(" Datensätze importiert");
  if (counts.failed > 0) {
    text += QStringLiteral(",\r") + printed(counts.failed) +
            QStringLiteral(" Datensätze nicht importiert");
  }
  text += u'!';
  if (counts.doubled > 0) text += QStringLiteral("\r(%1 Datensätze doppelt)").arg(counts.doubled);
  if (counts.foreignPictures > 0) {
    text +=
        QStringLiteral("\r(%1 %2 weder Bitmap noch JPEG, unverändert importiert)")
            .arg(counts.foreignPictures)
            .arg(counts.foreignPictures == 1 ? QStringLiteral("Bild") : QStringLiteral("Bilder"));
  }
  return text;
}

/// All sentences, in a file beside the database. Gives its name; empty where there is none.
QString keepRemarks(const QString& database, const QStringList& remarks) {
  const QFileInfo file(database);
  const QString stem = file.completeBaseName() + QStringLiteral("-Import");
  QString place;
  for (int number = 1; place.isEmpty() || QFileInfo::exists(place); ++number) {
    place = file.dir().filePath(number == 1 ? stem + QStringLiteral(".txt")
                                            : QStringLiteral("%1 %2.txt").arg(stem).arg(number));
  }
  const QByteArray text = encodeMarkedUtf8(remarks.join(QStringLiteral("\r\n")));
  return writeFileAtomically(place, text) ? fileNameOf(place) : QString();
}

/// Below the report: what was not taken, and why; as many as have room.
QString remarksBelow(const QString& database, const QStringList& left) {
  if (left.isEmpty()) return {};
  QString text = QStringLiteral("\r");
  for (const QString& each : left.mid(0, kShownRemarks)) text += QStringLiteral("\r• ") + each;
  if (left.size() <= kShownRemarks) return text;
  text += QStringLiteral("\r… und %1 weitere").arg(left.size() - kShownRemarks);
  const QString name = keepRemarks(database, left);
  if (!name.isEmpty()) text += QStringLiteral("\rAlle: ") + name;
  return text;
}

class V2Import {
 public:
  V2Import(ForeignTable& source, Database& target, Progress& progress)
      : source_(source), target_(target), progress_(progress) {
    records_.open(target, QStringLiteral("SELECT * FROM LOCO_DAT WHERE DC_RECNO = 0"));
    records_.joinTransaction();
    target.query(QStringLiteral("SELECT MAX(DC_RECNO) FROM LOCO_DAT"),
                 [this](const QSqlQuery& row) { nextRecNo_ = row.value(0).toLongLong(); });
  }

  /// Throws StorageError when the target fails; nothing was taken then.
  Outcome run() {
    target_.transaction([this] { takeRows(); });
    return outcome_;
  }

 private:
  void takeRows() {
    const int count = source_.rowCount();
    const double step = 100.0 / std::max(count, 1);
    double percent = 0;
    progress_.setPercent(percent);
    int row = 0;
    while (!stopped() && nextRow()) {
      takeRow();
      progress_.setStatus(QStringLiteral("Satz") + printed(++row) + QStringLiteral(" von") +
                          printed(count));
      percent = std::min(percent + step, 100.0);
      progress_.setPercent(percent);
    }
  }

  bool stopped() {
    outcome_.stopped = progress_.cancelled();
    return outcome_.stopped;
  }

  /// A source that breaks off ends the import like its last row: what came before is stored.
  bool nextRow() {
    try {
      return source_.next(row_);
    } catch (const StorageError& error) {
      outcome_.broken = error;
      return false;
    }
  }

  void takeRow() {
    try {
      if (isKnown(address())) {
        ++outcome_.counts.doubled;
        leave(QStringLiteral("Die Adresse gibt es schon, ") + ownerOf(address()));
        return;
      }
      store();
      ++outcome_.counts.imported;
    } catch (const StorageError& error) {
      if (!concernsRow(error)) throw;
      records_.CancelUpdate();
      ++outcome_.counts.failed;
      leave(error.text());
    }
  }

  void leave(const QString& why) {
    outcome_.left << QStringLiteral("Adresse %1 \"%2\": %3")
                         .arg(value(QStringLiteral("DC_ADR")).toString(),
                              value(QStringLiteral("ST_SNAME")).toString(), why);
  }

  /// Who has an address in the database.
  QString ownerOf(int address) const {
    QString owner;
    target_.read(QStringLiteral("SELECT ST_SNAME, DC_COLL FROM LOCO_DAT WHERE DC_ADR = ? LIMIT 1"),
                 {address}, [&owner](const QSqlQuery& row) {
                   owner = QStringLiteral("\"%1\"").arg(row.value(0).toString());
                   const QString collection = row.value(1).toString();
                   if (!collection.isEmpty()) {
                     owner += QStringLiteral(" in der Sammlung \"%1\"").arg(collection);
                   }
                 });
    return owner + u'.';
  }

  int address() const {
    const QString column = QStringLiteral("DC_ADR");
    const QVariant address = columnValue(*records_.table().column(column), value(column));
    if (address.isNull()) {
      // Nothing by which the vehicle could be told from others.
      throw StorageError(storage_error::kNotNumeric,
                         QStringLiteral("Das Fahrzeug hat keine Adresse."));
    }
    return address.toInt();
  }

  bool isKnown(int address) const {
    bool known = false;
    target_.query(QStringLiteral("SELECT DC_RECNO FROM LOCO_DAT WHERE DC_ADR=%1").arg(address),
                  [&known](const QSqlQuery&) { known = true; });
    return known;
  }

  void store() {
    ++nextRecNo_;
    records_.AddNew();
    records_.setValue(QStringLiteral("DC_RECNO"), nextRecNo_);
    records_.setValue(QStringLiteral("DC_COLL"), QStringLiteral(""));
    copyColumns();
    const bool foreignPicture = !unwrapPicture();
    if (records_.text(QStringLiteral("FZ_LNAME")).isEmpty()) {
      records_.setValue(QStringLiteral("FZ_LNAME"), name(kNoName));
    }
    copyCvs();
    records_.Update();
    if (foreignPicture) ++outcome_.counts.foreignPictures;
  }

  /// Takes a picture out of the wrapper of Access. Another object stays as it is: false.
  bool unwrapPicture() {
    const QString column = QStringLiteral("MD_PIC");
    const QByteArray stored = value(column).toByteArray();
    if (!isOleWrapped(stored)) return true;
    const std::optional<QByteArray> picture = pictureInOle(stored);
    if (picture) records_.setValue(column, *picture);
    return picture.has_value();
  }

  /// The first column is the source's own key.
  void copyColumns() {
    const QStringList& columns = source_.columns();
    for (qsizetype i = 1; i < std::min(columns.size(), row_.size()); ++i) {
      if (columns[i].compare(QLatin1String("DC_RECNO"), Qt::CaseInsensitive) == 0) continue;
      records_.setValue(columns[i], row_[i]);
    }
  }

  void copyCvs() {
    const QByteArray values = array(QStringLiteral("DC_CV"));
    const QByteArray marks = array(QStringLiteral("DC_CV_ST"));
    int set = 0;
    for (const CvColumns& columns : kCvColumns) {
      records_.setValue(name(columns.values), values);
      records_.setValue(name(columns.marks), marks);
      records_.setValue(name(columns.name), QStringLiteral("Set %1").arg(++set));
    }
  }

  QByteArray array(const QString& column) const {
    const QVariant stored = value(column);
    return stored.isNull() ? QByteArray(kCvFieldBytes, '\0') : stored.toByteArray();
  }

  /// Null also for a column that the source lacks.
  QVariant value(const QString& column) const {
    const QStringList& columns = source_.columns();
    const auto at = std::find_if(columns.begin(), columns.end(), [&](const QString& each) {
      return each.compare(column, Qt::CaseInsensitive) == 0;
    });
    return at == columns.end() ? QVariant() : row_.value(at - columns.begin());
  }

  ForeignTable& source_;
  Database& target_;
  Progress& progress_;
  RecordSet records_;
  QVariantList row_;
  qint64 nextRecNo_ = 0;
  Outcome outcome_;
};

Outcome takeOver(const OpenForeign& openSource, Database& target, Progress& progress) {
  const std::unique_ptr<ForeignDatabase> source = openSource();
  const std::unique_ptr<ForeignTable> vehicles = source->table(name(kVehicles));
  if (!vehicles) {
    throw StorageError(storage_error::kUnknownName,
                       QStringLiteral("Die Datei hat keine Tabelle LOCO_DAT."));
  }
  return V2Import(*vehicles, target, progress).run();
}

/// `database` is the path of the target.
ImportEnd runWithReport(Progress& progress, const QString& database,
                        const std::function<Outcome()>& import) {
  progress.setStatus(QStringLiteral("Importiere Tabelle LOCO_DAT...\r\r"));
  progress.setPercent(0);
  try {
    const Outcome outcome = import();
    progress.setPercent(100);
    progress.setStatus(report(outcome) + remarksBelow(database, outcome.left));
    return outcome.end();
  } catch (const StorageError& error) {
    progress.setStatus(errorText(error));
    return ImportEnd::Broken;
  }
}

}  // namespace

ImportEnd ConvertDB(const OpenForeign& openSource, DatabaseSession& session, Progress& progress) {
  const QString path = session.hasDatabase() ? session.database().path() : QString();
  const ImportEnd end = runWithReport(progress, path, [&] {
    if (!session.hasDatabase()) {
      throw StorageError(storage_error::kNoDatabase,
                         QStringLiteral("Es ist keine Datenbank geöffnet, die die Fahrzeuge "
                                        "aufnehmen könnte."));
    }
    session.form().records().CancelUpdate();
    return takeOver(openSource, session.database(), progress);
  });
  session.requery();
  return end;
}

ImportEnd importVehicles(const OpenForeign& openSource, Database& target, Progress& progress) {
  return runWithReport(progress, target.path(),
                       [&] { return takeOver(openSource, target, progress); });
}

}  // namespace lokari
