#include <QDir>
#include <QTemporaryDir>

#include "base/file_place.h"
#include "base/progress.h"
#include "reports/pdf_file.h"
#include "reports/report_error.h"
#include "reports/ui/print_command.h"
#include "reports/ui/system_printer.h"

namespace lokari {
namespace {

class SpoolJob final : public PrintJob {
 public:
  SpoolJob(QString printer, QString title, const QPageLayout& layout, Clock& clock)
      : printer_(std::move(printer)), title_(std::move(title)), clock_(clock) {
    if (!folder_.isValid()) {
      throw ReportError(
          QStringLiteral("Kann keinen Ordner für den Druckauftrag anlegen:\r%1\r(%2)")
              .arg(QDir::toNativeSeparators(QDir::tempPath()), folder_.errorString()));
    }
    pages_ = pdfFileJob(FilePlace::ofProgram(file(), kPdfFile, {}), title_, layout);
  }

  QPagedPaintDevice& paper() override { return pages_->paper(); }

  std::optional<QString> finish(Progress& progress) override {
    pages_->finish(progress);
    progress.setStatus(QStringLiteral("Der Auftrag geht an den Drucker „%1“ …").arg(printer_));
    const PrintCommand lp(QStringLiteral("lp"),
                          {QStringLiteral("-d"), printer_, QStringLiteral("-t"), title_,
                           QStringLiteral("--"), file()},
                          PrintCommand::Words::OfUser, clock_, {});
    bool cancelled = false;
    clock_.waitUntil(
        [&] {
          cancelled = cancelled || progress.cancelled();
          return lp.hasEnded() || cancelled;
        },
        Clock::kNever);
    if (!lp.hasEnded()) return {};
    requireDone(lp);
    return QStringLiteral("An den Drucker „%1“ übergeben.").arg(printer_);
  }

 private:
  QString file() const { return folder_.filePath(QStringLiteral("Druck.pdf")); }

  void requireDone(const PrintCommand& lp) const {
    switch (lp.outcome()) {
      case PrintCommand::Outcome::Done:
        return;
      case PrintCommand::Outcome::Missing:
        throw ReportError(QStringLiteral("Das Programm „lp“, das Druckaufträge annimmt, fehlt!"));
      case PrintCommand::Outcome::Silent:
        throw ReportError(QStringLiteral("Das Drucksystem antwortet nicht!"));
      case PrintCommand::Outcome::Refused:
        break;
    }
    const QString told = lp.errors();
    throw ReportError(told.isEmpty() ? QStringLiteral("Das Drucksystem nimmt den Auftrag für "
                                                      "„%1“ nicht an!")
                                           .arg(printer_)
                                     : told);
  }

  QString printer_;
  QString title_;
  Clock& clock_;
  QTemporaryDir folder_;
  std::unique_ptr<PrintJob> pages_;
};

}  // namespace

std::unique_ptr<PrintJob> spoolJob(const QString& printer, const QString& title,
                                   const QPageLayout& layout, Clock& clock) {
  return std::make_unique<SpoolJob>(printer, title, layout, clock);
}

}  // namespace lokari
