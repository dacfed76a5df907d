#include "app/ui/main_win.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <functional>

#include "app/driving.h"
#include "app_folder.h"
#include "base/ini_file.h"
#include "support/tab_walk.h"

namespace lokari {
namespace {

const QList<test::Vehicle> kVehicles{{QStringLiteral("Club"), 3, QStringLiteral("C3")},
                                     {QStringLiteral("Club"), 7, QStringLiteral("C7")},
                                     {QStringLiteral("Heim"), 5, QStringLiteral("H5")}};

class MainWinTest : public ::testing::Test {
 protected:
  /// Starts the program on the folder as it is and shows its window.
  void start() {
    workbench_ = std::make_unique<Workbench>(outside_.parts(folder_));
    window_ = std::make_unique<MainWin>(*workbench_);
    ASSERT_TRUE(window_->start());
    window_->show();
    QApplication::processEvents();
  }

  void startWith(const QList<test::Vehicle>& vehicles) {
    folder_.add(vehicles);
    start();
  }

  template <typename T>
  T* child(const char16_t* name) const {
    T* found = window_->findChild<T*>(QString::fromUtf16(name));
    EXPECT_NE(found, nullptr) << qPrintable(QString::fromUtf16(name));
    return found;
  }
  QLineEdit* line(const char16_t* name) const { return child<QLineEdit>(name); }
  QToolButton* button(const char16_t* name) const { return child<QToolButton>(name); }
  QAction* entry(const char16_t* name) const { return child<QAction>(name); }
  QComboBox* list(const char16_t* name) const { return child<QComboBox>(name); }
  QString caption() const { return child<QLabel>(u"Data1_Caption")->text(); }

  void type(QWidget* field, const char* text) const {
    field->setFocus();
    QTest::keyClicks(field, QString::fromUtf8(text));
  }
  void typeOver(const char16_t* name, const char* text) const {
    line(name)->setFocus();
    line(name)->selectAll();
    QTest::keyClicks(line(name), QString::fromUtf8(text));
  }
  /// Leaves a field for another one and lets the checks of leaving run.
  void leaveFor(const char16_t* name) const {
    child<QWidget>(name)->setFocus();
    QApplication::processEvents();
  }
  void press(const char16_t* name) const { button(name)->click(); }

  /// Lets `act` use the decoder window once it is up.
  void whenDecoderWindowShows(std::function<void(QDialog&)> act) {
    // The busy pointer lets events run before the window is up: look again until it is.
    watch_.callOnTimeout([this, act = std::move(act)] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || dialog->objectName() != QStringLiteral("frmDecoder")) return;
      if (!dialog->isActiveWindow()) return;
      watch_.stop();
      act(*dialog);
    });
    watch_.start(0);
  }

  QStringList& boxes() { return outside_.prompt.shown; }

  test::AppFolder folder_;
  test::Outside outside_;
  std::unique_ptr<Workbench> workbench_;
  std::unique_ptr<MainWin> window_;
  QTimer watch_;
};

// ---- Showing ------------------------------------------------------------------------------------

TEST_F(MainWinTest, ShowsTheFirstRecordAndWhereItStands) {
  startWith(kVehicles);
  EXPECT_EQ(window_->objectName(), QStringLiteral("main_win"));
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("LOKARIV3.MDB - Lokari V4.11"));
  EXPECT_EQ(caption(), QStringLiteral("Satz  1 von  3"));
  EXPECT_EQ(line(u"dc_adr")->text(), QStringLiteral("3"));
  EXPECT_EQ(line(u"st_sname")->text(), QStringLiteral("C3"));
  EXPECT_EQ(list(u"dc_coll")->currentText(), QStringLiteral("Club"));
  EXPECT_TRUE(child<QRadioButton>(u"dc_type_1")->isChecked());
  EXPECT_EQ(QApplication::focusWidget(), line(u"dc_adr"));
}

