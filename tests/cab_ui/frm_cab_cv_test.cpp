// Programming on the main track from the cab's window.
#include <QAbstractItemView>

#include "cab_fixture.h"

namespace lokari {
namespace {

class FrmCabCv : public test::CabWindows {
 protected:
  FrmCabCv() {
    database.run("DELETE FROM DCMANUFS");
    database.run(
        "INSERT INTO DCMANUFS (DC_MANUF_SEQ, DC_MANUF, DC_MANUF_TEXT) "
        "VALUES (1, 145, 'Zimo')");
    QByteArray values(kCvFieldBytes, '\0');
    values[3 - 1] = 12;
    values[4 - 1] = static_cast<char>(255);
    database.run("UPDATE LOCO_DAT SET DC_MANUF = 145, DC_DECODER = 'ZX100', DC_CV = ?", {values});
  }

  void describe(const QByteArray& text) {
    QDir(database.folder()).mkdir(QStringLiteral("Zimo"));
    QFile file(database.folder() + QStringLiteral("/Zimo/ZX100.dec"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  FrmCab* openOnTheRecord() {
    EXPECT_EQ(session.InitDB(), 0);
    return openCab();
  }
  QString value(FrmCab* window) { return control<QLineEdit>(window, "txtCV")->text(); }
  QComboBox* list(FrmCab* window) { return control<QComboBox>(window, "cbCV"); }
  /// Chooses an entry as a user does.
  void choose(FrmCab* window, int index) {
    list(window)->setCurrentIndex(index);
    emit list(window)->activated(index);
  }
};

const QByteArray kTwoCvs =
    "PROGMAIN=J\n"
    "CV_3=Beschleunigung,0-255,5,0,Je mehr desto sanfter\n"
    "CV_29=Grundeinstellung,0-255,5,0\n"
    "CV_4=Bremsen,0-255,5,0,Auslauf\n";

TEST_F(FrmCabCv, ShowsTheFirstEntryWithItsNumberItsValueAndItsHint) {
  describe(kTwoCvs);
  FrmCab* window = openOnTheRecord();
  ASSERT_EQ(list(window)->count(), 2);
  EXPECT_EQ(list(window)->itemText(0), QStringLiteral("Beschleunigung"));
  EXPECT_EQ(list(window)->itemText(1), QStringLiteral("Bremsen"));
  EXPECT_EQ(list(window)->currentText(), QStringLiteral("CV 3: Beschleunigung"));
  EXPECT_EQ(value(window), QStringLiteral("12"));
  EXPECT_EQ(control<QWidget>(window, "udCV")->toolTip(), QStringLiteral("Je mehr desto sanfter"));
  EXPECT_TRUE(list(window)->isEnabled());
  EXPECT_TRUE(control<QWidget>(window, "udCV")->isEnabled());
}

TEST_F(FrmCabCv, AChosenEntryShowsItsOwn) {
  describe(kTwoCvs);
  FrmCab* window = openOnTheRecord();
  choose(window, 1);
  EXPECT_EQ(list(window)->currentText(), QStringLiteral("CV 4: Bremsen"));
  EXPECT_EQ(value(window), QStringLiteral("255"));
  EXPECT_EQ(control<QWidget>(window, "udCV")->toolTip(), QStringLiteral("Auslauf"));
}

TEST_F(FrmCabCv, AClickOnTheShownEntryOpensTheList) {
  describe(kTwoCvs);
  FrmCab* window = openOnTheRecord();
  click(list(window)->lineEdit());
  EXPECT_TRUE(list(window)->view()->isVisible());
  list(window)->hidePopup();
}

TEST_F(FrmCabCv, NoWriteAt255AndAt0) {
  describe(kTwoCvs);
  FrmCab* window = openOnTheRecord();
  const qsizetype before = serial.writes.size();
  choose(window, 1);
  QTest::keyClick(control<QWidget>(window, "udCV"), Qt::Key_Up);
  EXPECT_EQ(value(window), QStringLiteral("255"));
  EXPECT_EQ(serial.writes.size(), before);
}

TEST_F(FrmCabCv, AStepIsWrittenAtOnceAndKeptInTheRecordOnOk) {
  describe(kTwoCvs);
  FrmCab* window = openOnTheRecord();
  const qsizetype before = serial.writes.size();
  QTest::keyClick(control<QWidget>(window, "udCV"), Qt::Key_Up);
  EXPECT_EQ(value(window), QStringLiteral("13"));
  EXPECT_GT(serial.writes.size(), before);
  click(control<QWidget>(window, "cmdOK"));
  EXPECT_EQ(session.form().workingCopy().recCvValues[0].at(3 - 1), 13);
}

TEST_F(FrmCabCv, WithoutProgmainTheAreaIsOff) {
  describe("CV_3=Beschleunigung,0-255,5,0\n");
  FrmCab* window = openOnTheRecord();
  EXPECT_FALSE(list(window)->isEnabled());
  EXPECT_FALSE(control<QWidget>(window, "udCV")->isEnabled());
  EXPECT_FALSE(control<QWidget>(window, "txtCV")->isEnabled());
}

TEST_F(FrmCabCv, WithoutADescriptionFileTheAreaIsOff) {
  FrmCab* window = openOnTheRecord();
  EXPECT_FALSE(list(window)->isEnabled());
  EXPECT_FALSE(control<QWidget>(window, "udCV")->isEnabled());
  EXPECT_EQ(list(window)->count(), 0);
}

}  // namespace
}  // namespace lokari
