#include "decoder/dec_import.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "support/scripted_prompt.h"
#include "support/test_database.h"

namespace lokari {
namespace {

const QByteArray kDescription("[MX640]\r\nMANUFACTURER=145\r\nCV_2=Anfahrspannung\r\n");

QString str(const char* text) {
  return QString::fromUtf8(text);
}

class DecImportTest : public ::testing::Test {
 protected:
  DecImportTest() {
    base_.clearLists();
    base_.run("INSERT INTO DCMANUFS VALUES (1, 0, 'Standard'), (2, 145, 'Zimo'), (3, 13, 'Eigen')");
    EXPECT_TRUE(QDir(app_.path()).mkpath(str("Zimo")));
    prompt_.answers = {Answer::Ok};
  }

  QString place(const char* name) const { return app_.filePath(str(name)); }
  QString source(const char* name) const { return elsewhere_.filePath(str(name)); }

  static void write(const QString& path, const QByteArray& data) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    file.write(data);
  }
  static QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
  }
  QStringList types() {
    QStringList rows;
    base_.open().read(str("SELECT DC_MANUF || ' ' || DC_DECODER FROM DECODERS ORDER BY 1"), {},
                      [&rows](const QSqlQuery& row) { rows << row.value(0).toString(); });
    return rows;
  }

  /// Imports a file under a name as the file dialog gives it.
  void import(const QString& name) {
    prompt_.fileNames = {name};
    mnuImpDec({prompt_, base_.open(), app_.path(), [this](const QList<Maker>& makers) {
                 offered_ << static_cast<int>(makers.size());
                 return chosen_;
               }});
  }
  /// Writes a description and imports it.
  void import(const char* name, const QByteArray& text) {
    write(source(name), text);
    import(source(name));
  }

  test::TestDatabase base_;
  test::ScriptedPrompt prompt_;
  QTemporaryDir app_;
  QTemporaryDir elsewhere_;
  std::optional<int> chosen_;
  QList<int> offered_;  ///< how many makers, each time the user was asked
};

TEST_F(DecImportTest, PutsTheFileIntoItsMakersFolderAndTheTypeIntoTheDatabase) {
  import("mx640.dec", kDescription);
  EXPECT_EQ(prompt_.shown, QStringList{str("Decodertyp MX640 (Hersteller Zimo) anlegen?")});
  EXPECT_EQ(read(place("Zimo/mx640.dec")), kDescription);
  EXPECT_EQ(types(), QStringList{"145 MX640"});
  EXPECT_TRUE(offered_.isEmpty());
}

TEST_F(DecImportTest, AFileThatIsNotCalledLikeItsTypeIsOfferedUnderTheNameItNeeds) {
  prompt_.answers = {Answer::Ok, Answer::Yes};
  import("herunter.dec", kDescription);
  ASSERT_EQ(prompt_.shown.size(), 2);
  EXPECT_EQ(prompt_.shown[1],
            str("Die Beschreibung heißt herunter.dec, der Decodertyp aber MX640: So findet ihn das "
                "Decoderfenster nicht.\rEine Kopie unter dem Namen MX640.dec anlegen?"));
  EXPECT_EQ(read(place("Zimo/herunter.dec")), kDescription);
  EXPECT_EQ(read(place("Zimo/MX640.dec")), kDescription);
  prompt_.shown.clear();
  prompt_.answers = {Answer::Ok, Answer::Yes};
  import("herunter.dec", kDescription);
  EXPECT_EQ(prompt_.shown.size(), 1) << "the type is found now";
}

TEST_F(DecImportTest, ACopyThatNobodyWantsIsNotMade) {
  import("herunter.dec", kDescription);
  EXPECT_EQ(prompt_.shown.size(), 2);
  EXPECT_EQ(read(place("Zimo/MX640.dec")), "missing");
  EXPECT_EQ(types(), QStringList{"145 MX640"});
}

