// Brings the decoder catalogue of a database up to the state of a newer one.
#pragma once

namespace lokari {

class Database;

/// Adds the makers and decoder types of `source` that `target` lacks, without their sequence
/// numbers. What is there stays as it is: a renamed maker keeps its name. Only maker 0 takes the
/// name of `source`. All of it or, when StorageError is thrown, nothing.
void updateCatalogue(const Database& source, Database& target);

}  // namespace lokari
