// The lists and the catalogue, opened from the main window's menu.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <functional>

#include "app/ui/main_win.h"
#include "app_folder.h"
#include "db/reference_lists.h"

namespace lokari {
namespace {

class ListMenuTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_.add({{QStringLiteral("Club"), 3, QStringLiteral("C3")}});
    folder_.change(3, {{QStringLiteral("FZ_ERA"), QStringLiteral("II")},
                       {QStringLiteral("DC_MANUF"), 145},
                       {QStringLiteral("DC_DECODER"), QStringLiteral("MX64")}});
    ASSERT_TRUE(window_.start());
    window_.show();
    QApplication::processEvents();
  }

  /// Opens the dialog of a menu entry, lets `act` use it and closes it. Gives its name.
  QString use(const char* entry, const std::function<void(QDialog&)>& act = {}) {
    QString name;
    QTimer::singleShot(0, &window_, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      name = dialog->objectName();
      if (act) act(*dialog);
      dialog->close();
    });
    window_.findChild<QAction*>(QString::fromUtf8(entry))->trigger();
    return name;
  }
  static QAbstractItemModel& rows(const QDialog& dialog) {
    return *dialog.findChild<QTableView*>(QStringLiteral("DBGrid1"))->model();
  }
  static void type(const QDialog& dialog, int row, int column, const char* text) {
    QAbstractItemModel& model = rows(dialog);
    EXPECT_TRUE(model.setData(model.index(row, column), QString::fromUtf8(text)));
  }
  static void typeNew(const QDialog& dialog, int column, const char* text) {
    type(dialog, rows(dialog).rowCount() - 1, column, text);
  }
  QComboBox* list(const char* name) const {
    return window_.findChild<QComboBox*>(QString::fromUtf8(name));
  }

  test::AppFolder folder_;
  test::Outside outside_;
  Workbench workbench_{outside_.parts(folder_)};
  MainWin window_{workbench_};
};

TEST_F(ListMenuTest, EachEntryOpensItsDialog) {
  EXPECT_EQ(use("mnuDcManufValues"), QStringLiteral("dlgDcManuf"));
  EXPECT_EQ(use("mnuDcTypeValues"), QStringLiteral("dlgDcDecoder"));
  EXPECT_EQ(use("mnuFzTypeValues"), QStringLiteral("dlgFTypes"));
  EXPECT_EQ(use("mnuLineValues"), QStringLiteral("dlgLines"));
  EXPECT_EQ(use("mnuEraValues"), QStringLiteral("dlgEras"));
  EXPECT_EQ(use("mnuManufValues"), QStringLiteral("dlgManuf"));
  EXPECT_EQ(use("mnuMotorValues"), QStringLiteral("dlgMotor"));
}

TEST_F(ListMenuTest, EachDropDownOffersANewEntryAndKeepsItsText) {
  const std::pair<const char*, const char*> entries[] = {{"mnuFzTypeValues", "fz_ftype"},
                                                         {"mnuLineValues", "fz_line"},
                                                         {"mnuEraValues", "fz_era"},
                                                         {"mnuManufValues", "md_manuf"},
                                                         {"mnuMotorValues", "md_motor"}};
  for (const auto& [entry, control] : entries) {
    const QString text = list(control)->currentText();
    use(entry, [](const QDialog& dialog) { typeNew(dialog, 1, "Ganz neu"); });
    EXPECT_GE(list(control)->findText(QStringLiteral("Ganz neu")), 0) << control;
    EXPECT_EQ(list(control)->currentText(), text) << control;
  }
}

TEST_F(ListMenuTest, ADropDownKeepsATextWhoseEntryWasDeleted) {
  ASSERT_EQ(list("fz_era")->currentText(), QStringLiteral("II"));
  outside_.prompt.answers = {Answer::Yes};
  use("mnuEraValues", [](QDialog& dialog) {
    auto* grid = dialog.findChild<QTableView*>(QStringLiteral("DBGrid1"));
    grid->setCurrentIndex(rows(dialog).index(1, 1));
    ASSERT_EQ(grid->currentIndex().data().toString(), QStringLiteral("II"));
    QTest::keyClick(grid, Qt::Key_Delete);
  });
  EXPECT_EQ(list("fz_era")->currentText(), QStringLiteral("II"));
  EXPECT_LT(list("fz_era")->findText(QStringLiteral("II")), 0);
  EXPECT_EQ(folder_.stored(3, QStringLiteral("FZ_ERA")).toString(), QStringLiteral("II"));
}

