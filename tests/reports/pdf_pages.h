// What a printed document says, read back from its PDF by programs that know nothing of ours.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include "base/file_place.h"
#include "base/progress.h"
#include "reports/pdf_file.h"
#include "reports/print_document.h"

namespace lokari::test {

/// Progress that a script can cancel.
class ProgressRecord final : public Progress {
 public:
  void setStatus(const QString& text) override { texts << text; }
  void setPercent(double percent) override { percents << percent; }
  bool cancelled() override { return --workUntilCancel == 0; }

  QStringList texts;
  QList<double> percents;
  int workUntilCancel = 0;  ///< questions until the answer is yes; 0 for never
};

/// A document as a PDF file in a folder of its own.
class PdfPages {
 public:
  QString path() const { return folder_.filePath(QStringLiteral("Seiten.pdf")); }

  FilePlace place() const { return FilePlace::ofProgram(path(), kPdfFile, {}); }

  /// What paint() gave.
  bool print(PrintDocument& document, QPageSize::PageSizeId size = QPageSize::A4) {
    const auto job = pdfFileJob(place(), document.title(), printLayout(QPageSize(size)));
    if (!document.paint(job->paper(), progress)) return false;
    job->finish(progress);
    return true;
  }

  /// One text a page, its columns side by side as on paper; blanks are reduced to one.
  QStringList texts() const {
    QStringList pages =
        run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path(), QStringLiteral("-")})
            .split(u'\f');
    pages.removeLast();
    for (QString& page : pages) page = plain(page);
    return pages;
  }

  /// Every text that is printed bold.
  QStringList boldTexts() const {
    const QString xml = run(QStringLiteral("pdftohtml"),
                            {QStringLiteral("-xml"), QStringLiteral("-stdout"), path()});
    static const QRegularExpression bold(QStringLiteral("<b>(.*?)</b>"));
    QStringList result;
    for (const auto& match : bold.globalMatch(xml)) result << match.captured(1).trimmed();
    return result;
  }

  /// Width and height of each picture that the file holds, in its own dots.
  QStringList pictures() const {
    QStringList lines = plain(run(QStringLiteral("pdfimages"), {QStringLiteral("-list"), path()}))
                            .split(u'\n', Qt::SkipEmptyParts)
                            .mid(2);
    // Columns: page, number, kind, width, height, ...; then the object, once a picture.
    QStringList result;
    QSet<QString> objects;
    for (const QString& line : lines) {
      const QStringList cells = line.split(u' ', Qt::SkipEmptyParts);
      if (objects.contains(cells.value(10))) continue;
      objects << cells.value(10);
      result << cells.value(3) + u'x' + cells.value(4);
    }
    return result;
  }

  QString fonts() const { return run(QStringLiteral("pdffonts"), {path()}); }
  QString info() const { return plain(run(QStringLiteral("pdfinfo"), {path()})); }

  ProgressRecord progress;

 private:
  static QString plain(QString text) {
    static const QRegularExpression blanks(QStringLiteral("[ ]+"));
    return text.replace(blanks, QStringLiteral(" "));
  }

  static QString run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
  }

  QTemporaryDir folder_;
};

}  // namespace lokari::test
