// Where reports go: the printers of the system, and a PDF file.
#pragma once

#include <QPageLayout>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QPagedPaintDevice;

namespace lokari {

class Progress;

/// One document on its way to paper. A job that goes without finish() prints nothing and leaves no
/// file behind.
class PrintJob {
 public:
  virtual ~PrintJob() = default;

  /// What the document paints itself on; it is valid as long as the job.
  virtual QPagedPaintDevice& paper() = 0;
  /// Ends the document, which nobody paints on any more, and hands it over or puts it on disk.
  /// Events go on running meanwhile. Gives the closing text; nothing when the user cancelled.
  /// Throws ReportError.
  virtual std::optional<QString> finish(Progress& progress) = 0;
};

class Printer {
 public:
  virtual ~Printer() = default;

  /// Asks the system for its printers, and comes back at once: a system of printers may be silent
  /// for minutes. `known` is called, from the event loop, when names() has become longer, or when
  /// it is known that it will not.
  virtual void inquire(std::function<void()> known) = 0;
  /// What there is to say about names(), in German: that they are being asked for, that the system
  /// does not answer. Empty for nothing.
  virtual QString remark() const = 0;

  /// The system's printers as far as they are known, and the PDF file as the last one.
  virtual QStringList names() const = 0;
  /// The printer that the next job goes to; the system's default one to begin with.
  virtual QString current() const = 0;
  /// Makes the printer of that name the current one. Nothing for a name that is not in names().
  virtual void choose(const QString& name) = 0;

  /// The paper of the current printer, with the margins of printLayout().
  virtual QPageLayout layout() const = 0;
  /// Begins a document of that title. Null when the user took it back. Throws ReportError.
  virtual std::unique_ptr<PrintJob> begin(const QString& title) = 0;
};

/// What the PDF file is called among the printers.
inline QString pdfPrinterName() {
  return QStringLiteral("PDF-Datei");
}

/// A page of that size, upright, with the margins of all reports: 800 twips, that is 40 points.
inline QPageLayout printLayout(const QPageSize& size) {
  constexpr double kMargin = 40;
  return {size, QPageLayout::Portrait, QMarginsF(kMargin, kMargin, kMargin, kMargin),
          QPageLayout::Point};
}

}  // namespace lokari