TEST_F(DecImportTest, TheFileDialogHasItsTitleAndFilter) {
  import(QString());
  ASSERT_EQ(prompt_.fileQuestions.size(), 1);
  EXPECT_EQ(prompt_.fileQuestions[0].title, str("Decoderbeschreibungsdatei importieren"));
  EXPECT_EQ(prompt_.fileQuestions[0].filter,
            str("Decodertypdateien (*.dec)|*.dec|Alle Dateien (*.*)|*.*"));
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(DecImportTest, ANameWithoutADotGetsTheExtension) {
  write(source("mx640.dec"), kDescription);
  import(source("mx640"));
  EXPECT_EQ(types(), QStringList{"145 MX640"});
  EXPECT_EQ(read(place("Zimo/mx640.dec")), kDescription);
}

TEST_F(DecImportTest, AMissingFileIsNamedAsItWasLookedFor) {
  import(source("fehlt"));
  EXPECT_EQ(prompt_.shown, QStringList{str("Decoderdatei ") + source("fehlt.DEC") +
                                       str(" nicht gefunden\roder Zugriff nicht möglich!")});
}

TEST_F(DecImportTest, AFolderIsNoFile) {
  ASSERT_TRUE(QDir(elsewhere_.path()).mkpath(str("ordner.dec")));
  import(source("ordner.dec"));
  EXPECT_TRUE(prompt_.shown.first().endsWith(str("oder Zugriff nicht möglich!")));
}

TEST_F(DecImportTest, AFileWithoutATypeNameIsRefused) {
  import("mx640.dec", "MANUFACTURER=145\r\nCV_2=x\r\n");
  EXPECT_EQ(prompt_.shown, QStringList{str("Decoderbezeichnung in Decoderdatei nicht gefunden!")});
  EXPECT_TRUE(types().isEmpty());
  EXPECT_FALSE(QFile::exists(place("Zimo/mx640.dec")));
}

TEST_F(DecImportTest, AHugeFileIsNoDescription) {
  import("abbild.dec", "[MX640]\r\n" + QByteArray(5 << 20, ' '));
  EXPECT_EQ(prompt_.shown, QStringList{str("Decoderbezeichnung in Decoderdatei nicht gefunden!")});
}

TEST_F(DecImportTest, WithoutANumberTheUserChoosesTheMaker) {
  chosen_ = 13;
  import("bastler.dec", "[Bastler]\r\n");
  EXPECT_EQ(offered_, QList<int>{3});
  EXPECT_EQ(prompt_.shown, QStringList{str("Decodertyp Bastler (Hersteller Eigen) anlegen?")});
  EXPECT_EQ(types(), QStringList{"13 Bastler"});
  // Nobody had a folder for this maker yet.
  EXPECT_EQ(read(place("Eigen/bastler.dec")), QByteArray("[Bastler]\r\n"));
}

TEST_F(DecImportTest, AnUnknownNumberIsToldBeforeTheChoice) {
  chosen_ = 145;
  import("x1.dec", "[X1]\r\nMANUFACTURER=77\r\n");
  EXPECT_EQ(prompt_.shown, (QStringList{str("Decoderhersteller 77 nicht gefunden.\r"
                                            "Bitte passenden Hersteller wählen."),
                                        str("Decodertyp X1 (Hersteller Zimo) anlegen?")}));
  EXPECT_EQ(types(), QStringList{"145 X1"});
}

TEST_F(DecImportTest, ANumberBeyondAllNumbersIsUnknownAsWell) {
  import("x.dec", "[X1]\r\nMANUFACTURER=99999999999999999999\r\n");
  EXPECT_EQ(prompt_.shown,
            QStringList{str("Decoderhersteller 99999999999999999999 nicht gefunden.\r"
                            "Bitte passenden Hersteller wählen.")});
  EXPECT_EQ(offered_.size(), 1);
}

TEST_F(DecImportTest, CancellingTheChoiceEndsTheCommand) {
  import("x.dec", "[X1]\r\n");
  EXPECT_EQ(offered_.size(), 1);
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_TRUE(types().isEmpty());
}

TEST_F(DecImportTest, AnExistingDescriptionIsReplacedOnlyAfterAQuestion) {
  write(place("Zimo/MX640.DEC"), "alt");
  import("mx640.dec", kDescription);
  EXPECT_EQ(prompt_.shown, QStringList{str("Decodertyp MX640 (Hersteller Zimo) existiert bereits.\r"
                                           "Überschreiben?")});
  // One file in any case, not two.
  EXPECT_EQ(read(place("Zimo/MX640.DEC")), kDescription);
  EXPECT_FALSE(QFile::exists(place("Zimo/mx640.dec")));
}

TEST_F(DecImportTest, CancellingTheQuestionChangesNothing) {
  write(place("Zimo/mx640.dec"), "alt");
  prompt_.answers = {Answer::Cancel};
  import("mx640.dec", kDescription);
  EXPECT_EQ(read(place("Zimo/mx640.dec")), QByteArray("alt"));
  EXPECT_TRUE(types().isEmpty());
}

TEST_F(DecImportTest, AFileInItsPlaceAlreadyMakesOnlyTheRow) {
  write(place("Zimo/MX640.dec"), kDescription);
  const QDateTime before = QFileInfo(place("Zimo/MX640.dec")).lastModified();
  import(place("ZIMO/mx640.DEC"));
  EXPECT_EQ(prompt_.shown,
            QStringList{str("Decodertyp MX640 (Hersteller Zimo) in Datenbank anlegen?")});
  EXPECT_EQ(types(), QStringList{"145 MX640"});
  EXPECT_EQ(read(place("Zimo/MX640.dec")), kDescription);
  EXPECT_EQ(QFileInfo(place("Zimo/MX640.dec")).lastModified(), before);
  EXPECT_EQ(QDir(place("Zimo")).entryList(QDir::Files).size(), 1);
}

TEST_F(DecImportTest, AFileReachedByALinkIsInItsPlaceToo) {
  write(place("Zimo/MX640.dec"), kDescription);
  ASSERT_TRUE(QFile::link(place("Zimo"), source("Link")));
  import(source("Link/MX640.dec"));
  EXPECT_EQ(prompt_.shown,
            QStringList{str("Decodertyp MX640 (Hersteller Zimo) in Datenbank anlegen?")});
  EXPECT_EQ(read(place("Zimo/MX640.dec")), kDescription);
}

TEST_F(DecImportTest, ATypeThatIsThereIsNotAddedAgain) {
  base_.run("INSERT INTO DECODERS VALUES (4, 'mx640', 145)");
  import("mx640.dec", kDescription);
  EXPECT_EQ(types(), QStringList{"145 mx640"});
  EXPECT_EQ(read(place("Zimo/mx640.dec")), kDescription);
}

TEST_F(DecImportTest, TheFileKeepsItsOwnStem) {
  import("Mx640.v2.dec", kDescription);
  EXPECT_EQ(read(place("Zimo/Mx640.v2.dec")), kDescription);
  EXPECT_EQ(types(), QStringList{"145 MX640"});
}

TEST_F(DecImportTest, AnotherExtensionBecomesDec) {
  import("mx640.txt", kDescription);
  EXPECT_EQ(read(place("Zimo/mx640.dec")), kDescription);
}

TEST_F(DecImportTest, ATypeNameWithAQuoteIsAName) {
  import("ob.dec", "[O'B]\r\nMANUFACTURER=145\r\n");
  EXPECT_EQ(types(), QStringList{"145 O'B"});
}

TEST_F(DecImportTest, ATypeThatTheDatabaseRefusesReplacesNoFile) {
  write(place("Zimo/lang.dec"), "alt");
  import("lang.dec", "[MX64000000]\r\nMANUFACTURER=145\r\n");
  EXPECT_EQ(prompt_.shown.last(),
            str("Der Text ist zu lang für das Feld Decodertyp (höchstens 8 Zeichen)."));
  EXPECT_EQ(read(place("Zimo/lang.dec")), QByteArray("alt"));
}

TEST_F(DecImportTest, AFileThatCannotBeWrittenMakesNoRow) {
  // A file where the maker's folder ought to be.
  write(place("Eigen"), "im Weg");
  import("x.dec", "[X1]\r\nMANUFACTURER=13\r\n");
  EXPECT_EQ(prompt_.shown.last(),
            str("Decoderdatei ") + place("Eigen/x.dec") + str(" kann nicht geschrieben werden!"));
  EXPECT_TRUE(types().isEmpty());
}

TEST_F(DecImportTest, AMakersNameCannotLeadOutOfTheFolder) {
  base_.run(
      "INSERT INTO DCMANUFS VALUES (NULL, 66, '..'), (NULL, 67, 'a/../..'), (NULL, 68, NULL)");
  for (const char* number : {"66", "67", "68"}) {
    prompt_.shown.clear();
    import("x.dec", QByteArray("[X1]\r\nMANUFACTURER=") + number);
    ASSERT_EQ(prompt_.shown.size(), 1) << number;
    EXPECT_TRUE(prompt_.shown[0].endsWith(str("ergibt keinen Ordner für die Decoderdatei!")));
  }
  EXPECT_TRUE(types().isEmpty());
}

}  // namespace
}  // namespace lokari