TEST_F(MainWinTest, TheNavigatorMovesThroughTheRecords) {
  startWith(kVehicles);
  press(u"Data1_Next");
  EXPECT_EQ(line(u"st_sname")->text(), QStringLiteral("C7"));
  press(u"Data1_Last");
  EXPECT_EQ(caption(), QStringLiteral("Satz  3 von  3"));
  press(u"Data1_Previous");
  EXPECT_EQ(line(u"st_sname")->text(), QStringLiteral("C7"));
  press(u"Data1_First");
  EXPECT_EQ(caption(), QStringLiteral("Satz  1 von  3"));
}

TEST_F(MainWinTest, EveryFieldHasItsLabelAndAnAccessibleName) {
  startWith(kVehicles);
  EXPECT_EQ(child<QLabel>(u"lab_dc_adr")->text(), QStringLiteral("Adresse (1-10239):"));
  EXPECT_EQ(child<QLabel>(u"lab_fz_ftype")->text(), QStringLiteral("Fahrzeug-Type:"));
  EXPECT_EQ(child<QLabel>(u"lab_md_scale")->text(), QStringLiteral("Maßstab:"));
  for (const char16_t* name : {u"dc_adr", u"dc_coll", u"md_info", u"md_user_3", u"dc_decoder"}) {
    EXPECT_FALSE(child<QWidget>(name)->accessibleName().isEmpty());
  }
}

TEST_F(MainWinTest, TheScaleOffersItsSuggestionsInTheirOrder) {
  startWith(kVehicles);
  const QComboBox* scale = list(u"md_scale");
  ASSERT_EQ(scale->count(), 11);
  EXPECT_EQ(scale->itemText(0), QStringLiteral("1:22.5"));
  EXPECT_EQ(scale->itemText(2), QStringLiteral("1:43,5"));
  EXPECT_EQ(scale->itemText(10), QStringLiteral("1:220"));
}

TEST_F(MainWinTest, EveryMenuEntryIsOfferedButThoseThatHaveNothingToWorkOn) {
  startWith(kVehicles);
  const QList<QAction*> actions = window_->findChildren<QAction*>();
  int entries = 0;
  for (const QAction* action : actions) {
    if (!action->objectName().startsWith(QStringLiteral("mnu")) || action->menu() != nullptr)
      continue;
    ++entries;
    // Nothing was copied, nothing deleted and nothing searched.
    const bool idle = action->objectName() == QStringLiteral("mnuEditInsert") ||
                      action->objectName() == QStringLiteral("mnuEditFindNext") ||
                      action->objectName() == QStringLiteral("mnuEditUndo");
    EXPECT_EQ(action->isEnabled(), !idle) << qPrintable(action->objectName());
  }
  EXPECT_EQ(entries, 28);
}

// ---- Editing ------------------------------------------------------------------------------------

TEST_F(MainWinTest, AChangeIsStoredByTheNextMove) {
  startWith(kVehicles);
  typeOver(u"fz_lname", "Schnellzuglok");
  press(u"Data1_Next");
  EXPECT_EQ(folder_.stored(3, QStringLiteral("FZ_LNAME")).toString(),
            QStringLiteral("Schnellzuglok"));
}

TEST_F(MainWinTest, AChoiceInADropDownIsStoredAtOnce) {
  startWith(kVehicles);
  QComboBox* era = list(u"fz_era");
  ASSERT_GT(era->count(), 1);
  era->setFocus();
  era->setCurrentIndex(1);
  EXPECT_EQ(folder_.stored(3, QStringLiteral("FZ_ERA")).toString(), era->itemText(1));
}

TEST_F(MainWinTest, OnlyDigitsEnterTheAddress) {
  startWith(kVehicles);
  typeOver(u"dc_adr", "1a2-3,4.5 6");
  EXPECT_EQ(line(u"dc_adr")->text(), QStringLiteral("12345"));
}

TEST_F(MainWinTest, ThePriceTakesItsCharactersOnly) {
  startWith(kVehicles);
  typeOver(u"md_price", "1x2.3,4-5");
  EXPECT_EQ(line(u"md_price")->text(), QStringLiteral("12.3,45"));
}

