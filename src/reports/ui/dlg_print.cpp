#include "reports/ui/dlg_print.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>

#include "base/prompt.h"
#include "base/ui/window_scale.h"
#include "db/database.h"
#include "db/jet_sql.h"
#include "db/reference_lists.h"
#include "reports/decoder_sheets.h"
#include "reports/print_selection.h"
#include "reports/printer.h"
#include "reports/report_error.h"
#include "reports/ui/dlg_preview.h"

namespace lokari {
namespace {

constexpr char16_t kHighestAddress[] = u"10239";

}  // namespace

void DlgPrint::preset() {
  optPrintAll_->setChecked(true);
  optPrintList_->setChecked(true);
  parts_.printer.inquire([self = QPointer<DlgPrint>(this)] {
    if (self != nullptr) self->showPrinters();
  });
  showPrinters();
  txtAdrFrom_->setText(parts_.address);
  txtAdrTo_->setText(QString::fromUtf16(kHighestAddress));
  cb_printColl_->addItems(readCollections(parts_.database));
  cb_printColl_->setEditText(parts_.collection);
  enable();
}

void DlgPrint::showPrinters() {
  cb_PrinterSel_->clear();
  cb_PrinterSel_->addItems(parts_.printer.names());
  cb_PrinterSel_->setCurrentText(parts_.printer.current());
  labRemark_->setText(parts_.printer.remark());
}

void DlgPrint::enable() {
  for (QWidget* field : {static_cast<QWidget*>(cb_printColl_), static_cast<QWidget*>(txtAdrFrom_),
                         static_cast<QWidget*>(txtAdrTo_)}) {
    field->setEnabled(optPrintColl_->isChecked());
  }
  cb_PrinterSel_->setEnabled(!optPrintExcel_->isChecked());
  butPreview_->setEnabled(!optPrintExcel_->isChecked());
}

bool DlgPrint::isAddress(QLineEdit* field) {
  static const QRegularExpression kWhole(QStringLiteral("^[0-9]+$"));
  const QString text = field->text().trimmed();
  if (kWhole.match(text).hasMatch()) return true;
  parts_.prompt.message(text.isEmpty()
                            ? QStringLiteral("Bitte eine Adresse eingeben!")
                            : QStringLiteral("„%1“ ist keine Adresse: Bitte eine ganze Zahl "
                                             "eingeben!")
                                  .arg(field->text()));
  field->setFocus();
  return false;
}

std::optional<ReportSelection> DlgPrint::selection() {
  if (optPrintAll_->isChecked()) return allVehicles();
  if (optPrintSel_->isChecked()) return filteredVehicles(parts_.sqlFilter, parts_.reportFilter);
  if (!isAddress(txtAdrFrom_) || !isAddress(txtAdrTo_)) return {};
  // A quote in a collection's name is part of the name.
  const QString collection = cb_printColl_->currentText().replace(u'\'', QStringLiteral("''"));
  return collectionVehicles(collection, txtAdrFrom_->text().trimmed(), txtAdrTo_->text().trimmed());
}

void DlgPrint::requireCondition(const ReportSelection& selection) const {
  // List and file select by the formula, sheets by the query. Where there is no formula the query
  // speaks for all three, so that the filter that is not there is refused and not taken for all
  // vehicles; a search without a match leaves its formula, and a list of none.
  if (!optPrintSheet_->isChecked() && !selection.formula.isEmpty()) return;
  translateSelect(parts_.database.schema(), selection.query);
}

std::unique_ptr<PrintDocument> DlgPrint::document(const ReportSelection& selection, bool forPaper) {
  if (optPrintList_->isChecked()) return parts_.list(selection.formula);
  std::function<void(const QString&)> printing;
  if (forPaper) printing = [this](const QString& address) { txtAdrFrom_->setText(address); };
  return std::make_unique<DecoderSheets>(DecoderSheetsParts{.database = parts_.database,
                                                            .query = selection.query,
                                                            .folders = parts_.folders,
                                                            .date = parts_.date,
                                                            .printing = printing});
}

void DlgPrint::preview() {
  bool wanted = false;
  attempt([&] {
    const auto chosen = selection();
    if (!chosen) return false;
    requireCondition(*chosen);
    const auto pages = document(*chosen, false);
    DlgPreview dlgPreview(*pages, parts_.printer.layout(), scale_, this);
    scale_.ResizeWindow(&dlgPreview);
    dlgPreview.load();
    wanted = dlgPreview.exec() == QDialog::Accepted;
    return true;
  });
  if (wanted) accept();
}

void DlgPrint::accept() {
  const bool done = attempt([this] {
    const auto chosen = selection();
    if (!chosen) return false;
    requireCondition(*chosen);
    return optPrintExcel_->isChecked() ? exportCsv(*chosen) : print(*chosen);
  });
  if (done) QDialog::accept();
}

bool DlgPrint::print(const ReportSelection& selection) {
  const QString from = txtAdrFrom_->text();
  const auto pages = document(selection, true);
  const std::unique_ptr<PrintJob> job = parts_.printer.begin(pages->title());
  if (!job) return false;
  bool done = false;
  try {
    parts_.progress(this)([&](Progress& progress) {
      std::optional<QString> closing;
      if (pages->paint(job->paper(), progress)) closing = job->finish(progress);
      done = closing.has_value();
      progress.setStatus(closing.value_or(QStringLiteral("Druck abgebrochen.")));
    });
  } catch (...) {
    txtAdrFrom_->setText(from);
    throw;
  }
  if (!done) txtAdrFrom_->setText(from);
  return done;
}

bool DlgPrint::exportCsv(const ReportSelection& selection) {
  bool done = false;
  parts_.progress(this)([&](Progress& progress) {
    done = parts_.csv(selection.formula, progress);
    if (!done) progress.setStatus(QStringLiteral("Export abgebrochen."));
  });
  return done;
}

bool DlgPrint::attempt(const std::function<bool()>& work) {
  QString failure;
  try {
    return work();
  } catch (const StorageError& error) {
    failure = error.text();
  } catch (const ReportError& error) {
    failure = error.text();
  }
  parts_.prompt.message(failure);
  return false;
}

void mnuDbPrint(const DlgPrintParts& parts, const WindowScale& scale, QWidget* parent) {
  try {
    DlgPrint dlgPrint(parts, scale, parent);
    scale.ResizeWindow(&dlgPrint);
    dlgPrint.exec();
  } catch (const StorageError& error) {
    parts.prompt.message(error.text());
  }
}

}  // namespace lokari
