// The menu entries that hand vehicles over, in the main window.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include "app/ui/main_win.h"
#include "app_folder.h"
#include "link/ui/dlg_comm.h"
#include "reports/printer.h"
#include "reports/ui/dlg_print.h"

namespace lokari {
namespace {

class ReportMenuTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_.add({{QStringLiteral("Club"), 3, QStringLiteral("C3")},
                 {QStringLiteral("Heim"), 5, QStringLiteral("H5")}});
    ASSERT_TRUE(window_.start());
    window_.show();
    QApplication::processEvents();
  }

  QAction* entry(const char* name) const {
    return window_.findChild<QAction*>(QString::fromUtf8(name));
  }

  test::AppFolder folder_;
  test::Outside outside_;
  Workbench workbench_{outside_.parts(folder_)};
  MainWin window_{workbench_};
};

TEST_F(ReportMenuTest, TheVehicleFileTakesTheFilteredVehicles) {
  workbench_.session().form().sqlFilter = QStringLiteral("DC_COLL = \"Heim\"");
  outside_.prompt.fileNames = {folder_.path() + QStringLiteral("/RZK_LOCO.DAT")};
  outside_.prompt.answers = {Answer::Yes};
  entry("mnuExpRZK")->trigger();
  EXPECT_EQ(outside_.prompt.shown.last(),
            QStringLiteral("Export beendet,\r1 Fahrzeuge übernommen."));
  EXPECT_EQ(QFileInfo(folder_.path() + QStringLiteral("/RZK_LOCO.DAT")).size(), 2 * 52);
}

