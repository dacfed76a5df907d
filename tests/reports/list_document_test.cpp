#include "reports/list_document.h"

#include <QImage>
#include <QPdfWriter>

#include "pdf_pages.h"
#include "reports/print_selection.h"
#include "reports/report_error.h"
#include "support/test_database.h"

namespace lokari {
namespace {

class ListDocumentTest : public ::testing::Test {
 protected:
  ListDocumentTest() {
    database.run("DELETE FROM LOCO_DAT");
    EXPECT_TRUE(QFile::copy(QStringLiteral(LOKARI_TEMPLATES "/repl_ger.rpt"), templateFile()));
  }

  QString templateFile() const { return database.folder() + QStringLiteral("/repl_ger.rpt"); }

  void useTemplate(const QByteArray& text) {
    QFile file(templateFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  void add(int address, const QString& collection, const QString& name, const QString& longName) {
    database.run(
        "INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, ST_SNAME, FZ_LNAME, FZ_FTYPE, DC_DECODER) "
        "VALUES (?, ?, ?, ?, 'Dampflok', 'ZX100')",
        {address, collection.isNull() ? QVariant() : QVariant(collection), name, longName});
  }

  /// Addresses 1 to `count`; each seventh vehicle has a name of several lines.
  void addMany(int count) {
    database.open().transaction([&] { addOneByOne(count); });
  }

  void addOneByOne(int count) {
    for (int address = 1; address <= count; ++address) {
      const QString name =
          QStringLiteral("Anfang%1 ").arg(address) +
          (address % 7 == 0 ? QString("mit vielen Worten ").repeated(8) : QString()) +
          QStringLiteral("Ende%1").arg(address);
      add(address, QStringLiteral("Anlage"), QStringLiteral("L%1").arg(address), name);
    }
  }

  bool print(const QString& formula = {}, QPageSize::PageSizeId size = QPageSize::A4) {
    ListDocument document({.database = database.open(),
                           .templateFile = templateFile(),
                           .formula = formula,
                           .made = QDateTime(QDate(2026, 11, 21), QTime(23, 5))});
    return pdf.print(document, size);
  }

  /// All pages behind one another.
  QString text() { return pdf.texts().join(u'\n'); }

  /// The numbers behind a word, in their order on a page.
  static QList<int> numbers(const QString& page, const QString& word) {
    QList<int> found;
    const QRegularExpression pattern(word + QStringLiteral("(\\d+)"));
    for (const auto& match : pattern.globalMatch(page)) found << match.captured(1).toInt();
    return found;
  }

  test::TestDatabase database;
  test::PdfPages pdf;
};

TEST_F(ListDocumentTest, TitleSelectionDateAndTheVehiclesInTheirOrder) {
  add(3, "Vitrine", "E 10", "Schnellzuglok <blau> & \"alt\"");
  add(17, "Anlage", "V 60", "Rangierlok");
  add(5, "anlage", "Übung", "Größe");
  add(9, {}, "ohne", "Sammlung");
  ASSERT_TRUE(print());
  const QStringList pages = pdf.texts();
  ASSERT_EQ(pages.size(), 1);
  EXPECT_TRUE(pages[0].contains("Fahrzeugliste\n")) << pages[0].toStdString();
  EXPECT_TRUE(pages[0].contains("Auswahl: alle Fahrzeuge"));
  EXPECT_TRUE(pages[0].contains("Fahrzeuge: 4 · Datenbank: TEST.MDB · Stand: 21.11.2026"));
  EXPECT_TRUE(pages[0].contains("TEST.MDB Stand 21.11.2026 Seite 1 von 1"));
  const QRegularExpression rows(
      "Sammlung Adresse Kurzname Langbezeichnung Fahrzeug-Type Decoder\\s+"
      "anlage 5 Übung Größe Dampflok ZX100\\s+"
      "Anlage 17 V 60 Rangierlok Dampflok ZX100\\s+"
      "Vitrine 3 E 10 Schnellzuglok <blau> & \"alt\" Dampflok ZX100\\s+"
      "9 ohne Sammlung Dampflok ZX100");
  EXPECT_TRUE(rows.match(pages[0]).hasMatch()) << pages[0].toStdString();
}

TEST_F(ListDocumentTest, LettersAreNotJoined) {
  add(17, "Auflage", "Vlies", "Auflösung der Schifffahrt, Griff und Hof");
  ASSERT_TRUE(print());
  EXPECT_TRUE(text().contains("Auflösung der Schifffahrt")) << text().toStdString();
  for (const char16_t joined : {u'\xFB00', u'\xFB01', u'\xFB02', u'\xFB03', u'\xFB04'}) {
    EXPECT_FALSE(text().contains(QChar(joined)));
  }
}

TEST_F(ListDocumentTest, ColumnsShowTheirUsualTextsWhole) {
  add(10239, "Schattenbahnhof", "V200.1", "Elektrotriebwagen der Nebenbahn");
  database.run("UPDATE LOCO_DAT SET FZ_FTYPE = 'Elektrotriebwagen', DC_DECODER = 'AT-SND16'");
  for (const QPageSize::PageSizeId size : {QPageSize::A4, QPageSize::Letter}) {
    ASSERT_TRUE(print({}, size));
    EXPECT_TRUE(
        text().contains("Schattenbahnhof 10239 V200.1 Elektrotriebwagen der Nebenbahn "
                        "Elektrotriebwagen AT-SND16"))
        << text().toStdString();
    EXPECT_TRUE(text().contains("Sammlung Adresse Kurzname Langbezeichnung Fahrzeug-Type Decoder"));
  }
}

TEST_F(ListDocumentTest, ATemplateWithoutRoomForAVehicleIsAFaultWithItsLine) {
  add(17, "Anlage", "V 60", "Rangierlok");
  useTemplate("<html><body>\n" + QByteArray("<p>Vorwort</p>\n").repeated(120) +
              "<table>\n{{#fahrzeuge}}\n<tr><td>{{DC_ADR}}</td></tr>\n{{/fahrzeuge}}\n</table>\n"
              "</body></html>\n");
  try {
    print();
    FAIL();
  } catch (const ReportError& error) {
    EXPECT_EQ(error.text(),
              QStringLiteral("Die Vorlage\r%1\rhat einen Fehler in Zeile 123:\rWas über "
                             "dem Abschnitt \"fahrzeuge\" steht, füllt die Seite: Für "
                             "ein Fahrzeug bleibt kein Platz.")
                  .arg(templateFile()));
  }
}

TEST_F(ListDocumentTest, HeadsAreBoldAndVehiclesAreNot) {
  add(17, "Anlage", "V 60", "Rangierlok");
  ASSERT_TRUE(print());
  const QString bold = pdf.boldTexts().join(u' ');
  for (const char* head : {"Fahrzeugliste", "Sammlung", "Adresse", "Kurzname", "Langbezeichnung",
                           "Fahrzeug-Type", "Decoder"}) {
    EXPECT_TRUE(bold.contains(QString::fromUtf8(head))) << head;
  }
  for (const char* value : {"Auswahl", "Anlage", "17", "V 60", "Rangierlok", "Seite"}) {
    EXPECT_TRUE(text().contains(QString::fromUtf8(value))) << value;
    EXPECT_FALSE(bold.contains(QString::fromUtf8(value))) << value;
  }
  EXPECT_TRUE(pdf.fonts().contains("-Bold"));
}

TEST_F(ListDocumentTest, EachPageRepeatsTheHeadsAndCountsItself) {
  addMany(150);
  ASSERT_TRUE(print());
  const QStringList pages = pdf.texts();
  ASSERT_GT(pages.size(), 2);
  for (qsizetype i = 0; i < pages.size(); ++i) {
    EXPECT_EQ(pages[i].count("Sammlung Adresse Kurzname Langbezeichnung"), 1);
    EXPECT_TRUE(pages[i].contains(QStringLiteral("Seite %1 von %2").arg(i + 1).arg(pages.size())));
    EXPECT_EQ(pages[i].contains("Fahrzeugliste"), i == 0);
  }
}

TEST_F(ListDocumentTest, EveryVehicleStandsOnceAndWholeOnOnePageOnEitherPaper) {
  addMany(150);
  for (const auto size : {QPageSize::A4, QPageSize::Letter}) {
    ASSERT_TRUE(print({}, size));
    QList<int> all;
    for (const QString& page : pdf.texts()) {
      const QList<int> begun = numbers(page, QStringLiteral("Anfang"));
      EXPECT_EQ(begun, numbers(page, QStringLiteral("Ende")));
      // A page is left when the next vehicle has no room, and not before.
      EXPECT_TRUE(begun.size() > 20 || begun.contains(150)) << begun.size();
      all << begun;
    }
    ASSERT_EQ(all.size(), 150);
    for (int i = 0; i < 150; ++i) EXPECT_EQ(all[i], i + 1);
  }
  EXPECT_TRUE(pdf.info().contains("612 x 792 pts (letter)")) << pdf.info().toStdString();
}

TEST_F(ListDocumentTest, OnlyTheSelectedVehiclesAndTheSelectionInWords) {
  add(3, "Vitrine", "E 10", "eins");
  add(17, "Anlage", "V 60", "zwei");
  ASSERT_TRUE(print(collectionVehicles("Anlage", "1", "99").formula));
  EXPECT_TRUE(text().contains("Auswahl: Sammlung = „Anlage“ und Adresse ≥ 1 und Adresse ≤ 99"));
  EXPECT_TRUE(text().contains("zwei"));
  EXPECT_FALSE(text().contains("eins"));
}

TEST_F(ListDocumentTest, WithoutAVehicleThereIsOnePageThatSaysSo) {
  ASSERT_TRUE(print());
  ASSERT_EQ(pdf.texts().size(), 1);
  EXPECT_TRUE(text().contains("Kein Fahrzeug entspricht der Auswahl."));
  EXPECT_TRUE(text().contains("Seite 1 von 1"));
}

TEST_F(ListDocumentTest, MarkupInAValueIsText) {
  add(3, "<b>fett</b>", "<td>", "</table></body> &amp; {{titel}}");
  useTemplate(
      "<table>{{#fahrzeuge}}<tr><td>{{{DC_COLL}}}|{{&FZ_LNAME}}</td></tr>{{/fahrzeuge}}</table>");
  ASSERT_TRUE(print());
  EXPECT_TRUE(text().contains("<b>fett</b>|</table></body> &amp; {{titel}}"))
      << text().toStdString();
}

TEST_F(ListDocumentTest, WhatBelongsBehindTheLastVehicleStandsOnTheLastPageOnly) {
  useTemplate(
      "<table>{{#fahrzeuge}}<tr><td>{{FZ_LNAME}}</td></tr>{{/fahrzeuge}}</table>"
      "{{#letzte_seite}}<p>Schluss</p><p>aus</p>{{/letzte_seite}}"
      "{{^letzte_seite}}<p>weiter</p>{{/letzte_seite}}");
  addMany(100);
  ASSERT_TRUE(print());
  // The first page has this many, and its last line reads "weiter".
  const auto full = pdf.texts().first().count("Anfang");
  for (const qsizetype count : {full - 2, full - 1, full, full + 1}) {
    ASSERT_TRUE(print(collectionVehicles({}, "1", QString::number(count)).formula));
    const QStringList pages = pdf.texts();
    EXPECT_EQ(numbers(text(), QStringLiteral("Ende")).size(), count);
    EXPECT_EQ(text().count("Schluss"), 1);
    EXPECT_TRUE(pages.last().contains("Schluss") && pages.last().contains("aus"));
    EXPECT_FALSE(pages.last().contains("weiter"));
    EXPECT_TRUE(pages.last().contains(QStringLiteral("Ende%1").arg(count)))
        << "the end does not stand alone";
  }
}

TEST_F(ListDocumentTest, TwoRowsOfAVehicleStayTogether) {
  addMany(100);
  useTemplate(
      "<table><thead><tr><th>Kopf</th></tr></thead>{{#fahrzeuge}}<tr><td>oben{{DC_ADR}}</td></tr>"
      "<tr><td>unten{{DC_ADR}}</td></tr>{{/fahrzeuge}}</table>");
  ASSERT_TRUE(print());
  const QStringList pages = pdf.texts();
  EXPECT_GT(pages.size(), 2);
  for (const QString& page : pages) {
    EXPECT_EQ(numbers(page, QStringLiteral("oben")), numbers(page, QStringLiteral("unten")));
    EXPECT_TRUE(page.contains("Kopf"));
  }
}

TEST_F(ListDocumentTest, AVehicleThatIsTallerThanThePageIsCutAndTheNextOnesFollow) {
  add(1, "A", "L", "eins");
  add(2, "A", "L", "zwei");
  useTemplate("<table>{{#fahrzeuge}}<tr><td>{{FZ_LNAME}}" + QByteArray("<br>.").repeated(200) +
              "</td></tr>{{/fahrzeuge}}</table>");
  ASSERT_TRUE(print());
  const QStringList pages = pdf.texts();
  ASSERT_EQ(pages.size(), 2);
  EXPECT_TRUE(pages[0].contains("eins") && pages[1].contains("zwei"));
}

TEST_F(ListDocumentTest, APictureBesideTheTemplateIsPrinted) {
  QImage picture(20, 20, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(database.folder() + QStringLiteral("/Zeichen.png")));
  useTemplate(
      "<p><img src=\"Zeichen.png\"></p><table>{{#fahrzeuge}}<tr><td>{{FZ_LNAME}}</td></tr>"
      "{{/fahrzeuge}}</table>");
  add(1, "A", "L", "eins");
  ASSERT_TRUE(print());
  EXPECT_EQ(pdf.pictures().size(), 1);
  EXPECT_TRUE(text().contains("eins"));
}

TEST_F(ListDocumentTest, ATemplateWhoseVehiclesAreNoRowsIsRefused) {
  add(1, "A", "L", "eins");
  add(2, "A", "L", "zwei");
  for (const char* text :
       {"{{#fahrzeuge}}<p>{{DC_ADR}}</p>{{/fahrzeuge}}",
        "<table><tr><td>{{#fahrzeuge}}{{DC_ADR}}{{/fahrzeuge}}</td></tr></table>",
        "<table><tr><th>Kopf</th></tr>{{#fahrzeuge}}<tr><td>x</td></tr>"
        "{{/fahrzeuge}}</table>"}) {
    useTemplate(text);
    EXPECT_THROW(print(), ReportError) << text;
  }
  useTemplate("{{#fahrzeuge}}\n{{NIX}}{{/fahrzeuge}}");
  EXPECT_THROW(print(), ReportError);
  ASSERT_TRUE(QFile::remove(templateFile()));
  EXPECT_THROW(print(), ReportError);
}

TEST_F(ListDocumentTest, PaperThatTakesNothingIsTold) {
  addMany(3);
  QPdfWriter nowhere(QStringLiteral("/nirgends/liste.pdf"));
  ListDocument list({.database = database.open(), .templateFile = templateFile(), .formula = {}});
  EXPECT_THROW(list.paint(nowhere, pdf.progress), ReportError);
}

TEST_F(ListDocumentTest, PaintingTwicePaintsTheSame) {
  addMany(60);
  ASSERT_TRUE(print());
  const QStringList first = pdf.texts();
  ASSERT_TRUE(print());
  EXPECT_EQ(pdf.texts(), first);
}

TEST_F(ListDocumentTest, ProgressRisesAndAnyQuestionCanEndTheWork) {
  addMany(60);
  ASSERT_TRUE(print());
  EXPECT_TRUE(std::is_sorted(pdf.progress.percents.begin(), pdf.progress.percents.end()));
  EXPECT_EQ(pdf.progress.percents.last(), 100);
  EXPECT_TRUE(pdf.progress.texts.contains("Die Seiten werden eingeteilt: 60 von 60 Fahrzeugen"));
  EXPECT_EQ(pdf.progress.texts.last(), "Seite 2 von 2");
  for (int question = 1; question <= 5; ++question) {
    pdf.progress.workUntilCancel = question;
    EXPECT_FALSE(print()) << question;
  }
  pdf.progress.workUntilCancel = 6;
  EXPECT_TRUE(print()) << "reading, two pages divided, two painted";
}

}  // namespace
}  // namespace lokari
