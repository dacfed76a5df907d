#include "base/ui/pictures.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace lokari {
namespace {

class PicturesTest : public ::testing::Test {
 protected:
  void draw(const QString& name, int size) {
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(folder_.filePath(name), "BMP"));
  }

  QTemporaryDir folder_;
  Pictures pictures_{folder_.path()};
};

TEST_F(PicturesTest, NamesAreFoundInAnyCase) {
  draw(QStringLiteral("ChkBox.BMP"), 13);
  EXPECT_EQ(pictures_.pixmap(QStringLiteral("chkbox.bmp"), 1.0).size(), QSize(13, 13));
}

TEST_F(PicturesTest, TheTwinOfDoubleSizeServesAScreenOfDoubleResolution) {
  draw(QStringLiteral("lamp.bmp"), 16);
  draw(QStringLiteral("lamp@2x.bmp"), 32);
  const QPixmap twin = pictures_.pixmap(QStringLiteral("lamp.bmp"), 2.0);
  EXPECT_EQ(twin.size(), QSize(32, 32));
  EXPECT_EQ(twin.deviceIndependentSize(), QSizeF(16, 16));
  EXPECT_EQ(pictures_.pixmap(QStringLiteral("lamp.bmp"), 1.0).size(), QSize(16, 16));
}

TEST_F(PicturesTest, WithoutATwinTheSmallPictureServesEveryScreen) {
  draw(QStringLiteral("lamp.bmp"), 16);
  EXPECT_EQ(pictures_.pixmap(QStringLiteral("lamp.bmp"), 2.0).deviceIndependentSize(),
            QSizeF(16, 16));
}

TEST_F(PicturesTest, AnIconHoldsBothResolutions) {
  draw(QStringLiteral("lamp.bmp"), 16);
  draw(QStringLiteral("LAMP@2X.bmp"), 32);
  const QIcon icon = pictures_.icon(QStringLiteral("lamp.bmp"));
  EXPECT_EQ(icon.pixmap(QSize(16, 16), 1.0).size(), QSize(16, 16));
  EXPECT_EQ(icon.pixmap(QSize(16, 16), 2.0).size(), QSize(32, 32));
}

TEST_F(PicturesTest, AMissingOrBrokenPictureIsEmpty) {
  QFile broken(folder_.filePath(QStringLiteral("broken.bmp")));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("BM no picture");
  broken.close();
  EXPECT_TRUE(pictures_.pixmap(QStringLiteral("broken.bmp"), 1.0).isNull());
  EXPECT_TRUE(pictures_.pixmap(QStringLiteral("missing.bmp"), 2.0).isNull());
  EXPECT_TRUE(pictures_.icon(QStringLiteral("missing.bmp")).isNull());
}

}  // namespace
}  // namespace lokari
