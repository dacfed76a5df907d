// What must be known before the catalogue is changed. Unlike the look-ups of catalogue.h these
// throw StorageError: nothing may be changed because an answer could not be had. Texts are compared
// without regard to case, in German order.
#pragma once

#include <QString>

namespace lokari {

class Database;

bool makerExists(const Database& database, int maker);
bool makerHasTypes(const Database& database, int maker);
/// How many vehicles name the maker.
int vehiclesOfMaker(const Database& database, int maker);
bool typeExists(const Database& database, int maker, const QString& type);
/// True when a vehicle has this type.
bool typeIsUsed(const Database& database, int maker, const QString& type);

}  // namespace lokari
