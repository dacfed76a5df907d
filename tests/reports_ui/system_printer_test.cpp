// The system's printers: the PDF file among them, and the way to the spooler.
#include "reports/ui/system_printer.h"

#include "print_fixture.h"

namespace lokari {
namespace {

class SystemPrinterTest : public ::testing::Test {
 protected:
  SystemPrinterTest() { printer.choose(pdfPrinterName()); }

  QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }

  /// Prints a page; the closing text, empty when it was taken back.
  QString print() {
    test::OneLine document(QStringLiteral("Text"));
    const auto job = printer.begin(document.title());
    if (!job) return {};
    document.paint(job->paper(), progress);
    return job->finish();
  }

  static QByteArray contents(const QString& file) {
    QFile in(file);
    EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << file.toStdString();
    return in.readAll();
  }

  static void put(const QString& file, const QByteArray& data) {
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(data);
  }

  QTemporaryDir folder;
  test::ScriptedPrompt prompt;
  test::ProgressRecord progress;
  SystemPrinter printer{prompt, folder.path()};
};

TEST_F(SystemPrinterTest, PdfFileIsTheLastPrinter) {
  EXPECT_EQ(printer.names().last(), QStringLiteral("PDF-Datei"));
  EXPECT_EQ(printer.current(), QStringLiteral("PDF-Datei"));
}

TEST_F(SystemPrinterTest, PrinterThatIsNotThereIsNotChosen) {
  printer.choose(QStringLiteral("Luftschloss"));
  EXPECT_EQ(printer.current(), QStringLiteral("PDF-Datei"));
}

TEST_F(SystemPrinterTest, MarginIs800Twips) {
  EXPECT_EQ(printer.layout().margins(QPageLayout::Point), QMarginsF(40, 40, 40, 40));
  EXPECT_EQ(printer.layout().orientation(), QPageLayout::Portrait);
}

TEST_F(SystemPrinterTest, PdfFileAsksForItsNameAndAddsTheExtension) {
  prompt.fileNames = {path("Blatt")};
  EXPECT_EQ(print(), QStringLiteral("PDF-Datei geschrieben:\r%1").arg(path("Blatt.pdf")));
  ASSERT_EQ(prompt.fileQuestions.size(), 1);
  EXPECT_EQ(prompt.fileQuestions[0].title, QStringLiteral("PDF-Datei speichern"));
  EXPECT_EQ(prompt.fileQuestions[0].folder, folder.path());
  EXPECT_EQ(prompt.fileQuestions[0].presetName, QStringLiteral("Fahrzeugliste.pdf"));
  EXPECT_TRUE(contents(path("Blatt.pdf")).startsWith("%PDF-"));
}

TEST_F(SystemPrinterTest, PdfFileIsReplacedOnlyByAYes) {
  put(path("Blatt.pdf"), "alt");
  prompt.fileNames = {path("Blatt.pdf"), path("Anderes.pdf")};
  prompt.answers = {Answer::No};
  print();
  EXPECT_EQ(prompt.shown,
            QStringList(
                QStringLiteral("%1\rist schon vorhanden. Datei ersetzen?").arg(path("Blatt.pdf"))));
  EXPECT_EQ(contents(path("Blatt.pdf")), "alt");
  EXPECT_TRUE(QFile::exists(path("Anderes.pdf")));
  prompt.fileNames = {path("Blatt.pdf")};
  prompt.answers = {Answer::Yes};
  print();
  EXPECT_TRUE(contents(path("Blatt.pdf")).startsWith("%PDF-"));
}

TEST_F(SystemPrinterTest, PdfFileIsTakenBackByNoName) {
  EXPECT_EQ(print(), QString());
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST_F(SystemPrinterTest, UnfinishedPdfFileLeavesTheOldOne) {
  put(path("Blatt.pdf"), "alt");
  prompt.fileNames = {path("Blatt.pdf")};
  prompt.answers = {Answer::Yes};
  test::OneLine document(QStringLiteral("Text"));
  {
    const auto job = printer.begin(document.title());
    document.paint(job->paper(), progress);
  }
  EXPECT_EQ(contents(path("Blatt.pdf")), "alt");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(SystemPrinterTest, FolderThatIsNotThereIsTold) {
  prompt.fileNames = {path("fort/Blatt.pdf")};
  try {
    print();
    FAIL();
  } catch (const ReportError& error) {
    EXPECT_TRUE(error.text().startsWith(
        QStringLiteral("Kann Datei nicht anlegen:\r%1\r(").arg(path("fort/Blatt.pdf"))))
        << error.text().toStdString();
  }
}

// ---- Spooler ------------------------------------------------------------------------------------

/// A spooler that keeps what it is handed.
class SpoolJobTest : public SystemPrinterTest {
 protected:
  SpoolJobTest() : path_(qgetenv("PATH")) {}
  ~SpoolJobTest() override { qputenv("PATH", path_); }

  void spooler(const QByteArray& body) {
    put(path("lp"), "#!/bin/sh\n" + body + "\n");
    QFile(path("lp")).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", QFile::encodeName(folder.path()) + ':' + path_);
  }

  QString spool() {
    test::OneLine document(QStringLiteral("Text"));
    const auto job = spoolJob(QStringLiteral("Laser 2"), QStringLiteral("Ein Titel"),
                              printLayout(QPageSize(QPageSize::A4)));
    document.paint(job->paper(), progress);
    return job->finish();
  }

  QString refusal() {
    try {
      spool();
    } catch (const ReportError& error) {
      return error.text();
    }
    return {};
  }

 private:
  QByteArray path_;
};

TEST_F(SpoolJobTest, HandsTheFinishedPagesOver) {
  const QByteArray target = QFile::encodeName(folder.path());
  spooler("printf '%s|' \"$@\" > " + target + "/call; cp \"$6\" " + target + "/pages");
  EXPECT_EQ(spool(), QStringLiteral("An den Drucker „Laser 2“ übergeben."));
  EXPECT_TRUE(contents(path("call")).startsWith("-d|Laser 2|-t|Ein Titel|--|/"));
  EXPECT_TRUE(contents(path("pages")).startsWith("%PDF-"));
}

TEST_F(SpoolJobTest, UnfinishedJobIsNeverHandedOver) {
  spooler("touch " + QFile::encodeName(folder.path()) + "/call");
  test::OneLine document(QStringLiteral("Text"));
  {
    const auto job = spoolJob(QStringLiteral("Laser"), QStringLiteral("Titel"),
                              printLayout(QPageSize(QPageSize::A4)));
    document.paint(job->paper(), progress);
  }
  EXPECT_FALSE(QFile::exists(path("call")));
}

TEST_F(SpoolJobTest, RefusalIsToldInTheSystemsWords) {
  spooler("echo 'lp: Der Drucker existiert nicht.' >&2; exit 1");
  EXPECT_EQ(refusal(), QStringLiteral("lp: Der Drucker existiert nicht."));
}

TEST_F(SpoolJobTest, SilentRefusalIsTold) {
  spooler("exit 1");
  EXPECT_EQ(refusal(), QStringLiteral("Das Drucksystem nimmt den Auftrag für „Laser 2“ nicht an!"));
}

TEST_F(SpoolJobTest, NoRoomForTemporaryFilesIsTold) {
  const QByteArray kept = qgetenv("TMPDIR");
  qputenv("TMPDIR", "/proc");
  const QString told = refusal();
  if (kept.isNull()) {
    qunsetenv("TMPDIR");
  } else {
    qputenv("TMPDIR", kept);
  }
  EXPECT_TRUE(
      told.startsWith(QStringLiteral("Kann keinen Ordner für den Druckauftrag anlegen:\r/proc\r(")))
      << told.toStdString();
}

TEST_F(SpoolJobTest, MissingSpoolerIsTold) {
  qputenv("PATH", QFile::encodeName(folder.path()));
  EXPECT_EQ(refusal(), QStringLiteral("Das Programm „lp“, das Druckaufträge annimmt, fehlt!"));
}

}  // namespace
}  // namespace lokari
