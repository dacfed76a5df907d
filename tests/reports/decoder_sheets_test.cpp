// The decoder sheets, read back from their PDF: which records give one, what it says, and how it
// goes on over pages.
#include "reports/decoder_sheets.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QProcess>

#include "pdf_pages.h"
#include "reports/report_error.h"
#include "support/test_database.h"

namespace lokari {
namespace {

const QString kAll = QStringLiteral("SELECT * FROM LOCO_DAT ORDER BY DC_ADR");

class DecoderSheetsTest : public ::testing::Test {
 protected:
  DecoderSheetsTest() {
    database.clearLists();
    database.run("DELETE FROM LOCO_DAT");
    database.run("INSERT INTO DCMANUFS (DC_MANUF, DC_MANUF_TEXT) VALUES (145, 'Zimo')");
    describe("CV_3=Beschleunigung,0-255,2\nCV_30=Dimmen,0-255,40\nCV_31=Licht,0-3,1\n");
  }

  void describe(const QByteArray& lines) {
    QDir().mkpath(database.folder() + QStringLiteral("/Zimo"));
    QFile file(database.folder() + QStringLiteral("/Zimo/ZX100.dec"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("SPEEDTABLE=N\nCONSADDRESS=N\n" + lines);
  }

  /// A vehicle with the decoder ZX100 and the CV values "30=7,31=1" in its first set.
  void add(int address, const char* name, const QByteArray& values = {}) {
    database.addVehicle(address, QStringLiteral("Anlage"), QString::fromUtf8(name));
    set(address, "DC_MANUF", 145);
    set(address, "DC_DECODER", QStringLiteral("ZX100"));
    if (!values.isEmpty()) set(address, "DC_CV", array(values));
  }

  void set(int address, const QByteArray& column, const QVariant& value) {
    database.run("UPDATE LOCO_DAT SET " + column + " = ? WHERE DC_ADR = ?", {value, address});
  }

  static QByteArray array(const QByteArray& values) {
    QByteArray result(4865, '\0');
    for (const QByteArray& value : values.split(',')) {
      const QList<QByteArray> parts = value.split('=');
      result[parts[0].toInt() - 1] = static_cast<char>(parts[1].toInt());
    }
    return result;
  }

  static QByteArray picture(QSize size = QSize(40, 20)) {
    QByteArray encoded;
    QBuffer buffer(&encoded);
    buffer.open(QIODevice::WriteOnly);
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    EXPECT_TRUE(image.save(&buffer, "PNG"));
    return encoded;
  }

  DecoderSheets sheets() {
    return DecoderSheets({.database = database.open(),
                          .query = kAll,
                          .folders = {database.folder()},
                          .date = QDate(2026, 3, 1),
                          .printing = [this](const QString& address) { printing << address; }});
  }

  void print(QPageSize::PageSizeId size = QPageSize::A4) {
    DecoderSheets document = sheets();
    ASSERT_TRUE(pages.print(document, size));
  }

  test::TestDatabase database;
  test::PdfPages pages;
  QStringList printing;
};

#define EXPECT_HAS(text, part) \
  EXPECT_TRUE((text).contains(QStringLiteral(part))) << (text).toStdString()
#define EXPECT_HAS_NOT(text, part) \
  EXPECT_FALSE((text).contains(QStringLiteral(part))) << (text).toStdString()

TEST_F(DecoderSheetsTest, HeadTellsTheVehicleInItsOrderAndInBold) {
  add(3, "E103");
  set(3, "ST_GROUP", 7);
  set(3, "FZ_FTYPE", QStringLiteral("Ellok"));
  set(3, "FZ_LNAME", QStringLiteral("Schnellzuglok in Weiß"));
  print();
  const QStringList texts = pages.texts();
  ASSERT_EQ(texts.size(), 1);
  qsizetype at = 0;
  for (const char* field :
       {"Sammlung: Anlage", "Adresse: 3", "Kurzbezeichnung: E103", "Gruppe: 7",
        "Fahrzeugtype: Ellok", "Decoder: Zimo ZX100", "Langbezeichnung: Schnellzuglok in Weiß"}) {
    at = texts[0].indexOf(QString::fromUtf8(field), at);
    ASSERT_GE(at, 0) << field << "\n" << texts[0].toStdString();
  }
  const QString bold = pages.boldTexts().join(u'|');
  for (const char* part : {"Sammlung:", "Anlage", "Adresse:", "Kurzbezeichnung:", "E103",
                           "Gruppe:", "Fahrzeugtype:", "Ellok", "Decoder:", "Zimo ZX100",
                           "Langbezeichnung:", "Schnellzuglok in Weiß"}) {
    EXPECT_TRUE(bold.contains(QString::fromUtf8(part))) << part << " in " << bold.toStdString();
  }
}

TEST_F(DecoderSheetsTest, LegendTellsOnlyTheSignsThatOccur) {
  const QString unread = QStringLiteral("nicht aus dem Decoder gelesen oder geprüft");
  const QString failed = QStringLiteral("Lesen oder Schreiben misslungen");
  add(3, "E103", "3=2,30=40,31=1");
  print();
  EXPECT_TRUE(pages.texts().value(0).contains(unread)) << "nobody ever read it";
  EXPECT_FALSE(pages.texts().value(0).contains(failed));
  QByteArray marks(4865, '1');
  set(3, "DC_CV_ST", marks);
  print();
  EXPECT_FALSE(pages.texts().value(0).contains(unread)) << "all are verified";
  EXPECT_FALSE(pages.texts().value(0).contains(failed));
  marks[29] = '2';
  set(3, "DC_CV_ST", marks);
  print();
  EXPECT_FALSE(pages.texts().value(0).contains(unread));
  EXPECT_TRUE(pages.texts().value(0).contains(failed));
}

TEST_F(DecoderSheetsTest, SignStandsBesideItsValueAlone) {
  add(3, "E103", "3=2,30=40,31=1");
  const auto picture = [&](int failedCv) {
    QByteArray marks(4865, '1');
    if (failedCv > 0) marks[failedCv - 1] = '2';
    set(3, "DC_CV_ST", marks);
    print();
    QProcess process;
    process.start(QStringLiteral("pdftoppm"),
                  {QStringLiteral("-r"), QStringLiteral("100"), QStringLiteral("-singlefile"),
                   QStringLiteral("-png"), pages.path()});
    EXPECT_TRUE(process.waitForFinished());
    return QImage::fromData(process.readAllStandardOutput());
  };
  const QImage clean = picture(0);
  const auto changed = [&clean](const QImage& other) {
    QRect place;
    for (int y = 0; y < clean.height() * 9 / 10; ++y) {
      for (int x = 0; x < clean.width(); ++x) {
        if (clean.pixel(x, y) != other.pixel(x, y)) place |= QRect(x, y, 1, 1);
      }
    }
    return place;
  };
  // CV 3 leads the left half, CV 30 the right one.
  const QRect third = changed(picture(3));
  const QRect thirtieth = changed(picture(30));
  ASSERT_FALSE(third.isEmpty());
  ASSERT_FALSE(thirtieth.isEmpty());
  EXPECT_LT(third.width(), 12) << "one small sign and nothing else";
  EXPECT_LT(third.height(), 12);
  EXPECT_LT(third.right(), clean.width() / 2);
  EXPECT_GT(thirtieth.left(), clean.width() / 2);
}

TEST_F(DecoderSheetsTest, SheetWithoutADescriptionSaysSoInItsFoot) {
  const QString missing = QStringLiteral("Zu diesem Decoder fehlt die Beschreibungsdatei");
  add(3, "E103");
  print();
  EXPECT_FALSE(pages.texts().value(0).contains(missing));
  set(3, "DC_DECODER", QStringLiteral("NIRGENDS"));
  print();
  EXPECT_TRUE(pages.texts().value(0).contains(missing)) << pages.texts().value(0).toStdString();
}

TEST_F(DecoderSheetsTest, LettersAreNotJoined) {
  describe("CV_3=Aufloesung der Schifffahrt,0-255,2\n");
  add(3, "Vlies");
  print();
  EXPECT_HAS(pages.texts().value(0), "Aufloesung der Schifffahrt");
}

TEST_F(DecoderSheetsTest, EmptyFieldsAreBlank) {
  add(3, "E103");
  database.run("UPDATE LOCO_DAT SET DC_COLL = NULL, ST_SNAME = NULL, DC_MANUF = NULL");
  print();
  const QString text = pages.texts().value(0);
  EXPECT_HAS(text, "Sammlung: Adresse: 3");
  EXPECT_HAS(text, "Kurzbezeichnung: Gruppe:\n");
  EXPECT_HAS(text, "Decoder: ZX100");
}

TEST_F(DecoderSheetsTest, TableTellsNumberNameDefaultAndValueInTwoHalves) {
  add(3, "E103", "3=2,7=1,29=6,30=7,31=1");
  print();
  const QString text = pages.texts().value(0);
  // Five entries: three on the left, two on the right.
  EXPECT_HAS(text, "CV3 Beschleunigung (2) 2 CV30 Dimmen (40) 7\n");
  EXPECT_HAS(text, "CV7 Versionsnummer (0) 1 CV31 Licht (1) 1\n");
  EXPECT_HAS(text, "CV29 Grundeinstellungen (0) 6\n");
}

TEST_F(DecoderSheetsTest, ValueIsBoldWhereItDiffersFromItsDefault) {
  add(3, "E103", "3=2,7=0,29=66,30=77,31=1");
  print();
  const QStringList bold = pages.boldTexts();
  EXPECT_TRUE(bold.contains(QStringLiteral("66")));
  EXPECT_TRUE(bold.contains(QStringLiteral("77")));
  EXPECT_FALSE(bold.contains(QStringLiteral("2")));
  EXPECT_FALSE(bold.contains(QStringLiteral("0")));
  EXPECT_FALSE(bold.contains(QStringLiteral("Dimmen")));
  EXPECT_HAS(pages.fonts(), "Bold");
}

TEST_F(DecoderSheetsTest, SetInUseGivesTheValues) {
  add(3, "E103", "30=11");
  set(3, "DC_CV_NAME", QStringLiteral("Analog"));
  set(3, "DC_CV_2", array("30=33"));
  set(3, "DC_CV_NAME_2", QStringLiteral("Bergbahn"));
  set(3, "DC_DEC_VER", QStringLiteral("Bergbahn"));
  print();
  EXPECT_HAS(pages.texts().value(0), "Dimmen (40) 33");
  EXPECT_HAS(pages.texts().value(0), "CV-Satz „Bergbahn“, Stand 01.03.2026");
}

TEST_F(DecoderSheetsTest, FirstSetGivesTheValuesWhenNoneHasTheName) {
  add(3, "E103", "30=11");
  set(3, "DC_CV_1", array("30=22"));
  for (const char* column :
       {"DC_CV_NAME", "DC_CV_NAME_1", "DC_CV_NAME_2", "DC_CV_NAME_3", "DC_CV_NAME_4"}) {
    set(3, column, QString::fromUtf8(column));
  }
  set(3, "DC_DEC_VER", QStringLiteral("fort"));
  print();
  EXPECT_HAS(pages.texts().value(0), "Dimmen (40) 11");
}

TEST_F(DecoderSheetsTest, SetWithoutANameIsNotTheOneOfARecordThatNamesNone) {
  add(3, "E103", "30=11");
  set(3, "DC_CV_NAME", QStringLiteral("Analog"));
  set(3, "DC_CV_1", array("30=22"));
  print();
  EXPECT_HAS(pages.texts().value(0), "Dimmen (40) 11");
  EXPECT_HAS(pages.texts().value(0), "CV-Satz „Analog“");
}

TEST_F(DecoderSheetsTest, SetWithoutANameIsCalledByItsNumber) {
  add(3, "E103");
  print();
  EXPECT_HAS(pages.texts().value(0), "CV-Satz „Set 1“");
}

TEST_F(DecoderSheetsTest, NullArrayIsZero) {
  add(3, "E103");
  print();
  EXPECT_HAS(pages.texts().value(0), "Dimmen (40) 0");
}

TEST_F(DecoderSheetsTest, ShortArrayGoesOnWithZeros) {
  add(3, "E103");
  set(3, "DC_CV", QByteArray(30, '\x09'));
  print();
  EXPECT_HAS(pages.texts().value(0), "Dimmen (40) 9");
  EXPECT_HAS(pages.texts().value(0), "Licht (1) 0");
}

TEST_F(DecoderSheetsTest, OnlyVehiclesWithADecoderGiveASheet) {
  for (int address = 1; address <= 6; ++address) add(address, "Lok");
  set(1, "DC_TYPE", 2);
  set(2, "DC_TYPE", 3);
  set(3, "DC_TYPE", QVariant());
  set(4, "DC_DECODER", QVariant());
  print();
  EXPECT_EQ(printing, QStringList({QStringLiteral("5"), QStringLiteral("6")}));
  const QStringList texts = pages.texts();
  ASSERT_EQ(texts.size(), 2);
  EXPECT_HAS(texts[0], "Adresse: 5");
  EXPECT_HAS(texts[1], "Adresse: 6");
}

TEST_F(DecoderSheetsTest, NoSheetAtAllIsTold) {
  add(3, "Wagen");
  set(3, "DC_TYPE", 2);
  DecoderSheets document = sheets();
  try {
    pages.print(document);
    FAIL();
  } catch (const ReportError& error) {
    EXPECT_EQ(
        error.text(),
        QStringLiteral("In der Auswahl ist kein Fahrzeug mit Decoder: Es gibt nichts zu drucken!"));
  }
  EXPECT_FALSE(QFile::exists(pages.path()));
}

TEST_F(DecoderSheetsTest, MissingDescriptionLeavesTheHeadAlone) {
  add(3, "E103");
  set(3, "DC_DECODER", QStringLiteral("ZX999"));
  print();
  const QString text = pages.texts().value(0);
  EXPECT_HAS(text, "Decoder: Zimo ZX999");
  EXPECT_HAS_NOT(text, "Vorgabe\n");
  EXPECT_HAS_NOT(text, "Versionsnummer");
}

TEST_F(DecoderSheetsTest, LongTableGoesOnBelowARepeatedHead) {
  QByteArray lines;
  for (int cv = 100; cv < 398; ++cv) {
    lines += "CV_" + QByteArray::number(cv) + "=Wert " + QByteArray::number(cv) + "\n";
  }
  describe(lines);
  add(3, "E103");
  add(4, "V200");
  print();
  // 300 entries, 150 a half, 53 rows a page.
  const QStringList texts = pages.texts();
  ASSERT_EQ(texts.size(), 6);
  for (int page = 0; page < 6; ++page) {
    EXPECT_HAS(texts[page], "Sammlung: Anlage");
    EXPECT_HAS(texts[page], "CV Bezeichnung Vorgabe Wert CV Bezeichnung Vorgabe Wert");
    EXPECT_TRUE(texts[page].contains(QStringLiteral("Seite %1 von 3").arg(page % 3 + 1)));
    EXPECT_TRUE(texts[page].contains(page < 3 ? QStringLiteral("E103") : QStringLiteral("V200")));
  }
  EXPECT_HAS(texts[0], "CV7 Versionsnummer (0) 0 CV248 Wert 248 (0) 0\n");
  EXPECT_HAS(texts[0], "CV150 Wert 150 (0) 0 CV300 Wert 300 (0) 0\n");
  EXPECT_HAS(texts[1], "CV151 Wert 151 (0) 0 CV301 Wert 301 (0) 0\n");
  EXPECT_HAS(texts[2], "CV247 Wert 247 (0) 0 CV397 Wert 397 (0) 0\n");
}

TEST_F(DecoderSheetsTest, LetterTakesFewerRows) {
  QByteArray lines;
  for (int cv = 100; cv < 204; ++cv) lines += "CV_" + QByteArray::number(cv) + "=Wert\n";
  describe(lines);
  add(3, "E103");
  print(QPageSize::A4);
  EXPECT_EQ(pages.texts().size(), 1);
  EXPECT_HAS(pages.info(), "595 x 842 pts (A4)");
  print(QPageSize::Letter);
  EXPECT_EQ(pages.texts().size(), 2);
  EXPECT_HAS(pages.info(), "612 x 792 pts (letter)");
}

TEST_F(DecoderSheetsTest, LongNamesAreCutWithAnEllipsis) {
  describe("CV_30=" + QByteArray(90, 'N') + ",0-255,40\n");
  add(3, "E103", "30=40");
  set(3, "FZ_FTYPE", QString(50, u'W'));
  print();
  const QString text = pages.texts().value(0);
  EXPECT_HAS(text, "NNN… (40) 40");
  EXPECT_HAS(text, "WWW…\n");
}

TEST_F(DecoderSheetsTest, LongFieldsOfTheDatabaseFitBesideAPicture) {
  database.run("UPDATE DCMANUFS SET DC_MANUF_TEXT = 'Elektronikwerk Vogtland'");
  add(3, "E103WW");
  set(3, "DC_COLL", QStringLiteral("Clubanlage Nord"));
  set(3, "DC_DECODER", QStringLiteral("MMMMMMMM"));
  set(3, "FZ_FTYPE", QStringLiteral("Elektrolokomotive"));
  set(3, "FZ_LNAME", QStringLiteral("Schnellzuglokomotive mit Schlepptender 9"));
  set(3, "MD_PIC", picture());
  print();
  const QString text = pages.texts().value(0);
  EXPECT_HAS(text, "Sammlung: Clubanlage Nord Adresse: 3");
  EXPECT_HAS(text, "Decoder: Elektronikwerk Vogtland MMMMMMMM\n");
  EXPECT_HAS(text, "Langbezeichnung: Schnellzuglokomotive mit Schlepptender 9\n");
}

TEST_F(DecoderSheetsTest, PictureStandsInTheHeadAndABrokenOneDoesNot) {
  add(3, "E103");
  set(3, "MD_PIC", picture());
  print();
  EXPECT_EQ(pages.pictures(), QStringList(QStringLiteral("40x20")));
  set(3, "MD_PIC", QByteArray("kein Bild"));
  print();
  EXPECT_EQ(pages.pictures(), QStringList());
}

TEST_F(DecoderSheetsTest, PictureIsInTheFileOnceAndNoLargerThanPaperCanShow) {
  QByteArray lines;
  for (int cv = 100; cv < 300; ++cv) lines += "CV_" + QByteArray::number(cv) + "=Wert\n";
  describe(lines);
  add(3, "E103");
  set(3, "MD_PIC", picture(QSize(4000, 2000)));
  print();
  EXPECT_EQ(pages.texts().size(), 2);
  EXPECT_EQ(pages.pictures(), QStringList(QStringLiteral("622x311")));
}

TEST_F(DecoderSheetsTest, ProgressTellsEachVehicleAndTheWay) {
  add(3, "E103");
  add(4, "V200");
  print();
  EXPECT_EQ(pages.progress.texts,
            QStringList({QStringLiteral("Adresse 3: E103"), QStringLiteral("Adresse 4: V200")}));
  EXPECT_EQ(pages.progress.percents, QList<double>({0, 50, 100}));
}

TEST_F(DecoderSheetsTest, CancelledLeavesTheOldFileAlone) {
  add(3, "E103");
  print();
  add(4, "V200");
  pages.progress.workUntilCancel = 2;
  DecoderSheets document = sheets();
  EXPECT_FALSE(pages.print(document));
  EXPECT_EQ(pages.texts().size(), 1);
}

TEST_F(DecoderSheetsTest, BrokenConditionIsTheStoragesError) {
  DecoderSheets document({.database = database.open(),
                          .query = QStringLiteral("SELECT * FROM LOCO_DAT WHERE  ORDER BY DC_ADR"),
                          .folders = {},
                          .date = {},
                          .printing = {}});
  EXPECT_THROW(pages.print(document), StorageError);
}

}  // namespace
}  // namespace lokari
