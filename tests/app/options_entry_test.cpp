// The options dialog, opened from the main window's menu.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include "app/ui/main_win.h"
#include "app_folder.h"

namespace lokari {
namespace {

class OptionsEntry : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(window_.start()); }

  /// Opens the dialog, lets `act` use it, and gives true when it came up.
  bool open(const std::function<void(QDialog&)>& act) {
    bool shown = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      shown = dialog->objectName() == QStringLiteral("dlgOptions");
      act(*dialog);
    });
    window_.findChild<QAction*>(QStringLiteral("mnuParaOptions"))->trigger();
    return shown;
  }

  test::AppFolder folder_;
  test::Outside outside_;
  Workbench workbench_{outside_.parts(folder_)};
  MainWin window_{workbench_};
};

TEST_F(OptionsEntry, AChangeHoldsForTheNextSessionAndIsWritten) {
  EXPECT_TRUE(open([](QDialog& dialog) {
    dialog.findChild<QRadioButton*>(QStringLiteral("optComTypeIBX"))->click();
    dialog.findChild<QLineEdit*>(QStringLiteral("txtDbPath"))->setText(QStringLiteral("A.MDB"));
    dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
  }));
  EXPECT_EQ(workbench_.settings().baseUnit, StationKind::Ibx);
  const IniFile ini(workbench_.paths().iniFile);
  EXPECT_EQ(ini.getString(QStringLiteral("LOKARI"), QStringLiteral("BaseUnit"), {}, 64),
            QStringLiteral("IBX"));
  EXPECT_EQ(ini.getString(QStringLiteral("LOKARI"), QStringLiteral("DBPath"), {}, 64),
            QStringLiteral("A.MDB"));
}

TEST_F(OptionsEntry, ShowsTheOpenDatabase) {
  const QString path = workbench_.session().dbPath();
  workbench_.settings().dbPath = QStringLiteral("/anderswo.MDB");
  EXPECT_TRUE(open([&path](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("txtDbPath"))->text(), path);
    dialog.reject();
  }));
}

}  // namespace
}  // namespace lokari
