// The strict checker: on the broken files of the corpus it finds exactly the faults that stand
// beside them, on the shipped files none.
#include "decoder/dec_checker.h"

#include <gtest/gtest.h>

#include <QDirIterator>

#include "base/text_file.h"
#include "decoder/dec_loader.h"
#include "support/places.h"

namespace lokari {
namespace {

std::vector<std::string> decFilesBelow(const char* folder) {
  std::vector<std::string> files;
  QDirIterator below(places::source() + QString::fromUtf8(folder), {QStringLiteral("*.dec")},
                     QDir::Files, QDirIterator::Subdirectories);
  while (below.hasNext()) files.push_back(below.next().toStdString());
  std::sort(files.begin(), files.end());
  return files;
}

QString textOf(const std::string& path) {
  const auto text = readTextFile(QString::fromStdString(path));
  EXPECT_TRUE(text.has_value()) << path;
  return text.value_or(QString());
}

QString listed(const DecFaults& faults) {
  QString list;
  for (const DecFault& fault : faults) {
    list += QStringLiteral("%1\t%2\n").arg(fault.line).arg(fault.text);
  }
  return list;
}

std::string caseName(const ::testing::TestParamInfo<std::string>& info) {
  QString name;
  for (const QChar c : QString::fromStdString(info.param).section(u'/', -2)) {
    name += c.isLetterOrNumber() ? c : QChar(u'_');
  }
  return name.toStdString();
}

class Corpus : public ::testing::TestWithParam<std::string> {};

TEST_P(Corpus, ItsFaultsAreFound) {
  QString expected = QString::fromStdString(GetParam());
  expected.replace(QStringLiteral(".dec"), QStringLiteral(".txt"));
  QFile file(expected);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(expected);
  EXPECT_EQ(listed(checkDescription(textOf(GetParam()))), QString::fromUtf8(file.readAll()));
}

INSTANTIATE_TEST_SUITE_P(Broken, Corpus,
                         ::testing::ValuesIn(decFilesBelow("/tests/decoder/corpus")), caseName);

class Shipped : public ::testing::TestWithParam<std::string> {};

TEST_P(Shipped, HasNoFaultAndLoadsWhole) {
  const QString text = textOf(GetParam());
  EXPECT_EQ(listed(checkDescription(text)), "");
  DecoderDescription description;
  EXPECT_TRUE(loadDescription(text, description));
  EXPECT_GT(description.lineCount, 0);
}

INSTANTIATE_TEST_SUITE_P(Data, Shipped, ::testing::ValuesIn(decFilesBelow("/data/dec")), caseName);

TEST(BitsFault, TakesWhatTheBitDialogCanShow) {
  for (const char* good : {"1,Licht,Aus,Ein|2,Modus,A,B,C,D", "#,Einer|#,Zehner", "A,Adresse", "A",
                           "3|5,Wert", "7,Betrag|1,Vorzeichen,plus,minus"}) {
    EXPECT_EQ(bitsFault(QString::fromUtf8(good)), "") << good;
  }
}

TEST(BitsFault, RefusesWhatItCannotShow) {
  for (const char* bad : {"x,Licht", "9,Wert", "1,Licht,a,b,c", "#,Einer,a", "4,a|5,b", "-1,a", "2",
                          "#", "#|#,Zehner", "1,a|A"}) {
    EXPECT_NE(bitsFault(QString::fromUtf8(bad)), "") << bad;
  }
}

TEST(RangeFault, ListsOfNumbersAndSpansOnly) {
  for (const char* good : {"0-255", "1,3,5-7", "0", "0, 4"}) {
    EXPECT_EQ(rangeFault(QString::fromUtf8(good)), "") << good;
  }
  for (const char* bad : {"0-255,", "a", "5-", "-5", "0-256", "7-3", "1-2-3"}) {
    EXPECT_NE(rangeFault(QString::fromUtf8(bad)), "") << bad;
  }
}

}  // namespace
}  // namespace lokari
