// Whoever searches the shipped manual in an owner's words comes to the right page.
#include "app/manual_search.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "support/places.h"

namespace lokari {
namespace {

QString read(const QString& name) {
  QFile file(places::source() + QStringLiteral("/docs/handbuch/") + name);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
  return QString::fromUtf8(file.readAll());
}

const ManualSearch& shippedManual() {
  static const ManualSearch manual = [] {
    QList<ManualPage> pages;
    const QDir folder(places::source() + QStringLiteral("/docs/handbuch"));
    for (const QString& name : folder.entryList({QStringLiteral("*.html")})) {
      pages.append({name, read(name)});
    }
    return ManualSearch(pages, read(QStringLiteral("suchworte.txt")));
  }();
  return manual;
}

struct Wanted {
  const char* question;
  const char* place;  ///< of the first hit: page and section
};

class ManualSearchTest : public ::testing::TestWithParam<Wanted> {};

TEST_P(ManualSearchTest, TheFirstHitIsWhatIsMeant) {
  const QList<ManualHit> hits = shippedManual().find(QString::fromUtf8(GetParam().question));
  ASSERT_FALSE(hits.isEmpty());
  EXPECT_EQ(hits.first().place.toStdString(), GetParam().place) << GetParam().question;
  EXPECT_FALSE(hits.first().excerpt.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Words, ManualSearchTest,
    ::testing::Values(
        Wanted{"lokari-cli", "befehlszeile.html"}, Wanted{"Kommandozeile", "befehlszeile.html"},
        Wanted{"CV29", "decoder.html#cv29"}, Wanted{"CV 29", "decoder.html#cv29"},
        Wanted{"cv-29", "decoder.html#cv29"}, Wanted{"Weiche", "fahren.html#schaltpult"},
        Wanted{"Weichen", "fahren.html#schaltpult"}, Wanted{"WEICHE", "fahren.html#schaltpult"},
        Wanted{"Lok", "fahrzeuge.html"}, Wanted{"Loks", "fahrzeuge.html"},
        Wanted{"Lokomotive", "fahrzeuge.html"}, Wanted{"Lokomotiven", "fahrzeuge.html"},
        Wanted{"Sicherung", "fahrzeuge.html#sicherung"},
        Wanted{"sichern", "fahrzeuge.html#sicherung"}, Wanted{"Backup", "fahrzeuge.html#sicherung"},
        Wanted{"Notaus", "fahren.html#halt"}, Wanted{"Not-Aus", "fahren.html#halt"},
        Wanted{"Nothalt", "fahren.html#halt"}, Wanted{"Halt", "fahren.html#halt"},
        Wanted{"dialout", "anschluesse.html#zugriffsrechte"}, Wanted{"COM1", "anschluesse.html"},
        Wanted{"USB", "anschluesse.html"}, Wanted{"PDF", "drucken.html#dialog"},
        Wanted{"Excel", "drucken.html#csv"},
        Wanted{"Kurzschluß", "fehlermeldungen.html#kurzschluss"},
        Wanted{"rückgängig", "fahrzeuge.html#neu"}, Wanted{"Firmware", "firmware.html"},
        Wanted{"RailCom", "decoder.html#cv29"}, Wanted{"Bank", "decoderdateien.html#baenke"},
        Wanted{"Zentrale wählen", "erste-schritte.html#zentrale"},
        Wanted{"Adresse", "fahrzeuge.html#adresse"}, Wanted{"lange Adresse", "decoder.html#cv29"},
        Wanted{"Platzhalter", "suchen.html#vergleich"}, Wanted{"Access", "uebernahme.html"},
        Wanted{"Kein ACK", "fehlermeldungen.html#lesen-schreiben"}));

TEST(ManualSearch, UmlautsAndEndingsAreNoDifference) {
  EXPECT_EQ(wordStem(QStringLiteral("Weichen")), wordStem(QStringLiteral("Weiche")));
  EXPECT_EQ(wordStem(QStringLiteral("Züge")), wordStem(QStringLiteral("ZUG")));
  EXPECT_EQ(wordStem(QStringLiteral("Decodern")), wordStem(QStringLiteral("Decoder")));
  EXPECT_NE(wordStem(QStringLiteral("Lok")), wordStem(QStringLiteral("Lokari")));
}

TEST(ManualSearch, EachNumberBehindCvIsThatCv) {
  QStringList stems;
  for (const WordAt& word : wordsOf(QStringLiteral("CVs 2, 6 und 5 mit 28 Stufen, CV29"))) {
    stems << word.stem;
  }
  for (const char* cv : {"cv2", "cv6", "cv5", "cv29"}) {
    EXPECT_TRUE(stems.contains(QString::fromLatin1(cv))) << cv;
  }
  EXPECT_FALSE(stems.contains(QStringLiteral("cv28")));
}

TEST(ManualSearch, APartOfAWordIsItsBeginningOrALongEnd) {
  const auto found = [](const char* text, const char* stem) {
    return foundWords(QString::fromUtf8(text), {QString::fromUtf8(stem)}).size();
  };
  EXPECT_EQ(found("Sicherungskopie und Datensicherung", "sicherung"), 2);
  EXPECT_EQ(found("schalten, Schaltpult, Fahrpult", "halt"), 0);
  EXPECT_EQ(found("Lokari, lokal, Lok", "lok"), 1);
}

TEST(ManualSearch, ACvIsMarkedWithItsNumber) {
  const QString text = QStringLiteral("Die CV 29 und");
  const QList<WordAt> words = foundWords(text, {QStringLiteral("cv29")});
  ASSERT_EQ(words.size(), 1);
  EXPECT_EQ(text.mid(words.first().start, words.first().length), QStringLiteral("CV 29"));
}

TEST(ManualSearch, ASectionWithAllWordsComesBeforeOneWithManyOfASingleWord) {
  const ManualSearch manual(
      {{QStringLiteral("a.html"),
        QStringLiteral("<body><h1>Halt</h1><p>Halt Halt Halt</p></body>")},
       {QStringLiteral("b.html"),
        QStringLiteral("<body><h1>Anderes</h1><h2 id=\"x\">Teil</h2><p>erst Halt, dann "
                       "Pause</p></body>")}},
      {});
  const QList<ManualHit> hits = manual.find(QStringLiteral("halt pause"));
  ASSERT_EQ(hits.size(), 2);
  EXPECT_EQ(hits[0].place, QStringLiteral("b.html#x"));
  EXPECT_EQ(hits[0].title, QStringLiteral("Anderes: Teil"));
  EXPECT_EQ(hits[0].excerpt, QStringLiteral("erst Halt, dann Pause"));
}

TEST(ManualSearch, AWordThatIsNowhereFindsNothing) {
  EXPECT_TRUE(shippedManual().find(QStringLiteral("Xylophon")).isEmpty());
  EXPECT_TRUE(shippedManual().find(QStringLiteral("  ")).isEmpty());
}

// A group nobody can find anything with would only look like one.
TEST(ManualSearch, EveryLineOfSynonymsLeadsSomewhere) {
  for (const QString& line : read(QStringLiteral("suchworte.txt")).split(u'\n')) {
    if (line.isEmpty() || line.startsWith(u'#')) continue;
    const QStringList sides = line.split(u'=');
    ASSERT_EQ(sides.size(), 2) << qPrintable(line);
    for (const QString& meant : sides[1].split(u',')) {
      EXPECT_FALSE(shippedManual().find(meant.trimmed()).isEmpty()) << qPrintable(meant);
    }
  }
}

}  // namespace
}  // namespace lokari
