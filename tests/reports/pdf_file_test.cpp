// Printing into a PDF file: when the file is there, and when it is not.
#include "reports/pdf_file.h"

#include <QDir>
#include <QPagedPaintDevice>
#include <QPainter>

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
      const auto job =
          pdfFileJob(path, QStringLiteral("Blätter"), printLayout(QPageSize(QPageSize::A4)));
      {
        QPainter painter(&job->paper());
        for (int page = 1; page <= pages; ++page) {
          if (page > 1) job->paper().newPage();
          painter.drawText(QPointF(1000, 1000), QStringLiteral("Seite %1").arg(page));
        }
      }
      return job->finish();
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

}  // namespace
}  // namespace lokari
