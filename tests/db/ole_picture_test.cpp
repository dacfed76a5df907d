#include "db/ole_picture.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

const QByteArray kBitmap("BM\x46\0\0\0 the rest of a bitmap", 27);
const QByteArray kJpeg("\xFF\xD8\xFF\xE0 the rest of a photograph", 29);

QByteArray number(quint32 value, int bytes = 4) {
  QByteArray data;
  for (int i = 0; i < bytes; ++i) data.append(static_cast<char>(value >> (8 * i)));
  return data;
}

QByteArray counted(const QByteArray& data) {
  return number(static_cast<quint32>(data.size())) + data;
}

/// The wrapper of Access around an object: 20 bytes, the names, the object.
QByteArray wrapped(const QByteArray& objectClass, const QByteArray& data, quint32 kind = 2) {
  const QByteArray names("Bitmap Image\0Paint.Picture\0", 27);
  QByteArray head = QByteArray("\x15\x1C", 2) + number(20 + 27, 2) + number(2) + number(13, 2) +
                    number(14, 2) + number(20, 2) + number(33, 2) + number(0xFFFFFFFF);
  return head + names + number(0x0501) + number(kind) + counted(objectClass + '\0') + counted("") +
         counted("") + counted(data) + QByteArray("\1\5\0\0\0\0\0\0", 8);
}

QByteArray package(const QByteArray& file) {
  return number(2, 2) + QByteArray("lok.jpg\0C:\\BILDER\\lok.jpg\0", 26) + number(0x00030000) +
         counted(QByteArray("C:\\TEMP\\lok.jpg\0", 16)) + counted(file);
}

TEST(OlePicture, ABitmapOfThePaintProgramIsUnwrappedByteByByte) {
  const QByteArray data = wrapped("PBrush", kBitmap);
  // Where Access is known to put it.
  ASSERT_EQ(data.indexOf("BM\x46"), 78);
  EXPECT_TRUE(isOleWrapped(data));
  EXPECT_EQ(pictureInOle(data), kBitmap);
}

TEST(OlePicture, AJpegInAPackageIsUnwrappedByteByByte) {
  EXPECT_EQ(pictureInOle(wrapped("Package", package(kJpeg))), kJpeg);
}

TEST(OlePicture, AnotherObjectIsNoPicture) {
  EXPECT_EQ(pictureInOle(wrapped("Word.Document.8", "\xD0\xCF\x11\xE0")), std::nullopt);
  EXPECT_EQ(pictureInOle(wrapped("Package", package("GIF89a"))), std::nullopt);
  EXPECT_EQ(pictureInOle(wrapped("PBrush", kBitmap, 1)), std::nullopt) << "a link";
}

TEST(OlePicture, AWrapperThatBreaksOffIsNoPicture) {
  for (const QByteArray& whole : {wrapped("PBrush", kBitmap), wrapped("Package", package(kJpeg))}) {
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
