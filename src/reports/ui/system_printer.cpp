#include "reports/ui/system_printer.h"

#include <QDir>
#include <QLocale>
#include <QPrinterInfo>
#include <QProcess>
#include <QTemporaryDir>

#include "base/paths.h"
#include "base/prompt.h"
#include "reports/pdf_file.h"
#include "reports/report_error.h"

namespace lokari {
namespace {

/// The spooler answers at once, or its server is out of reach. In milliseconds.
constexpr int kSpoolerPatience = 30'000;

class SpoolJob final : public PrintJob {
 public:
  SpoolJob(QString printer, QString title, const QPageLayout& layout)
      : printer_(std::move(printer)), title_(std::move(title)) {
    if (!folder_.isValid()) {
      throw ReportError(
          QStringLiteral("Kann keinen Ordner für den Druckauftrag anlegen:\r%1\r(%2)")
              .arg(QDir::toNativeSeparators(QDir::tempPath()), folder_.errorString()));
    }
    pages_ = pdfFileJob(file(), title_, layout);
  }

  QPagedPaintDevice& paper() override { return pages_->paper(); }

  QString finish() override {
    pages_->finish();
    QProcess lp;
    lp.start(QStringLiteral("lp"), {QStringLiteral("-d"), printer_, QStringLiteral("-t"), title_,
                                    QStringLiteral("--"), file()});
    if (!lp.waitForStarted()) {
      throw ReportError(QStringLiteral("Das Programm „lp“, das Druckaufträge annimmt, fehlt!"));
    }
    if (!lp.waitForFinished(kSpoolerPatience)) {
      throw ReportError(QStringLiteral("Das Drucksystem antwortet nicht!"));
    }
    if (lp.exitStatus() != QProcess::NormalExit || lp.exitCode() != 0) {
      const QString told = QString::fromLocal8Bit(lp.readAllStandardError()).trimmed();
      throw ReportError(told.isEmpty() ? QStringLiteral("Das Drucksystem nimmt den Auftrag für "
                                                        "„%1“ nicht an!")
                                             .arg(printer_)
                                       : told);
    }
    return QStringLiteral("An den Drucker „%1“ übergeben.").arg(printer_);
  }

 private:
  QString file() const { return folder_.filePath(QStringLiteral("Druck.pdf")); }

  QString printer_;
  QString title_;
  QTemporaryDir folder_;
  std::unique_ptr<PrintJob> pages_;
};

QPageSize usualPageSize() {
  return QPageSize(QLocale::system().measurementSystem() == QLocale::ImperialUSSystem
                       ? QPageSize::Letter
                       : QPageSize::A4);
}

}  // namespace

SystemPrinter::SystemPrinter(Prompt& prompt, QString folder)
    : prompt_(prompt), folder_(std::move(folder)), current_(QPrinterInfo::defaultPrinterName()) {
  const QStringList all = names();
  if (!all.contains(current_)) current_ = all.front();
}

QStringList SystemPrinter::names() const {
  return QPrinterInfo::availablePrinterNames() << pdfPrinterName();
}

void SystemPrinter::choose(const QString& name) {
  if (names().contains(name)) current_ = name;
}

QPageLayout SystemPrinter::layout() const {
  if (current_ == pdfPrinterName()) return printLayout(usualPageSize());
  const QPageSize size = QPrinterInfo::printerInfo(current_).defaultPageSize();
  return printLayout(size.isValid() ? size : usualPageSize());
}

std::unique_ptr<PrintJob> SystemPrinter::begin(const QString& title) {
  if (current_ == pdfPrinterName()) return beginFile(title);
  return spoolJob(current_, title, layout());
}

std::unique_ptr<PrintJob> SystemPrinter::beginFile(const QString& title) {
  for (;;) {
    QString name = prompt_.saveFile(
        {.title = QStringLiteral("PDF-Datei speichern"),
         .filter = QStringLiteral("PDF-Dateien (*.pdf)|*.pdf|Alle Dateien (*.*)|*.*"),
         .folder = folder_,
         .presetName = title + QStringLiteral(".pdf")});
    if (name.isEmpty()) return nullptr;
    if (!fileNameOf(name).contains(u'.')) name += QStringLiteral(".pdf");
    const bool replaces = !findFile(name).isEmpty();
    if (replaces && prompt_.ask(QStringLiteral("%1\rist schon vorhanden. Datei ersetzen?")
                                    .arg(QDir::toNativeSeparators(name)),
                                Buttons::YesNo) != Answer::Yes) {
      continue;
    }
    return pdfFileJob(placeFor(name), title, layout());
  }
}

std::unique_ptr<PrintJob> spoolJob(const QString& printer, const QString& title,
                                   const QPageLayout& layout) {
  return std::make_unique<SpoolJob>(printer, title, layout);
}

}  // namespace lokari
