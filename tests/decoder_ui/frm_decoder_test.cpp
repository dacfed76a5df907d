// Opening and closing the decoder window, its buttons and its names.
#include <QPushButton>
#include <QTabBar>

#include "window_fixture.h"

namespace lokari {
namespace {

class FrmDecoderTest : public test::WindowFixture {};

TEST_F(FrmDecoderTest, HasEveryFixedControlUnderItsName) {
  describe("");
  for (const QString& name : bench.controls.names()) {
    if (name == QStringLiteral("cmdFuncMap")) continue;  // on the function tabs
    EXPECT_NE(window.findChild<QWidget*>(name), nullptr) << name.toStdString();
  }
  for (const char* name : {"cmdReadGen", "cmdWriteGen", "cmdCopyGen", "cmdReadDrv", "cmdWriteDrv",
                           "cmdCopyDrv", "cmdSmooth", "cmdTblList", "cmdLoadTable", "cmdSaveTable"})
    EXPECT_NE(window.findChild<QPushButton*>(QString::fromLatin1(name)), nullptr) << name;
  EXPECT_EQ(window.objectName(), QStringLiteral("frmDecoder"));
}

TEST_F(FrmDecoderTest, EveryControlOfTheKeyboardHasAnAccessibleName) {
  describe("CV_33=Licht,0-255,0,3\n");
  edit([&] {
    tabs()->setCurrentIndex(2);
    int named = 0;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
      if (widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_") ||
          !(widget->focusPolicy() & Qt::TabFocus))
        continue;
      const auto* button = qobject_cast<QAbstractButton*>(widget);
      EXPECT_TRUE(!widget->accessibleName().isEmpty() || (button && !button->text().isEmpty()) ||
                  widget == tabs())
          << widget->objectName().toStdString();
      ++named;
    }
    EXPECT_GT(named, 60);
  });
}

TEST_F(FrmDecoderTest, OkHandsTheSetsBack) {
  describe("CV_3=Beschleunigung,0-255,5\n");
  setValue(3, 20, '1');
  EXPECT_TRUE(edit([&] {
    type(field("txtDcComAccTime"), QStringLiteral("21"));
    click("cmdOK");
  }));
  EXPECT_EQ(record.recCvValues[0][2], 21);
  EXPECT_EQ(record.recCvMarks[0][2], 0);
}

TEST_F(FrmDecoderTest, CancelAndTheWindowManagerDropEverything) {
  describe("CV_3=Beschleunigung,0-255,5\n");
  setValue(3, 20, '1');
  EXPECT_FALSE(edit([&] {
    type(field("txtDcComAccTime"), QStringLiteral("21"));
    click("cmdCancel");
  }));
  EXPECT_FALSE(edit([&] {
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("20"));
    type(field("txtDcComAccTime"), QStringLiteral("21"));
    window.close();
  }));
  EXPECT_EQ(record.recCvValues[0][2], 20);
  EXPECT_EQ(record.recCvMarks[0][2], '1');
}

TEST_F(FrmDecoderTest, MainTrackButtonsFollowDecoderAndStation) {
  describe("PROGMAIN=J\nRAILCOM=J\n");
  edit([&] {
    EXPECT_TRUE(button("cmdDcProgMain")->isEnabled());
    EXPECT_FALSE(button("cmdDcReadMain")->isEnabled());
  });
  settings.baseUnit = StationKind::Z21Ip;
  edit([&] { EXPECT_TRUE(button("cmdDcReadMain")->isEnabled()); });
  settings.baseUnit = StationKind::Li100;
  edit([&] { EXPECT_FALSE(button("cmdDcProgMain")->isEnabled()); });
}

TEST_F(FrmDecoderTest, WithoutAnyDescriptionTheWindowOpensAfterTheMessage) {
  edit([&] { EXPECT_TRUE(window.isVisible()); });
  ASSERT_EQ(prompt.shown.size(), 1);
  EXPECT_TRUE(prompt.shown.first().startsWith(QStringLiteral("Standard-Decoderdatei ")));
  EXPECT_TRUE(prompt.shown.first().endsWith(QStringLiteral(" nicht gefunden!")));
}

TEST_F(FrmDecoderTest, ASecondOpeningReadsTheDescriptionAnew) {
  describe("CV_33=Alt,0-255,0,3\n");
  edit([&] {
    tabs()->setCurrentIndex(2);
    EXPECT_EQ(label("labFunc_1")->text(), QStringLiteral("Alt (0-255):"));
  });
  describe("CV_33=Neu,0-15,0,3\n");
  edit([&] {
    EXPECT_EQ(tabs()->currentIndex(), 0);
    tabs()->setCurrentIndex(2);
    EXPECT_EQ(label("labFunc_1")->text(), QStringLiteral("Neu (0-15):"));
  });
}

TEST_F(FrmDecoderTest, WithoutVehiclesThereIsNothingToCopyTo) {
  describe("FUNCMAP=N\nCV_33=Licht,0-255,0,3\n");
  edit([&] {
    tabs()->setCurrentIndex(2);
    for (const char* name : {"cmdFuncMap", "cmdCopyFunc_1", "cmdCopyGen", "cmdCopyDrv"})
      EXPECT_FALSE(button(name)->isEnabled()) << name;
  });
}

}  // namespace
}  // namespace lokari