TEST_F(MainWinTest, ACollectionHasSixteenCharactersAndASeventeenthBeeps) {
  startWith(kVehicles);
  QComboBox* collection = list(u"dc_coll");
  collection->setFocus();
  collection->lineEdit()->selectAll();
  QTest::keyClick(collection, Qt::Key_Delete);
  type(collection, "1234567890123456");
  EXPECT_EQ(outside_.prompt.beeps, 0);
  type(collection, "7");
  EXPECT_EQ(collection->currentText(), QStringLiteral("1234567890123456"));
  EXPECT_EQ(outside_.prompt.beeps, 1);
  QTest::keyClick(collection, Qt::Key_Backspace);
  EXPECT_EQ(collection->currentText(), QStringLiteral("123456789012345"));
}

TEST_F(MainWinTest, AFullCollectionTakesDeleteAndTypingOverASelection) {
  startWith(kVehicles);
  QComboBox* collection = list(u"dc_coll");
  collection->setFocus();
  collection->lineEdit()->selectAll();
  type(collection, "1234567890123456");
  collection->lineEdit()->setSelection(0, 1);
  type(collection, "x");
  EXPECT_EQ(collection->currentText(), QStringLiteral("x234567890123456"));
  collection->lineEdit()->setCursorPosition(0);
  QTest::keyClick(collection, Qt::Key_Delete);
  EXPECT_EQ(collection->currentText(), QStringLiteral("234567890123456"));
  EXPECT_EQ(outside_.prompt.beeps, 0);
}

TEST_F(MainWinTest, ARemarkEndsAt240Characters) {
  startWith(kVehicles);
  auto* remark = child<QPlainTextEdit>(u"md_info");
  remark->setFocus();
  remark->insertPlainText(QString(238, u'x'));
  QTest::keyClicks(remark, QStringLiteral("abcd"));
  EXPECT_EQ(remark->toPlainText(), QString(238, u'x') + QStringLiteral("ab"));
}

TEST_F(MainWinTest, AnAddressOutOfRangeIsRefusedWhenItsFieldIsLeft) {
  startWith(kVehicles);
  typeOver(u"dc_adr", "10240");
  leaveFor(u"st_sname");
  EXPECT_EQ(boxes(), QStringList(QStringLiteral("Erlaubte Werte liegen zwischen 1 und 10239!")));
  EXPECT_EQ(QApplication::focusWidget(), line(u"dc_adr"));
  EXPECT_EQ(line(u"dc_adr")->selectedText(), QStringLiteral("10240"));
}

TEST_F(MainWinTest, AnEmptyShortNameCannotBeLeft) {
  startWith(kVehicles);
  line(u"st_sname")->setFocus();
  line(u"st_sname")->selectAll();
  QTest::keyClick(line(u"st_sname"), Qt::Key_Delete);
  press(u"Data1_Next");
  EXPECT_EQ(boxes(), QStringList(QStringLiteral("Kurzbezeichnung muß eingegeben werden")));
  EXPECT_EQ(caption(), QStringLiteral("Satz  1 von  3"));
  EXPECT_EQ(QApplication::focusWidget(), line(u"st_sname"));
}

TEST_F(MainWinTest, AStoredTextLongerThanItsFieldIsShownWholeAndKept) {
  folder_.add({{QStringLiteral("Club"), 3, QStringLiteral("C3")}});
  {
    Database database(folder_.file(test::AppFolder::databaseName()));
    database.write(QStringLiteral("UPDATE LOCO_DAT SET MD_INFO = ?"), {QString(250, u'x')});
  }
  start();
  EXPECT_EQ(child<QPlainTextEdit>(u"md_info")->toPlainText().size(), 250);
  typeOver(u"fz_lname", "Lok");
  EXPECT_TRUE(workbench_->shutDown());
  EXPECT_EQ(folder_.stored(3, QStringLiteral("MD_INFO")).toString().size(), 250);
}