TEST_F(ReportMenuTest, TheVehicleFileTakesWhatWasJustTyped) {
  auto* name = window_.findChild<QLineEdit*>(QStringLiteral("st_sname"));
  ASSERT_NE(name, nullptr);
  name->setFocus();
  QTest::keyClicks(name, QStringLiteral("x"));
  const QString typed = name->text();
  outside_.prompt.fileNames = {folder_.path() + QStringLiteral("/RZK_LOCO.DAT")};
  outside_.prompt.answers = {Answer::Yes};
  entry("mnuExpRZK")->trigger();
  QFile file(folder_.path() + QStringLiteral("/RZK_LOCO.DAT"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.readAll().contains(typed.toLatin1())) << typed.toStdString();
}

TEST_F(ReportMenuTest, WhatCannotBeStoredStopsTheVehicleFileWithItsMessage) {
  auto* address = window_.findChild<QLineEdit*>(QStringLiteral("dc_adr"));
  address->setFocus();
  address->selectAll();
  QTest::keyClicks(address, QStringLiteral("99999"));
  outside_.prompt.fileNames = {folder_.path() + QStringLiteral("/RZK_LOCO.DAT")};
  outside_.prompt.answers = {Answer::Yes};
  entry("mnuExpRZK")->trigger();
  EXPECT_FALSE(outside_.prompt.shown.isEmpty());
  EXPECT_TRUE(outside_.prompt.fileQuestions.isEmpty());
}

/// Opens `dlgPrint` by its menu entry and lets `act` use it.
class PrintMenuTest : public ReportMenuTest {
 protected:
  void inDialog(const std::function<void(DlgPrint&)>& act) {
    bool shown = false;
    QTimer::singleShot(0, &window_, [&] {
      auto* dialog = window_.findChild<DlgPrint*>();
      ASSERT_NE(dialog, nullptr);
      shown = true;
      act(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    entry("mnuDbPrint")->trigger();
    EXPECT_TRUE(shown);
  }

  /// Chooses PDF as the printer and an output, presses `butOK`, and closes the progress at the end
  /// of the work. Gives its last words.
  QString go(DlgPrint& dialog, const char* output) {
    auto* printers = dialog.findChild<QComboBox*>(QStringLiteral("cb_PrinterSel"));
    printers->setCurrentText(pdfPrinterName());
    emit printers->textActivated(pdfPrinterName());
    dialog.findChild<QRadioButton*>(QString::fromUtf8(output))->click();
    QTimer::singleShot(0, &dialog, [this, &dialog] { awaitEnd(dialog); });
    dialog.findChild<QPushButton*>(QStringLiteral("butOK"))->click();
    return words_;
  }

  static QByteArray contents(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
  }

 private:
  void awaitEnd(DlgPrint& dialog) {
    auto* progress = dialog.findChild<DlgComm*>();
    auto* button = progress == nullptr
                       ? nullptr
                       : progress->findChild<QPushButton*>(QStringLiteral("cmdCancel"));
    if (button == nullptr || button->text() != QStringLiteral("OK")) {
      QTimer::singleShot(0, &dialog, [this, &dialog] { awaitEnd(dialog); });
      return;
    }
    words_ = progress->findChild<QLabel*>(QStringLiteral("lblCommStatus"))->text();
    button->click();
  }

  QString words_;
};

TEST_F(PrintMenuTest, DialogKnowsTheVehicleOnShow) {
  workbench_.session().form().MoveLast();
  inDialog([](DlgPrint& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("txtAdrFrom"))->text(),
              QStringLiteral("5"));
    EXPECT_EQ(dialog.findChild<QComboBox*>(QStringLiteral("cb_printColl"))->currentText(),
              QStringLiteral("Heim"));
  });
}

TEST_F(PrintMenuTest, SheetsGoIntoAPdfFileAndTheDialogCloses) {
  workbench_.session().database().write(
      QStringLiteral("UPDATE LOCO_DAT SET DC_DECODER = 'ZX100', DC_TYPE = 1"), {});
  const QString file = folder_.file(QStringLiteral("Blatt.pdf"));
  outside_.prompt.fileNames = {file};
  inDialog([&](DlgPrint& dialog) {
    EXPECT_TRUE(go(dialog, "optPrintSheet").startsWith(QStringLiteral("PDF-Datei geschrieben:")));
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(outside_.prompt.shown, QStringList());
  EXPECT_TRUE(contents(file).startsWith("%PDF-"));
}

TEST_F(PrintMenuTest, ListGoesIntoAPdfFile) {
  folder_.copyData(QStringLiteral("repl_ger.rpt"));
  const QString file = folder_.file(QStringLiteral("Liste.pdf"));
  outside_.prompt.fileNames = {file};
  inDialog([&](DlgPrint& dialog) {
    EXPECT_TRUE(go(dialog, "optPrintList").startsWith(QStringLiteral("PDF-Datei geschrieben:")));
  });
  EXPECT_EQ(outside_.prompt.shown, QStringList());
  EXPECT_TRUE(contents(file).startsWith("%PDF-"));
}

TEST_F(PrintMenuTest, CsvFileLiesBesideTheDefaultDatabase) {
  folder_.copyData(QStringLiteral("repc_ger.rpt"));
  inDialog([&](DlgPrint& dialog) { go(dialog, "optPrintExcel"); });
  EXPECT_EQ(outside_.prompt.shown, QStringList());
  const QByteArray csv = contents(folder_.file(QStringLiteral("DB/LOKARIV3.CSV")));
  EXPECT_TRUE(csv.contains("C3") && csv.contains("H5")) << csv.toStdString();
}

TEST_F(PrintMenuTest, WhatWasJustTypedIsPrinted) {
  folder_.copyData(QStringLiteral("repc_ger.rpt"));
  auto* name = window_.findChild<QLineEdit*>(QStringLiteral("st_sname"));
  name->setFocus();
  QTest::keyClicks(name, QStringLiteral("neu"));
  const QString typed = name->text();
  inDialog([&](DlgPrint& dialog) { go(dialog, "optPrintExcel"); });
  const QByteArray csv = contents(folder_.file(QStringLiteral("DB/LOKARIV3.CSV")));
  EXPECT_TRUE(csv.contains(typed.toUtf8())) << csv.toStdString();
}

TEST_F(PrintMenuTest, ATableFileThatLeadsToTheSettingsIsRefused) {
  folder_.copyData(QStringLiteral("repc_ger.rpt"));
  const QString settings = workbench_.paths().iniFile;
  if (!QFileInfo::exists(settings)) {
    QFile file(settings);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[LOKARI]\r\n");
  }
  const QByteArray before = contents(settings);
  ASSERT_TRUE(QFile::link(settings, folder_.file(QStringLiteral("DB/LOKARIV3.CSV"))));
  inDialog([&](DlgPrint& dialog) {
    dialog.findChild<QRadioButton*>(QStringLiteral("optPrintExcel"))->click();
    dialog.findChild<QPushButton*>(QStringLiteral("butOK"))->click();
    EXPECT_TRUE(dialog.isVisible());
  });
  EXPECT_EQ(contents(settings), before);
  ASSERT_EQ(outside_.prompt.shown.size(), 1);
  EXPECT_TRUE(outside_.prompt.shown[0].contains(QStringLiteral("arbeitet selbst mit ihr")));
}

TEST_F(PrintMenuTest, MissingTemplateIsToldAndTheDialogStays) {
  inDialog([&](DlgPrint& dialog) {
    outside_.prompt.fileNames = {folder_.file(QStringLiteral("Liste.pdf"))};
    auto* printers = dialog.findChild<QComboBox*>(QStringLiteral("cb_PrinterSel"));
    emit printers->textActivated(pdfPrinterName());
    dialog.findChild<QPushButton*>(QStringLiteral("butOK"))->click();
    EXPECT_TRUE(dialog.isVisible());
  });
  ASSERT_EQ(outside_.prompt.shown.size(), 1);
  EXPECT_TRUE(outside_.prompt.shown[0].contains(QStringLiteral("repl_ger.rpt")))
      << outside_.prompt.shown[0].toStdString();
  EXPECT_FALSE(QFileInfo::exists(folder_.file(QStringLiteral("Liste.pdf"))));
}

TEST_F(PrintMenuTest, EntryFollowsTheForm) {
  EXPECT_TRUE(entry("mnuDbPrint")->isEnabled());
  workbench_.session().form().butFind();
  EXPECT_FALSE(entry("mnuDbPrint")->isEnabled());
}

}  // namespace
}  // namespace lokari
