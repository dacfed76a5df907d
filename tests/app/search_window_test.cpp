// Searching in the main window: the query form, the filter's colour, the vehicle list.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "app/ui/main_win.h"
#include "app_folder.h"

namespace lokari {
namespace {

class SearchWindow : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_.add({{QStringLiteral("Club"), 3, QStringLiteral("C3")},
                 {QStringLiteral("Club"), 7, QStringLiteral("C7")},
                 {QStringLiteral("Heim"), 5, QStringLiteral("H5")}});
    workbench_ = std::make_unique<Workbench>(outside_.parts(folder_));
    window_ = std::make_unique<MainWin>(*workbench_);
    ASSERT_TRUE(window_->start());
    window_->show();
    QApplication::processEvents();
  }

  template <typename T>
  T* child(const char16_t* name) const {
    T* found = window_->findChild<T*>(QString::fromUtf16(name));
    EXPECT_NE(found, nullptr) << qPrintable(QString::fromUtf16(name));
    return found;
  }
  void press(const char16_t* name) const { child<QToolButton>(name)->click(); }
  bool isVisible(const char16_t* name) const { return child<QWidget>(name)->isVisible(); }
  QString caption() const { return child<QLabel>(u"Data1_Caption")->text(); }
  QString shortName() const { return child<QLineEdit>(u"st_sname")->text(); }
  void type(const char16_t* name, const char* text) const {
    auto* field = child<QWidget>(name);
    field->setFocus();
    QTest::keyClicks(field, QString::fromUtf8(text));
  }
  QPalette::ColorRole colour() const { return child<QWidget>(u"Data1")->backgroundRole(); }

