// Printing into a PDF file: when the file is there, and when it is not.
#include "reports/pdf_file.h"

#include <QDir>
#include <QImage>
#include <QPagedPaintDevice>
#include <QPainter>

#include <random>

#include "pdf_pages.h"
#include "reports/report_error.h"
#include "support/no_larger_files.h"

namespace lokari {
namespace {

class PdfFileTest : public ::testing::Test {
 protected:
  /// Prints pages of text; what finish() or the failure says.
  QString print(int pages = 1) {
    try {
      const auto job = pdfFileJob(FilePlace::ofProgram(path, kPdfFile, {}),
                                  QStringLiteral("Blätter"), printLayout(QPageSize(QPageSize::A4)));
      {
        QPainter painter(&job->paper());
        for (int page = 1; page <= pages; ++page) {
          if (page > 1) job->paper().newPage();
          painter.drawText(QPointF(1000, 1000), QStringLiteral("Seite %1").arg(page));
          if (!pictures.isEmpty()) {
            painter.drawImage(QRectF(1000, 2000, 3000, 3000), pictures.at(page - 1));
          }
        }
      }
      return job->finish(progress).value_or(QString());
    } catch (const ReportError& error) {
      return error.text();
    }
  }

  QByteArray contents() const {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  QTemporaryDir folder;
  test::ProgressRecord progress;
  QList<QImage> pictures;  ///< one a page; empty for none
  QString path = folder.filePath(QStringLiteral("Blatt.pdf"));
};

TEST_F(PdfFileTest, IsThereWhenTheJobIsFinished) {
  EXPECT_EQ(print(3), QStringLiteral("PDF-Datei geschrieben:\r%1").arg(path));
  EXPECT_TRUE(contents().startsWith("%PDF-"));
  EXPECT_TRUE(contents().trimmed().endsWith("%%EOF"));
}

TEST_F(PdfFileTest, FullDiskIsToldAndLeavesTheOldFile) {
  print(40);
  const QByteArray old = contents();
  for (const qint64 room : {qint64(0), old.size() / 2, old.size() - 1}) {
    QString told;
    {
      const test::NoLargerFiles full(room);
      told = print(40);
    }
    EXPECT_TRUE(told.startsWith(QStringLiteral("Fehler beim Schreiben von\r%1\r(").arg(path)))
        << told.toStdString();
    EXPECT_TRUE(contents() == old) << room;
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
  }
}

/// A picture that no packing makes small, another one for each seed.
QImage noise(int size, unsigned seed) {
  QImage image(size, size, QImage::Format_RGB32);
  std::mt19937 random(seed);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) image.setPixel(x, y, 0xFF000000U | (random() & 0xFFFFFFU));
  }
  return image;
}

TEST_F(PdfFileTest, FullDiskWithPicturesOnTheSheetsIsToldAndLeavesTheOldFile) {
  for (unsigned seed = 1; seed <= 3; ++seed) pictures << noise(300, seed);
  print(3);
  const QByteArray old = contents();
  ASSERT_GT(old.size(), 100'000);
  constexpr int kPlaces = 60;
  for (int i = 0; i < kPlaces; ++i) {
    const qint64 room = old.size() * i / kPlaces;
    QString told;
    {
      const test::NoLargerFiles full(room);
      told = print(3);
    }
    EXPECT_TRUE(told.startsWith(QStringLiteral("Fehler beim Schreiben von\r%1\r(").arg(path)))
        << room << ": " << told.toStdString();
    ASSERT_TRUE(contents() == old) << room;
  }
}

}  // namespace
}  // namespace lokari
