#include "reports/csv_text.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

/// A line whose template is two fields, the second one in `second`'s place.
QByteArray line(const QString& first, const QString& second, const char* before = "",
                const char* after = "") {
  return csvQuoted(csvGuarded(first) + ";" + before + csvGuarded(second) + after + "\n", ';');
}

TEST(CsvText, PlainCellsHaveNoQuotesAndLinesEndInCrLf) {
  EXPECT_EQ(csvQuoted("a;b\nc;d", ';'), "a;b\r\nc;d\r\n");
  EXPECT_EQ(csvQuoted("a;b\r\nc;d\r\n", ';'), "a;b\r\nc;d\r\n");
  EXPECT_EQ(csvQuoted("", ';'), "");
}

TEST(CsvText, SeparatorsQuotesAndLineBreaksInAValueStandInQuotes) {
  EXPECT_EQ(line("a;b", "c"), "\"a;b\";c\r\n");
  EXPECT_EQ(line("Lok \"rot\"", "\""), "\"Lok \"\"rot\"\"\";\"\"\"\"\r\n");
  EXPECT_EQ(line("eins\nzwei", "drei\r\nvier"), "\"eins\nzwei\";\"drei\r\nvier\"\r\n");
  EXPECT_EQ(line("1,5", "a\tb"), "1,5;a\tb\r\n") << "they separate nothing here";
}

TEST(CsvText, AnotherSeparatorAsksForQuotesElsewhere) {
  EXPECT_EQ(csvQuoted(csvGuarded("199,90") + "," + csvGuarded("a;b") + "\n", ','),
            "\"199,90\",a;b\r\n");
  EXPECT_EQ(csvQuoted(csvGuarded("a\tb") + "\t" + csvGuarded("c,d") + "\n", '\t'),
            "\"a\tb\"\tc,d\r\n");
}

TEST(CsvText, QuotesOfTheTemplateAreNotDoubled) {
  EXPECT_EQ(line("x", "plain", "\"", "\""), "x;plain\r\n");
  EXPECT_EQ(line("x", "a;\"b", "\"", "\""), "x;\"a;\"\"b\"\r\n");
  EXPECT_EQ(csvQuoted("\"a;\"\"b\";c\n", ';'), "\"a;\"\"b\";c\r\n");
}

TEST(CsvText, AQuoteThatTheTemplateForgetsCostsNoValue) {
  EXPECT_EQ(line("x", "wert", "\"", ""), "x;\"wert\n\"\r\n");
  EXPECT_EQ(line("x", "wert", "", "\""), "x;\"wert\"\"\"\r\n");
}

TEST(CsvText, TextAroundAValueBelongsToItsCell) {
  EXPECT_EQ(line("x", "a;b", "Lok ", " (alt)"), "x;\"Lok a;b (alt)\"\r\n");
}

TEST(CsvText, ControlCharactersBecomeBlanks) {
  EXPECT_EQ(line(QStringLiteral("a\x11\x14z"), QStringLiteral("b\x01")), "a  z;b \r\n");
}

QByteArray cell(const char* text) {
  return csvQuoted(csvGuardedText(QString::fromUtf8(text)) + "\n", ';').trimmed();
}

TEST(CsvText, ATextIsNeverCalculated) {
  EXPECT_EQ(cell("=1+1"), "'=1+1");
  EXPECT_EQ(cell("@SUM(A1)"), "'@SUM(A1)");
  EXPECT_EQ(cell("-rot-"), "'-rot-");
  EXPECT_EQ(cell("+"), "'+");
  EXPECT_EQ(cell("=HYPERLINK(\"x\";\"y\")"), "\"'=HYPERLINK(\"\"x\"\";\"\"y\"\")\"");
}

TEST(CsvText, ATextIsNeverTakenForANumber) {
  for (const char* number : {"218", "007", "12,50", "1.234", "1E5", ",5", "50%"}) {
    EXPECT_EQ(cell(number), QByteArray("'") + number);
  }
  for (const char* text : {"V 60", "E10", "1:87", "BR 218", "218 alt", "e", "E", ".", "", "%"}) {
    EXPECT_EQ(cell(text), QByteArray(text)) << text;
  }
}

TEST(CsvText, ANumberStaysOne) {
  EXPECT_EQ(csvQuoted(csvGuarded("-3,50") + ";" + csvGuarded("218") + "\n", ';'), "-3,50;218\r\n");
}

TEST(CsvText, OnlyTheBeginningOfACellCounts) {
  EXPECT_EQ(csvQuoted("Nr. " + csvGuardedText("218") + "\n", ';'), "Nr. 218\r\n");
  EXPECT_EQ(csvQuoted(csvGuardedText("218") + " alt\n", ';'), "218 alt\r\n");
  EXPECT_EQ(csvQuoted("\"" + csvGuardedText("=1") + "\";x\n", ';'), "'=1;x\r\n");
}

TEST(CsvText, UmlautsAndOtherLettersPass) {
  EXPECT_EQ(line(QStringLiteral("Größe"), QStringLiteral("Šumava 🚂")),
            QByteArray("Größe;Šumava 🚂\r\n"));
}

TEST(CsvText, TheSeparatorIsTheFirstOneOfTheTemplate) {
  EXPECT_EQ(csvSeparator("\n;;\n"), ';');
  EXPECT_EQ(csvSeparator("\r\n,;"), ',');
  EXPECT_EQ(csvSeparator("\n\t,"), '\t');
  EXPECT_EQ(csvSeparator("\n"), ';');
}

}  // namespace
}  // namespace lokari
