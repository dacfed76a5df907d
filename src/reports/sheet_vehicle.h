// What the sheet of a vehicle tells about it.
#pragma once

#include <QByteArray>
#include <QString>

namespace lokari {

class Database;
class RecordSet;

struct SheetVehicle {
  // The fields of the head, as text; empty for Null.
  QString collection;
  QString address;
  QString shortName;
  QString group;
  QString type;
  QString manufacturer;  ///< its name
  QString decoder;
  QString longName;

  QString setName;     ///< the set that the values are of
  QByteArray values;   ///< by CV index - 1, at least 4865 bytes
  QByteArray marks;    ///< of the values: 0 none, the character "1" verified, "2" failed
  QByteArray picture;  ///< an encoded file, empty for none
};

/// Whether the current record gives a sheet: a vehicle, not a function unit, with a decoder.
bool hasSheet(const RecordSet& records);

/// Reads the current record. The values are those of the set whose name the record keeps as the
/// one in use, of the first set when none has it. Throws StorageError.
SheetVehicle readSheetVehicle(const Database& database, RecordSet& records);

}  // namespace lokari
