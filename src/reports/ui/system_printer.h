// The printers of the system.
#pragma once

#include <QHash>
#include <QPageSize>
#include <QString>

#include <map>
#include <memory>

#include "reports/printer.h"

namespace lokari {

class Clock;
class PrintCommand;
class Prompt;

struct SystemPrinterParts {
  Prompt& prompt;  ///< asks where PDF files go
  Clock& clock;
  QString folder;   ///< where that question begins
  QStringList own;  ///< files that the program lives on
};

/// A document is a PDF file until it is finished, whichever printer it is for. Then `lp` hands it
/// over in one piece: what was cancelled or failed on the way wastes no paper, and a refusal comes
/// back in the system's own words.
///
/// The printing system is only talked to by its own programs, beside this one: its server may be
/// silent, and neither windows nor cabs wait for it.
class SystemPrinter final : public Printer {
 public:
  /// What is in `parts` must outlive the printer.
  explicit SystemPrinter(SystemPrinterParts parts);
  ~SystemPrinter() override;

  void inquire(std::function<void()> known) override;
  QString remark() const override { return remark_; }
  QStringList names() const override;
  QString current() const override { return current_; }
  void choose(const QString& name) override;
  QPageLayout layout() const override;
  std::unique_ptr<PrintJob> begin(const QString& title) override;

 private:
  std::unique_ptr<PrintJob> beginFile(const QString& title);
  void takeNames();
  void takeDefault();
  void takePageSize(const QString& name);
  void askPageSize(const QString& name);

  SystemPrinterParts parts_;
  QStringList names_;
  QString current_;
  bool chosen_ = false;  // by the user
  QString remark_;
  QHash<QString, QPageSize> sizes_;
  std::function<void()> known_;
  std::unique_ptr<PrintCommand> nameList_;
  std::unique_ptr<PrintCommand> defaultName_;
  std::map<QString, std::unique_ptr<PrintCommand>> sizeLists_;
};

/// A job for the system's printer of that name. Its finish() throws ReportError with what the
/// system says when it refuses.
std::unique_ptr<PrintJob> spoolJob(const QString& printer, const QString& title,
                                   const QPageLayout& layout, Clock& clock);

/// The sheet that `lpoptions -l` marks as the printer's own; nothing when it marks none that is
/// known.
std::optional<QPageSize> markedPageSize(const QString& options);

}  // namespace lokari
