#include <QClipboard>

#include "options_fixture.h"

namespace lokari {
namespace {

class DlgOptionsTest : public test::OptionsFixture {};

// ---- Load ---------------------------------------------------------------------------------------

TEST_F(DlgOptionsTest, ShowsTheSettings) {
  settings.baudrate = 19200;
  settings.addressCheck = false;
  open();
  EXPECT_EQ(dialog->objectName(), "dlgOptions");
  EXPECT_TRUE(radio("optComTypeTams")->isChecked());
  EXPECT_TRUE(port(3)->isChecked());
  EXPECT_EQ(control<QComboBox>("lstBaudrate")->currentText(), "19200");
  EXPECT_EQ(line_("txtComTimeout")->text(), "2");
  EXPECT_EQ(line_("txtDbPath")->text(), "/home/a/Bahn.MDB");
  EXPECT_TRUE(radio("optComDelayNo")->isChecked());
  EXPECT_TRUE(radio("optComAdrChkNo")->isChecked());
  EXPECT_TRUE(radio("optComManufChkYes")->isChecked());
  EXPECT_TRUE(radio("optComContYes")->isChecked());
  EXPECT_FALSE(radio("optComContNo")->isChecked());
}

TEST_F(DlgOptionsTest, EveryKindSelectsItsRadio) {
  for (const StationChoiceRow& row : kStationChoices) {
    settings.baseUnit = row.choice.kind;
    settings.lenzV36 = row.choice.lenzV36;
    open();
    EXPECT_TRUE(control<QRadioButton>(QString::fromUtf16(row.control))->isChecked());
  }
}

TEST_F(DlgOptionsTest, TheListHasItsRatesAndAnEmptyFieldForTheStationsOwn) {
  open();
  auto* list = control<QComboBox>("lstBaudrate");
  QStringList entries;
  for (int i = 0; i < list->count(); ++i) entries << list->itemText(i);
  EXPECT_EQ(entries.join(u' '), "300 600 1200 2400 4800 9600 19200 38400 57600");
  EXPECT_EQ(list->currentText(), "");
  EXPECT_EQ(list->lineEdit()->placeholderText(), "Vorgabe (2400)");
}

TEST_F(DlgOptionsTest, EveryControlIsReachedAndNamed) {
  open();
  const QList<QWidget*> all = dialog->findChildren<QWidget*>();
  for (const QWidget* each : all) {
    if (each->focusPolicy() == Qt::NoFocus || each->objectName().startsWith("qt_")) continue;
    const auto* button = qobject_cast<const QAbstractButton*>(each);
    const bool named = !each->accessibleName().isEmpty() ||
                       (button != nullptr && !button->text().isEmpty()) ||
                       qobject_cast<const QComboBox*>(each->parentWidget()) != nullptr ||
                       each->inherits("QAbstractItemView");
    EXPECT_TRUE(named) << each->metaObject()->className() << " "
                       << each->objectName().toStdString();
  }
}

// ---- Views --------------------------------------------------------------------------------------

TEST_F(DlgOptionsTest, ASerialStationShowsPortsAndRate) {
  open();
  for (const char* shown : {"labPort", "labBaudrate", "lstBaudrate"}) {
    EXPECT_TRUE(widget(shown)->isVisible()) << shown;
  }
  for (const char* hidden : {"labIP", "txtIP1", "txtIP2", "txtIP3", "txtIP4"}) {
    EXPECT_FALSE(widget(hidden)->isVisible()) << hidden;
  }
}

TEST_F(DlgOptionsTest, ANetworkStationShowsTheAddress) {
  open();
  for (const char* choice : {"optComTypeZ21", "optComTypeZimo6"}) {
    click(choice);
    for (const char* hidden : {"labPort", "labBaudrate", "lstBaudrate"}) {
      EXPECT_FALSE(widget(hidden)->isVisible()) << hidden;
    }
    EXPECT_EQ(visiblePorts(), "");
    for (const char* shown : {"labIP", "txtIP1", "txtIP2", "txtIP3", "txtIP4"}) {
      EXPECT_TRUE(widget(shown)->isVisible()) << shown;
    }
    click("optComTypeZimo5");
    EXPECT_FALSE(widget("labIP")->isVisible());
    EXPECT_TRUE(widget("labPort")->isVisible());
  }
}

TEST_F(DlgOptionsTest, TheFirstChoiceOfAZ21FillsItsAddressAndALaterMx10KeepsIt) {
  open();
  EXPECT_EQ(address(), "000.000.000.000");
  click("optComTypeZ21");
  EXPECT_EQ(address(), "192.168.000.111");
  click("optComTypeZimo6");
  EXPECT_EQ(address(), "192.168.000.111");
}

TEST_F(DlgOptionsTest, TheFirstChoiceOfAnMx10FillsItsAddress) {
  open();
  click("optComTypeZimo6");
  EXPECT_EQ(address(), "192.168.001.010");
}

TEST_F(DlgOptionsTest, AnAddressThatIsSetStays) {
  settings.baseUnit = StationKind::Mx10Ip;
  settings.ipAddr = QStringLiteral("010.000.000.007");
  open();
  EXPECT_TRUE(widget("txtIP1")->isVisible());
  click("optComTypeZ21");
  EXPECT_EQ(address(), "010.000.000.007");
}

// ---- Ports --------------------------------------------------------------------------------------

TEST_F(DlgOptionsTest, WithoutAnyAdapterAllPortsAreOffered) {
  open();
  EXPECT_EQ(visiblePorts(), "1 2 3 4 5 6 7 8 9 10");
  EXPECT_EQ(port(3)->toolTip(), "Hier ist kein Gerät angeschlossen.");
}

TEST_F(DlgOptionsTest, OnlyPortsWithADeviceAreOfferedAndTheTipNamesIt) {
  plugIn("usb-A");
  open();
  EXPECT_EQ(visiblePorts(), "1");
  EXPECT_EQ(port(1)->toolTip(), folder.filePath("adapters/usb-A"));
}

TEST_F(DlgOptionsTest, Com10AlsoShowsCom1) {
  plugIn("usb-A");
  IniFile(folder.filePath("PORTS.INI"))
      .writeString("PORTS", "COM10", folder.filePath("adapters/usb-A"));
  open();
  EXPECT_EQ(visiblePorts(), "1 10");
}

TEST_F(DlgOptionsTest, AnAdapterPluggedInMeanwhileShowsAtTheNextView) {
  plugIn("usb-A");
  open();
  plugIn("usb-B");
  EXPECT_EQ(visiblePorts(), "1");
  click("optComTypeIBX");
  EXPECT_EQ(visiblePorts(), "1 2");
}

// ---- Address fields -----------------------------------------------------------------------------

TEST_F(DlgOptionsTest, AnAddressFieldTakesDigitsOnly) {
  open();
  click("optComTypeZ21");
  line_("txtIP4")->clear();
  QTest::keyClicks(line_("txtIP4"), "1a.-2x34");
  EXPECT_EQ(line_("txtIP4")->text(), "123");
}

TEST_F(DlgOptionsTest, AnAddressIsTypedAsPeopleWriteIt) {
  for (const char* keys : {"127.0.0.1", "127,0,0,1", "127.000.000.001"}) {
    open();
    click("optComTypeZ21");
    QTest::mouseClick(line_("txtIP1"), Qt::LeftButton);
    QApplication::processEvents();
    for (const char* each = keys; *each != '\0'; ++each) {
      QTest::keyClick(QApplication::focusWidget(), *each);
    }
    click("cmdOK");
    EXPECT_EQ(settings.ipAddr, "127.000.000.001") << keys;
    settings.ipAddr = QStringLiteral("0");
  }
}

TEST_F(DlgOptionsTest, DigitsBehindTheThirdGoOnInTheNextField) {
  open();
  click("optComTypeZ21");
  line_("txtIP1")->setFocus();
  line_("txtIP1")->selectAll();
  for (const char each : {'1', '9', '2', '1', '6', '8', '7'}) {
    QTest::keyClick(QApplication::focusWidget(), each);
  }
  EXPECT_EQ(address(), "192.168.7.111");
}

TEST_F(DlgOptionsTest, APastedAddressFillsAllFields) {
  open();
  click("optComTypeZ21");
  for (const char* text : {"10.1.2.34", " http://10.1.2.34/ \n"}) {
    line_("txtIP3")->setText("0");
    QGuiApplication::clipboard()->setText(text);
    line_("txtIP2")->setFocus();
    QTest::keySequence(line_("txtIP2"), QKeySequence::Paste);
    EXPECT_EQ(address(), "10.1.2.34") << text;
  }
  QGuiApplication::clipboard()->setText("77");
  line_("txtIP2")->setFocus();
  line_("txtIP2")->selectAll();
  QTest::keySequence(line_("txtIP2"), QKeySequence::Paste);
  EXPECT_EQ(address(), "10.77.2.34") << "less than an address goes into the one field";
  QGuiApplication::clipboard()->setText("10.1.2.340");
  line_("txtIP2")->setFocus();
  QTest::keySequence(line_("txtIP2"), QKeySequence::Paste);
  EXPECT_EQ(address(), "10.77.2.34") << "no address";
}

TEST_F(DlgOptionsTest, AFieldAbove255KeepsTheFocus) {
  open();
  click("optComTypeZ21");
  line_("txtIP2")->setFocus();
  for (const char* bad : {"256", ""}) {
    line_("txtIP2")->setText(bad);
    QTest::keyClick(line_("txtIP2"), Qt::Key_Tab);
    QApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), line_("txtIP2")) << bad;
  }
  line_("txtIP2")->setText("255");
  QTest::keyClick(line_("txtIP2"), Qt::Key_Tab);
  QApplication::processEvents();
  EXPECT_EQ(QApplication::focusWidget(), line_("txtIP3"));
}

