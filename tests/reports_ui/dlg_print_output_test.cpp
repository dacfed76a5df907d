// `butOK` of `dlgPrint`: selections, outputs, and what keeps them from being made.
#include "print_fixture.h"

namespace lokari {
namespace {

class DlgPrintOutputTest : public test::PrintFixture {
 protected:
  /// The addresses of the sheets that were printed.
  QString sheets() const {
    static const QRegularExpression told(QStringLiteral("Adresse: (\\d+)"));
    QStringList result;
    for (const QString& page : pages.texts()) result << told.match(page).captured(1);
    return result.join(u' ');
  }

  void setText(const char* name, const char* text) const {
    line(name)->setText(QString::fromUtf8(text));
  }
};

// ---- Selections ---------------------------------------------------------------------------------

TEST_F(DlgPrintOutputTest, AllVehiclesInTheirOrder) {
  open();
  choose("optPrintSheet");
  press("butOK");
  EXPECT_EQ(sheets(), QStringLiteral("3 5 12 9"));
  EXPECT_EQ(printer.titles, QStringList(QStringLiteral("Decoderblätter")));
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(DlgPrintOutputTest, VehiclesOfTheActiveFilter) {
  sqlFilter = QStringLiteral("ST_SNAME LIKE \"*0*\"");
  reportFilter = QStringLiteral("{LOCO_DAT.ST_SNAME} LIKE '*0*'");
  open();
  choose("optPrintSel");
  press("butOK");
  EXPECT_EQ(formulas, QStringList(reportFilter));
  open();
  choose("optPrintSel");
  choose("optPrintSheet");
  press("butOK");
  EXPECT_EQ(sheets(), QStringLiteral("3 5"));
}

TEST_F(DlgPrintOutputTest, WithoutAFilterEveryOutputShowsTheStoragesError) {
  open();
  choose("optPrintSel");
  for (const char* output : {"optPrintList", "optPrintSheet", "optPrintExcel"}) {
    prompt.shown.clear();
    choose(output);
    press("butOK");
    ASSERT_EQ(prompt.shown.size(), 1) << output;
    EXPECT_FALSE(prompt.shown[0].isEmpty()) << output;
    EXPECT_TRUE(dialog->isVisible()) << output;
  }
  EXPECT_TRUE(printer.titles.isEmpty());
  EXPECT_TRUE(formulas.isEmpty());
}

TEST_F(DlgPrintOutputTest, AfterASearchWithoutAMatchListAndFileStillAskForIt) {
  reportFilter = QStringLiteral("{LOCO_DAT.ST_SNAME} LIKE 'Q*'");
  for (const char* output : {"optPrintList", "optPrintExcel"}) {
    open();
    choose("optPrintSel");
    choose(output);
    press("butOK");
    EXPECT_EQ(prompt.shown, QStringList()) << output;
    EXPECT_EQ(formulas.last(), reportFilter) << output;
  }
  open();
  choose("optPrintSel");
  choose("optPrintSheet");
  press("butOK");
  EXPECT_EQ(prompt.shown.size(), 1) << "the storage has no condition to select by";
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(DlgPrintOutputTest, CollectionAndRangeOfAddresses) {
  open();
  choose("optPrintColl");
  press("butOK");
  EXPECT_EQ(formulas, QStringList(QStringLiteral(
                          "{LOCO_DAT.DC_COLL} ='Anlage' AND {LOCO_DAT.DC_ADR} >= 5 AND "
                          "{LOCO_DAT.DC_ADR} <= 10239")));
  open();
  choose("optPrintColl");
  choose("optPrintSheet");
  press("butOK");
  EXPECT_EQ(sheets(), QStringLiteral("5"));
}

TEST_F(DlgPrintOutputTest, EmptyCollectionLeavesTheAddressesAlone) {
  open();
  choose("optPrintColl");
  list("cb_printColl")->setEditText(QString());
  setText("txtAdrFrom", " 4 ");
  setText("txtAdrTo", "9");
  choose("optPrintSheet");
  press("butOK");
  EXPECT_EQ(sheets(), QStringLiteral("5 9"));
}

TEST_F(DlgPrintOutputTest, QuoteInACollectionIsPartOfItsName) {
  open();
  choose("optPrintColl");
  list("cb_printColl")->setCurrentText(QStringLiteral("Anna's"));
  choose("optPrintSheet");
  press("butOK");
  EXPECT_EQ(prompt.shown, QStringList());
  EXPECT_EQ(sheets(), QStringLiteral("12"));
}

TEST_F(DlgPrintOutputTest, AddressThatIsNoNumberIsToldAndGetsTheFocus) {
  open();
  choose("optPrintColl");
  const struct {
    const char* field;
    const char* text;
    const char* message;
  } kCases[] = {
      {"txtAdrFrom", "", "Bitte eine Adresse eingeben!"},
      {"txtAdrTo", " ", "Bitte eine Adresse eingeben!"},
      {"txtAdrFrom", "3a", "„3a“ ist keine Adresse: Bitte eine ganze Zahl eingeben!"},
      {"txtAdrTo", "-1", "„-1“ ist keine Adresse: Bitte eine ganze Zahl eingeben!"},
      {"txtAdrFrom", "+5", "„+5“ ist keine Adresse: Bitte eine ganze Zahl eingeben!"},
      {"txtAdrTo", "1 OR", "„1 OR“ ist keine Adresse: Bitte eine ganze Zahl eingeben!"},
  };
  for (const auto& each : kCases) {
    setText("txtAdrFrom", "3");
    setText("txtAdrTo", "5");
    setText(each.field, each.text);
    prompt.shown.clear();
    press("butOK");
    EXPECT_EQ(prompt.shown, QStringList(QString::fromUtf8(each.message)));
    EXPECT_TRUE(line(each.field)->hasFocus()) << each.text;
    EXPECT_TRUE(dialog->isVisible());
  }
  EXPECT_TRUE(formulas.isEmpty());
}

TEST_F(DlgPrintOutputTest, AddressesDoNotMatterToOtherSelections) {
  address.clear();
  open();
  press("butOK");
  EXPECT_EQ(prompt.shown, QStringList());
  EXPECT_EQ(formulas, QStringList(QString()));
}

// ---- Paper --------------------------------------------------------------------------------------

TEST_F(DlgPrintOutputTest, ListIsPrinted) {
  open();
  press("butOK");
  EXPECT_EQ(pages.texts().value(0).trimmed(), QStringLiteral("Die Liste"));
  EXPECT_TRUE(pages.progress.texts.last().startsWith(QStringLiteral("PDF-Datei geschrieben:")));
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(DlgPrintOutputTest, AddressNowPrintingIsShown) {
  open();
  choose("optPrintSheet");
  QStringList shown;
  QObject::connect(line("txtAdrFrom"), &QLineEdit::textChanged, dialog.get(),
                   [&shown](const QString& text) { shown << text; });
  press("butOK");
  EXPECT_EQ(shown.join(u' '), QStringLiteral("3 5 12 9"));
}

TEST_F(DlgPrintOutputTest, CancelledPrintLeavesDialogAndFieldsAsTheyWere) {
  open();
  choose("optPrintSheet");
  pages.progress.workUntilCancel = 2;
  press("butOK");
  EXPECT_EQ(pages.progress.texts.last(), QStringLiteral("Druck abgebrochen."));
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(line("txtAdrFrom")->text(), QStringLiteral("5"));
  EXPECT_FALSE(QFile::exists(pages.path()));
}

TEST_F(DlgPrintOutputTest, NothingToPrintIsToldAndTheDialogStays) {
  database.run("UPDATE LOCO_DAT SET DC_TYPE = 2");
  open();
  choose("optPrintSheet");
  press("butOK");
  EXPECT_EQ(prompt.shown,
            QStringList(QStringLiteral(
                "In der Auswahl ist kein Fahrzeug mit Decoder: Es gibt nichts zu drucken!")));
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_FALSE(QFile::exists(pages.path()));
}

TEST_F(DlgPrintOutputTest, PrinterThatRefusesIsToldAndTheDialogStays) {
  printer.refusal = QStringLiteral("Kein Drucker da!");
  open();
  press("butOK");
  EXPECT_EQ(prompt.shown, QStringList(printer.refusal));
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(DlgPrintOutputTest, TakenBackFileNameLeavesTheDialogOpen) {
  printer.takenBack = true;
  open();
  press("butOK");
  EXPECT_EQ(prompt.shown, QStringList());
  EXPECT_TRUE(pages.progress.texts.isEmpty());
  EXPECT_TRUE(dialog->isVisible());
}

// ---- File ---------------------------------------------------------------------------------------

TEST_F(DlgPrintOutputTest, FileIsMadeWithoutAPrinter) {
  printer.refusal = QStringLiteral("Kein Drucker da!");
  open();
  choose("optPrintExcel");
  press("butOK");
  EXPECT_EQ(prompt.shown, QStringList());
  EXPECT_EQ(formulas, QStringList(QString()));
  EXPECT_EQ(pages.progress.texts, QStringList(QStringLiteral("Fertig.")));
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(DlgPrintOutputTest, CancelledFileLeavesTheDialogOpen) {
  csvDone = false;
  open();
  choose("optPrintExcel");
  press("butOK");
  EXPECT_EQ(pages.progress.texts, QStringList(QStringLiteral("Export abgebrochen.")));
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(DlgPrintOutputTest, FailureOfTheFileIsTold) {
  csvFailure = QStringLiteral("Vorlage fehlt!");
  open();
  choose("optPrintExcel");
  press("butOK");
  EXPECT_EQ(prompt.shown, QStringList(csvFailure));
  EXPECT_TRUE(dialog->isVisible());
}

// ---- Preview ------------------------------------------------------------------------------------

class DlgPrintPreviewTest : public DlgPrintOutputTest {
 protected:
  /// Presses a button of the preview once it is up.
  void inPreview(const char* button) {
    QTimer::singleShot(0, dialog.get(), [this, button] {
      QWidget* window = QApplication::activeModalWidget();
      ASSERT_NE(window, nullptr);
      EXPECT_EQ(window->objectName(), QStringLiteral("dlgPreview"));
      shownPages = window->findChild<QLabel*>(QStringLiteral("labPage"))->text();
      window->findChild<QPushButton*>(QString::fromUtf8(button))->click();
    });
    press("butPreview");
  }
  QString shownPages;
};

TEST_F(DlgPrintPreviewTest, ClosedPreviewPrintsNothing) {
  open();
  choose("optPrintSheet");
  inPreview("cmdClose");
  EXPECT_EQ(shownPages, QStringLiteral("Seite 1 von 4"));
  EXPECT_TRUE(printer.titles.isEmpty());
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(line("txtAdrFrom")->text(), QStringLiteral("5"));
}

TEST_F(DlgPrintPreviewTest, WhatWasLookedAtCanBePrinted) {
  open();
  inPreview("cmdPrint");
  EXPECT_EQ(shownPages, QStringLiteral("Seite 1 von 1"));
  EXPECT_EQ(printer.titles.size(), 1);
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(DlgPrintPreviewTest, WhatCannotBePaintedIsToldInsteadOfAPreview) {
  database.run("UPDATE LOCO_DAT SET DC_TYPE = 2");
  open();
  choose("optPrintSheet");
  press("butPreview");
  EXPECT_EQ(prompt.shown.size(), 1);
  EXPECT_TRUE(dialog->isVisible());
}

}  // namespace
}  // namespace lokari