TEST_F(MainWinTest, TheTypeGroupAndItsTextShowTheSame) {
  startWith(kVehicles);
  child<QRadioButton>(u"dc_type_2")->click();
  EXPECT_EQ(line(u"dc_type")->text(), QStringLiteral("2"));
  press(u"Data1_Next");
  EXPECT_TRUE(child<QRadioButton>(u"dc_type_1")->isChecked());
  EXPECT_EQ(folder_.stored(3, QStringLiteral("DC_TYPE")).toInt(), 2);
}

TEST_F(MainWinTest, AWheelOverADropDownChangesNothing) {
  startWith(kVehicles);
  QComboBox* era = list(u"fz_era");
  const QString before = era->currentText();
  QWheelEvent wheel(QPointF(5, 5), era->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(era, &wheel);
  EXPECT_EQ(era->currentText(), before);
}

// ---- New, delete, copy --------------------------------------------------------------------------

TEST_F(MainWinTest, NewRecordModeHasItsOwnButtons) {
  startWith(kVehicles);
  press(u"butNew");
  EXPECT_EQ(caption(), QStringLiteral("neuer Satz"));
  for (const char16_t* name : {u"butTable", u"butFind", u"butNew", u"butDelete", u"butFilter"}) {
    EXPECT_FALSE(button(name)->isVisible()) << qPrintable(QString::fromUtf16(name));
  }
  EXPECT_TRUE(button(u"butOK")->isVisible());
  EXPECT_EQ(button(u"butOK")->text(), QStringLiteral("OK"));
  EXPECT_TRUE(button(u"butCancel")->isVisible());
  EXPECT_FALSE(button(u"butProg")->isEnabled());
  EXPECT_FALSE(entry(u"mnuEditNew")->isEnabled());
  EXPECT_FALSE(entry(u"mnuDbPrint")->isEnabled());
  EXPECT_FALSE(child<QPushButton>(u"butPicLink")->isEnabled());
  EXPECT_EQ(QApplication::focusWidget(), line(u"dc_adr"));

  press(u"butCancel");
  EXPECT_TRUE(button(u"butNew")->isVisible());
  EXPECT_FALSE(button(u"butOK")->isVisible());
  EXPECT_TRUE(entry(u"mnuEditNew")->isEnabled());
  EXPECT_TRUE(entry(u"mnuDbPrint")->isEnabled());
  EXPECT_EQ(line(u"st_sname")->text(), QStringLiteral("C3"));
}

TEST_F(MainWinTest, TheCaptionCanBeReadWhileTheNavigatorIsDisabled) {
  startWith(kVehicles);
  press(u"butNew");
  const auto* shown = child<QLabel>(u"Data1_Caption");
  ASSERT_FALSE(shown->isEnabled());
  EXPECT_EQ(shown->palette().color(QPalette::Disabled, shown->foregroundRole()),
            shown->palette().color(QPalette::Active, QPalette::WindowText));
}

TEST_F(MainWinTest, ANewRecordStandsAtTheEnd) {
  startWith(kVehicles);
  press(u"butNew");
  type(line(u"dc_adr"), "42");
  type(line(u"st_sname"), "Neu");
  press(u"butOK");
  EXPECT_EQ(caption(), QStringLiteral("Satz  4 von  4"));
  EXPECT_EQ(folder_.stored(42, QStringLiteral("ST_SNAME")).toString(), QStringLiteral("Neu"));
}

TEST_F(MainWinTest, TheKeyboardConfirmsAndCancelsANewRecord) {
  startWith(kVehicles);
  QTest::keyClick(window_.get(), Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(caption(), QStringLiteral("neuer Satz"));
  QTest::keyClick(line(u"dc_adr"), Qt::Key_Escape);
  EXPECT_EQ(caption(), QStringLiteral("Satz  1 von  3"));
  QTest::keyClick(window_.get(), Qt::Key_N, Qt::ControlModifier);
  type(line(u"dc_adr"), "42");
  type(line(u"st_sname"), "Neu");
  QTest::keyClick(line(u"st_sname"), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(caption(), QStringLiteral("Satz  4 von  4"));
}

TEST_F(MainWinTest, AnEmptyDatabaseStartsWithANewRecordAndCancelBeeps) {
  start();
  EXPECT_EQ(caption(), QStringLiteral("neuer Satz"));
  press(u"butCancel");
  EXPECT_EQ(outside_.prompt.beeps, 1);
  EXPECT_TRUE(button(u"butOK")->isVisible());
}

TEST_F(MainWinTest, DeletingAsksFirst) {
  startWith(kVehicles);
  press(u"butDelete");
  EXPECT_EQ(boxes(), QStringList(QStringLiteral("Datensatz wirklich löschen?")));
  EXPECT_EQ(caption(), QStringLiteral("Satz  1 von  3"));
  outside_.prompt.answers = {Answer::Yes};
  entry(u"mnuEditDelete")->trigger();
  EXPECT_EQ(line(u"st_sname")->text(), QStringLiteral("C7"));
  EXPECT_EQ(caption(), QStringLiteral("Satz  1 von  2"));
}

TEST_F(MainWinTest, ACopyGoesIntoANewRecordButItsAddressAndTheSecondUserInfo) {
  startWith(kVehicles);
  EXPECT_FALSE(entry(u"mnuEditInsert")->isEnabled());
  typeOver(u"fz_code", "103");
  typeOver(u"md_user_2", "zwei");
  typeOver(u"md_user_3", "drei");
  entry(u"mnuEditCopy")->trigger();
  EXPECT_TRUE(entry(u"mnuEditInsert")->isEnabled());
  press(u"butNew");
  type(line(u"dc_adr"), "99");
  entry(u"mnuEditInsert")->trigger();
  press(u"butOK");
  EXPECT_EQ(line(u"dc_adr")->text(), QStringLiteral("99"));
  EXPECT_EQ(line(u"fz_code")->text(), QStringLiteral("103"));
  EXPECT_EQ(line(u"md_user_2")->text(), QString());
  EXPECT_EQ(line(u"md_user_3")->text(), QStringLiteral("drei"));
  EXPECT_EQ(caption(), QStringLiteral("Satz  4 von  4"));
}

// ---- Pictures -----------------------------------------------------------------------------------

TEST_F(MainWinTest, APictureFillsItsFrameInOneDirectionAndCanBeRemoved) {
  startWith(kVehicles);
  QImage image(300, 100, QImage::Format_RGB32);
  image.fill(Qt::blue);
  const QString file = folder_.file(QStringLiteral("lok.jpg"));
  ASSERT_TRUE(image.save(file, "JPG"));
  outside_.prompt.fileNames = {file};
  child<QPushButton>(u"butPicLink")->click();
  const auto* picture = child<QLabel>(u"md_pic");
  ASSERT_TRUE(picture->isVisible());
  const QSize frame = child<QFrame>(u"picContainer")->contentsRect().size();
  EXPECT_NEAR(picture->width(), frame.width() + 1, 2);
  EXPECT_NEAR(picture->height(), frame.width() / 3 + 1, 2);
  press(u"Data1_Next");
  EXPECT_FALSE(picture->isVisible());
  press(u"Data1_Previous");
  EXPECT_TRUE(picture->isVisible());
  child<QPushButton>(u"butPicDel")->click();
  EXPECT_FALSE(picture->isVisible());
}

// ---- The decoder window -------------------------------------------------------------------------

TEST_F(MainWinTest, TheDecoderWindowsValuesGoToTheRecordAndToDiskWithTheNextMove) {
  folder_.copyData(QStringLiteral("Default.dec"));
  startWith(kVehicles);
  whenDecoderWindowShows([&](QDialog& frmDecoder) {
    EXPECT_EQ(frmDecoder.findChild<QLineEdit*>(QStringLiteral("dc_adr"))->text(),
              QStringLiteral("3"));
    workbench_->externalMessage(5);
    auto* field = frmDecoder.findChild<QLineEdit*>(QStringLiteral("txtDcComAccTime"));
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("33"));
    frmDecoder.findChild<QAbstractButton*>(QStringLiteral("cmdOK"))->click();
  });
  press(u"butProg");
  EXPECT_FALSE(workbench_->driving().cabs().isOpen(5)) << "no cab while the decoder window is up";
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  press(u"Data1_Next");
  const QByteArray values = folder_.stored(3, QStringLiteral("DC_CV")).toByteArray();
  ASSERT_EQ(values.size(), 4865);
  EXPECT_EQ(values[2], 33);
  workbench_->externalMessage(5);
  EXPECT_TRUE(workbench_->driving().cabs().isOpen(5));
}

TEST_F(MainWinTest, ACancelledDecoderWindowChangesNothing) {
  folder_.copyData(QStringLiteral("Default.dec"));
  startWith(kVehicles);
  // The window asks before it drops what was typed.
  outside_.prompt.choices = {0};
  whenDecoderWindowShows([&](QDialog& frmDecoder) {
    auto* field = frmDecoder.findChild<QLineEdit*>(QStringLiteral("txtDcComAccTime"));
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("33"));
    frmDecoder.findChild<QAbstractButton*>(QStringLiteral("cmdCancel"))->click();
  });
  press(u"butProg");
  press(u"Data1_Next");
  EXPECT_TRUE(folder_.stored(3, QStringLiteral("DC_CV")).isNull());
}

TEST_F(MainWinTest, AfterTheDecoderWindowAnAddressOutOfRangeIsRefusedAtSavingOnly) {
  folder_.copyData(QStringLiteral("Default.dec"));
  startWith(kVehicles);
  whenDecoderWindowShows([](QDialog& frmDecoder) { frmDecoder.reject(); });
  press(u"butProg");
  typeOver(u"dc_adr", "10240");
  leaveFor(u"st_sname");
  EXPECT_TRUE(boxes().isEmpty());
  press(u"Data1_Next");
  EXPECT_EQ(boxes(), QStringList(QStringLiteral("Adresse ungültig")));
}

TEST_F(MainWinTest, AFunctionPartHasNoDecoderWindow) {
  startWith(kVehicles);
  child<QRadioButton>(u"dc_type_2")->click();
  press(u"butProg");
  EXPECT_EQ(boxes(),
            QStringList(QStringLiteral("Programmierfenster für Funktionsteile nicht verfügbar!")));
}

// ---- Databases, help, about ---------------------------------------------------------------------

TEST_F(MainWinTest, AnotherDatabaseIsOpenedFromTheMenu) {
  folder_.copyTemplate(QStringLiteral("DB/ANDERE.MDB"));
  startWith(kVehicles);
  outside_.prompt.fileNames = {folder_.file(QStringLiteral("DB/ANDERE.MDB"))};
  entry(u"mnuDbOpen")->trigger();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("ANDERE.MDB - Lokari V4.11"));
  EXPECT_EQ(caption(), QStringLiteral("neuer Satz"));
  ASSERT_EQ(outside_.prompt.fileQuestions.size(), 1);
  EXPECT_EQ(outside_.prompt.fileQuestions[0].title, QStringLiteral("Datenbank öffnen"));
}

