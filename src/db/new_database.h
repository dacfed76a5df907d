// A database file before it is opened: made from the template, brought to disk, moved into place.
#pragma once

#include <QString>

namespace lokari {

/// Why no database can be made of this template, in German; empty for a good one.
QString templateFault(const QString& path);

/// Removes a database that nobody has used, with all that the engine keeps beside it.
void removeDatabase(const QString& path);

/// Copies the template to a file that does not exist yet. Whoever the installation protects the
/// template from may change the copy. False when that failed: nothing is left of it.
bool copyTemplate(const QString& from, const QString& to);

/// Brings a file's contents, or a folder's names, to the medium. False when that failed.
bool syncToDisk(const QString& path);

/// Gives a complete file or folder its name, on the same file system. False when the name exists or
/// the move fails: nothing has changed then.
bool moveIntoPlace(const QString& from, const QString& to);

}  // namespace lokari
