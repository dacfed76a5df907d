#include "app/ui/help_window.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeView>
#include <QWindow>

#include "base/desktop.h"
#include "base/ui/qt_prompt.h"
#include "support/places.h"

namespace lokari {
namespace {

/// The shipped manual, in a folder of its own.
class HelpWindowTest : public ::testing::Test {
 protected:
  HelpWindowTest() {
    const QString built = places::data() + QStringLiteral("/HELP/LOKARI.qhc");
    EXPECT_TRUE(QFile::copy(built, file()));
    QString book = built;
    book.replace(QStringLiteral(".qhc"), QStringLiteral(".qch"));
    EXPECT_TRUE(QFile::copy(book, folder_.filePath(QStringLiteral("LOKARI.qch"))));
    window_ = std::make_unique<HelpWindow>(file());
  }

  QString file() const { return folder_.filePath(QStringLiteral("LOKARI.qhc")); }

  template <typename T>
  T* child(const char16_t* name) {
    return window_->findChild<T*>(QString::fromUtf16(name));
  }

  void activate() {
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }

  template <typename Done>
  static void runUntil(Done done) {
    while (!done()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }

  QTemporaryDir folder_;
  std::unique_ptr<HelpWindow> window_;
};

TEST_F(HelpWindowTest, TheContentsNameTheChapters) {
  window_->showContents();
  const QAbstractItemModel* model = child<QTreeView>(u"lstContents")->model();
  runUntil([&] { return model->rowCount() > 0; });
  const QModelIndex book = model->index(0, 0);
  QStringList chapters;
  for (int i = 0; i < model->rowCount(book); ++i) {
    chapters << model->index(i, 0, book).data().toString();
  }
  // The first chapter leads; the manual may grow behind it.
  EXPECT_EQ(chapters.value(0), QStringLiteral("Erste Schritte"));
  for (const char* chapter : {"Fahrzeuge", "Decoder lesen und schreiben", "Einstellungsdatei",
                              "Anschlüsse (PORTS.INI)", "Fehlermeldungen"}) {
    EXPECT_TRUE(chapters.contains(QString::fromUtf8(chapter))) << chapter;
  }
  EXPECT_TRUE(window_->fault().isEmpty());
}

TEST_F(HelpWindowTest, ThePageAndItsLinksComeFromTheHelpFile) {
  auto* page = child<QTextBrowser>(u"txtPage");
  EXPECT_TRUE(page->toPlainText().contains(QStringLiteral("Werkbank")));
  page->setSource(page->source().resolved(QUrl(QStringLiteral("decoder.html"))));
  EXPECT_TRUE(page->toPlainText().contains(QStringLiteral("Die fünf CV-Sätze")));
}

TEST_F(HelpWindowTest, AHitIsFoundAndOpenedByKeys) {
  window_->showSearch();
  EXPECT_EQ(child<QTabWidget>(u"tabHelp")->currentIndex(), 1);
  activate();
  auto* query = child<QLineEdit>(u"txtQuery");
  QTest::keyClicks(query, QStringLiteral("Lok"));
  QTest::keyClick(query, Qt::Key_Return);
  auto* results = child<QListWidget>(u"lstResults");
  ASSERT_GT(results->count(), 2);
  EXPECT_EQ(QApplication::focusWidget(), results);
  QTest::keyClick(results, Qt::Key_Down);
  EXPECT_EQ(results->currentRow(), 1);
  const QString title = results->currentItem()->text().section(u'\n', 0, 0);
  const QString excerpt = results->currentItem()->text().section(u'\n', 1);
  EXPECT_GT(excerpt.size(), 20);
  QTest::keyClick(results, Qt::Key_Return);
  // The page has the hit's text, and its words are marked.
  auto* page = child<QTextBrowser>(u"txtPage");
  EXPECT_TRUE(page->toPlainText().contains(title.section(QStringLiteral(": "), -1)));
  EXPECT_FALSE(page->extraSelections().isEmpty());
  EXPECT_TRUE(page->viewport()->rect().intersects(page->cursorRect()));
  // What was opened is gone on from with the keys.
  EXPECT_EQ(QApplication::focusWidget(), results);
}

TEST_F(HelpWindowTest, AHitGoesToItsPlaceAndShowsTheWord) {
  window_->showSearch();
  child<QLineEdit>(u"txtQuery")->setText(QStringLiteral("dialout"));
  child<QPushButton>(u"cmdSearch")->click();
  auto* results = child<QListWidget>(u"lstResults");
  ASSERT_GT(results->count(), 0);
  EXPECT_TRUE(results->item(0)->text().startsWith(QStringLiteral("Anschlüsse (PORTS.INI)")));
  EXPECT_TRUE(results->item(0)->text().contains(QStringLiteral("dialout")));
  emit results->itemActivated(results->item(0));
  auto* page = child<QTextBrowser>(u"txtPage");
  ASSERT_FALSE(page->extraSelections().isEmpty());
  EXPECT_EQ(page->extraSelections().first().cursor.selectedText(), QStringLiteral("dialout"));
  EXPECT_EQ(page->textCursor().position(), page->extraSelections().first().cursor.selectionStart());
}

TEST_F(HelpWindowTest, NothingFoundIsTold) {
  window_->showSearch();
  child<QLineEdit>(u"txtQuery")->setText(QStringLiteral("Xylophon"));
  child<QPushButton>(u"cmdSearch")->click();
  EXPECT_EQ(child<QListWidget>(u"lstResults")->count(), 0);
  EXPECT_EQ(child<QLabel>(u"labFound")->text(), QStringLiteral("Nichts gefunden"));
}

TEST_F(HelpWindowTest, APageWithItsHeadingIsOpenedForAWindow) {
  window_->answer({QStringLiteral("decoder.html#rechner")});
  EXPECT_TRUE(window_->isVisible());
  auto* page = child<QTextBrowser>(u"txtPage");
  EXPECT_EQ(page->source().fileName(), QStringLiteral("decoder.html"));
  EXPECT_GT(page->verticalScrollBar()->value(), 0);
}

TEST_F(HelpWindowTest, TheContentsStandAtThePageThatIsOpen) {
  auto* contents = child<QTreeView>(u"lstContents");
  window_->answer({QStringLiteral("fahren.html#bedienen")});
  runUntil([&] { return contents->currentIndex().parent().isValid(); });
  EXPECT_EQ(contents->currentIndex().data().toString(), QStringLiteral("Fahren und schalten"));
  window_->answer({QStringLiteral("decoder.html#rechner")});
  EXPECT_EQ(contents->currentIndex().data().toString(),
            QStringLiteral("Decoder lesen und schreiben"));
  window_->answer({{}, QStringLiteral("Type nicht festgelegt!")});
  EXPECT_EQ(contents->currentIndex().data().toString(), QStringLiteral("Fehlermeldungen"));
}

TEST_F(HelpWindowTest, TheMessageOfABoxIsExplained) {
  window_->answer({QStringLiteral("fahrzeuge.html"),
                   QStringLiteral("Datenbankdatei /home/x/Club.MDB nicht gefunden\roder Zugriff "
                                  "nicht möglich!")});
  auto* page = child<QTextBrowser>(u"txtPage");
  EXPECT_EQ(page->source().fileName(), QStringLiteral("fehlermeldungen.html"));
  ASSERT_EQ(page->extraSelections().size(), 1);
  EXPECT_TRUE(page->extraSelections().first().cursor.selectedText().startsWith(
      QStringLiteral("Datenbankdatei")));
  // Of a message that the manual does not know, the window's page is opened.
  window_->answer({QStringLiteral("fahrzeuge.html"), QStringLiteral("Ganz etwas anderes")});
  EXPECT_EQ(page->source().fileName(), QStringLiteral("fahrzeuge.html"));
}

/// A modal dialog is open, and another one over it.
class HelpBesideModalTest : public HelpWindowTest {
 protected:
  HelpBesideModalTest() {
    for (QDialog* each : {&outer_, &inner_}) {
      each->setModal(true);
      each->setGeometry(40, 40, 300, 200);
    }
  }
  void showModal(QDialog& dialog) {
    dialog.show();
    ASSERT_EQ(QApplication::activeModalWidget(), &dialog);
  }
  /// Clicks, keys and scrolling arrive as from the system, which asks whether the window is
  /// blocked.
  void expectUsable() {
    auto* tabs = child<QTabWidget>(u"tabHelp");
    tabs->setCurrentIndex(0);
    QWindow* system = window_->windowHandle();
    const QPoint place = tabs->tabBar()->mapTo(window_.get(), tabs->tabBar()->tabRect(1).center());
    QTest::mouseClick(system, Qt::LeftButton, {}, place);
    EXPECT_EQ(tabs->currentIndex(), 1);
    auto* query = child<QLineEdit>(u"txtQuery");
    QTest::mouseClick(system, Qt::LeftButton, {},
                      query->mapTo(window_.get(), query->rect().center()));
    query->clear();
    QTest::keyClick(system, 'C');
    QTest::keyClick(system, 'V');
    EXPECT_EQ(query->text(), QStringLiteral("CV"));
    auto* page = child<QTextBrowser>(u"txtPage");
    page->verticalScrollBar()->setValue(0);
    // At the edge of the page, where no link is.
    QTest::mouseClick(system, Qt::LeftButton, {}, page->mapTo(window_.get(), QPoint(3, 60)));
    QTest::keyClick(system, Qt::Key_PageDown);
    EXPECT_GT(page->verticalScrollBar()->value(), 0);
  }

