// The dialog of the decoder makers.
#include "db/ui/dlg_dc_manuf.h"

#include <QFileInfo>

#include "grid_dialog_fixture.h"

namespace lokari {
namespace {

class DlgDcManufTest : public test::GridDialogFixture {
 protected:
  DlgDcManufTest() {
    base_.run("INSERT INTO DCMANUFS VALUES (1, 0, 'Standard'), (2, 145, 'Zimo')");
    open(std::make_unique<DlgDcManuf>(base_.open(), prompt_, CatalogueFiles(base_.folder()), scale_,
                                      nullptr));
  }
  bool hasFolder(const char* name) const {
    return QFileInfo(base_.folder() + u'/' + str(name)).isDir();
  }
};

TEST_F(DlgDcManufTest, ShowsTheMakers) {
  EXPECT_EQ(dialog_->objectName(), str("dlgDcManuf"));
  EXPECT_EQ(dialog_->windowTitle(), str("Decoderhersteller"));
  EXPECT_EQ(grid()->model()->objectName(), str("datDcManufs"));
  EXPECT_EQ(column(2), str("Standard|Zimo|"));
}

TEST_F(DlgDcManufTest, AMakerIsTypedInAndGetsItsFolder) {
  goToEnd(1);
  keys("12");
  key(Qt::Key_Tab);
  keys("Neu");
  key(Qt::Key_Tab);
  EXPECT_EQ(stored("SELECT DC_MANUF_TEXT FROM DCMANUFS WHERE DC_MANUF = 12"), str("Neu"));
  EXPECT_TRUE(hasFolder("Neu"));
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(DlgDcManufTest, ARefusedNumberKeepsTheCursor) {
  goToEnd(1);
  keys("256");
  key(Qt::Key_Tab);
  EXPECT_EQ(message(), str("Die Herstellernummer muß zwischen 0 und 255 liegen!"));
  EXPECT_EQ(place(), str("2,1"));
  EXPECT_EQ(rows(), 3) << "no row was begun";
}

TEST_F(DlgDcManufTest, ARowWithoutItsNumberIsNotLeftUntilItIsGivenUp) {
  goToEnd(2);
  keys("Neu");
  key(Qt::Key_Return);
  key(Qt::Key_Up);
  EXPECT_EQ(message(), str("Die Herstellernummer ist ungültig!"));
  EXPECT_EQ(place(), str("2,2"));
  key(Qt::Key_Escape);
  EXPECT_EQ(rows(), 3);
  EXPECT_FALSE(hasFolder("Neu"));
}

TEST_F(DlgDcManufTest, Maker0CannotBeDeleted) {
  go(0, 0);
  key(Qt::Key_Delete);
  EXPECT_EQ(message(), str("Hersteller 0 darf nicht gelöscht werden!"));
  EXPECT_EQ(rows(), 3);
}

TEST_F(DlgDcManufTest, TheColumnsFillTheGrid) {
  EXPECT_EQ(grid()->horizontalHeader()->length(), grid()->viewport()->width());
}

}  // namespace
}  // namespace lokari
