#include "db/type_rules.h"

#include "base/prompt.h"
#include "db/catalogue_checks.h"
#include "db/catalogue_names.h"

namespace lokari {

std::vector<ListColumn> TypeRules::columns() const {
  return {{u"DC_SEQ", u"Seq."}, {u"DC_DECODER", u"Decodertyp"}, {u"DC_MANUF", u"Hersteller"}};
}

bool TypeRules::refuse(const char16_t* message) {
  prompt_.message(QString::fromUtf16(message));
  return false;
}

bool TypeRules::mayInsert() {
  if (maker_.number != 0) return true;
  return refuse(u"Zu diesem Hersteller können keine Decoder angelegt werden!");
}

bool TypeRules::mayChange(ListRow& row, int column, QString& text) {
  switch (column) {
    case kType:
      return mayName(row, text);
    case kMaker:
      // The number that the row got with its name is as fixed as a stored one.
      if (row.text(kMaker).isEmpty()) return true;
      return refuse(u"Die Herstellernummer kann nicht verändert werden!");
    default:
      return true;
  }
}

bool TypeRules::mayName(ListRow& row, const QString& name) {
  const QString old = row.storedText(kType);
  if (!old.isEmpty() && typeIsUsed(database_, maker_.number, old)) {
    return refuse(u"Diese Decoderbezeichnung kann nicht verändert werden!");
  }
  if (old.isEmpty()) row.values[kMaker] = static_cast<qlonglong>(maker_.number);
  if (typeExists(database_, maker_.number, name)) {
    return refuse(u"Dieser Decoder exisitiert bereits!");
  }
  if (!isValidName(name)) return false;
  if (old.isEmpty() || !files_.descriptionStaysBehind(maker_.name, old, name)) return true;
  return prompt_.ask(QStringLiteral("Die Beschreibungsdatei \"%1.dec\" behält ihren Namen und wird "
                                    "dann nicht mehr gefunden.\nDecodertyp trotzdem umbenennen?")
                         .arg(old),
                     Buttons::YesNo, Icon::Warning) == Answer::Yes;
}

bool TypeRules::isValidName(const QString& name) {
  switch (checkCatalogueName(name)) {
    case NameFault::Length:
      return refuse(u"Die Länge der Decoderbezeichnung muß zwischen 1 und 8 Zeichen liegen!");
    case NameFault::Characters:
      return refuse(u"Die Decoderbezeichnung enthält ungültige Zeichen!");
    case NameFault::None:
      break;
  }
  return true;
}

RowVerdict TypeRules::mayStore(const ListRow& row) {
  // An older name is not judged, only that there is one.
  return row.isNew() && !isValidName(row.text(kType)) ? RowVerdict::Refuse : RowVerdict::Store;
}

void TypeRules::inserted(const ListRow& row) {
  files_.addDescription(maker_.name, row.text(kType));
}

bool TypeRules::mayDelete(const ListRow& row) {
  if (maker_.number == 0) return refuse(u"Dieser Eintrag darf nicht gelöscht werden!");
  if (typeIsUsed(database_, maker_.number, row.storedText(kType))) {
    return refuse(u"Es gibt noch Fahrzeuge mit diesem Decoder!");
  }
  return prompt_.ask(QStringLiteral("Decoder und Beschreibungsdatei wirklich löschen?"),
                     Buttons::YesNo) == Answer::Yes;
}

void TypeRules::deleted(const ListRow& row) {
  files_.removeDescription(maker_.name, row.storedText(kType));
}

}  // namespace lokari
