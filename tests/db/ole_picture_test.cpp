#include "db/ole_picture.h"

#include <gtest/gtest.h>

#include "ole_objects.h"

namespace lokari {
namespace {

const QByteArray kBitmap("BM\x46\0\0\0 the rest of a bitmap", 27);
const QByteArray kJpeg("\xFF\xD8\xFF\xE0 the rest of a photograph", 29);

using test::packaged;
using test::wrapped;

TEST(OlePicture, ABitmapOfThePaintProgramIsUnwrappedByteByByte) {
  const QByteArray data = wrapped("PBrush", kBitmap);
  // Where Access is known to put it.
  ASSERT_EQ(data.indexOf("BM\x46"), 78);
  EXPECT_TRUE(isOleWrapped(data));
  EXPECT_EQ(pictureInOle(data), kBitmap);
}

TEST(OlePicture, AJpegInAPackageIsUnwrappedByteByByte) {
  EXPECT_EQ(pictureInOle(wrapped("Package", packaged(kJpeg))), kJpeg);
}

TEST(OlePicture, AnotherObjectIsNoPicture) {
  EXPECT_EQ(pictureInOle(wrapped("Word.Document.8", "\xD0\xCF\x11\xE0")), std::nullopt);
  EXPECT_EQ(pictureInOle(wrapped("Package", packaged("GIF89a"))), std::nullopt);
  EXPECT_EQ(pictureInOle(wrapped("PBrush", kBitmap, 1)), std::nullopt) << "a link";
}

TEST(OlePicture, AWrapperThatBreaksOffIsNoPicture) {
  for (const QByteArray& whole :
       {wrapped("PBrush", kBitmap), wrapped("Package", packaged(kJpeg))}) {
    const qsizetype end = whole.size() - 8;
    for (qsizetype size = 0; size < end; ++size) {
      ASSERT_EQ(pictureInOle(whole.left(size)), std::nullopt) << size;
    }
    EXPECT_NE(pictureInOle(whole.left(end)), std::nullopt);
  }
}

TEST(OlePicture, LengthsThatLeadAstrayAreNoPicture) {
  const QByteArray whole = wrapped("PBrush", kBitmap);
  for (qsizetype at = 2; at < 78; ++at) {
    QByteArray data = whole;
    data[at] = '\xFF';
    // Whatever it makes of it, it reads nothing beyond the data.
    const auto picture = pictureInOle(data);
    EXPECT_TRUE(!picture || data.contains(*picture)) << at;
  }
}

TEST(OlePicture, APictureFileNeedsNoWrapper) {
  EXPECT_TRUE(isPictureFile(kBitmap));
  EXPECT_TRUE(isPictureFile(kJpeg));
  EXPECT_TRUE(isPictureFile("\x89PNG\r\n\x1A\n..."));
  EXPECT_FALSE(isPictureFile("GIF89a"));
  EXPECT_FALSE(isPictureFile(""));
  EXPECT_FALSE(isOleWrapped(kBitmap));
}

}  // namespace
}  // namespace lokari
