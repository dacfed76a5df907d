// The staged button and lamp pictures: each name that a window asks for, in two sizes, with its
// transparency as QImage reads it.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QString>

#include "support/places.h"

namespace lokari {
namespace {

QImage picture(const std::string& name) {
  return QImage(places::data() + QStringLiteral("/") + QString::fromStdString(name) +
                QStringLiteral(".bmp"));
}

double meanGray(const QImage& image) {
  double sum = 0;
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) < 255) continue;
      sum += qGray(image.pixel(x, y));
      ++count;
    }
  }
  return count == 0 ? 0 : sum / count;
}

class StagedPicture : public testing::TestWithParam<const char*> {};

TEST_P(StagedPicture, HasATwinOfDoubleSize) {
  const QImage small = picture(GetParam());
  const QImage large = picture(std::string(GetParam()) + "@2x");
  ASSERT_FALSE(small.isNull());
  EXPECT_GE(small.width(), 16);
  EXPECT_EQ(large.size(), small.size() * 2);
}

TEST_P(StagedPicture, IsTransparentAroundItsDrawing) {
  for (const char* size : {"", "@2x"}) {
    const QImage image = picture(std::string(GetParam()) + size);
    ASSERT_TRUE(image.hasAlphaChannel());
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
    int opaque = 0;
    for (int x = 0; x < image.width(); ++x)
      opaque += qAlpha(image.pixel(x, image.height() / 2)) == 255;
    EXPECT_GT(opaque, image.width() / 8);
  }
}

INSTANTIATE_TEST_SUITE_P(Names, StagedPicture,
                         testing::Values("chkbox", "chkbox_x", "bitbut", "lmpon_n", "lmpoff_n",
                                         "lmpred_n", "lmpgrey", "arrupg_n", "arrupg_p", "arrupr_n",
                                         "arrdng_n", "arrdng_p", "arrdnr_n", "manon_n", "manon_p",
                                         "manoff_n", "manoff_p", "go_n", "go_p", "stop_n", "stop_p",
                                         "fahr_n", "fahr_p", "neu_n", "loesch_n", "such_n", "tab_n",
                                         "prog_n", "schalt_n", "ok_n", "abbr_n", "filter_n",
                                         "bild_n", "bildweg_n", "erster", "voriger", "naechster",
                                         "letzter", "lokari"),
                         [](const auto& name) { return std::string(name.param); });

TEST(StagedPictures, PressedIsDarkerThanResting) {
  for (const char* name : {"go", "stop", "fahr", "arrupg", "manon"}) {
    const QImage resting = picture(std::string(name) + "_n");
    const QImage pressed = picture(std::string(name) + "_p");
    ASSERT_FALSE(pressed.isNull());
    EXPECT_LT(meanGray(pressed), 0.9 * meanGray(resting)) << name;
  }
}

TEST(StagedPictures, TheSplashFillsItsPicture) {
  const QImage splash = picture("entry");
  EXPECT_EQ(splash.size(), QSize(360, 180));
  EXPECT_EQ(qAlpha(splash.pixel(0, 0)), 255);
}

}  // namespace
}  // namespace lokari
