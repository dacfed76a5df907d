// The menu entries that bring new decoder types into the program, in the main window.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QListWidget>
#include <QPushButton>

#include "app/ui/main_win.h"
#include "app_folder.h"

namespace lokari {
namespace {

class CatalogueMenuTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_.add({{QStringLiteral("Club"), 3, QStringLiteral("C3")}});
    ASSERT_TRUE(window_.start());
    outside_.prompt.answers = {Answer::Ok};
  }

  void choose(const char16_t* entry) const {
    window_.findChild<QAction*>(QString::fromUtf16(entry))->trigger();
  }

  test::AppFolder folder_;
  test::Outside outside_;
  Workbench workbench_{outside_.parts(folder_)};
  MainWin window_{workbench_};
};

TEST_F(CatalogueMenuTest, ADescriptionWithoutAMakerGoesToTheOneThatIsChosen) {
  folder_.write(QStringLiteral("neu1.dec"), "[NEU1]\r\n");
  outside_.prompt.fileNames = {folder_.file(QStringLiteral("neu1.dec"))};
  QMetaObject::invokeMethod(
      qApp,
      [] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        auto* lines = dialog->findChild<QListWidget*>(QStringLiteral("lstManSel"));
        ASSERT_NE(lines, nullptr);
        lines->setCurrentItem(lines->findItems(QStringLiteral("Zimo\t(145)"), Qt::MatchExactly)[0]);
        dialog->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
      },
      Qt::QueuedConnection);
  choose(u"mnuImpDec");
  EXPECT_EQ(outside_.prompt.shown.last(),
            QStringLiteral("Decodertyp NEU1 (Hersteller Zimo) anlegen?"));
  EXPECT_TRUE(workbench_.session().catalogue().type(145, QStringLiteral("NEU1")).has_value());
  EXPECT_EQ(folder_.read(QStringLiteral("Zimo/neu1.dec")), "[NEU1]\r\n");
}

TEST_F(CatalogueMenuTest, TheCatalogueIsBroughtUpToDate) {
  workbench_.session().database().write(QStringLiteral("DELETE FROM DECODERS"), {});
  choose(u"mnuUpdDB");
  EXPECT_EQ(outside_.prompt.shown.last(),
            QStringLiteral("Datenbankerweiterung erfolgreich abgeschlossen!"));
  EXPECT_FALSE(workbench_.session().catalogue().types(145).isEmpty());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

}  // namespace
}  // namespace lokari
