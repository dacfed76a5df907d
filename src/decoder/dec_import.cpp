#include "decoder/dec_import.h"

#include <QDir>
#include <QFileInfo>

#include <stdexcept>

#include "base/paths.h"
#include "base/plain_file.h"
#include "base/prompt.h"
#include "base/text_file.h"
#include "db/catalogue_update.h"
#include "db/database.h"
#include "db/record_set.h"
#include "decoder/dec_header.h"

namespace lokari {
namespace {

constexpr char16_t kFilter[] = u"Decodertypdateien (*.dec)|*.dec|Alle Dateien (*.*)|*.*";

/// No description comes near it: whatever is larger was chosen by mistake, and is not read.
constexpr qint64 kLargestFile = qint64{4} << 20;

class CopyFailed : public std::runtime_error {
 public:
  CopyFailed() : std::runtime_error("description file not copied") {}
};

/// One file in any spelling of its path.
bool isSameFile(const QString& a, const QString& b) {
  const auto plain = [](const QString& path) {
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath()).toUpper();
  };
  return plain(a) == plain(b) || (QFileInfo::exists(b) && QFileInfo(a).canonicalFilePath() ==
                                                              QFileInfo(b).canonicalFilePath());
}

/// Up to the last "."; the whole name when it has none.
QString stemOf(const QString& name) {
  const qsizetype dot = name.lastIndexOf(u'.');
  return dot < 0 ? name : name.left(dot);
}

class DecImport {
 public:
  explicit DecImport(const DecImportParts& parts) : parts_(parts), catalogue_(&parts.database) {}

  void run() {
    if (!chooseFile() || !readSource() || !findMaker() || !findPlace()) return;
    if (parts_.prompt.ask(question(), Buttons::OkCancel) != Answer::Ok || !store()) return;
    offerNameOfType();
  }

 private:
  bool chooseFile() {
    name_ = parts_.prompt.openFile({QStringLiteral("Decoderbeschreibungsdatei importieren"),
                                    QString::fromUtf16(kFilter), parts_.appPath, QString()});
    if (name_.isEmpty()) return false;
    if (!fileNameOf(name_).contains(u'.')) name_ += QStringLiteral(".DEC");
    return true;
  }

  bool readSource() {
    source_ = findFile(name_);
    PlainFile file(source_);
    if (!file.open()) {
      parts_.prompt.message(QStringLiteral("Decoderdatei ") + name_ +
                            QStringLiteral(" nicht gefunden\roder Zugriff nicht möglich!"));
      return false;
    }
    if (file.size() <= kLargestFile) data_ = file.readAll();
    header_ = readDecHeader(decodeText(data_));
    if (!header_.type.isEmpty()) return true;
    parts_.prompt.message(QStringLiteral("Decoderbezeichnung in Decoderdatei nicht gefunden!"));
    return false;
  }

  bool findMaker() {
    std::optional<Maker> maker = makerOf(header_.maker);
    if (!maker) {
      if (!header_.maker.isEmpty()) {
        parts_.prompt.message(QStringLiteral("Decoderhersteller ") + header_.maker +
                              QStringLiteral(" nicht gefunden.\rBitte passenden Hersteller "
                                             "wählen."));
      }
      const std::optional<int> chosen = parts_.chooseMaker(catalogue_.makers());
      if (!chosen) return false;
      maker = catalogue_.makerByNumber(*chosen);
      if (!maker) return false;
    }
    maker_ = *maker;
    return true;
  }

  std::optional<Maker> makerOf(const QString& digits) const {
    bool isNumber = false;
    const int number = digits.toInt(&isNumber);
    return isNumber ? catalogue_.makerByNumber(number) : std::nullopt;
  }

  bool findPlace() {
    const QString path = insideFolder(
        parts_.appPath, {maker_.name, stemOf(fileNameOf(name_)) + QStringLiteral(".dec")});
    if (path.isEmpty()) {
      parts_.prompt.message(
          QStringLiteral("Die Herstellerbezeichnung \"%1\" ergibt keinen Ordner für die "
                         "Decoderdatei!")
              .arg(maker_.name));
      return false;
    }
    place_ = placeFor(path);
    isInPlace_ = isSameFile(source_, place_);
    return true;
  }

  QString question() const {
    const QString what = QStringLiteral("Decodertyp ") + header_.type +
                         QStringLiteral(" (Hersteller ") + maker_.name + u')';
    if (isInPlace_) return what + QStringLiteral(" in Datenbank anlegen?");
    if (QFileInfo::exists(place_))
      return what + QStringLiteral(" existiert bereits.\rÜberschreiben?");
    return what + QStringLiteral(" anlegen?");
  }

  /// False when it failed; the user has been told.
  bool store() const {
    try {
      // The file goes last: a type that the database refuses must not replace a description.
      parts_.database.transaction([this] {
        RecordSet types;
        types.open(parts_.database, QStringLiteral("SELECT * FROM DECODERS"));
        types.joinTransaction();
        addType(types, maker_.number, header_.type);
        if (!isInPlace_) copy();
      });
      return true;
    } catch (const StorageError& error) {
      parts_.prompt.message(error.text());
    } catch (const CopyFailed&) {
      parts_.prompt.message(
          QStringLiteral("Decoderdatei %1 kann nicht geschrieben werden!").arg(place_));
    }
    return false;
  }

  /// The decoder window looks for the type's name, not for the one that the file came with.
  void offerNameOfType() const {
    const QString file = stemOf(fileNameOf(name_));
    if (file.compare(header_.type, Qt::CaseInsensitive) == 0) return;
    const QString needed =
        insideFolder(parts_.appPath, {maker_.name, header_.type + QStringLiteral(".dec")});
    if (needed.isEmpty() || !findFile(needed).isEmpty()) return;
    const Answer answer = parts_.prompt.ask(
        {.text = QStringLiteral("Die Beschreibung heißt %1.dec, der Decodertyp aber %2: So findet "
                                "ihn das Decoderfenster nicht.\rEine Kopie unter dem Namen %2.dec "
                                "anlegen?")
                     .arg(file, header_.type),
         .buttons = Buttons::YesNo});
    if (answer == Answer::Yes && !writeFileAtomically(placeFor(needed), data_)) {
      parts_.prompt.message(
          QStringLiteral("Decoderdatei %1 kann nicht geschrieben werden!").arg(needed));
    }
  }

  void copy() const {
    // A maker of which no description is installed has no folder yet.
    if (!QDir().mkpath(QFileInfo(place_).path()) || !writeFileAtomically(place_, data_)) {
      throw CopyFailed();
    }
  }

  const DecImportParts& parts_;
  Catalogue catalogue_;
  QString name_;    // as it was chosen
  QString source_;  // as it stands on disk
  QByteArray data_;
  DecHeader header_;
  Maker maker_;
  QString place_;
  bool isInPlace_ = false;
};

}  // namespace

void mnuImpDec(const DecImportParts& parts) {
  DecImport(parts).run();
}

}  // namespace lokari