  QDialog outer_;
  QDialog inner_{&outer_};
};

TEST_F(HelpBesideModalTest, ItCanBeReadThatWasOpenedBefore) {
  window_->answer({QStringLiteral("decoder.html")});
  showModal(outer_);
  expectUsable();
}

TEST_F(HelpBesideModalTest, ItCanBeReadThatWasOpenedFromIt) {
  showModal(outer_);
  window_->answer({QStringLiteral("decoder.html")});
  expectUsable();
}

TEST_F(HelpBesideModalTest, ItCanBeReadThroughDialogsThatComeAndGo) {
  showModal(outer_);
  window_->answer({QStringLiteral("decoder.html")});
  showModal(inner_);
  expectUsable();
  inner_.hide();
  expectUsable();
  {
    QDialog passing(&outer_);
    passing.setModal(true);
    passing.show();
    expectUsable();
    passing.hide();
  }
  expectUsable();
  outer_.hide();
  EXPECT_TRUE(window_->isVisible());
  expectUsable();
}

TEST_F(HelpBesideModalTest, ClosingItLeavesTheDialogAsItIs) {
  showModal(outer_);
  window_->answer({QStringLiteral("decoder.html")});
  activate();
  QTest::keyClick(window_->windowHandle(), Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
  EXPECT_TRUE(outer_.isVisible());
  EXPECT_EQ(QApplication::activeModalWidget(), &outer_);
  outer_.hide();
  window_->answer({QStringLiteral("decoder.html")});
  expectUsable();
}

TEST_F(HelpBesideModalTest, ClosingItGivesTheKeyboardBackToTheDialogInFront) {
  outer_.show();
  window_->answer({QStringLiteral("decoder.html")});
  showModal(inner_);
  activate();
  window_->close();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&inner_));
}

TEST_F(HelpBesideModalTest, TheDialogIsNotCoveredWhereThereIsRoom) {
  const QRect screen = outer_.screen()->availableGeometry();
  constexpr int kRoom = 640;
  ASSERT_GT(screen.width(), kRoom);
  outer_.setGeometry(screen.left(), screen.top(), screen.width() - kRoom, 200);
  showModal(outer_);
  window_->answer({QStringLiteral("decoder.html")});
  EXPECT_FALSE(window_->frameGeometry().intersects(outer_.frameGeometry()));
  EXPECT_TRUE(screen.contains(window_->frameGeometry()));
}

TEST_F(HelpBesideModalTest, BesideADialogOfTheWholeScreenItStaysOnIt) {
  const QRect screen = outer_.screen()->availableGeometry();
  outer_.setGeometry(screen);
  showModal(outer_);
  window_->answer({QStringLiteral("decoder.html")});
  EXPECT_TRUE(screen.contains(window_->frameGeometry()));
}

TEST_F(HelpBesideModalTest, ABoxThatComesWhileItIsInFrontBelongsToTheOthers) {
  QWidget main;
  main.show();
  window_->showContents();
  activate();
  QtPrompt boxes;
  QTimer::singleShot(0, &main, [&] {
    QWidget* box = QApplication::activeModalWidget();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->parentWidget(), &main);
    window_->close();
    EXPECT_TRUE(box->isVisible());
    box->close();
  });
  boxes.message(QStringLiteral("Eine Meldung"));
}

TEST_F(HelpWindowTest, AFolderThatCannotBeWrittenDoesNotMatter) {
  window_.reset();
  QFile::setPermissions(folder_.path(), QFile::ReadOwner | QFile::ExeOwner);
  QFile::setPermissions(file(), QFile::ReadOwner);
  window_ = std::make_unique<HelpWindow>(file());
  EXPECT_EQ(window_->fault(), QString());
  window_->showSearch();
  child<QLineEdit>(u"txtQuery")->setText(QStringLiteral("Halt"));
  child<QPushButton>(u"cmdSearch")->click();
  EXPECT_GT(child<QListWidget>(u"lstResults")->count(), 0);
  QFile::setPermissions(folder_.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  EXPECT_EQ(
      QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
      2);
}

TEST_F(HelpWindowTest, TheEscapeKeyClosesItAndItOpensAgain) {
  window_->showContents();
  window_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  QTest::keyClick(child<QTextBrowser>(u"txtPage"), Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
  window_->showSearch();
  EXPECT_TRUE(window_->isVisible());
}

TEST(HelpWindow, AFileThatIsNoHelpCollectionIsAFault) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("LOKARI.qhc")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("no database at all");
  file.close();
  const HelpWindow window(file.fileName());
  EXPECT_EQ(window.fault(), QStringLiteral("Hilfe-Datei kann nicht gelesen werden!"));
}

}  // namespace
}  // namespace lokari
