#include "app/ui/qt_desktop.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "support/scripted_prompt.h"

namespace lokari {
namespace {

QByteArray encoded(const char* format) {
  QImage image(7, 5, QImage::Format_RGB32);
  image.fill(Qt::green);
  QByteArray data;
  QBuffer buffer(&data);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return data;
}

class QtDesktopTest : public ::testing::Test {
 protected:
  test::ScriptedPrompt prompt_;
  QtDesktop desktop_{prompt_};
};

TEST_F(QtDesktopTest, APictureGoesThroughTheClipboard) {
  desktop_.setClipboardPicture(encoded("BMP"));
  const QImage back = QImage::fromData(desktop_.clipboardPicture());
  EXPECT_EQ(back.size(), QSize(7, 5));
  EXPECT_EQ(back.pixelColor(3, 3), QColor(Qt::green));
}

TEST_F(QtDesktopTest, NoPictureEmptiesTheClipboard) {
  desktop_.setClipboardPicture(encoded("PNG"));
  desktop_.setClipboardPicture({});
  EXPECT_TRUE(desktop_.clipboardPicture().isEmpty());
}

TEST_F(QtDesktopTest, AMissingFileIsNotOpened) {
  EXPECT_FALSE(desktop_.openFile(QStringLiteral("/no/such/Readme.txt")));
}

TEST_F(QtDesktopTest, ABrokenHelpFileIsReported) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("LOKARI.qhc")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("no database at all");
  file.close();
  desktop_.showHelpContents(file.fileName());
  EXPECT_EQ(prompt_.shown, QStringList(QStringLiteral("Hilfe-Datei kann nicht gelesen werden!")));
}

TEST_F(QtDesktopTest, AHelpFileNobodyCanShowIsReported) {
  desktop_.showHelpSearch(QStringLiteral("/no/such/LOKARI.CHM"));
  EXPECT_EQ(prompt_.shown, QStringList(QStringLiteral(
                               "Für die Hilfe-Datei LOKARI.CHM ist kein Programm eingerichtet!")));
}

}  // namespace
}  // namespace lokari
