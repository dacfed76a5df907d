// The cab's window: what it shows and what the mouse does.
#include <QBuffer>

#include "cab_fixture.h"

namespace lokari {
namespace {

using test::CabWindows;

class FrmCabTest : public CabWindows {
 protected:
  static QString noticeOf(FrmCab* window) {
    auto* label = control<QLabel>(window, "labNotice");
    return label->isVisible() ? label->text() : QString();
  }
};

TEST_F(FrmCabTest, ShowsWhatTheStationKnowsAndSendsNothing) {
  station.vehicle.speed = 42;
  station.vehicle.backward = true;
  station.vehicle.manual = true;
  station.functions = 0b1000000001001;  // F0, F3, F12
  FrmCab* window = openCab();
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(window->isModal());
  EXPECT_EQ(window->windowTitle(), QStringLiteral("V 200 007 (3)"));
  EXPECT_EQ(textOf(window, "labName"), QStringLiteral("V 200 007"));
  EXPECT_EQ(control<QLineEdit>(window, "dc_adr")->text(), QStringLiteral("3"));
  EXPECT_FALSE(control<QLineEdit>(window, "dc_adr")->isVisible());
  EXPECT_EQ(bar(window)->value(), 42);
  EXPECT_EQ(textOf(window, "labSpeed"), QStringLiteral("42"));
  EXPECT_EQ(shownBy(window, "imgDirForward"), QStringLiteral("arrupr_n.bmp"));
  EXPECT_EQ(shownBy(window, "imgDirBackward"), QStringLiteral("arrdng_n.bmp"));
  EXPECT_EQ(shownBy(window, "imgMan"), QStringLiteral("manon_n.bmp"));
  EXPECT_EQ(shownBy(window, "imgStop"), QStringLiteral("stop_n.bmp"));
  for (int n = 0; n <= 12; ++n) {
    const bool on = n == 0 || n == 3 || n == 12;
    const QByteArray name = "cmdFunc_" + QByteArray::number(n);
    EXPECT_EQ(shownBy(window, name.constData()),
              on ? QStringLiteral("lmpon_n.bmp") : QStringLiteral("lmpoff_n.bmp"))
        << n;
    EXPECT_TRUE(picture(window, name.constData())->isVisible()) << n;
  }
  EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmCabTest, LampsBeyondTheStationsFunctionsAreHiddenWithTheirNumbersAndGrey) {
  FrmCab* window = openCab();
  for (int n = 13; n <= 28; ++n) {
    const QByteArray number = QByteArray::number(n);
    EXPECT_FALSE(picture(window, ("cmdFunc_" + number).constData())->isVisible()) << n;
    EXPECT_FALSE(control<QLabel>(window, ("labFunc_" + number).constData())->isVisible()) << n;
    EXPECT_EQ(shownBy(window, ("cmdFunc_" + number).constData()), QStringLiteral("lmpgrey.bmp"));
  }
}

TEST_F(FrmCabTest, ALabelNamesTheCollectionSinceAnAddressMayBeInSeveral) {
  FrmCab* window = openCab();
  EXPECT_TRUE(control<QLabel>(window, "labCollection")->isVisible());
  EXPECT_EQ(textOf(window, "labCollection"), QStringLiteral("Sammlung: Anlage"));
}

TEST_F(FrmCabTest, TheBarSendsItsPositionAndTheNumberFollows) {
  FrmCab* window = openCab();
  SpeedBar* vsbSpeed = bar(window);
  QTest::mouseClick(vsbSpeed, Qt::LeftButton, {}, QPoint(20, 1));
  EXPECT_EQ(textOf(window, "labSpeed"), QStringLiteral("10"));
  EXPECT_EQ(sent(), QStringList{QStringLiteral("Stufe 10")});
}

TEST_F(FrmCabTest, AnArrowSendsOnMouseDownAndIsGreenAtRestAfterwards) {
  FrmCab* window = openCab();
  PictureButton* imgDirBackward = picture(window, "imgDirBackward");
  press(imgDirBackward);
  EXPECT_EQ(sent(), QStringList{QStringLiteral("rückwärts")});
  EXPECT_EQ(imgDirBackward->picture(), QStringLiteral("arrdng_p.bmp"));
  EXPECT_EQ(shownBy(window, "imgDirForward"), QStringLiteral("arrupr_n.bmp"));
  release(imgDirBackward);
  EXPECT_EQ(imgDirBackward->picture(), QStringLiteral("arrdng_n.bmp"));
  PictureButton* imgDirForward = picture(window, "imgDirForward");
  press(imgDirForward);
  EXPECT_EQ(imgDirForward->picture(), QStringLiteral("arrupg_p.bmp"));
  EXPECT_EQ(shownBy(window, "imgDirBackward"), QStringLiteral("arrdnr_n.bmp"));
  release(imgDirForward);
  EXPECT_EQ(imgDirForward->picture(), QStringLiteral("arrupg_n.bmp"));
  EXPECT_EQ(sent(), QStringList{QStringLiteral("vorwärts")});
}

TEST_F(FrmCabTest, TheStopSendsOnMouseDownAndThenOffersToGo) {
  FrmCab* window = openCab();
  PictureButton* imgStop = picture(window, "imgStop");
  press(imgStop);
  EXPECT_EQ(sent(), QStringList{QStringLiteral("Halt")});
  EXPECT_EQ(imgStop->picture(), QStringLiteral("go_p.bmp"));
  release(imgStop);
  EXPECT_EQ(imgStop->picture(), QStringLiteral("go_n.bmp"));
  EXPECT_EQ(imgStop->accessibleName(), QStringLiteral("Los"));
  press(imgStop);
  EXPECT_EQ(imgStop->picture(), QStringLiteral("stop_p.bmp"));
  release(imgStop);
  EXPECT_EQ(imgStop->picture(), QStringLiteral("stop_n.bmp"));
  EXPECT_EQ(sent(), QStringList{QStringLiteral("Los")});
}

TEST_F(FrmCabTest, TheHandTurnsTheManualModeOnAndOff) {
  FrmCab* window = openCab();
  PictureButton* imgMan = picture(window, "imgMan");
  EXPECT_EQ(imgMan->picture(), QStringLiteral("manoff_n.bmp"));
  press(imgMan);
  EXPECT_EQ(imgMan->picture(), QStringLiteral("manon_p.bmp"));
  release(imgMan);
  EXPECT_EQ(imgMan->picture(), QStringLiteral("manon_n.bmp"));
  press(imgMan);
  EXPECT_EQ(imgMan->picture(), QStringLiteral("manoff_p.bmp"));
  release(imgMan);
  EXPECT_EQ(sent(), (QStringList{QStringLiteral("manuell"), QStringLiteral("automatisch")}));
}

TEST_F(FrmCabTest, ALampTogglesItsFunction) {
  FrmCab* window = openCab();
  PictureButton* lamp = picture(window, "cmdFunc_5");
  click(lamp);
  EXPECT_EQ(lamp->picture(), QStringLiteral("lmpon_n.bmp"));
  EXPECT_TRUE(lamp->isChecked());
  click(lamp);
  EXPECT_EQ(lamp->picture(), QStringLiteral("lmpoff_n.bmp"));
  EXPECT_FALSE(lamp->isChecked());
  EXPECT_EQ(sent(), (QStringList{QStringLiteral("F5 ein"), QStringLiteral("F5 aus")}));
}

TEST_F(FrmCabTest, AClickOnALampLeavesTheKeyboardAtTheBar) {
  FrmCab* window = openCab();
  ASSERT_EQ(window->focusWidget(), bar(window));
  click(picture(window, "cmdFunc_0"));
  click(picture(window, "imgDirBackward"));
  EXPECT_EQ(window->focusWidget(), bar(window));
}

TEST_F(FrmCabTest, EveryControlHasAnAccessibleNameAndAPlaceInTheTabOrder) {
  FrmCab* window = openCab();
  QStringList reached;
  QWidget* at = window;
  do {
    at = at->nextInFocusChain();
    if ((at->focusPolicy() & Qt::TabFocus) != 0 && at->isVisible() && at->isEnabled())
      reached << at->objectName();
  } while (at != window);
  for (const char* name : {"vsbSpeed", "imgDirForward", "imgDirBackward", "imgMan", "imgStop",
                           "cmdFunc_0", "cmdFunc_12", "cmdOK"})
    EXPECT_TRUE(reached.contains(QString::fromLatin1(name))) << name;
  EXPECT_EQ(reached.first(), QStringLiteral("vsbSpeed"));
  for (const char* name : {"vsbSpeed", "imgDirForward", "imgDirBackward", "imgMan", "imgStop",
                           "cmdFunc_0", "cbCV", "udCV", "txtCV", "dc_adr"})
    EXPECT_FALSE(control<QWidget>(window, name)->accessibleName().isEmpty()) << name;
  for (const char* name : {"vsbSpeed", "imgDirForward", "imgDirBackward", "imgMan", "imgStop",
                           "cmdFunc_0", "cmdFunc_28", "cmdOK"})
    EXPECT_FALSE(control<QWidget>(window, name)->toolTip().isEmpty()) << name;
}

TEST_F(FrmCabTest, ANameThatLooksLikeMarkupIsShownAsItIs) {
  database.run("UPDATE LOCO_DAT SET ST_SNAME = '<b>Krok</b>'");
  ASSERT_EQ(session.InitDB(), 0);
  FrmCab* window = openCab();
  EXPECT_EQ(control<QLabel>(window, "labName")->textFormat(), Qt::PlainText);
  EXPECT_EQ(textOf(window, "labName"), QStringLiteral("<b>Krok</b>"));
}

TEST_F(FrmCabTest, KeepsThePictureOfItsVehicle) {
  QImage drawing(60, 20, QImage::Format_RGB32);
  drawing.fill(Qt::red);
  QByteArray encoded;
  QBuffer buffer(&encoded);
  drawing.save(&buffer, "PNG");
  database.run("UPDATE LOCO_DAT SET MD_PIC = ?", {encoded});
  database.addVehicle(5, QStringLiteral("Anlage"), QStringLiteral("Ohne Bild"));
  ASSERT_EQ(session.InitDB(), 0);
  FrmCab* window = openCab();
  auto* md_pic = control<QLabel>(window, "md_pic");
  ASSERT_TRUE(md_pic->isVisible());
  const QImage shown = md_pic->pixmap().toImage();
  EXPECT_EQ(shown.pixelColor(shown.rect().center()), QColor(Qt::red));
  session.form().MoveNext();
  EXPECT_TRUE(md_pic->isVisible());
  FrmCab* other = openCab(5);
  EXPECT_FALSE(control<QFrame>(other, "picContainer")->isVisible());
}

TEST_F(FrmCabTest, FunctionsThatTheStationDoesNotKnowAreHidden) {
  station.highest = 8;
  FrmCab* window = openCab();
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(picture(window, "cmdFunc_8")->isVisible());
  EXPECT_FALSE(picture(window, "cmdFunc_9")->isVisible());
  EXPECT_FALSE(control<QLabel>(window, "labFunc_12")->isVisible());
}

TEST_F(FrmCabTest, ALayoutThatStandsIsSaidUntilItGoesOn) {
  FrmCab* window = openCab();
  ASSERT_NE(window, nullptr);
  station.stands = LayoutStands::Halted;
  bar(window)->setValue(20);
  EXPECT_EQ(
      noticeOf(window),
      QStringLiteral("Die Zentrale hat den Befehl angenommen, aber die Anlage ist angehalten."));
  station.stands = LayoutStands::WithoutPower;
  bar(window)->setValue(21);
  EXPECT_EQ(noticeOf(window),
            QStringLiteral("Die Zentrale hat den Befehl angenommen, aber das Gleis ist stromlos."));
  station.stands = LayoutStands::No;
  bar(window)->setValue(22);
  EXPECT_EQ(noticeOf(window), QString());
}

class FrmCabOnKind : public CabWindows, public ::testing::WithParamInterface<StationKindRow> {
 protected:
  FrmCabOnKind() : CabWindows(GetParam().kind) {}
};

std::vector<StationKindRow> kindsWithCabs() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds)
    if (row.cab.available() && !row.cab.linkStaysOpen) kinds.push_back(row);
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, FrmCabOnKind, ::testing::ValuesIn(kindsWithCabs()),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

TEST_P(FrmCabOnKind, ShowsTheControlsThatTheStationServes) {
  FrmCab* window = openCab();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(picture(window, "imgMan")->isVisible(), GetParam().cab.manual);
  for (int n = 0; n <= 28; ++n) {
    const QByteArray number = QByteArray::number(n);
    const bool there = n <= GetParam().cab.funcCount;
    EXPECT_EQ(picture(window, ("cmdFunc_" + number).constData())->isVisible(), there) << n;
    EXPECT_EQ(control<QLabel>(window, ("labFunc_" + number).constData())->isVisible(), there) << n;
  }
}

}  // namespace
}  // namespace lokari