TEST_F(MainWinTest, ANewDatabaseIsMadeFromTheMenu) {
  startWith(kVehicles);
  outside_.prompt.fileNames = {folder_.file(QStringLiteral("DB/test"))};
  entry(u"mnuDbNew")->trigger();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("test.MDB - Lokari V4.11"));
  EXPECT_TRUE(QFile::exists(folder_.file(QStringLiteral("DB/test.MDB"))));
  EXPECT_EQ(caption(), QStringLiteral("neuer Satz"));
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MainWinTest, WithoutAHelpFileTheHelpEntriesAreDisabled) {
  QFile::remove(folder_.file(QStringLiteral("LOKARI.qhc")));
  startWith(kVehicles);
  EXPECT_FALSE(entry(u"mnuHelpContents")->isEnabled());
  EXPECT_FALSE(entry(u"mnuHelpSearch")->isEnabled());
  EXPECT_TRUE(entry(u"mnuWeb")->isEnabled());
}

TEST_F(MainWinTest, TheSplashStandsOverTheMainWindowForFiveSeconds) {
  startWith(kVehicles);
  const auto* splash = child<QWidget>(u"frmEntry");
  EXPECT_TRUE(splash->isVisible());
  outside_.clock.advance(5000);
  EXPECT_FALSE(splash->isVisible());
}

