// The vehicles as a table file that a spreadsheet opens.
#pragma once

#include <QString>

#include "reports/report_source.h"

namespace lokari {

class Progress;

/// Where the windows put the file, whichever database is open.
QString csvPlace(const QString& appPath);

/// Writes UTF-8 with a byte-order mark to `file`; the last words of `progress` say where it lies.
/// False when the user cancelled. A file that is there is replaced when the new one is complete on
/// disk, and stays as it was otherwise. Throws StorageError, and
/// ReportError also for a file that is the database or the template itself.
bool exportCsv(const ReportSource& source, const QString& file, Progress& progress);

}  // namespace lokari
