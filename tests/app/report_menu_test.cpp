// The menu entries that hand vehicles over, in the main window.
#include <gtest/gtest.h>

#include <QAction>
#include <QFileInfo>

#include "app/ui/main_win.h"
#include "app_folder.h"

namespace lokari {
namespace {

class ReportMenuTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_.add({{QStringLiteral("Club"), 3, QStringLiteral("C3")},
                 {QStringLiteral("Heim"), 5, QStringLiteral("H5")}});
    ASSERT_TRUE(window_.start());
  }

  test::AppFolder folder_;
  test::Outside outside_;
  Workbench workbench_{outside_.parts(folder_)};
  MainWin window_{workbench_};
};

TEST_F(ReportMenuTest, TheVehicleFileTakesTheFilteredVehicles) {
  workbench_.session().form().sqlFilter = QStringLiteral("DC_COLL = \"Heim\"");
  outside_.prompt.fileNames = {folder_.path() + QStringLiteral("/RZK_LOCO.DAT")};
  outside_.prompt.answers = {Answer::Yes};
  window_.findChild<QAction*>(QStringLiteral("mnuExpRZK"))->trigger();
  EXPECT_EQ(outside_.prompt.shown.last(),
            QStringLiteral("Export beendet,\r1 Fahrzeuge übernommen."));
  EXPECT_EQ(QFileInfo(folder_.path() + QStringLiteral("/RZK_LOCO.DAT")).size(), 2 * 52);
}

}  // namespace
}  // namespace lokari
