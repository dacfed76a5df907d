#include "db/maker_rules.h"

#include <cmath>

#include "base/numbers.h"
#include "base/prompt.h"
#include "db/catalogue_checks.h"
#include "db/catalogue_names.h"

namespace lokari {
namespace {

constexpr double kHighest = 255;
constexpr char16_t kInvalidNumber[] = u"Die Herstellernummer ist ungültig!";

}  // namespace

std::vector<ListColumn> MakerRules::columns() const {
  return {{u"DC_MANUF_SEQ", u"Seq."}, {u"DC_MANUF", u"Nr."}, {u"DC_MANUF_TEXT", u"Hersteller"}};
}

bool MakerRules::refuse(const char16_t* message) {
  prompt_.message(QString::fromUtf16(message));
  return false;
}

bool MakerRules::mayChange(ListRow& row, int column, QString& text) {
  switch (column) {
    case kNumber:
      return mayNumber(row, text);
    case kName:
      return mayName(row, text);
    default:
      return true;
  }
}

bool MakerRules::mayNumber(const ListRow& row, QString& text) {
  if (!row.storedText(kNumber).isEmpty()) {
    return refuse(u"Die Herstellernummer kann nicht verändert werden!");
  }
  const auto number = parseNumber(text);
  if (!number) return refuse(kInvalidNumber);
  if (*number > kHighest || *number < 0) {
    return refuse(u"Die Herstellernummer muß zwischen 0 und 255 liegen!");
  }
  // The column would round it, to a number that nobody typed.
  if (*number != std::nearbyint(*number)) return refuse(kInvalidNumber);
  if (makerExists(database_, static_cast<int>(*number))) {
    return refuse(u"Die Herstellernummer exisitiert bereits!");
  }
  return true;
}

bool MakerRules::mayName(const ListRow& row, const QString& name) {
  if (!isValidName(name)) return false;
  const QString old = row.storedText(kName);
  if (!files_.folderStaysBehind(old, name)) return true;
  return prompt_.ask(QStringLiteral("Der Ordner \"%1\" behält seinen Namen. Seine "
                                    "Beschreibungsdateien werden dann nicht mehr gefunden.\n"
                                    "Hersteller trotzdem umbenennen?")
                         .arg(old),
                     Buttons::YesNo, Icon::Warning) == Answer::Yes;
}

bool MakerRules::isValidName(const QString& name) {
  switch (checkCatalogueName(name)) {
    case NameFault::Length:
      return refuse(u"Die Länge der Herstellerbezeichnung muß zwischen 1 und 8 Zeichen liegen!");
    case NameFault::Characters:
      return refuse(u"Die Herstellerbezeichnung enthält ungültige Zeichen!");
    case NameFault::None:
      break;
  }
  return true;
}

RowVerdict MakerRules::mayStore(const ListRow& row) {
  if (row.text(kNumber).isEmpty()) {
    refuse(kInvalidNumber);
    return RowVerdict::Refuse;
  }
  // An older row without a name may have its sequence changed.
  if (row.isNew() && !isValidName(row.text(kName))) return RowVerdict::Refuse;
  return RowVerdict::Store;
}

void MakerRules::inserted(const ListRow& row) {
  files_.makeFolder(row.text(kName));
}

bool MakerRules::mayDelete(const ListRow& row) {
  // A foreign database may hold a row without a number: it is nobody's.
  if (row.stored[kNumber].isNull()) return true;
  const int maker = row.stored[kNumber].toInt();
  if (maker == 0) return refuse(u"Hersteller 0 darf nicht gelöscht werden!");
  if (makerHasTypes(database_, maker)) {
    return refuse(u"Es gibt noch Decoder zu dieser Herstellernummer!");
  }
  const int vehicles = vehiclesOfMaker(database_, maker);
  if (vehicles == 0) return true;
  return prompt_.ask({.text = QStringLiteral("Hersteller „%1“ löschen?").arg(row.storedText(kName)),
                      .buttons = Buttons::YesNo,
                      .icon = Icon::Warning,
                      .more = QStringLiteral("Fahrzeuge mit einem Decoder dieses Herstellers: %1. "
                                             "Sie behalten seine Nummer, verlieren aber seinen "
                                             "Namen und damit die Beschreibung des Decoders.")
                                  .arg(vehicles),
                      .preset = Answer::No}) == Answer::Yes;
}

void MakerRules::deleted(const ListRow& row) {
  files_.removeFolder(row.storedText(kName));
}

}  // namespace lokari
