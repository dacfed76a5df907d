// What is wrong with a database that the engine itself finds sound: tables, columns and indexes
// other than those of a new database, and values that no column of this program has.
#pragma once

#include <QStringList>

namespace lokari {

class Database;

/// German lines, one a fault; empty when nothing is wrong. More tables, columns and indexes, and
/// wider texts, are no fault. Throws StorageError when the file cannot be read.
QStringList schemaFaults(const Database& database);

/// The same for the values, each with the row's number; of one column the first few are told one by
/// one. Columns that are not there are passed over.
QStringList valueFaults(const Database& database);

}  // namespace lokari
