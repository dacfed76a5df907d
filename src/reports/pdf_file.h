// Printing into a PDF file.
#pragma once

#include <QPageLayout>
#include <QString>

#include <memory>

#include "reports/printer.h"

namespace lokari {

class FilePlace;

/// A job that writes a file. The old one stands until the new one is whole on disk and was proved
/// so. Throws ReportError when the file cannot be made.
std::unique_ptr<PrintJob> pdfFileJob(const FilePlace& place, const QString& title,
                                     const QPageLayout& layout);

}  // namespace lokari
