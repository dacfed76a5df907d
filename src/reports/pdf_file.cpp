#include "reports/pdf_file.h"

#include <QDir>
#include <QPdfWriter>

#include <optional>

#include "base/file_place.h"
#include "base/whole_file.h"
#include "reports/pdf_proof.h"
#include "reports/report_error.h"

namespace lokari {
namespace {

constexpr int kDotsPerInch = 1200;

class PdfFileJob final : public PrintJob {
 public:
  PdfFileJob(const FilePlace& place, const QString& title, const QPageLayout& layout)
      : name_(QDir::toNativeSeparators(place.path())), file_(place.path()) {
    if (!file_.begin()) fail(QStringLiteral("Kann Datei nicht anlegen:"));
    writer_.emplace(&file_);
    writer_->setResolution(kDotsPerInch);
    writer_->setTitle(title);
    writer_->setCreator(QStringLiteral("Lokari"));
    writer_->setPageLayout(layout);
  }

  QPagedPaintDevice& paper() override { return *writer_; }

  std::optional<QString> finish(Progress&) override {
    writer_.reset();
    // The writer passes over what its device does not take, and would leave a torn file.
    if (file_.bringToDisk() && !isWholePdf(file_)) {
      file_.fail(QStringLiteral("die Datei ist nicht vollständig"));
    }
    if (!file_.commit()) fail(QStringLiteral("Fehler beim Schreiben von"));
    return QStringLiteral("PDF-Datei geschrieben:\r%1").arg(name_);
  }

 private:
  [[noreturn]] void fail(const QString& what) const {
    throw ReportError(QStringLiteral("%1\r%2\r(%3)").arg(what, name_, file_.fault()));
  }

  QString name_;
  WholeFile file_;
  std::optional<QPdfWriter> writer_;
};

}  // namespace

std::unique_ptr<PrintJob> pdfFileJob(const FilePlace& place, const QString& title,
                                     const QPageLayout& layout) {
  return std::make_unique<PdfFileJob>(place, title, layout);
}

}  // namespace lokari
