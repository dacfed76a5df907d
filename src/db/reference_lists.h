// The five reference lists behind the drop-downs, and the list of collections.
#pragma once

#include <QString>
#include <QStringList>

#include <span>

namespace lokari {

class Database;

struct ReferenceList {
  const char16_t* dialog;   ///< where it is edited: `dlgFTypes` ...
  const char16_t* title;    ///< of that dialog
  const char16_t* source;   ///< `datFTypes` ...
  const char16_t* control;  ///< the drop-down that it feeds
  const char16_t* table;
  const char16_t* sequence;  ///< column of the display order, may be Null
  const char16_t* text;      ///< column of the entry
  const char16_t* caption;   ///< grid caption of the text column
  const char16_t* query;     ///< numbered entries in their order, then the others by name
};

/// In the order in which they are opened.
std::span<const ReferenceList> referenceLists();
/// The list that feeds a drop-down, or nullptr.
const ReferenceList* referenceListOf(QStringView control);

/// The entries in their order, empty ones left out. Throws StorageError.
QStringList readReferenceList(const Database& database, const ReferenceList& list);

/// The distinct collections, Null left out; those that differ in case only are one. Throws
/// StorageError.
QStringList readCollections(const Database& database);

/// Every query that an open database must answer: lists, collections, catalogue. Throws
/// StorageError at the first that fails.
void checkSources(const Database& database);

/// The vehicle record set in its default order: by collection (the empty one first, Null last) and
/// address.
inline constexpr char16_t kDefaultQuery[] =
    u"SELECT * FROM LOCO_DAT ORDER BY ISNULL(DC_COLL) DESC, DC_COLL, DC_ADR";

}  // namespace lokari
