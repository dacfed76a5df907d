// Buttons that are pictures.
#include "cab/ui/picture_button.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "support/places.h"

namespace lokari {
namespace {

class PictureButtonTest : public ::testing::Test {
 protected:
  PictureButtonTest() {
    button.showPicture(QStringLiteral("stop_n.bmp"), QStringLiteral("stop_p.bmp"));
    button.resize(button.sizeHint());
    button.show();
  }
  QPoint middle() const { return button.rect().center(); }

  PictureButton button{Pictures(places::data()), QStringLiteral("imgStop"), QStringLiteral("Halt"),
                       nullptr};
};

TEST_F(PictureButtonTest, ShowsItsOtherPictureWhileItIsDown) {
  EXPECT_EQ(button.picture(), QStringLiteral("stop_n.bmp"));
  QTest::mousePress(&button, Qt::LeftButton);
  EXPECT_EQ(button.picture(), QStringLiteral("stop_p.bmp"));
  QTest::mouseRelease(&button, Qt::LeftButton);
  EXPECT_EQ(button.picture(), QStringLiteral("stop_n.bmp"));
}

TEST_F(PictureButtonTest, ActsOnceHoweverTheHeldMouseMoves) {
  button.setActsOnPress();
  const QSignalSpy pressed(&button, &PictureButton::pressed);
  QTest::mousePress(&button, Qt::LeftButton);
  QMouseEvent away(QEvent::MouseMove, QPointF(-50, -50), QPointF(-50, -50), Qt::NoButton,
                   Qt::LeftButton, {});
  QApplication::sendEvent(&button, &away);
  QMouseEvent back(QEvent::MouseMove, QPointF(middle()), QPointF(middle()), Qt::NoButton,
                   Qt::LeftButton, {});
  QApplication::sendEvent(&button, &back);
  QTest::mouseRelease(&button, Qt::LeftButton);
  EXPECT_EQ(pressed.count(), 1);
  EXPECT_FALSE(button.isDown());
}

TEST_F(PictureButtonTest, IsReleasedOutsideToo) {
  button.setActsOnPress();
  QTest::mousePress(&button, Qt::LeftButton);
  QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(-50, -50));
  EXPECT_FALSE(button.isDown());
  EXPECT_EQ(button.picture(), QStringLiteral("stop_n.bmp"));
}

TEST_F(PictureButtonTest, AClickAloneDoesNotTurnItOn) {
  button.showOn(false);
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_FALSE(button.isChecked());
  button.showOn(true);
  EXPECT_TRUE(button.isChecked());
}

TEST_F(PictureButtonTest, TakesThePictureOfDoubleSizeWhenItIsEnlarged) {
  const QImage file(places::data() + QStringLiteral("/stop_n@2x.bmp"));
  ASSERT_FALSE(file.isNull());
  const QSize air = button.sizeHint() - file.size() / 2;
  button.resize(file.size() + air);
  const QImage shown = button.grab().toImage();
  int compared = 0;
  for (int y = 0; y < file.height(); y += 3) {
    for (int x = 0; x < file.width(); x += 3) {
      if (qAlpha(file.pixel(x, y)) < 255) continue;
      ++compared;
      ASSERT_EQ(shown.pixelColor(x + air.width() / 2, y + air.height() / 2), file.pixelColor(x, y))
          << x << ", " << y;
    }
  }
  EXPECT_GT(compared, 500);
}

TEST_F(PictureButtonTest, WithoutItsFileItShowsItsText) {
  button.setText(QStringLiteral("Halt"));
  button.showPicture(QStringLiteral("gibtsnicht.bmp"));
  const QImage withText = button.grab().toImage();
  button.setText({});
  EXPECT_NE(withText, button.grab().toImage());
}

}  // namespace
}  // namespace lokari