  /// Presses butTable and lets `act` use the list.
  void inList(const std::function<void(QDialog&)>& act) {
    bool shown = false;
    QTimer::singleShot(0, window_.get(), [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_EQ(dialog->objectName(), QStringLiteral("dlgTable"));
      shown = true;
      act(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    press(u"butTable");
    EXPECT_TRUE(shown);
  }

  test::AppFolder folder_;
  test::Outside outside_;
  std::unique_ptr<Workbench> workbench_;
  std::unique_ptr<MainWin> window_;
};

TEST_F(SearchWindow, TheQueryFormIsBlankAndHasItsOwnButtons) {
  press(u"butFind");
  for (const char16_t* name : {u"butOK", u"butFilter", u"butCancel"}) {
    EXPECT_TRUE(isVisible(name)) << qPrintable(QString::fromUtf16(name));
    EXPECT_TRUE(child<QWidget>(name)->isEnabled());
  }
  for (const char16_t* name : {u"butTable", u"butFind", u"butNew", u"butDelete", u"Data1"}) {
    EXPECT_FALSE(isVisible(name)) << qPrintable(QString::fromUtf16(name));
  }
  EXPECT_EQ(child<QToolButton>(u"butOK")->text(), QStringLiteral("Suchen"));
  EXPECT_EQ(child<QToolButton>(u"butFilter")->text().remove(u'&'), QStringLiteral("Filtern"));
  EXPECT_TRUE(child<QLineEdit>(u"dc_adr")->text().isEmpty());
  EXPECT_TRUE(child<QComboBox>(u"dc_coll")->currentText().isEmpty());
  EXPECT_FALSE(child<QRadioButton>(u"dc_type_1")->isChecked());
  EXPECT_EQ(QApplication::focusWidget(), child<QLineEdit>(u"dc_adr"));
}

TEST_F(SearchWindow, TheFieldsKeepTheirPlaceInTheSearch) {
  const auto place = [this] {
    QApplication::processEvents();
    return child<QWidget>(u"st_sname")->mapTo(window_.get(), QPoint(0, 0));
  };
  const QPoint before = place();
  press(u"butFind");
  ASSERT_FALSE(isVisible(u"Data1"));
  EXPECT_EQ(place(), before);
}

TEST_F(SearchWindow, FindGoesToTheMatch) {
  press(u"butFind");
  type(u"st_sname", "h*");
  press(u"butOK");
  EXPECT_EQ(shortName(), QStringLiteral("H5"));
  EXPECT_EQ(caption(), QStringLiteral("Satz  3 von  3"));
  EXPECT_TRUE(isVisible(u"Data1"));
  EXPECT_TRUE(outside_.prompt.shown.isEmpty());
}

TEST_F(SearchWindow, TheMenuEntersTheSearchAndControlReturnFinds) {
  child<QAction>(u"mnuEditFind")->trigger();
  EXPECT_FALSE(child<QAction>(u"mnuEditFind")->isEnabled());
  type(u"dc_adr", "7");
  QTest::keyClick(child<QLineEdit>(u"dc_adr"), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(shortName(), QStringLiteral("C7"));
  EXPECT_TRUE(child<QAction>(u"mnuEditFind")->isEnabled());
}

TEST_F(SearchWindow, ReturnInASearchFieldFindsAndWeitersuchenGoesOn) {
  press(u"butFind");
  type(u"dc_coll", "Club");
  QTest::keyClick(child<QComboBox>(u"dc_coll"), Qt::Key_Return);
  EXPECT_FALSE(isVisible(u"butFilter"));
  EXPECT_EQ(shortName(), QStringLiteral("C3"));
  child<QLineEdit>(u"st_sname")->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F3);
  EXPECT_EQ(shortName(), QStringLiteral("C7"));
  child<QAction>(u"mnuEditFindNext")->trigger();
  EXPECT_EQ(outside_.prompt.shown,
            QStringList{QStringLiteral("Keine weiteren passenden Daten gefunden!")});
  press(u"butFind");
  type(u"st_sname", "H5");
  QTest::keyClick(child<QLineEdit>(u"st_sname"), Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(shortName(), QStringLiteral("H5"));
}

TEST_F(SearchWindow, ReturnOutsideOfTheSearchSearchesNothing) {
  child<QLineEdit>(u"st_sname")->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(shortName(), QStringLiteral("C3"));
  EXPECT_TRUE(outside_.prompt.shown.isEmpty());
}

TEST_F(SearchWindow, EscapeGivesTheSearchUp) {
  press(u"butFind");
  type(u"dc_adr", "7");
  QTest::keyClick(child<QLineEdit>(u"dc_adr"), Qt::Key_Escape);
  EXPECT_EQ(shortName(), QStringLiteral("C3"));
  EXPECT_EQ(child<QComboBox>(u"dc_coll")->currentText(), QStringLiteral("Club"));
  EXPECT_TRUE(child<QRadioButton>(u"dc_type_1")->isChecked());
  EXPECT_TRUE(isVisible(u"butFind"));
}

TEST_F(SearchWindow, AFilterColoursTheNavigatorUntilAnEmptyFormEndsIt) {
  EXPECT_EQ(colour(), QPalette::Base);
  press(u"butFind");
  type(u"dc_coll", "Club");
  press(u"butFilter");
  EXPECT_EQ(caption(), QStringLiteral("Satz  1 von  2"));
  EXPECT_EQ(colour(), QPalette::ToolTipBase);
  press(u"butFind");
  press(u"butFilter");
  EXPECT_EQ(caption(), QStringLiteral("Satz  1 von  3"));
  EXPECT_EQ(colour(), QPalette::Base);
}

TEST_F(SearchWindow, ClosingInTheSearchStoresNoVehicle) {
  press(u"butFind");
  type(u"dc_adr", "99");
  type(u"st_sname", "neu");
  window_->close();
  EXPECT_TRUE(outside_.prompt.shown.isEmpty());
  EXPECT_FALSE(window_->isVisible());
  EXPECT_FALSE(folder_.stored(99, QStringLiteral("ST_SNAME")).isValid());
}

TEST_F(SearchWindow, TheListGoesToTheChosenVehicle) {
  inList([](QDialog& list) {
    list.findChild<QTableView*>(QStringLiteral("DBGrid1"))->selectRow(2);
    list.findChild<QPushButton*>(QStringLiteral("OKButton"))->click();
  });
  EXPECT_EQ(shortName(), QStringLiteral("H5"));
}

TEST_F(SearchWindow, TheListHonoursTheFilter) {
  press(u"butFind");
  type(u"dc_coll", "Club");
  press(u"butFilter");
  inList([](QDialog& list) {
    EXPECT_EQ(list.findChild<QTableView*>(QStringLiteral("DBGrid1"))->model()->rowCount(), 2);
  });
  EXPECT_EQ(caption(), QStringLiteral("Satz  1 von  2"));
}

}  // namespace
}  // namespace lokari
