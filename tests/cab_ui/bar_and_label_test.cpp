// A vehicle that somebody else drives as well: the label follows the station, the bar stays.
#include <QApplication>
#include <QWheelEvent>

#include "cab_sim_fixture.h"

namespace lokari {
namespace {

class BarAndLabel : public test::CabOnStation {
 protected:
  BarAndLabel() : CabOnStation(StationKind::Z21Ip) {}

  /// The bar stands at 100, the vehicle is slowed down to 40 by another throttle.
  SpeedBar* partedBar() {
    FrmCab* window = openCab();
    auto* vsbSpeed = control<SpeedBar>(window, "vsbSpeed");
    vsbSpeed->setValue(100);
    clock.advance(1000);
    sim::DriveState slower = vehicle();
    slower.speed = 40;
    layout.setDrive(test::kAddress, slower);
    clock.advance(1500);
    EXPECT_EQ(vsbSpeed->value(), 100);
    EXPECT_EQ(control<QLabel>(window, "labSpeed")->text(), QStringLiteral("40"));
    return vsbSpeed;
  }
};

TEST_F(BarAndLabel, TheWheelStartsFromTheSpeedThatIsShown) {
  SpeedBar* vsbSpeed = partedBar();
  QWheelEvent turned(QPointF(10, 10), vsbSpeed->mapToGlobal(QPointF(10, 10)), {}, QPoint(0, 120),
                     Qt::NoButton, {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(vsbSpeed, &turned);
  clock.advance(1000);
  EXPECT_EQ(vehicle().speed, 40 + QApplication::wheelScrollLines());
}

TEST_F(BarAndLabel, TheKeysStartFromTheSpeedThatIsShown) {
  QTest::keyClick(partedBar(), Qt::Key_Down);
  clock.advance(1000);
  EXPECT_EQ(vehicle().speed, 39);
}

TEST_F(BarAndLabel, AClickAtTheTopOfTheScaleGoesAPageFromTheSpeedThatIsShown) {
  QTest::mouseClick(partedBar(), Qt::LeftButton, {}, QPoint(20, 1));
  clock.advance(1000);
  EXPECT_EQ(vehicle().speed, 50);
}

}  // namespace
}  // namespace lokari
