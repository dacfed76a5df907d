// Printing into a PDF file.
#pragma once

#include <QPageLayout>
#include <QString>

#include <memory>

#include "reports/printer.h"

namespace lokari {

/// A job that writes the file `path`. The old file stands until the new one is whole on disk.
/// Throws ReportError when the file cannot be made.
std::unique_ptr<PrintJob> pdfFileJob(const QString& path, const QString& title,
                                     const QPageLayout& layout);

}  // namespace lokari
