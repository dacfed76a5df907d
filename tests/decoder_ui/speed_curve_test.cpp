// The speed curve on the drive tab, with the mouse and the keys of a user.
#include "decoder/ui/speed_curve.h"

#include "decoder/fixed_fields.h"
#include "window_fixture.h"

namespace lokari {
namespace {

class SpeedCurveTest : public test::WindowFixture {
 protected:
  static constexpr int kDriveTab = 1;

  SpeedCurve* picture() { return control<SpeedCurve>(QStringLiteral("picSpeedTable")); }

  /// The drive tab with the user's table in use.
  void editTable(const std::function<void()>& script, int steps = 28) {
    setValue(29, config_bit::kSpeedTable + (steps == 28 ? config_bit::kSteps : 0));
    editDrive(script);
  }
  void editDrive(const std::function<void()>& script) {
    edit([&] {
      tabs()->setCurrentIndex(kDriveTab);
      QCoreApplication::processEvents();
      script();
    });
  }

  QPoint place(int point) { return picture()->positionOf(point).toPoint(); }
  /// The place above or below a point where the scale shows a share.
  QPoint place(int point, double share) {
    return {place(point).x(), qRound(bottom() - share * (bottom() - top()))};
  }
  void press(QPoint at) { QTest::mousePress(picture(), Qt::LeftButton, {}, at); }
  void release(QPoint at) { QTest::mouseRelease(picture(), Qt::LeftButton, {}, at); }
  void move(QPoint at, Qt::MouseButtons buttons = Qt::LeftButton) {
    const QPointF global = picture()->mapToGlobal(QPointF(at));
    QMouseEvent event(QEvent::MouseMove, at, global, Qt::NoButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(picture(), &event);
  }
  void key(Qt::Key key) { QTest::keyClick(picture(), key); }
  CvMark mark(int cv) const { return bench.sets.mark(CvIndex(cv)); }
  QImage shot() { return picture()->grab().toImage(); }
  QColor pixel(int point) {
    const QImage image = shot();
    return image.pixelColor(place(point) * image.devicePixelRatio());
  }

 private:
  /// Where the scale ends and begins, shown by the last point, which is CV 5 or CV 94.
  double top() { return heightOf(255); }
  double bottom() { return heightOf(0); }
  double heightOf(int value) {
    const QByteArray kept = bench.sets.cvValues;
    for (const int cv : {5, 94}) bench.sets.setValue(CvIndex(cv), value);
    const double y = picture()->positionOf(lastPoint()).y();
    bench.sets.cvValues = kept;
    return y;
  }
  int lastPoint() {
    if (button("optDcDrvSpdTblNo")->isChecked()) return 3;
    return button("optDcDrvSteps14")->isChecked() ? 14 : 28;
  }
};

TEST_F(SpeedCurveTest, PointsBetweenTwoEventsOfAQuickMouseAreMovedAsWell) {
  describe("");
  editTable([&] {
    press(place(4, 0));
    move(place(4, 0.2));
    move(place(24, 0.8));
    release(place(24, 0.8));
    for (int point = 5; point < 24; ++point) {
      EXPECT_NEAR(value(66 + point), 51 + (point - 4) * 153 / 20, 8) << point;
    }
    EXPECT_EQ(value(66 + 25), 0) << "beyond the last place";
  });
}

TEST_F(SpeedCurveTest, ADragGivesThePointTheValueUnderTheMouse) {
  describe("");
  setValue(70, 100, '1');
  editTable([&] {
    press(place(4));
    EXPECT_EQ(value(70), 100);
    move(place(4, 0.5));
    EXPECT_NEAR(value(70), 128, 1);
    EXPECT_EQ(mark(70), CvMark::None);
    move(place(4, 1.5));
    EXPECT_EQ(value(70), 255);
    release(place(4));
    move(place(4, 0.2));
    EXPECT_EQ(value(70), 255);
  });
}

TEST_F(SpeedCurveTest, AHeldButtonPaintsTheCurve) {
  describe("");
  editTable([&] {
    press(place(1));
    for (int point = 1; point <= 28; ++point) move(place(point, point / 28.0));
    release(place(28));
    for (int point = 1; point <= 28; ++point) {
      EXPECT_NEAR(value(66 + point), 255.0 * point / 28, 1) << point;
    }
  });
}

TEST_F(SpeedCurveTest, APressBesideTheCurveMovesNothing) {
  describe("");
  editTable([&] {
    press(place(4, 0.5));
    move(place(4, 0.8));
    release(place(4, 0.8));
    EXPECT_EQ(value(70), 0);
  });
}

TEST_F(SpeedCurveTest, OnlyTheLeftButtonDrags) {
  describe("");
  editTable([&] {
    QTest::mousePress(picture(), Qt::RightButton, {}, place(4));
    move(place(4, 0.5), Qt::RightButton);
    EXPECT_EQ(value(70), 0);
  });
}

TEST_F(SpeedCurveTest, AReleaseThatABoxSwallowedEndsTheDragging) {
  describe("");
  editTable([&] {
    press(place(4));
    move(place(4, 0.5), Qt::NoButton);
    EXPECT_EQ(value(70), 0);
  });
}

TEST_F(SpeedCurveTest, WithFourteenStepsEverySecondCvMoves) {
  describe("");
  editTable(
      [&] {
        press(place(1));
        move(place(1, 0.4));
        move(place(2, 0.6));
        release(place(2));
        EXPECT_EQ(value(67), 0);
        EXPECT_NEAR(value(68), 102, 1);
        EXPECT_EQ(value(69), 0);
        EXPECT_NEAR(value(70), 153, 1);
      },
      14);
}

TEST_F(SpeedCurveTest, APointOfThreeMovesItsField) {
  describe("CV_2=Start,0-255\nCV_6=Mitte,0-255\nCV_5=Hoechst,0-255\n");
  setValue(6, 50, '1');
  editDrive([&] {
    press(place(2));
    move(place(2, 0.6));
    release(place(2));
    EXPECT_NEAR(value(6), 153, 1);
    EXPECT_EQ(field("txtDcDrvMedSpeed")->text(), QString::number(value(6)));
    EXPECT_NE(test::textColourOf(field("txtDcDrvMedSpeed")), QColor(0, 0, 255));
    press(place(1));
    move(place(1, 0.2));
    release(place(1));
    EXPECT_NEAR(value(2), 51, 1) << "the point on the axis";
  });
}

TEST_F(SpeedCurveTest, MarksShowInTheirColours) {
  describe("");
  setValue(70, 100, '1');
  setValue(80, 100, '2');
  editTable([&] {
    EXPECT_EQ(pixel(4), QColor(0, 0, 255));
    EXPECT_EQ(pixel(14), QColor(255, 0, 0));
    EXPECT_EQ(pixel(20), picture()->palette().color(QPalette::Text));
  });
}

TEST_F(SpeedCurveTest, AllPointsLieInThePicture) {
  describe("");
  for (int cv = 67; cv <= 94; ++cv) setValue(cv, cv % 2 == 0 ? 0 : 255, '2');
  editTable([&] {
    for (int point = 1; point <= 28; ++point) {
      EXPECT_EQ(pixel(point), QColor(255, 0, 0)) << point;
    }
  });
}

TEST_F(SpeedCurveTest, TheOptionsChangeTheView) {
  describe("CV_2=Start,0-255\n");
  editDrive([&] {
    const QImage off = shot();
    click("optDcDrvSpdTblYes");
    const QImage all = shot();
    EXPECT_NE(off, all);
    click("optDcDrvSteps28");
    EXPECT_NE(shot(), all);
  });
}

TEST_F(SpeedCurveTest, TheMouseReadsTheValueUnderIt) {
  describe("");
  setValue(70, 100);
  editTable([&] {
    EXPECT_TRUE(picture()->note().isEmpty());
    move(place(4, 0.0) - QPoint(0, 1), Qt::NoButton);
    EXPECT_TRUE(picture()->note().startsWith(QStringLiteral("Stufe 4 (CV 70): 100 · Zeiger: ")))
        << picture()->note().toStdString();
    move(place(4, 1.0) + QPoint(0, 1), Qt::NoButton);
    const int read = picture()->note().section(u' ', -1).toInt();
    EXPECT_NEAR(read, 254, 1);
  });
}

TEST_F(SpeedCurveTest, TheCursorTellsAPointThatCanBeMoved) {
  describe("");
  editTable([&] {
    move(place(4), Qt::NoButton);
    EXPECT_EQ(picture()->cursor().shape(), Qt::SizeVerCursor);
    move(place(4, 0.5), Qt::NoButton);
    EXPECT_EQ(picture()->cursor().shape(), Qt::CrossCursor);
  });
}

TEST_F(SpeedCurveTest, TheKeysChooseAndMoveAPoint) {
  describe("INTERNALSTEPS=120\n");
  setValue(68, 50, '1');
  editTable([&] {
    picture()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(picture()->selectedPoint(), 1);
    key(Qt::Key_Left);
    EXPECT_EQ(picture()->selectedPoint(), 1);
    key(Qt::Key_Right);
    key(Qt::Key_Up);
    EXPECT_EQ(value(68), 51);
    EXPECT_EQ(mark(68), CvMark::None);
    EXPECT_EQ(picture()->note(), QStringLiteral("Stufe 2 (CV 68): 51"));
    EXPECT_EQ(picture()->accessibleDescription(), QStringLiteral("Stufe 2 (CV 68): 51"));
    key(Qt::Key_PageUp);
    key(Qt::Key_Down);
    EXPECT_EQ(value(68), 60);
    key(Qt::Key_End);
    key(Qt::Key_PageDown);
    EXPECT_EQ(picture()->selectedPoint(), 28);
    EXPECT_EQ(value(94), 0);
    key(Qt::Key_Home);
    key(Qt::Key_PageUp);
    EXPECT_EQ(value(67), 10);
  });
}

TEST_F(SpeedCurveTest, TheKeysPassOverAPointThatTheDecoderLacks) {
  describe("CV_5=Hoechst,0-255\nCV_6=Mitte,0-255\n");
  setValue(6, 7);
  editDrive([&] {
    picture()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(picture()->selectedPoint(), 2);
    key(Qt::Key_Left);
    EXPECT_EQ(picture()->selectedPoint(), 2);
    key(Qt::Key_Up);
    EXPECT_EQ(field("txtDcDrvMedSpeed")->text(), QStringLiteral("8"));
  });
}

TEST_F(SpeedCurveTest, TheKeysGoOnWithThePointThatTheMouseHeld) {
  describe("");
  editTable([&] {
    press(place(9));
    release(place(9));
    EXPECT_TRUE(picture()->hasFocus());
    key(Qt::Key_Up);
    EXPECT_EQ(value(75), 1);
  });
}

TEST_F(SpeedCurveTest, EscapeStillClosesTheWindow) {
  describe("");
  editTable([&] {
    picture()->setFocus();
    key(Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
  });
}

}  // namespace
}  // namespace lokari
