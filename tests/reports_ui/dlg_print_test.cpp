// `dlgPrint` before anything is printed: what it offers and what it presets.
#include "print_fixture.h"
#include "support/tab_walk.h"

namespace lokari {
namespace {

class DlgPrintTest : public test::PrintFixture {};

QStringList entries(const QComboBox* list) {
  QStringList result;
  for (int i = 0; i < list->count(); ++i) result << list->itemText(i);
  return result;
}

TEST_F(DlgPrintTest, BearsItsNameAndTitle) {
  open();
  EXPECT_EQ(dialog->objectName(), QStringLiteral("dlgPrint"));
  EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Drucken"));
  EXPECT_TRUE(dialog->isModal());
}

TEST_F(DlgPrintTest, OptionsBearTheirCaptions) {
  open();
  const struct {
    const char* name;
    const char* caption;
  } kOptions[] = {{"optPrintAll", "Alle Datensätze"},
                  {"optPrintSel", "Aktuelle Auswahl"},
                  {"optPrintColl", "Sammlung:"},
                  {"optPrintList", "Drucker (Liste)"},
                  {"optPrintSheet", "Drucker (1 Blatt / Fahrzeug)"},
                  {"optPrintExcel", "Excel (CSV-Datei)"}};
  for (const auto& option : kOptions) {
    EXPECT_EQ(radio(option.name)->text().remove(u'&'), QString::fromUtf8(option.caption));
  }
}

TEST_F(DlgPrintTest, TheTabKeyGoesThroughItAsTheEyeDoes) {
  open();
  const QStringList stops = test::walkWithTab(dialog.get());
  EXPECT_GT(stops.size(), 5);
}

TEST_F(DlgPrintTest, ListsThePrintersAndSelectsTheDefaultOne) {
  open();
  EXPECT_EQ(
      entries(list("cb_PrinterSel")),
      QStringList({QStringLiteral("Laser"), QStringLiteral("Tinte"), QStringLiteral("PDF-Datei")}));
  EXPECT_EQ(list("cb_PrinterSel")->currentText(), QStringLiteral("Tinte"));
}

TEST_F(DlgPrintTest, ChoosingAPrinterMakesItTheCurrentOne) {
  open();
  list("cb_PrinterSel")->setFocus();
  QTest::keyClick(list("cb_PrinterSel"), Qt::Key_Up);
  EXPECT_EQ(printer.chosen, QStringLiteral("Laser"));
}

TEST_F(DlgPrintTest, PresetsAddressesAndCollectionOfTheVehicleOnShow) {
  open();
  EXPECT_EQ(line("txtAdrFrom")->text(), QStringLiteral("5"));
  EXPECT_EQ(line("txtAdrTo")->text(), QStringLiteral("10239"));
  EXPECT_EQ(
      entries(list("cb_printColl")),
      QStringList({QStringLiteral("Anlage"), QStringLiteral("Anna's"), QStringLiteral("Vitrine")}));
  EXPECT_EQ(list("cb_printColl")->currentText(), QStringLiteral("Anlage"));
}

TEST_F(DlgPrintTest, VehicleWithoutACollectionPresetsNone) {
  collection.clear();
  open();
  EXPECT_EQ(list("cb_printColl")->currentText(), QString());
}

TEST_F(DlgPrintTest, NullIsNoCollection) {
  database.addVehicle(20, QString(), QStringLiteral("ohne"));
  open();
  EXPECT_EQ(list("cb_printColl")->count(), 3);
}

TEST_F(DlgPrintTest, OnlyTheCollectionHasItsFieldsEnabled) {
  open();
  const auto enabled = [this] {
    const bool on = list("cb_printColl")->isEnabled();
    EXPECT_EQ(line("txtAdrFrom")->isEnabled(), on);
    EXPECT_EQ(line("txtAdrTo")->isEnabled(), on);
    return on;
  };
  EXPECT_TRUE(radio("optPrintAll")->isChecked());
  EXPECT_FALSE(enabled());
  choose("optPrintColl");
  EXPECT_TRUE(enabled());
  choose("optPrintSel");
  EXPECT_FALSE(enabled());
}

TEST_F(DlgPrintTest, FileNeedsNoPrinterAndHasNoPreview) {
  open();
  EXPECT_TRUE(radio("optPrintList")->isChecked());
  EXPECT_TRUE(list("cb_PrinterSel")->isEnabled());
  choose("optPrintExcel");
  EXPECT_FALSE(list("cb_PrinterSel")->isEnabled());
  EXPECT_FALSE(control<QPushButton>("butPreview")->isEnabled());
  choose("optPrintSheet");
  EXPECT_TRUE(list("cb_PrinterSel")->isEnabled());
  EXPECT_TRUE(control<QPushButton>("butPreview")->isEnabled());
}

TEST_F(DlgPrintTest, FocusSelectsAnAddress) {
  open();
  choose("optPrintColl");
  for (const char* name : {"txtAdrFrom", "txtAdrTo"}) {
    QLineEdit* field = line(name);
    for (const Qt::FocusReason reason : {Qt::TabFocusReason, Qt::OtherFocusReason}) {
      list("cb_printColl")->setFocus();
      field->deselect();
      field->setFocus(reason);
      EXPECT_EQ(field->selectedText(), field->text()) << name;
    }
    list("cb_printColl")->setFocus();
    field->deselect();
    QTest::mouseClick(field, Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(field->selectedText(), field->text()) << name;
  }
}

TEST_F(DlgPrintTest, EveryControlIsNamedAndReached) {
  open();
  for (const char* name : {"optPrintAll", "optPrintSel", "optPrintColl", "cb_printColl",
                           "txtAdrFrom", "txtAdrTo", "optPrintList", "optPrintSheet",
                           "optPrintExcel", "cb_PrinterSel", "butPreview", "butOK", "butCancel"}) {
    const auto* each = control<QWidget>(name);
    EXPECT_FALSE(each->accessibleName().isEmpty()) << name;
    EXPECT_NE(each->focusPolicy(), Qt::NoFocus) << name;
  }
}

TEST_F(DlgPrintTest, CancelPrintsNothing) {
  open();
  press("butCancel");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_TRUE(printer.titles.isEmpty());
}

TEST_F(DlgPrintTest, DatabaseThatRefusesIsToldInsteadOfTheDialog) {
  database.run("ALTER TABLE LOCO_DAT RENAME TO FORT");
  database.close();
  mnuDbPrint({.database = database.open(),
              .prompt = prompt,
              .printer = printer,
              .progress = {},
              .folders = {},
              .sqlFilter = {},
              .reportFilter = {},
              .address = {},
              .collection = {},
              .date = {},
              .list = {},
              .csv = {}},
             scale, nullptr);
  ASSERT_EQ(prompt.shown.size(), 1);
  EXPECT_TRUE(prompt.shown[0].contains(QStringLiteral("LOCO_DAT")))
      << prompt.shown[0].toStdString();
}

}  // namespace
}  // namespace lokari
