#include "db/old_descriptions.h"

#include <QDir>
#include <QSqlQuery>

#include "base/paths.h"
#include "base/prompt.h"
#include "base/text_file.h"
#include "db/catalogue.h"
#include "db/database.h"

namespace lokari {
namespace {

/// Lines that have room on a small screen.
constexpr qsizetype kShown = 8;

QString counted(qsizetype number, const QString& one, const QString& many) {
  return QStringLiteral("%1 %2").arg(number).arg(number == 1 ? one : many);
}

QString shownLines(const QStringList& lines) {
  QStringList shown = lines.mid(0, kShown);
  if (lines.size() > kShown) shown << QStringLiteral("und %1 weitere").arg(lines.size() - kShown);
  return shown.join(u'\n');
}

QStringList missingIn(const QString& folder, const Database& database, const QString& appPath) {
  QStringList names;
  for (const Maker& maker : Catalogue(&database).makers()) {
    const QString from = findFile(insideFolder(folder, {maker.name}));
    if (from.isEmpty()) continue;
    for (const QString& file : QDir(from).entryList({QStringLiteral("*.dec")}, QDir::Files)) {
      const QString own = insideFolder(appPath, {maker.name, file});
      if (!own.isEmpty() && findFile(own).isEmpty()) names << maker.name + u'/' + file;
    }
  }
  return names;
}

bool copyWhole(const QString& from, const QString& to) {
  const std::optional<QByteArray> source = readPlainFile(from);
  const QString place = placeFor(to);
  return source && QDir().mkpath(QFileInfo(place).path()) && writeFileAtomically(place, *source);
}

void offer(Prompt& prompt, const OldDescriptions& old, const QString& appPath) {
  const QString number = counted(old.names.size(), QStringLiteral("Beschreibungsdatei"),
                                 QStringLiteral("Beschreibungsdateien"));
  if (prompt.ask({.text = QStringLiteral("Im Ordner %1 liegen Beschreibungen von Decodertypen, die "
                                         "Lokari nicht hat.\n%2 in den Datenordner kopieren?")
                              .arg(old.folder, number),
                  .buttons = Buttons::YesNo,
                  .more = shownLines(old.names)}) != Answer::Yes) {
    return;
  }
  QStringList failed;
  for (const QString& name : old.names) {
    if (!copyWhole(findFile(old.folder + u'/' + name), appPath + u'/' + name)) failed << name;
  }
  if (failed.isEmpty()) return;
  prompt.message(QStringLiteral("Nicht alle Beschreibungsdateien konnten kopiert werden!"),
                 Icon::Warning, shownLines(failed));
}

}  // namespace

OldDescriptions oldDescriptions(const QString& accessFile, const Database& database,
                                const QString& appPath) {
  const QDir beside = QFileInfo(accessFile).absoluteDir();
  const QString own = QDir(appPath).canonicalPath();
  for (const QString& folder : {beside.path(), QFileInfo(beside.path()).path()}) {
    if (QDir(folder).canonicalPath() == own) continue;
    const QStringList names = missingIn(folder, database, appPath);
    if (!names.isEmpty()) return {folder, names};
  }
  return {};
}

QStringList typesWithoutDescription(const Database& database, const QString& appPath) {
  QStringList types;
  database.read(
      QStringLiteral("SELECT DCMANUFS.DC_MANUF_TEXT, LOCO_DAT.DC_DECODER, COUNT(*) FROM LOCO_DAT "
                     "JOIN DCMANUFS ON DCMANUFS.DC_MANUF = LOCO_DAT.DC_MANUF "
                     "WHERE LOCO_DAT.DC_DECODER <> '' AND LOCO_DAT.DC_MANUF > 0 "
                     "GROUP BY 1, 2 ORDER BY 1, 2"),
      {}, [&](const QSqlQuery& row) {
        const QString maker = row.value(0).toString();
        const QString type = row.value(1).toString();
        if (!findFile(insideFolder(appPath, {maker, type + QStringLiteral(".dec")})).isEmpty()) {
          return;
        }
        types << QStringLiteral("%1 %2 (%3)")
                     .arg(maker, type,
                          counted(row.value(2).toInt(), QStringLiteral("Fahrzeug"),
                                  QStringLiteral("Fahrzeuge")));
      });
  return types;
}

void bringDescriptions(Prompt& prompt, const QString& accessFile, const Database& database,
                       const QString& appPath) {
  const OldDescriptions old = oldDescriptions(accessFile, database, appPath);
  if (!old.names.isEmpty()) offer(prompt, old, appPath);
  if (findFile(appPath + QStringLiteral("/Default.dec")).isEmpty()) return;
  const QStringList types = typesWithoutDescription(database, appPath);
  if (types.isEmpty()) return;
  prompt.message(QStringLiteral("Decodertypen ohne Beschreibungsdatei: Das Decoderfenster öffnet "
                                "sie wie einen Standard-Decoder."),
                 Icon::Information, shownLines(types));
}

}  // namespace lokari