TEST_F(DlgOptionsTest, CancelWorksFromAFieldThatKeepsTheFocus) {
  open();
  click("optComTypeZ21");
  line_("txtIP2")->setFocus();
  line_("txtIP2")->setText("999");
  click("cmdCancel");
  EXPECT_FALSE(dialog->isVisible());
}

// ---- OK and cancel ------------------------------------------------------------------------------

TEST_F(DlgOptionsTest, OkTakesAndWritesEverySetting) {
  open();
  click("optComTypeLenzV36");
  click("optComPort9");
  control<QComboBox>("lstBaudrate")->setCurrentText("9600");
  line_("txtComTimeout")->setText("15");
  line_("txtDbPath")->setText("/home/b/C.MDB");
  click("optComDelayYes");
  click("optComAdrChkNo");
  click("optComManufChkNo");
  click("optComContNo");
  click("cmdOK");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(dialog->result(), QDialog::Accepted);
  EXPECT_EQ(settings.baseUnit, StationKind::LiUsb);
  EXPECT_FALSE(settings.addressCheckNow);
  EXPECT_FALSE(settings.manufacturerCheckNow);
  EXPECT_EQ(iniText(),
            "[LOKARI]\r\nDBPath=/home/b/C.MDB\r\nBaseUnit=LIUSB\r\nLenzV36=1\r\nComPort=9\r\n"
            "Timeout=15\r\nBaudrate=9600\r\nDelay=1\r\nAddressCheck=0\r\nManufacturerCheck=0\r\n"
            "ContinueOnError=0\r\nIPAddr=000.000.000.000\r\n");
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(DlgOptionsTest, AnAddressPart1IsStoredAs001) {
  open();
  click("optComTypeZ21");
  line_("txtIP4")->setText("1");
  click("cmdOK");
  EXPECT_EQ(settings.ipAddr, "192.168.000.001");
  EXPECT_TRUE(iniText().contains("IPAddr=192.168.000.001\r\n"));
}

TEST_F(DlgOptionsTest, ASerialStationKeepsTheAddressOfTheOneBefore) {
  IniFile(iniPath()).writeString("LOKARI", "IPAddr", "192.168.0.5");
  open();
  click("optComTypeIBX");
  click("cmdOK");
  EXPECT_TRUE(iniText().contains("BaseUnit=IBX\r\n"));
  EXPECT_TRUE(iniText().contains("IPAddr=192.168.0.5\r\n")) << iniText().toStdString();
  open();
  click("optComTypeZ21");
  EXPECT_EQ(address(), "192.168.000.005") << "it is there again for the network";
  click("cmdOK");
  EXPECT_TRUE(iniText().contains("IPAddr=192.168.000.005\r\n"));
}

TEST_F(DlgOptionsTest, AnEmptyRateIsTheStationsOwn) {
  settings.baudrate = 9600;
  open();
  control<QComboBox>("lstBaudrate")->setEditText("");
  click("cmdOK");
  EXPECT_EQ(settings.baudrate, 0);
  EXPECT_TRUE(iniText().contains("Baudrate=0\r\n"));
}

TEST_F(DlgOptionsTest, AWrongEntryIsExplainedAndNothingIsTaken) {
  open();
  click("optComTypeIBX");
  line_("txtComTimeout")->setText("0");
  click("cmdOK");
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(prompt.shown, QStringList{"Die Wartezeit muss zwischen 1 und 999 Sekunden liegen!"});
  EXPECT_EQ(QApplication::focusWidget(), line_("txtComTimeout"));
  EXPECT_EQ(settings.baseUnit, StationKind::TamsMc);
  EXPECT_EQ(iniText(), "");
}

TEST_F(DlgOptionsTest, AFileThatCannotBeWrittenNamesItsKeys) {
  EXPECT_TRUE(QDir(folder.path()).mkdir("LOKARI.INI"));
  open();
  click("cmdOK");
  EXPECT_FALSE(dialog->isVisible());
  ASSERT_EQ(prompt.shown.size(), 1);
  const QStringList lines = prompt.shown.first().split(u'\n');
  EXPECT_EQ(lines.size(), 11);
  EXPECT_EQ(lines.first(), "Fehler beim Schreiben der INI-Datei (DBPath)!");
  EXPECT_EQ(lines.last(), "Fehler beim Schreiben der INI-Datei (IPAddr)!");
}

TEST_F(DlgOptionsTest, APathThatAStartWouldCutIsNotStored) {
  settings.dbPath = QStringLiteral("/") + QString(70, u'x');
  open();
  click("cmdOK");
  EXPECT_EQ(prompt.shown,
            QStringList{"Der Pfad der Datenbank ist länger als 63 Zeichen und wurde nicht "
                        "gespeichert!"});
  EXPECT_FALSE(iniText().contains("DBPath"));
}

TEST_F(DlgOptionsTest, CancelChangesNothing) {
  open();
  click("optComTypeZ21");
  click("cmdCancel");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(settings.baseUnit, StationKind::TamsMc);
  EXPECT_EQ(settings.ipAddr, "000.000.000.000");
  EXPECT_EQ(iniText(), "");
}

}  // namespace
}  // namespace lokari
