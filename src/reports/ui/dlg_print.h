// `dlgPrint`: which vehicles go to paper or into a file, and how.
#pragma once

#include <QDate>
#include <QDialog>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

#include "base/progress.h"
#include "reports/report_selection.h"

class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace lokari {

class Database;
class PrintDocument;
class Printer;
class Prompt;
class WindowScale;

/// What it works on; all of it must outlive the dialog.
struct DlgPrintParts {
  Database& database;
  Prompt& prompt;
  Printer& printer;
  /// The progress over a window.
  std::function<RunWithProgress(QWidget* window)> progress;
  QStringList folders;   ///< where description files are looked for
  QString sqlFilter;     ///< condition of the active filter
  QString reportFilter;  ///< the same as a report selection
  QString address;       ///< of the vehicle on show
  QString collection;    ///< of the vehicle on show
  QDate date;            ///< the day that the sheets tell

  /// The list of the vehicles of a formula.
  std::function<std::unique_ptr<PrintDocument>(const QString& formula)> list;
  /// Writes the CSV file of the vehicles of a formula; the last words of the progress say where it
  /// lies. False when the user cancelled. Throws ReportError and StorageError.
  std::function<bool(const QString& formula, Progress& progress)> csv;
};

class DlgPrint final : public QDialog {
  Q_OBJECT

 public:
  /// Throws StorageError when the collections cannot be read.
  DlgPrint(DlgPrintParts parts, const WindowScale& scale, QWidget* parent);

  /// The command of `butOK`: prints or exports, and closes when that succeeded.
  void accept() override;

 private:
  void addSelection(QBoxLayout* rows);
  void addOutput(QBoxLayout* rows);
  void addButtons(QBoxLayout* rows);
  void preset();
  void showPrinters();
  void enable();

  bool isAddress(QLineEdit* field);
  std::optional<ReportSelection> selection();
  /// Throws StorageError for a selection that the output cannot be made of.
  void requireCondition(const ReportSelection& selection) const;
  std::unique_ptr<PrintDocument> document(const ReportSelection& selection, bool forPaper);
  void preview();
  bool print(const ReportSelection& selection);
  bool exportCsv(const ReportSelection& selection);
  /// Does the work and shows what keeps it from being done.
  bool attempt(const std::function<bool()>& work);

  DlgPrintParts parts_;
  const WindowScale& scale_;
  QWidget* contents_;
  QRadioButton* optPrintAll_ = nullptr;
  QRadioButton* optPrintSel_ = nullptr;
  QRadioButton* optPrintColl_ = nullptr;
  QComboBox* cb_printColl_ = nullptr;
  QLineEdit* txtAdrFrom_ = nullptr;
  QLineEdit* txtAdrTo_ = nullptr;
  QRadioButton* optPrintList_ = nullptr;
  QRadioButton* optPrintSheet_ = nullptr;
  QRadioButton* optPrintExcel_ = nullptr;
  QComboBox* cb_PrinterSel_ = nullptr;
  QLabel* labRemark_ = nullptr;
  QPushButton* butPreview_ = nullptr;
};

/// The command `mnuDbPrint`. Storage failures are shown.
void mnuDbPrint(const DlgPrintParts& parts, const WindowScale& scale, QWidget* parent);

}  // namespace lokari
