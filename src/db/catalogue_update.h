// Brings the decoder catalogue of a database up to the state of a newer one.
#pragma once

#include <QString>

namespace lokari {

class Database;
class RecordSet;

/// Adds the makers and decoder types of `source` that `target` lacks, without their sequence
/// numbers. What is there stays as it is: a renamed maker keeps its name. Only maker 0 takes the
/// name of `source`. All of it or, when StorageError is thrown, nothing.
void updateCatalogue(const Database& source, Database& target);

/// Adds a decoder type unless the maker has it; case does not count. `types` is the open table
/// DECODERS. Throws StorageError.
void addType(RecordSet& types, int maker, const QString& name);

}  // namespace lokari
