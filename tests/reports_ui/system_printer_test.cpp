// The system's printers: the PDF file among them, and the way to the spooler.
#include "reports/ui/system_printer.h"

#include <QTimer>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/qt_clock.h"
#include "print_fixture.h"
#include "support/no_larger_files.h"
#include "support/virtual_clock.h"

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
    return job->finish(progress).value_or(QString());
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
  QtClock clock;
  SystemPrinter printer{{.prompt = prompt, .clock = clock, .folder = folder.path(), .own = {}}};
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

TEST_F(SystemPrinterTest, FileThatIsNoPdfFileIsToldAndAnotherNameAskedFor) {
  put(path("Foto.jpg"), "JFIF");
  prompt.fileNames = {path("Foto.jpg"), path("Blatt.pdf")};
  prompt.answers = {Answer::Yes};
  EXPECT_EQ(print(), QStringLiteral("PDF-Datei geschrieben:\r%1").arg(path("Blatt.pdf")));
  EXPECT_EQ(contents(path("Foto.jpg")), "JFIF");
  EXPECT_EQ(prompt.shown,
            QStringList(QStringLiteral("In die Datei\r%1\rwird nicht geschrieben: Sie "
                                       "ist keine PDF-Datei.")
                            .arg(path("Foto.jpg"))));
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

/// Programs of a printing system that do what a test says.
class PrintingSystemTest : public SystemPrinterTest {
 protected:
  PrintingSystemTest() : path_(qgetenv("PATH")) {
    qputenv("PATH", QFile::encodeName(folder.path()) + ':' + path_);
  }
  ~PrintingSystemTest() override { qputenv("PATH", path_); }

  void program(const char* name, const QByteArray& body) {
    put(path(name), "#!/bin/sh\n" + body + "\n");
    QFile(path(name)).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }

 private:
  QByteArray path_;
};

// ---- Printers -----------------------------------------------------------------------------------

class InquiryTest : public PrintingSystemTest {
 protected:
  /// Asks for the printers, and waits for the answer as the window's event loop does.
  void inquire(SystemPrinter& printers) {
    bool known = false;
    printers.inquire([&known] { known = true; });
    clock.waitUntil([&known] { return known; }, Clock::kNever);
  }

  SystemPrinter fresh{{.prompt = prompt, .clock = clock, .folder = folder.path(), .own = {}}};
};

const QByteArray kTwoPrinters =
    "case $1 in -e) echo Laser; echo Tinte;; -d) echo 'system default destination: Tinte';; esac";

TEST_F(InquiryTest, PrintersOfTheSystemComeAheadOfThePdfFile) {
  program("lpstat", kTwoPrinters);
  program("lpoptions", "");
  inquire(fresh);
  EXPECT_EQ(fresh.names(),
            QStringList({QStringLiteral("Laser"), QStringLiteral("Tinte"), pdfPrinterName()}));
  EXPECT_EQ(fresh.current(), QStringLiteral("Tinte")) << "the default one";
  EXPECT_EQ(fresh.remark(), QString());
}

TEST_F(InquiryTest, WhatTheUserChoseMeanwhileStays) {
  program("lpstat", kTwoPrinters);
  program("lpoptions", "");
  fresh.choose(pdfPrinterName());
  inquire(fresh);
  EXPECT_EQ(fresh.current(), pdfPrinterName());
}

TEST_F(InquiryTest, PaperIsThePrintersOwn) {
  program("lpstat", kTwoPrinters);
  program("lpoptions",
          "echo 'Duplex/Duplex: *None Long'; echo 'PageSize/Media Size: A4 *Letter Legal'");
  inquire(fresh);
  clock.waitUntil([this] { return fresh.layout().pageSize().id() == QPageSize::Letter; },
                  clock.now() + 60'000);
  EXPECT_EQ(fresh.layout().pageSize().id(), QPageSize::Letter);
}

TEST_F(InquiryTest, MarkedPaperIsFoundAmongItsKinds) {
  EXPECT_EQ(markedPageSize(QStringLiteral("PageSize/Format: Letter *A5.Borderless\n"))->id(),
            QPageSize::A5);
  EXPECT_FALSE(markedPageSize(QStringLiteral("PageSize/Format: *Custom.100x100\n")));
  EXPECT_FALSE(markedPageSize(QStringLiteral("lpoptions: no such printer")));
}

TEST_F(InquiryTest, PrintersThatAreNotSetUpAreTold) {
  program("lpstat", "exit 1");
  inquire(fresh);
  EXPECT_EQ(fresh.names(), QStringList(pdfPrinterName()));
  EXPECT_EQ(fresh.remark(), QStringLiteral("Es ist kein Drucker eingerichtet."));
}

TEST_F(InquiryTest, SystemWithoutPrintingIsTold) {
  qputenv("PATH", QFile::encodeName(folder.path()));
  inquire(fresh);
  EXPECT_EQ(fresh.remark(), QStringLiteral("Hier ist kein Drucksystem installiert."));
}

TEST_F(InquiryTest, SilentServerHoldsNothingUpAndIsTold) {
  program("lpstat", "exec sleep 1000");
  test::VirtualClock quick;
  SystemPrinter silent({.prompt = prompt, .clock = quick, .folder = folder.path(), .own = {}});
  bool known = false;
  silent.inquire([&known] { known = true; });
  EXPECT_EQ(silent.names(), QStringList(pdfPrinterName()));
  EXPECT_EQ(silent.remark(), QStringLiteral("Die Drucker werden gesucht …"));
  prompt.fileNames = {path("Blatt.pdf")};
  test::OneLine document(QStringLiteral("Text"));
  const auto job = silent.begin(document.title());
  document.paint(job->paper(), progress);
  EXPECT_TRUE(job->finish(progress)) << "a PDF file needs no server";
  quick.waitUntil([&known] { return known; }, Clock::kNever);
  EXPECT_EQ(silent.remark(),
            QStringLiteral("Das Drucksystem antwortet nicht; PDF- und CSV-Dateien gehen ohne es."));
}

// ---- Spooler ------------------------------------------------------------------------------------

class SpoolJobTest : public PrintingSystemTest {
 protected:
  void spooler(const QByteArray& body) { program("lp", body); }

  /// The closing text, empty when the user cancelled.
  QString spool(Clock& time) {
    test::OneLine document(QStringLiteral("Text"));
    const auto job = spoolJob(QStringLiteral("Laser 2"), QStringLiteral("Ein Titel"),
                              printLayout(QPageSize(QPageSize::A4)), time);
    document.paint(job->paper(), progress);
    return job->finish(progress).value_or(QString());
  }
  QString spool() { return spool(clock); }

  QString refusal(Clock& time) {
    try {
      spool(time);
    } catch (const ReportError& error) {
      return error.text();
    }
    return {};
  }
  QString refusal() { return refusal(clock); }
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
                              printLayout(QPageSize(QPageSize::A4)), clock);
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

TEST_F(SpoolJobTest, SilentServerIsToldAfterAWhile) {
  spooler("exec sleep 1000");
  test::VirtualClock quick;
  EXPECT_EQ(refusal(quick), QStringLiteral("Das Drucksystem antwortet nicht!"));
}

TEST_F(SpoolJobTest, EverythingElseGoesOnWhileTheServerIsSilent) {
  const QByteArray pipe = QFile::encodeName(path("rohr"));
  ASSERT_EQ(::mkfifo(pipe, 0600), 0);
  spooler("read word < " + pipe);
  QTimer cab;
  int turns = 0;
  QObject::connect(&cab, &QTimer::timeout, &cab, [&] {
    // The server speaks again when a cab has had its turns.
    if (++turns < 5) return;
    const int end = ::open(pipe, O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (end < 0) return;
    EXPECT_EQ(::write(end, "los\n", 4), 4);
    ::close(end);
    cab.stop();
  });
  cab.start(1);
  EXPECT_EQ(spool(), QStringLiteral("An den Drucker „Laser 2“ übergeben."));
  EXPECT_GE(turns, 5);
}

TEST_F(SpoolJobTest, SilentServerIsLeftByAbbruch) {
  spooler("exec sleep 1000");
  // The page, the beginning of the hand-over, and then impatience.
  progress.workUntilCancel = 3;
  EXPECT_EQ(spool(), QString());
}

TEST_F(SpoolJobTest, TornPagesNeverGoToThePrinter) {
  spooler("touch " + QFile::encodeName(folder.path()) + "/call");
  QString told;
  {
    const test::NoLargerFiles full(500);
    told = refusal();
  }
  EXPECT_TRUE(told.startsWith(QStringLiteral("Fehler beim Schreiben von"))) << told.toStdString();
  EXPECT_FALSE(QFile::exists(path("call")));
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
