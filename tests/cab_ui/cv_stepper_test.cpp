// The value of a CV that is stepped on the main track: every step is a write.
#include "cab/ui/cv_stepper.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QSignalSpy>
#include <QStyleOptionSpinBox>
#include <QTest>
#include <QWheelEvent>

namespace lokari {
namespace {

class CvStepperTest : public ::testing::Test {
 protected:
  CvStepperTest() {
    stepper.showValue(QStringLiteral("12"));
    stepper.resize(stepper.sizeHint());
    stepper.show();
  }

  QPoint arrow(QStyle::SubControl which) const {
    QStyleOptionSpinBox option;
    option.initFrom(&stepper);
    option.subControls = QStyle::SC_All;
    option.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
    return stepper.style()->subControlRect(QStyle::CC_SpinBox, &option, which, &stepper).center();
  }
  QString text() const { return stepper.findChild<QLineEdit*>(QStringLiteral("txtCV"))->text(); }

  CvStepper stepper{nullptr};
  QSignalSpy up{&stepper, &CvStepper::steppedUp};
  QSignalSpy down{&stepper, &CvStepper::steppedDown};
};

TEST_F(CvStepperTest, EachClickOnAnArrowIsOneStep) {
  QTest::mouseClick(&stepper, Qt::LeftButton, {}, arrow(QStyle::SC_SpinBoxUp));
  EXPECT_EQ(up.count(), 1);
  QTest::mouseClick(&stepper, Qt::LeftButton, {}, arrow(QStyle::SC_SpinBoxDown));
  EXPECT_EQ(up.count(), 1);
  EXPECT_EQ(down.count(), 1);
}

TEST_F(CvStepperTest, ArrowAndPageKeysAreOneStepEach) {
  QTest::keyClick(&stepper, Qt::Key_Up);
  QTest::keyClick(&stepper, Qt::Key_PageUp);
  QTest::keyClick(&stepper, Qt::Key_Down);
  EXPECT_EQ(up.count(), 2);
  EXPECT_EQ(down.count(), 1);
}

TEST_F(CvStepperTest, TheWheelAboveItWritesNothing) {
  stepper.setFocus();
  QWheelEvent wheel(QPointF(5, 5), stepper.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, 120),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&stepper, &wheel);
  EXPECT_EQ(up.count() + down.count(), 0);
}

TEST_F(CvStepperTest, NothingCanBeTyped) {
  QTest::keyClicks(&stepper, QStringLiteral("99"));
  QTest::keyClick(&stepper, Qt::Key_Backspace);
  stepper.clearFocus();
  EXPECT_EQ(text(), QStringLiteral("12"));
  EXPECT_EQ(up.count() + down.count(), 0);
}

}  // namespace
}  // namespace lokari
