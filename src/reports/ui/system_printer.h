// The printers of the system.
#pragma once

#include <QString>

#include "reports/printer.h"

namespace lokari {

class Prompt;

/// A document is a PDF file until it is finished, whichever printer it is for. Then `lp` hands it
/// over in one piece: what was cancelled or failed on the way wastes no paper, and a refusal comes
/// back in the system's own words.
class SystemPrinter final : public Printer {
 public:
  /// `prompt` asks where PDF files go, beginning in `folder`. It must outlive the printer.
  SystemPrinter(Prompt& prompt, QString folder);

  QStringList names() const override;
  QString current() const override { return current_; }
  void choose(const QString& name) override;
  QPageLayout layout() const override;
  std::unique_ptr<PrintJob> begin(const QString& title) override;

 private:
  std::unique_ptr<PrintJob> beginFile(const QString& title);

  Prompt& prompt_;
  QString folder_;
  QString current_;
};

/// A job for the system's printer of that name. Its finish() throws ReportError with what the
/// system says when it refuses.
std::unique_ptr<PrintJob> spoolJob(const QString& printer, const QString& title,
                                   const QPageLayout& layout);

}  // namespace lokari
