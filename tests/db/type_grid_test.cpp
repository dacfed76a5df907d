// The decoder types of a maker in their grid: every check in its order, and the description files
// beside the rows.
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "db/type_rules.h"
#include "list_grid_fixture.h"

namespace lokari {
namespace {

constexpr int kSeq = TypeRules::kSequence;
constexpr int kType = TypeRules::kType;
constexpr int kMaker = TypeRules::kMaker;

class TypeGridTest : public test::ListGridFixture {
 protected:
  void SetUp() override {
    base_.run("INSERT INTO DCMANUFS VALUES (1, 0, 'Standard'), (2, 145, 'Zimo'), (3, 97, 'Adler')");
    base_.run(
        "INSERT INTO DECODERS VALUES (NULL, 'MX2', 145), (NULL, 'MX1', 145), (1, 'MX9', 145), "
        "(NULL, 'MX1', 97), (NULL, 'Rest', 0)");
    ASSERT_TRUE(QDir().mkpath(path("Zimo")));
    show({145, str("Zimo")});
  }
  void show(const Maker& maker) {
    auto rules = std::make_unique<TypeRules>(base_.open(), prompt_, CatalogueFiles(base_.folder()));
    rules->setMaker(maker);
    EXPECT_EQ(rules->manufNo(), maker.number);
    ListGridFixture::show(std::move(rules), typesQuery(maker.number));
  }
  void vehicleWith(const char* type) {
    base_.run("INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, DC_MANUF, DC_DECODER) VALUES (3, '', 145, ?)",
              {str(type)});
  }
  QString path(const char* name) const { return base_.folder() + u'/' + str(name); }
  void write(const char* name, const QByteArray& text) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }
  QByteArray read(const char* name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("-");
  }
};

TEST_F(TypeGridTest, ShowsTheTypesOfTheMakerInTheirOrder) {
  EXPECT_EQ(column(kType), str("MX9 MX1 MX2"));
  EXPECT_EQ(column(kMaker), str("145 145 145"));
  EXPECT_EQ(grid_->headerData(0, Qt::Horizontal).toString(), str("Seq."));
  EXPECT_EQ(grid_->headerData(1, Qt::Horizontal).toString(), str("Decodertyp"));
  EXPECT_EQ(grid_->headerData(2, Qt::Horizontal).toString(), str("Hersteller"));
}

// ---- Adding -------------------------------------------------------------------------------------

TEST_F(TypeGridTest, ANewTypeGetsTheMakersNumber) {
  ASSERT_TRUE(typeNew(kType, "MX5"));
  EXPECT_EQ(cell(3, kMaker), str("145"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT DC_MANUF FROM DECODERS WHERE DC_DECODER = 'MX5'"), str("145"));
  EXPECT_EQ(stored("SELECT DC_SEQ FROM DECODERS WHERE DC_DECODER = 'MX5'"), str("Null"));
  EXPECT_EQ(column(kType), str("MX9 MX1 MX2 MX5"));
}

TEST_F(TypeGridTest, ANumberThatWasTypedAheadOfTheNameDoesNotCount) {
  ASSERT_TRUE(typeNew(kMaker, "97"));
  ASSERT_TRUE(type(3, kType, "MX5"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT DC_MANUF FROM DECODERS WHERE DC_DECODER = 'MX5'"), str("145"));
}

TEST_F(TypeGridTest, Maker0CannotHaveTypes) {
  show({0, str("Standard")});
  EXPECT_FALSE(grid_->mayEdit(grid_->blankRow()));
  EXPECT_EQ(message(), str("Zu diesem Hersteller können keine Decoder angelegt werden!"));
  EXPECT_FALSE(typeNew(kType, "ABCDEFGHI"));
  EXPECT_EQ(message(), str("Zu diesem Hersteller können keine Decoder angelegt werden!"));
  EXPECT_TRUE(grid_->mayEdit(0)) << "a row that is there is changed as everywhere";
}

TEST_F(TypeGridTest, ANewTypeNeedsAName) {
  ASSERT_TRUE(typeNew(kSeq, "4"));
  EXPECT_FALSE(grid_->storeRow());
  EXPECT_EQ(message(),
            str("Die Länge der Decoderbezeichnung muß zwischen 1 und 8 Zeichen liegen!"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM DECODERS"), str("5"));
}

TEST_F(TypeGridTest, AnEmptyRowIsNotSaved) {
  ASSERT_TRUE(typeNew(kSeq, "4"));
  ASSERT_TRUE(type(3, kSeq, ""));
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_TRUE(isQuiet());
  EXPECT_EQ(grid_->rowCount(), 4);
}

// ---- Checks -------------------------------------------------------------------------------------

TEST_F(TypeGridTest, TheMakersNumberIsFixed) {
  EXPECT_FALSE(type(0, kMaker, "97"));
  EXPECT_EQ(message(), str("Die Herstellernummer kann nicht verändert werden!"));
  ASSERT_TRUE(typeNew(kType, "MX5"));
  EXPECT_FALSE(type(3, kMaker, "97")) << "also the one that a new row got by itself";
  EXPECT_EQ(message(), str("Die Herstellernummer kann nicht verändert werden!"));
}

TEST_F(TypeGridTest, ATypeThatAVehicleUsesIsNotRenamed) {
  vehicleWith("mx1");
  EXPECT_FALSE(type(1, kType, "")) << "asked ahead of every other check";
  EXPECT_EQ(message(), str("Diese Decoderbezeichnung kann nicht verändert werden!"));
  EXPECT_TRUE(type(1, kSeq, "5")) << "its place may change";
  EXPECT_TRUE(isQuiet());
}

TEST_F(TypeGridTest, AVehicleOfAnotherMakerDoesNotHinder) {
  base_.run("INSERT INTO LOCO_DAT (DC_ADR, DC_MANUF, DC_DECODER) VALUES (3, 97, 'MX1')");
  EXPECT_TRUE(type(1, kType, "MX3"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(column(kType), str("MX9 MX2 MX3"));
}

TEST_F(TypeGridTest, ATypeThatExistsIsRefused) {
  EXPECT_FALSE(typeNew(kType, "mx2"));
  EXPECT_EQ(message(), str("Dieser Decoder exisitiert bereits!"));
  EXPECT_FALSE(type(0, kType, "MX1"));
  EXPECT_EQ(message(), str("Dieser Decoder exisitiert bereits!"));
}

TEST_F(TypeGridTest, AnotherSpellingOfATypeIsTheSameType) {
  EXPECT_FALSE(type(1, kType, "mx1"));
  EXPECT_EQ(message(), str("Dieser Decoder exisitiert bereits!"));
}

TEST_F(TypeGridTest, ThatATypeExistsIsSaidBeforeItsNameIsJudged) {
  base_.run("INSERT INTO DECODERS VALUES (NULL, 'A.B', 145)");
  EXPECT_FALSE(typeNew(kType, "A.B"));
  EXPECT_EQ(message(), str("Dieser Decoder exisitiert bereits!"));
}

TEST_F(TypeGridTest, ATypeOfAnotherMakerMayHaveTheSameName) {
  base_.run("INSERT INTO DECODERS VALUES (NULL, 'ECO', 97)");
  EXPECT_TRUE(typeNew(kType, "ECO"));
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT COUNT(*) FROM DECODERS WHERE DC_DECODER = 'ECO'"), str("2"));
}

TEST_F(TypeGridTest, ANameHas1To8Characters) {
  for (const char* name : {"ABCDEFGHI", "A.CDEFGHI"}) {
    EXPECT_FALSE(typeNew(kType, name));
    EXPECT_EQ(message(),
              str("Die Länge der Decoderbezeichnung muß zwischen 1 und 8 Zeichen liegen!"))
        << name;
  }
  EXPECT_FALSE(type(0, kType, ""));
  EXPECT_EQ(message(),
            str("Die Länge der Decoderbezeichnung muß zwischen 1 und 8 Zeichen liegen!"));
  EXPECT_TRUE(typeNew(kType, "ABCDEFGH"));
}

TEST_F(TypeGridTest, EachForbiddenCharacterIsRefused) {
  EXPECT_FALSE(typeNew(kType, "A.B"));
  EXPECT_EQ(message(), str("Die Decoderbezeichnung enthält ungültige Zeichen!"));
  for (const QChar bad : str("\"^°!§$%&/()=?\\`´+*#':.;,<>|~{[]}")) {
    const QByteArray name = (bad + str("AB")).toUtf8();
    EXPECT_FALSE(typeNew(kType, name.constData()));
    EXPECT_EQ(message(), str("Die Decoderbezeichnung enthält ungültige Zeichen!"))
        << name.toStdString();
  }
}

// ---- Description files --------------------------------------------------------------------------

TEST_F(TypeGridTest, ANewTypeGetsACopyOfTheMakersDefaultFile) {
  write("Zimo/Default.dec", "maker");
  write("Default.DEC", "common");
  ASSERT_TRUE(typeNew(kType, "MX5"));
  EXPECT_EQ(read("Zimo/MX5.dec"), "-") << "not before the row is stored";
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(read("Zimo/MX5.dec"), "maker");
}

TEST_F(TypeGridTest, WithoutAMakersDefaultFileItIsTheCommonOne) {
  write("Default.dec", "common");
  QFile::setPermissions(path("Default.dec"), QFile::ReadOwner);
  ASSERT_TRUE(typeNew(kType, "MX5"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(read("Zimo/MX5.dec"), "common");
  EXPECT_TRUE(QFileInfo(path("Zimo/MX5.dec")).permissions() & QFile::WriteOwner);
}

TEST_F(TypeGridTest, ADescriptionFileThatExistsIsLeftAlone) {
  write("Zimo/mx5.DEC", "mine");
  write("default.dec", "common");
  ASSERT_TRUE(typeNew(kType, "MX5"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(read("Zimo/mx5.DEC"), "mine");
  EXPECT_EQ(read("Zimo/MX5.dec"), "-");
}

TEST_F(TypeGridTest, WithoutAnyDefaultFileOrFolderThereIsSimplyNone) {
  ASSERT_TRUE(typeNew(kType, "MX5"));
  EXPECT_TRUE(grid_->storeRow());
  show({97, str("Adler")});
  write("default.dec", "common");
  ASSERT_TRUE(typeNew(kType, "MX5"));
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_TRUE(isQuiet());
  EXPECT_FALSE(QFile::exists(path("Adler")));
}

TEST_F(TypeGridTest, ARenamedTypeLeavesItsFileBehindAndTheUserIsAsked) {
  write("Zimo/MX1.dec", "1");
  EXPECT_FALSE(type(1, kType, "MX3"));
  EXPECT_EQ(message(), str("Die Beschreibungsdatei \"MX1.dec\" behält ihren Namen und wird dann "
                           "nicht mehr gefunden.\nDecodertyp trotzdem umbenennen?"));
  EXPECT_EQ(cell(1, kType), str("MX1"));
  prompt_.answers = {Answer::Yes};
  EXPECT_TRUE(type(1, kType, "MX3"));
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_EQ(read("Zimo/MX1.dec"), "1");
  EXPECT_EQ(read("Zimo/MX3.dec"), "-");
}

TEST_F(TypeGridTest, ARenamingToAFileThatExistsIsNotAskedFor) {
  write("Zimo/MX1.dec", "1");
  write("Zimo/MX3.dec", "3");
  EXPECT_TRUE(type(1, kType, "MX3"));
  EXPECT_TRUE(isQuiet());
}

// ---- Deleting -----------------------------------------------------------------------------------

TEST_F(TypeGridTest, ATypeOfMaker0IsNotDeletedWhetherItIsUsedOrNot) {
  base_.run("INSERT INTO LOCO_DAT (DC_ADR, DC_MANUF, DC_DECODER) VALUES (3, 0, 'Rest')");
  show({0, str("Standard")});
  EXPECT_FALSE(grid_->deleteRow(0));
  EXPECT_EQ(message(), str("Dieser Eintrag darf nicht gelöscht werden!"));
}

TEST_F(TypeGridTest, ATypeThatAVehicleUsesIsRefusedBeforeAnyQuestion) {
  vehicleWith("MX1");
  write("Zimo/MX1.dec", "1");
  prompt_.answers = {Answer::Yes};
  EXPECT_FALSE(grid_->deleteRow(1));
  EXPECT_EQ(message(), str("Es gibt noch Fahrzeuge mit diesem Decoder!"));
  EXPECT_EQ(read("Zimo/MX1.dec"), "1");
  EXPECT_EQ(stored("SELECT COUNT(*) FROM DECODERS"), str("5"));
}

TEST_F(TypeGridTest, DeletingAsksAndTakesTheFileAlong) {
  write("Zimo/mx1.dec", "1");
  prompt_.answers = {Answer::Yes};
  EXPECT_TRUE(grid_->deleteRow(1));
  EXPECT_EQ(message(), str("Decoder und Beschreibungsdatei wirklich löschen?"));
  EXPECT_EQ(read("Zimo/mx1.dec"), "-");
  EXPECT_EQ(column(kType), str("MX9 MX2"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM DECODERS WHERE DC_DECODER = 'MX1'"), str("1"));
}

TEST_F(TypeGridTest, NoKeepsRowAndFile) {
  write("Zimo/MX1.dec", "1");
  prompt_.answers = {Answer::No};
  EXPECT_FALSE(grid_->deleteRow(1));
  EXPECT_EQ(column(kType), str("MX9 MX1 MX2"));
  EXPECT_EQ(read("Zimo/MX1.dec"), "1");
}

TEST_F(TypeGridTest, AMissingFileIsNoHindrance) {
  prompt_.answers = {Answer::Yes};
  EXPECT_TRUE(grid_->deleteRow(1));
  EXPECT_EQ(prompt_.shown.size(), 1);
}

TEST_F(TypeGridTest, ATypeThatCouldNotBeDeletedKeepsItsFile) {
  write("Zimo/MX1.dec", "1");
  base_.run("CREATE TRIGGER no BEFORE DELETE ON DECODERS BEGIN SELECT RAISE(ABORT, 'nein'); END");
  prompt_.answers = {Answer::Yes};
  EXPECT_FALSE(grid_->deleteRow(1));
  EXPECT_TRUE(prompt_.shown.last().contains(str("nein")));
  EXPECT_EQ(read("Zimo/MX1.dec"), "1");
}

TEST_F(TypeGridTest, ANameThatLeadsOutOfTheFolderTouchesNothing) {
  base_.run("INSERT INTO DECODERS VALUES (0, '../X', 145)");
  write("X.dec", "x");
  grid_->open(typesQuery(145));
  prompt_.answers = {Answer::Yes};
  EXPECT_TRUE(grid_->deleteRow(0));
  EXPECT_EQ(read("X.dec"), "x");
}

}  // namespace
}  // namespace lokari
