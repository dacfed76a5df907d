// The description files of decoders that an older installation has beside its database, and the
// decoder types that still have none.
#pragma once

#include <QString>
#include <QStringList>

namespace lokari {

class Database;
class Prompt;

/// Description files that this program lacks.
struct OldDescriptions {
  QString folder;     ///< of the older installation; empty without one
  QStringList names;  ///< "maker/type.dec", in their order
};

/// Looks beside the Access file and one folder above it, as installations have it, in the folders
/// of the makers that `database` knows. What `appPath` has already is not among them.
OldDescriptions oldDescriptions(const QString& accessFile, const Database& database,
                                const QString& appPath);

/// Decoder types of vehicles that have no description file, "maker type", with their number of
/// vehicles; the window opens such a type as a standard decoder.
QStringList typesWithoutDescription(const Database& database, const QString& appPath);

/// Asks whether the files are to come along, and copies them; nothing is written over. Then tells
/// which types open as a standard decoder, where there is a description of one. Says nothing where
/// nothing is missing.
void bringDescriptions(Prompt& prompt, const QString& accessFile, const Database& database,
                       const QString& appPath);

}  // namespace lokari
