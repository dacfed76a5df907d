#include "app/ui/help_window.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTreeView>

#include "support/places.h"

namespace lokari {
namespace {

/// The shipped manual, in a folder of its own because the index is made beside it.
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

TEST_F(HelpWindowTest, TheSearchFindsAWordOfThePages) {
  window_->showSearch();
  EXPECT_EQ(child<QTabWidget>(u"tabHelp")->currentIndex(), 1);
  child<QLineEdit>(u"txtQuery")->setText(QStringLiteral("dialout"));
  child<QPushButton>(u"cmdSearch")->click();
  const auto* results = child<QListWidget>(u"lstResults");
  runUntil([&] { return results->count() > 0; });
  EXPECT_EQ(results->item(0)->text(), QStringLiteral("Anschlüsse (PORTS.INI)"));
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
