// `dlgPrint` over a small database, a printer whose paper is a PDF file, and a progress without a
// window.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include "base/ui/window_scale.h"
#include "pdf_pages.h"
#include "reports/report_error.h"
#include "reports/ui/dlg_print.h"
#include "support/scripted_prompt.h"
#include "support/test_database.h"

namespace lokari::test {

/// Paper that is a PDF file.
class PdfPrinter final : public Printer {
 public:
  explicit PdfPrinter(const PdfPages& pages) : pages_(pages) {}

  void inquire(std::function<void()> known) override { known(); }
  QString remark() const override { return {}; }
  QStringList names() const override {
    return {QStringLiteral("Laser"), QStringLiteral("Tinte"), pdfPrinterName()};
  }
  QString current() const override { return chosen; }
  void choose(const QString& name) override { chosen = name; }
  QPageLayout layout() const override { return printLayout(QPageSize(QPageSize::A4)); }
  std::unique_ptr<PrintJob> begin(const QString& title) override {
    if (!refusal.isEmpty()) throw ReportError(refusal);
    titles << title;
    return takenBack ? nullptr : pdfFileJob(pages_.place(), title, layout());
  }

  QString chosen = QStringLiteral("Tinte");
  QString refusal;
  bool takenBack = false;
  QStringList titles;

 private:
  const PdfPages& pages_;
};

/// One page with one line of text.
class OneLine final : public PrintDocument {
 public:
  explicit OneLine(QString text, int pages = 1) : text_(std::move(text)), pages_(pages) {}
  QString title() const override { return QStringLiteral("Fahrzeugliste"); }
  bool paint(QPagedPaintDevice& paper, Progress& progress) override {
    QPainter painter(&paper);
    for (int page = 1; page <= pages_; ++page) {
      if (progress.cancelled()) return false;
      if (page > 1) paper.newPage();
      painter.drawText(QPointF(1000, 1000), text_);
    }
    return true;
  }

 private:
  QString text_;
  int pages_;
};

class PrintFixture : public ::testing::Test {
 protected:
  PrintFixture() {
    database.clearLists();
    database.run("DELETE FROM LOCO_DAT");
    database.run("INSERT INTO DCMANUFS (DC_MANUF, DC_MANUF_TEXT) VALUES (145, 'Zimo')");
    add(3, "Anlage", "E103");
    add(5, "Anlage", "V200");
    add(9, "Vitrine", "P8");
    add(12, "Anna's", "Emma");
  }

  void add(int number, const char* where, const char* name) {
    database.run(
        "INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, DC_TYPE, ST_SNAME, DC_MANUF, DC_DECODER) "
        "VALUES (?, ?, 1, ?, 145, 'ZX100')",
        {number, QString::fromUtf8(where), QString::fromUtf8(name)});
  }

  void open() {
    dialog = std::make_unique<DlgPrint>(
        DlgPrintParts{.database = database.open(),
                      .prompt = prompt,
                      .printer = printer,
                      .progress = [this](QWidget*) -> RunWithProgress {
                        return [this](const auto& work) { work(pages.progress); };
                      },
                      .folders = {database.folder()},
                      .sqlFilter = sqlFilter,
                      .reportFilter = reportFilter,
                      .address = address,
                      .collection = collection,
                      .date = QDate(2026, 3, 1),
                      .list =
                          [this](const QString& formula) {
                            formulas << formula;
                            return std::make_unique<OneLine>(QStringLiteral("Die Liste"));
                          },
                      .csv =
                          [this](const QString& formula, Progress& progress) {
                            formulas << formula;
                            if (!csvFailure.isEmpty()) throw ReportError(csvFailure);
                            if (csvDone) progress.setStatus(QStringLiteral("Fertig."));
                            return csvDone;
                          }},
        scale, nullptr);
    dialog->show();
    QApplication::processEvents();
  }

  template <class T>
  T* control(const char* name) const {
    T* found = dialog->findChild<T*>(QString::fromUtf8(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  QRadioButton* radio(const char* name) const { return control<QRadioButton>(name); }
  QLineEdit* line(const char* name) const { return control<QLineEdit>(name); }
  QComboBox* list(const char* name) const { return control<QComboBox>(name); }
  void choose(const char* name) const { radio(name)->click(); }
  void press(const char* name) const { control<QPushButton>(name)->click(); }

  TestDatabase database;
  PdfPages pages;
  PdfPrinter printer{pages};
  ScriptedPrompt prompt;
  WindowScale scale{QDir::tempPath() + QStringLiteral("/gibt-es-nicht/WINDOW.INI")};
  QString sqlFilter;
  QString reportFilter;
  QString address = QStringLiteral("5");
  QString collection = QStringLiteral("Anlage");
  QStringList formulas;
  QString csvFailure;
  bool csvDone = true;
  std::unique_ptr<DlgPrint> dialog;
};

}  // namespace lokari::test