TEST_F(ListMenuTest, ATextThatIsNotStoredYetIsKeptToo) {
  QLineEdit* name = window_.findChild<QLineEdit*>(QStringLiteral("fz_lname"));
  name->setFocus();
  name->insert(QStringLiteral("halb"));
  use("mnuLineValues", [](const QDialog& dialog) { typeNew(dialog, 1, "Ganz neu"); });
  EXPECT_EQ(name->text(), QStringLiteral("halb"));
}

TEST_F(ListMenuTest, ATextTypedIntoTheDropDownOfANewRecordIsKeptAndStillToBeStored) {
  window_.findChild<QAction*>(QStringLiteral("mnuEditNew"))->trigger();
  QComboBox* era = list("fz_era");
  era->lineEdit()->setFocus();
  QTest::keyClicks(era->lineEdit(), QStringLiteral("Neuzeit"));
  use("mnuEraValues", [](const QDialog& dialog) { typeNew(dialog, 1, "Ganz neu"); });
  EXPECT_EQ(era->currentText(), QStringLiteral("Neuzeit"));
  EXPECT_GE(era->findText(QStringLiteral("Ganz neu")), 0);
  RecordForm& form = workbench_.session().form();
  EXPECT_EQ(form.editMode(), EditMode::Add);
  form.edited(QStringLiteral("dc_adr"), QStringLiteral("77"));
  form.edited(QStringLiteral("st_sname"), QStringLiteral("C77"));
  ASSERT_TRUE(form.storeEdit());
  EXPECT_EQ(folder_.stored(77, QStringLiteral("FZ_ERA")).toString(), QStringLiteral("Neuzeit"));
}

TEST_F(ListMenuTest, ARefreshedListIsNoChangeOfTheRecord) {
  ASSERT_FALSE(workbench_.session().form().recordDirty);
  use("mnuEraValues", [](const QDialog& dialog) { typeNew(dialog, 1, "Ganz neu"); });
  EXPECT_FALSE(workbench_.session().form().recordDirty);
  EXPECT_EQ(workbench_.session().form().editMode(), EditMode::None);
}

TEST_F(ListMenuTest, TheTypesComeUpForTheVehiclesMaker) {
  use("mnuDcTypeValues", [](const QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QComboBox*>(QStringLiteral("DBCombo1"))->currentText(),
              QStringLiteral("Zimo"));
  });
}

TEST_F(ListMenuTest, ANewMakerGetsAFolderInTheDataFolder) {
  use("mnuDcManufValues", [](const QDialog& dialog) {
    typeNew(dialog, 1, "12");
    type(dialog, rows(dialog).rowCount() - 2, 2, "Neu");
  });
  EXPECT_TRUE(QFileInfo(folder_.file(QStringLiteral("Neu"))).isDir());
}

TEST_F(ListMenuTest, ANewTypeGetsItsDescriptionInTheDataFolder) {
  ASSERT_TRUE(QDir().mkpath(folder_.file(QStringLiteral("Zimo"))));
  folder_.write(QStringLiteral("default.dec"), "[Standard]\r\n");
  use("mnuDcTypeValues", [](const QDialog& dialog) { typeNew(dialog, 1, "NEU1"); });
  EXPECT_EQ(folder_.read(QStringLiteral("Zimo/NEU1.dec")), "[Standard]\r\n");
}

TEST_F(ListMenuTest, TheFormShowsTheNewNameOfARenamedMaker) {
  auto* shown = window_.findChild<QLineEdit*>(QStringLiteral("dc_manuf"));
  ASSERT_EQ(shown->text(), QStringLiteral("Zimo"));
  use("mnuDcManufValues", [](const QDialog& dialog) {
    for (int row = 0; row < rows(dialog).rowCount(); ++row) {
      if (rows(dialog).index(row, 1).data().toInt() == 145) type(dialog, row, 2, "Zimo AG");
    }
  });
  EXPECT_EQ(shown->text(), QStringLiteral("Zimo AG"));
}

TEST_F(ListMenuTest, TheDialogsFollowTheMainWindowsSize) {
  const auto widthOfDialog = [this] {
    int width = 0;
    use("mnuEraValues", [&width](const QDialog& dialog) { width = dialog.width(); });
    return width;
  };
  const double before = widthOfDialog() / window_.scale().scaleX;
  window_.resize(window_.width() * 5 / 4, window_.height());
  QApplication::processEvents();
  EXPECT_NEAR(widthOfDialog() / window_.scale().scaleX, before, 2);
}

}  // namespace
}  // namespace lokari
