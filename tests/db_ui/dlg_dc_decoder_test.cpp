// The dialog of the decoder types: the maker's drop-down and the grid below it.
#include "db/ui/dlg_dc_decoder.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>

#include "grid_dialog_fixture.h"

namespace lokari {
namespace {

class DlgDcDecoderTest : public test::GridDialogFixture {
 protected:
  DlgDcDecoderTest() {
    base_.run("INSERT INTO DCMANUFS VALUES (1, 0, 'Standard'), (2, 145, 'Zimo'), (3, 97, 'Adler')");
    base_.run("INSERT INTO DECODERS VALUES (NULL, 'MX1', 145), (NULL, 'MX2', 145), (1, 'E1', 97)");
    EXPECT_TRUE(QDir(base_.folder()).mkdir(str("Zimo")));
  }
  void openFor(int maker) {
    open(std::make_unique<DlgDcDecoder>(base_.open(), prompt_, CatalogueFiles(base_.folder()),
                                        maker, scale_, nullptr));
  }
  QComboBox* makers() const { return child<QComboBox>("DBCombo1"); }
};

TEST_F(DlgDcDecoderTest, ShowsTheTypesOfTheVehiclesMaker) {
  openFor(97);
  EXPECT_EQ(dialog_->objectName(), str("dlgDcDecoder"));
  EXPECT_EQ(dialog_->windowTitle(), str("Decodertypen"));
  EXPECT_EQ(grid()->model()->objectName(), str("datDcDecoders"));
  EXPECT_EQ(makers()->currentText(), str("Adler"));
  EXPECT_EQ(column(1), str("E1|"));
  EXPECT_EQ(child<QLabel>("labHint")->text(),
            str("Hinweis: Decodertypen, welche bereits Fahrzeugen zugeordnet wurden,  können nicht "
                "verändert oder gelöscht werden."));
}

TEST_F(DlgDcDecoderTest, WithoutAMakerTheFirstThatCanHaveTypesIsShown) {
  for (const int maker : {0, 3}) {
    openFor(maker);
    EXPECT_EQ(makers()->currentText(), str("Zimo"));
  }
  base_.run("DELETE FROM DCMANUFS WHERE DC_MANUF > 0");
  openFor(145);
  EXPECT_EQ(makers()->currentText(), str("Standard"));
  EXPECT_EQ(column(1), QString());
}

TEST_F(DlgDcDecoderTest, OffersTheMakersInTheirOrder) {
  openFor(0);
  QStringList names;
  for (int line = 0; line < makers()->count(); ++line) names << makers()->itemText(line);
  EXPECT_EQ(names.join(u'|'), str("Standard|Zimo|Adler"));
}

TEST_F(DlgDcDecoderTest, ChoosingAMakerShowsItsTypes) {
  openFor(145);
  makers()->setFocus();
  key(Qt::Key_Down);
  EXPECT_EQ(makers()->currentText(), str("Adler"));
  EXPECT_EQ(column(1), str("E1|"));
  EXPECT_EQ(place(), str("0,0"));
}

TEST_F(DlgDcDecoderTest, ChoosingAMakerStoresTheRowThatIsBeingTyped) {
  openFor(145);
  goToEnd(1);
  keys("MX5");
  makers()->setCurrentIndex(2);
  EXPECT_EQ(stored("SELECT DC_MANUF FROM DECODERS WHERE DC_DECODER = 'MX5'"), str("145"));
  EXPECT_EQ(column(1), str("E1|"));
}

TEST_F(DlgDcDecoderTest, ARowThatCannotBeStoredKeepsItsMaker) {
  openFor(145);
  goToEnd(0);
  keys("5");
  makers()->setCurrentIndex(2);
  EXPECT_EQ(message(),
            str("Die Länge der Decoderbezeichnung muß zwischen 1 und 8 Zeichen liegen!"));
  EXPECT_EQ(makers()->currentText(), str("Zimo"));
  EXPECT_EQ(column(1), str("MX1|MX2||")) << "the row is still there";
}

TEST_F(DlgDcDecoderTest, ANewTypeGoesToTheChosenMaker) {
  openFor(97);
  makers()->setCurrentIndex(1);
  goToEnd(1);
  keys("MX5");
  key(Qt::Key_Return);
  EXPECT_EQ(cell(2, 2), str("145"));
  key(Qt::Key_Return);
  EXPECT_EQ(stored("SELECT DC_MANUF FROM DECODERS WHERE DC_DECODER = 'MX5'"), str("145"));
}

TEST_F(DlgDcDecoderTest, Maker0RefusesANewTypeAtTheFirstCharacter) {
  openFor(145);
  makers()->setCurrentIndex(0);
  goToEnd(1);
  keys("M");
  EXPECT_EQ(message(), str("Zu diesem Hersteller können keine Decoder angelegt werden!"));
  EXPECT_FALSE(isEditing());
}

TEST_F(DlgDcDecoderTest, AMakerThatIsGoneMeanwhileHasNoTypes) {
  openFor(145);
  base_.run("DELETE FROM DCMANUFS WHERE DC_MANUF = 97");
  makers()->setCurrentIndex(2);
  EXPECT_EQ(column(1), QString());
  goToEnd(1);
  keys("M");
  EXPECT_EQ(message(), str("Zu diesem Hersteller können keine Decoder angelegt werden!"));
}

TEST_F(DlgDcDecoderTest, EntfAsksBeforeItDeletes) {
  openFor(145);
  go(0, 1);
  key(Qt::Key_Delete);
  EXPECT_EQ(message(), str("Decoder und Beschreibungsdatei wirklich löschen?"));
  EXPECT_EQ(column(1), str("MX1|MX2|"));
  prompt_.answers = {Answer::Yes};
  key(Qt::Key_Delete);
  EXPECT_EQ(column(1), str("MX2|"));
}

TEST_F(DlgDcDecoderTest, TheColumnsFillTheGrid) {
  openFor(145);
  EXPECT_EQ(grid()->horizontalHeader()->length(), grid()->viewport()->width());
}

TEST_F(DlgDcDecoderTest, EveryControlHasAnAccessibleNameAndAPlaceInTheTabOrder) {
  openFor(145);
  QStringList order;
  makers()->setFocus();
  for (int step = 0; step < 3; ++step) {
    order << QApplication::focusWidget()->objectName();
    EXPECT_FALSE(QApplication::focusWidget()->accessibleName().isEmpty());
    key(Qt::Key_Tab);
  }
  EXPECT_EQ(order, (QStringList{str("DBCombo1"), str("DBGrid1"), str("cmdCancel")}));
}

}  // namespace
}  // namespace lokari