// ---- Size and end -------------------------------------------------------------------------------

TEST_F(MainWinTest, LeavingThroughTheMenuKeepsTheSize) {
  startWith(kVehicles);
  window_->resize(760, 640);
  entry(u"mnuFileQuit")->trigger();
  EXPECT_FALSE(window_->isVisible());
  window_.reset();
  start();
  EXPECT_EQ(window_->size(), QSize(760, 640));
  EXPECT_NEAR(window_->scale().scaleX, 760.0 / 980, 1e-9);
}

TEST_F(MainWinTest, ASizeThatNoScreenHasIsCutToTheScreen) {
  QFile file(folder_.file(QStringLiteral("WINDOW.INI")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("[Size]\nmain_win=@Size(100000 100000)\n");
  file.close();
  startWith(kVehicles);
  const QRect screen = window_->screen()->availableGeometry();
  EXPECT_TRUE(screen.contains(window_->geometry()));
  // Its frame has to fit as well.
  EXPECT_EQ(window_->size(), screen.size() - QSize(8, 32));
}

TEST_F(MainWinTest, LeavingThroughTheCloseBoxKeepsNoSize) {
  startWith(kVehicles);
  const QSize first = window_->size();
  window_->resize(1234, 789);
  window_->close();
  window_.reset();
  start();
  EXPECT_EQ(window_->size(), first);
}

TEST_F(MainWinTest, WithResizeZeroTheLayoutIsFixedAndNoSizeIsKept) {
  folder_.settings("Resize=0\r\n");
  startWith(kVehicles);
  const QSize before = child<QWidget>(u"recordPage")->size();
  window_->resize(1300, 800);
  QApplication::processEvents();
  EXPECT_EQ(child<QWidget>(u"recordPage")->size(), before);
  EXPECT_DOUBLE_EQ(window_->scale().scaleX, 1.0);
  entry(u"mnuFileQuit")->trigger();
  EXPECT_FALSE(QFile::exists(folder_.file(QStringLiteral("WINDOW.INI"))));
}

TEST_F(MainWinTest, AWindowSmallerThanTheFormIsScrolled) {
  startWith(kVehicles);
  window_->resize(600, 400);
  QApplication::processEvents();
  EXPECT_EQ(window_->size(), QSize(600, 400));
  const QWidget* page = child<QWidget>(u"recordPage");
  EXPECT_GE(page->height(), page->minimumSizeHint().height());
  EXPECT_GE(page->width(), page->minimumSizeHint().width());
}

TEST_F(MainWinTest, AnInvalidRecordKeepsTheWindowOpen) {
  startWith(kVehicles);
  line(u"st_sname")->clear();
  EXPECT_FALSE(window_->close());
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(boxes(), QStringList(QStringLiteral("Kurzbezeichnung muß eingegeben werden")));
  typeOver(u"st_sname", "gut");
  EXPECT_TRUE(window_->close());
}

TEST_F(MainWinTest, TheTabKeyStopsAtNothingThatIsOutOfViewOrNotChosen) {
  startWith(kVehicles);
  line(u"dc_adr")->setFocus();
  const QStringList stops = test::walkWithTab(window_.get());
  EXPECT_TRUE(stops.contains(QStringLiteral("st_sname")));
}

TEST_F(MainWinTest, TheTabKeyGoesThroughTheFormInItsOrder) {
  startWith(kVehicles);
  line(u"dc_adr")->setFocus();
  QStringList visited;
  for (int i = 0; i < 5; ++i) {
    visited << QApplication::focusWidget()->objectName();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(visited, QStringList({QStringLiteral("dc_adr"), QStringLiteral("dc_coll"),
                                  QStringLiteral("st_sname"), QStringLiteral("st_group"),
                                  QStringLiteral("fz_lname")}));
}

}  // namespace
}  // namespace lokari
