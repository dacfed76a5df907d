// The vehicles as a table file that a spreadsheet opens.
#pragma once

#include <QString>
#include <QStringList>

#include "reports/report_source.h"

namespace lokari {

class FilePlace;
class Progress;

/// Where the windows put the file, whichever database is open.
QString csvPlace(const QString& appPath);

/// The same as a place to write to; the folder is made when it is missing. `own` are the files that
/// the program lives on. Throws ReportError for a place that must not be written to.
FilePlace csvFilePlace(const QString& appPath, const QStringList& own);

/// Writes UTF-8 with a byte-order mark to `place`; the last words of `progress` say where it lies.
/// False when the user cancelled. A file that is there is replaced when the new one is complete on
/// disk, and stays as it was otherwise. Throws StorageError, and ReportError.
bool exportCsv(const ReportSource& source, const FilePlace& place, Progress& progress);

}  // namespace lokari
