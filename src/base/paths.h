// Files by name. Names come from settings, databases and description files, in any case and with
// "\" or "/" between folders; this is the one place that knows it.
#pragma once

#include <QString>
#include <QStringList>

namespace lokari {

/// The path of the existing file or folder that `path` names when neither case nor the kind of
/// separator counts; an exact match wins. Empty when there is none.
QString findFile(const QString& path);

/// findFile(), or, when there is no such file, where it is to be made: the existing folders of
/// `path` as they stand on disk, and the rest as given.
QString placeFor(const QString& path);

/// The path of `folder` and names that come from data, such as a manufacturer and a decoder type.
/// Empty when one of the names could leave the folder: it is empty, "." or "..", holds a
/// separator, a ":" or a control character.
QString insideFolder(const QString& folder, const QStringList& names);

/// What stands behind the last ":", "\" or "/" of a path; all of it when it holds none.
QString fileNameOf(const QString& path);

/// What stands up to and including the last ":", "\" or "/"; empty when it holds none.
QString folderOf(const QString& path);

}  // namespace lokari
