// The decoder makers in their grid: every check in its order, and the folders beside the rows.
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "db/catalogue.h"
#include "db/maker_rules.h"
#include "list_grid_fixture.h"

namespace lokari {
namespace {

constexpr int kSeq = MakerRules::kSequence;
constexpr int kNumber = MakerRules::kNumber;
constexpr int kName = MakerRules::kName;

class MakerGridTest : public test::ListGridFixture {
 protected:
  void SetUp() override {
    base_.run(
        "INSERT INTO DCMANUFS VALUES (1, 0, 'Standard'), (2, 145, 'Zimo'), (NULL, 97, 'Adler')");
    base_.run("INSERT INTO DECODERS VALUES (NULL, 'MX1', 145)");
    show(std::make_unique<MakerRules>(base_.open(), prompt_, CatalogueFiles(base_.folder())),
         QString::fromUtf16(kMakersQuery));
  }
  QString path(const char* name) const { return base_.folder() + u'/' + str(name); }
  bool hasFolder(const char* name) const { return QFileInfo(path(name)).isDir(); }
  void makeFolder(const char* name) const { ASSERT_TRUE(QDir().mkpath(path(name))); }
  void makeFile(const char* name) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
};

TEST_F(MakerGridTest, ShowsTheMakersInTheirOrder) {
  EXPECT_EQ(column(kNumber), str("0 145 97"));
  EXPECT_EQ(grid_->headerData(0, Qt::Horizontal).toString(), str("Seq."));
  EXPECT_EQ(grid_->headerData(1, Qt::Horizontal).toString(), str("Nr."));
  EXPECT_EQ(grid_->headerData(2, Qt::Horizontal).toString(), str("Hersteller"));
}

// ---- Number -------------------------------------------------------------------------------------

TEST_F(MakerGridTest, ANumberIsFixedOnceItExists) {
  for (const char* number : {"146", "145,0", "x", ""}) {
    EXPECT_FALSE(type(1, kNumber, number));
    EXPECT_EQ(message(), str("Die Herstellernummer kann nicht verändert werden!")) << number;
  }
  EXPECT_EQ(cell(1, kNumber), str("145"));
}

TEST_F(MakerGridTest, ANumberMustBeAWholeNumber) {
  for (const char* number : {"x", "12a", "1,5", "0.1", "254,9", "1 2"}) {
    EXPECT_FALSE(typeNew(kNumber, number));
    EXPECT_EQ(message(), str("Die Herstellernummer ist ungültig!")) << number;
  }
  EXPECT_EQ(grid_->editedRow(), -1) << "nothing was begun";
}

TEST_F(MakerGridTest, ANumberLiesBetween0And255) {
  for (const char* number : {"256", "-1", "255,4", "-0,5", "100000", "1e9", "-1e300"}) {
    EXPECT_FALSE(typeNew(kNumber, number));
    EXPECT_EQ(message(), str("Die Herstellernummer muß zwischen 0 und 255 liegen!")) << number;
  }
  EXPECT_TRUE(typeNew(kNumber, "255"));
  grid_->revertRow();
  base_.run("DELETE FROM DCMANUFS WHERE DC_MANUF = 0");
  EXPECT_TRUE(typeNew(kNumber, "0"));
  EXPECT_TRUE(isQuiet());
}

TEST_F(MakerGridTest, ANumberThatExistsIsRefused) {
  for (const char* number : {"145", "0", " 97 ", "1,45e2"}) {
    EXPECT_FALSE(typeNew(kNumber, number));
    EXPECT_EQ(message(), str("Die Herstellernummer exisitiert bereits!")) << number;
  }
}

TEST_F(MakerGridTest, AMistypedNumberOfARowThatIsNotStoredCanBeMended) {
  ASSERT_TRUE(typeNew(kNumber, "12"));
  ASSERT_TRUE(type(grid_->editedRow(), kNumber, "13"));
  ASSERT_TRUE(type(grid_->editedRow(), kName, "Neu"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT DC_MANUF FROM DCMANUFS WHERE DC_MANUF_TEXT = 'Neu'"), str("13"));
}

// ---- Name ---------------------------------------------------------------------------------------

TEST_F(MakerGridTest, ANameHas1To8Characters) {
  for (const char* name : {"ABCDEFGHI", "/23456789", "Überlang9"}) {
    EXPECT_FALSE(typeNew(kName, name));
    EXPECT_EQ(message(),
              str("Die Länge der Herstellerbezeichnung muß zwischen 1 und 8 Zeichen liegen!"))
        << name;
  }
  EXPECT_FALSE(type(2, kName, "")) << "a name cannot be emptied";
  EXPECT_EQ(message(),
            str("Die Länge der Herstellerbezeichnung muß zwischen 1 und 8 Zeichen liegen!"));
  EXPECT_TRUE(typeNew(kName, "ABCDEFGH"));
  EXPECT_TRUE(type(grid_->editedRow(), kName, "Ü"));
}

TEST_F(MakerGridTest, EachForbiddenCharacterIsRefused) {
  for (const QChar bad : str("\"^°!§$%&/()=?\\`´+*#':.;,<>|~{[]}")) {
    const QByteArray name = (str("A") + bad + str("B")).toUtf8();
    EXPECT_FALSE(typeNew(kName, name.constData()));
    EXPECT_EQ(message(), str("Die Herstellerbezeichnung enthält ungültige Zeichen!"))
        << name.toStdString();
  }
  EXPECT_TRUE(typeNew(kName, "A-_ @1äß"));
  EXPECT_TRUE(isQuiet());
}

// ---- Rows ---------------------------------------------------------------------------------------

TEST_F(MakerGridTest, ANewMakerGetsItsFolder) {
  ASSERT_TRUE(typeNew(kNumber, "12"));
  ASSERT_TRUE(type(grid_->editedRow(), kName, "Neu"));
  EXPECT_FALSE(hasFolder("Neu")) << "not before the row is stored";
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_TRUE(hasFolder("Neu"));
  EXPECT_EQ(stored("SELECT DC_MANUF_SEQ FROM DCMANUFS WHERE DC_MANUF = 12"), str("Null"));
  EXPECT_EQ(column(kName), str("Standard Zimo Adler Neu"));
}

TEST_F(MakerGridTest, AFolderThatExistsIsTaken) {
  makeFolder("neu");
  makeFile("neu/A.dec");
  ASSERT_TRUE(typeNew(kName, "Neu"));
  ASSERT_TRUE(type(grid_->editedRow(), kNumber, "12"));
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_FALSE(hasFolder("Neu")) << "the other spelling is the same folder";
  EXPECT_TRUE(QFile::exists(path("neu/A.dec")));
  EXPECT_TRUE(isQuiet());
}

TEST_F(MakerGridTest, AFolderThatCannotBeMadeIsNoHindrance) {
  makeFile("Neu");
  ASSERT_TRUE(typeNew(kName, "Neu"));
  ASSERT_TRUE(type(grid_->editedRow(), kNumber, "12"));
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_TRUE(isQuiet());
  EXPECT_EQ(stored("SELECT COUNT(*) FROM DCMANUFS"), str("4"));
}

TEST_F(MakerGridTest, ANewMakerNeedsItsNumber) {
  ASSERT_TRUE(typeNew(kName, "Neu"));
  EXPECT_FALSE(grid_->storeRow());
  EXPECT_EQ(message(), str("Die Herstellernummer ist ungültig!"));
  EXPECT_EQ(grid_->editedRow(), 3) << "the user may still give it";
  EXPECT_FALSE(hasFolder("Neu"));
}

TEST_F(MakerGridTest, ANewMakerNeedsItsName) {
  ASSERT_TRUE(typeNew(kNumber, "12"));
  EXPECT_FALSE(grid_->storeRow());
  EXPECT_EQ(message(),
            str("Die Länge der Herstellerbezeichnung muß zwischen 1 und 8 Zeichen liegen!"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM DCMANUFS"), str("3"));
}

TEST_F(MakerGridTest, AnEmptyRowIsNotSaved) {
  ASSERT_TRUE(typeNew(kSeq, "5"));
  ASSERT_TRUE(type(grid_->editedRow(), kSeq, ""));
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_EQ(grid_->rowCount(), 4);
  EXPECT_TRUE(isQuiet());
}

TEST_F(MakerGridTest, AMakerWithoutANameMayHaveItsSequenceChanged) {
  base_.run("INSERT INTO DCMANUFS VALUES (9, 3, NULL)");
  grid_->open(QString::fromUtf16(kMakersQuery));
  ASSERT_TRUE(type(2, kSeq, "8"));
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT DC_MANUF_SEQ FROM DCMANUFS WHERE DC_MANUF = 3"), str("8"));
}

// ---- Renaming -----------------------------------------------------------------------------------

TEST_F(MakerGridTest, ARenamedMakerLeavesItsFolderBehindAndTheUserIsAsked) {
  makeFolder("Zimo");
  makeFile("Zimo/MX1.DEC");
  prompt_.answers = {Answer::Yes};
  ASSERT_TRUE(type(1, kName, "Zimo2"));
  EXPECT_EQ(message(), str("Der Ordner \"Zimo\" behält seinen Namen. Seine Beschreibungsdateien "
                           "werden dann nicht mehr gefunden.\nHersteller trotzdem umbenennen?"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT DC_MANUF_TEXT FROM DCMANUFS WHERE DC_MANUF = 145"), str("Zimo2"));
  EXPECT_TRUE(QFile::exists(path("Zimo/MX1.DEC")));
  EXPECT_FALSE(hasFolder("Zimo2"));
}

TEST_F(MakerGridTest, ARenamingThatTheUserDoesNotWantIsRefused) {
  makeFolder("Zimo");
  makeFile("Zimo/MX1.dec");
  prompt_.answers = {Answer::No};
  EXPECT_FALSE(type(1, kName, "Zimo2"));
  EXPECT_EQ(cell(1, kName), str("Zimo"));
  EXPECT_EQ(grid_->editedRow(), -1);
}

TEST_F(MakerGridTest, ARenamingThatLosesNoFileIsNotAskedFor) {
  makeFolder("Zimo");
  EXPECT_TRUE(type(1, kName, "Zimo2")) << "an empty folder";
  makeFile("Zimo/MX1.dec");
  EXPECT_TRUE(type(1, kName, "ZIMO")) << "another spelling of the same folder";
  EXPECT_TRUE(type(2, kName, "Adler2")) << "no folder at all";
  EXPECT_TRUE(isQuiet());
}

// ---- Deleting -----------------------------------------------------------------------------------

TEST_F(MakerGridTest, Maker0IsNotDeletedWhetherItHasTypesOrNot) {
  base_.run("INSERT INTO DECODERS VALUES (NULL, 'Rest', 0)");
  EXPECT_FALSE(grid_->deleteRow(0));
  EXPECT_EQ(message(), str("Hersteller 0 darf nicht gelöscht werden!"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM DCMANUFS"), str("3"));
}

TEST_F(MakerGridTest, AMakerWithTypesIsNotDeleted) {
  makeFolder("Zimo");
  EXPECT_FALSE(grid_->deleteRow(1));
  EXPECT_EQ(message(), str("Es gibt noch Decoder zu dieser Herstellernummer!"));
  EXPECT_TRUE(hasFolder("Zimo"));
}

TEST_F(MakerGridTest, AMakerThatVehiclesNameIsDeletedAfterAYesOnly) {
  const int maker = stored("SELECT DC_MANUF FROM DCMANUFS WHERE DC_MANUF_TEXT = 'Adler'").toInt();
  base_.run("INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, DC_MANUF) VALUES (3, '', ?)", {maker});
  EXPECT_FALSE(grid_->deleteRow(2));
  EXPECT_TRUE(
      prompt_.below.last().startsWith(str("Fahrzeuge mit einem Decoder dieses Herstellers: 1. ")));
  EXPECT_TRUE(message().endsWith(str("löschen?")));
  prompt_.answers = {Answer::Yes};
  EXPECT_TRUE(grid_->deleteRow(2));
  EXPECT_EQ(column(kName), str("Standard Zimo"));
}

TEST_F(MakerGridTest, ARowWithoutANumberIsNeitherMaker0NorHasItTypes) {
  base_.run("DROP TABLE DCMANUFS");
  base_.run(
      "CREATE TABLE DCMANUFS (DC_MANUF_SEQ SMALLINT, DC_MANUF SMALLINT, DC_MANUF_TEXT "
      "VARCHAR(50))");
  base_.run("INSERT INTO DCMANUFS VALUES (1, 0, 'Standard'), (2, NULL, 'Rest')");
  base_.run("INSERT INTO DECODERS VALUES (NULL, 'X', 0)");
  grid_->open(QString::fromUtf16(kMakersQuery));
  EXPECT_TRUE(grid_->deleteRow(1));
  EXPECT_EQ(column(kName), str("Standard"));
  EXPECT_TRUE(isQuiet());
}

TEST_F(MakerGridTest, AnEmptyFolderGoesWithItsMaker) {
  makeFolder("ADLER");
  EXPECT_TRUE(grid_->deleteRow(2));
  EXPECT_FALSE(hasFolder("ADLER"));
  EXPECT_EQ(column(kName), str("Standard Zimo"));
  EXPECT_TRUE(isQuiet());
}

TEST_F(MakerGridTest, AFolderWithFilesStays) {
  makeFolder("Adler");
  makeFile("Adler/alt.dec");
  EXPECT_TRUE(grid_->deleteRow(2));
  EXPECT_TRUE(QFile::exists(path("Adler/alt.dec")));
  EXPECT_TRUE(isQuiet());
}

TEST_F(MakerGridTest, AMakerThatCouldNotBeDeletedKeepsItsFolder) {
  makeFolder("Adler");
  base_.run("CREATE TRIGGER no BEFORE DELETE ON DCMANUFS BEGIN SELECT RAISE(ABORT, 'nein'); END");
  EXPECT_FALSE(grid_->deleteRow(2));
  EXPECT_TRUE(message().contains(str("nein")));
  EXPECT_TRUE(hasFolder("Adler"));
  EXPECT_EQ(grid_->rowCount(), 4);
}

TEST_F(MakerGridTest, ANameThatLeadsOutOfTheFolderTouchesNothing) {
  makeFolder("Raus");
  base_.run("INSERT INTO DCMANUFS VALUES (9, 3, '../Raus'), (10, 4, '..')");
  grid_->open(QString::fromUtf16(kMakersQuery));
  EXPECT_TRUE(grid_->deleteRow(2));
  EXPECT_TRUE(grid_->deleteRow(2));
  EXPECT_TRUE(hasFolder("Raus"));
  EXPECT_TRUE(isQuiet());
}

}  // namespace
}  // namespace lokari
