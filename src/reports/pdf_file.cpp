#include "reports/pdf_file.h"

#include <QDir>
#include <QPdfWriter>
#include <QSaveFile>

#include <optional>

#include "reports/report_error.h"

namespace lokari {
namespace {

constexpr int kDotsPerInch = 1200;

class PdfFileJob final : public PrintJob {
 public:
  PdfFileJob(const QString& path, const QString& title, const QPageLayout& layout) : file_(path) {
    if (!file_.open(QIODevice::WriteOnly)) fail(QStringLiteral("Kann Datei nicht anlegen:"));
    writer_.emplace(&file_);
    writer_->setResolution(kDotsPerInch);
    writer_->setTitle(title);
    writer_->setCreator(QStringLiteral("Lokari"));
    writer_->setPageLayout(layout);
  }

  QPagedPaintDevice& paper() override { return *writer_; }

  QString finish() override {
    writer_.reset();
    // What is still in memory must not fail within commit(), which would not notice.
    if (!file_.flush() || !file_.commit()) fail(QStringLiteral("Fehler beim Schreiben von"));
    return QStringLiteral("PDF-Datei geschrieben:\r%1")
        .arg(QDir::toNativeSeparators(file_.fileName()));
  }

 private:
  [[noreturn]] void fail(const QString& what) const {
    throw ReportError(
        QStringLiteral("%1\r%2\r(%3)")
            .arg(what, QDir::toNativeSeparators(file_.fileName()), file_.errorString()));
  }

  QSaveFile file_;  // drops what it holds when it goes without commit()
  std::optional<QPdfWriter> writer_;
};

}  // namespace

std::unique_ptr<PrintJob> pdfFileJob(const QString& path, const QString& title,
                                     const QPageLayout& layout) {
  return std::make_unique<PdfFileJob>(path, title, layout);
}

}  // namespace lokari
