// Where the build keeps what tests read. Answered by one source that knows the folders, so that no
// other has to be compiled anew for a clone in another place.
#pragma once

#include <QString>

namespace lokari::places {

/// What an installation carries: template database, description files, pictures, help.
QString data();
/// The template of a new database.
QString emptyDatabase();
/// The demo folder's own files.
QString demo();
/// The built programs.
QString programs();
/// The top of the source tree.
QString source();
/// A file of Access among the tests' data.
QString accessFile(const QString& name);

}  // namespace lokari::places
