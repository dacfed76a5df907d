// What goes on paper: a document that paints itself, page after page, on whatever it is given: a
// printer, a PDF file, a preview.
#pragma once

#include <QString>

class QPagedPaintDevice;

namespace lokari {

class Progress;

class PrintDocument {
 public:
  virtual ~PrintDocument() = default;

  /// What the printer's queue and the PDF file call it.
  virtual QString title() const = 0;
  /// Paints all pages on `paper`, whose page layout is set. Painting once more paints the same.
  /// False when the user cancelled. Throws StorageError for a database that refuses, ReportError
  /// for a template that cannot be used.
  virtual bool paint(QPagedPaintDevice& paper, Progress& progress) = 0;
};

}  // namespace lokari
