// Files of speed tables, and the buttons that load and save them.
#include "decoder/spd_file.h"

#include "speed_fixture.h"
#include "support/places.h"

namespace lokari {
namespace {

class SpdFileTest : public SpeedFixture {
 protected:
  QString put(const char* name, const QByteArray& data) {
    QDir().mkpath(folder.filePath(QStringLiteral("SpeedTab")));
    const QString path = folder.filePath(QStringLiteral("SpeedTab/") + QString::fromUtf8(name));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(data);
    return path;
  }
  static QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  }

  void load(const QString& path) {
    prompt.fileNames.push_back(path);
    bench->buttonClicked(QStringLiteral("cmdLoadTable"));
  }
  void save(const QString& path) {
    prompt.fileNames.push_back(path);
    bench->buttonClicked(QStringLiteral("cmdSaveTable"));
  }
  void expectRefused(const QString& path, const QString& message) {
    store(67, 11, '1');
    openTable("");
    const QByteArray values = bench->sets.cvValues;
    const QByteArray marks = bench->sets.cvMarks;
    load(path);
    EXPECT_EQ(prompt.shown, QStringList{message});
    EXPECT_EQ(bench->sets.cvValues, values);
    EXPECT_EQ(bench->sets.cvMarks, marks);
  }
};

// ---- Reading ----------------------------------------------------------------------------------

TEST_F(SpdFileTest, ThirtyValuesSetTwentyEight) {
  QByteArray numbers;
  for (int i = 1; i <= 30; ++i) numbers += QByteArray::number(i) + ",";
  openTable("");
  bench->sets.setValue(CvIndex(95), 99);
  load(put("Lang.spd", numbers));
  EXPECT_EQ(value(67), 1);
  EXPECT_EQ(value(94), 28);
  EXPECT_EQ(value(95), 99);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(SpdFileTest, FifteenValuesLeaveTheRest) {
  store(82, 7);
  store(94, 8);
  openTable("");
  load(put("Kurz.spd", "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15\r\n"));
  EXPECT_EQ(value(81), 15);
  EXPECT_EQ(value(82), 7);
  EXPECT_EQ(value(94), 8);
}

TEST_F(SpdFileTest, AShortTableTakesFifteenValues) {
  store(82, 7);
  openTable("FAMILY=1\n");
  load(put("Lang.spd", "1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16\r\n"));
  EXPECT_EQ(value(81), 15);
  EXPECT_EQ(value(82), 7);
}

TEST_F(SpdFileTest, WithFourteenStepsEveryValueGoesToItsOwnCv) {
  openTable("", 14);
  load(put("T.spd", "1,2,3\r\n"));
  EXPECT_EQ(tableValues(4), (std::vector<int>{1, 2, 3, 0}));
}

TEST_F(SpdFileTest, ValuesAboveTheScaleAreCutNotRefused) {
  openTable("INTERNALSTEPS=120\n");
  load(put("Hoch.spd", "119,120,121,255,99999999999\r\n"));
  EXPECT_EQ(tableValues(5), (std::vector<int>{119, 120, 120, 120, 120}));
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(SpdFileTest, OnlyTheFirstLineCountsAndStrayCharactersAreDropped) {
  const QString path = put("T.spd", "1, 2,,x3,4 5\n9,9,9,9,9,9\n");
  EXPECT_EQ(readSpdFile(path, 255).values, (std::vector<int>{1, 2, 3, 45}));
}

TEST_F(SpdFileTest, ALineWithoutAnEndIsRead) {
  EXPECT_EQ(readSpdFile(put("T.spd", "1,2,3"), 255).values, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(readSpdFile(put("T.spd", "1,2,3\x1A"), 255).values, (std::vector<int>{1, 2, 3}));
}

TEST_F(SpdFileTest, LoadingRefreshesTheWindowAndDropsTheMarksOfChangedValues) {
  store(67, 1, '1');
  store(68, 9, '1');
  openTable("");
  int resets = 0;
  QObject::connect(bench.get(), &DecoderBench::gridReset, [&] { ++resets; });
  load(put("T.spd", "1,2\r\n"));
  EXPECT_EQ(resets, 1);
  EXPECT_EQ(mark(67), CvMark::Verified);
  EXPECT_EQ(mark(68), CvMark::None);
}

TEST_F(SpdFileTest, TheOpenDialogStartsInTheFolderOfTheTables) {
  openTable("");
  bench->buttonClicked(QStringLiteral("cmdLoadTable"));
  ASSERT_EQ(prompt.fileQuestions.size(), 1);
  EXPECT_EQ(prompt.fileQuestions[0].folder, folder.path() + QStringLiteral("/SpeedTab"));
  EXPECT_EQ(prompt.fileQuestions[0].filter,
            QStringLiteral("Alle Dateien (*.*)|*.*|Geschwindikeitstabellen (*.spd)|*.spd"));
  EXPECT_TRUE(prompt.shown.isEmpty()) << "a cancelled dialog says nothing";
}

TEST_F(SpdFileTest, ANameToOpenWithoutAPointGetsTheExtensionUnlessThereIsSuchAFile) {
  const QString path = put("Tab7.spd", "7\r\n");
  openTable("");
  load(folder.filePath(QStringLiteral("SpeedTab/tab7")));
  EXPECT_EQ(value(67), 7);
  load(put("Ohne", "8\r\n"));
  EXPECT_EQ(value(67), 8);
}

TEST_F(SpdFileTest, AMissingFileIsToldAndChangesNothing) {
  const QString path = folder.filePath(QStringLiteral("fehlt.spd"));
  expectRefused(path, QStringLiteral("Datei %1 kann nicht geöffnet werden!").arg(path));
}

TEST_F(SpdFileTest, AFolderIsNoFile) {
  expectRefused(folder.path(),
                QStringLiteral("Datei %1 kann nicht geöffnet werden!").arg(folder.path()));
}

TEST_F(SpdFileTest, AFileThatIsNoTextIsToldAndChangesNothing) {
  const QString path = put("Bild.spd", QByteArray("\x89PNG 12,13,14\0\1\2", 16));
  expectRefused(path, QStringLiteral("Datei %1 ist beschädigt: Sie ist keine Textdatei. Die "
                                     "Geschwindigkeitstabelle bleibt unverändert.")
                          .arg(path));
}

TEST_F(SpdFileTest, AFileWithoutANumberIsToldAndChangesNothing) {
  const QString path = put("Leer.spd", "keine Werte, nirgends\r\n1,2,3\r\n");
  expectRefused(path,
                QStringLiteral("Datei %1 ist beschädigt: Ihre erste Zeile enthält keine Zahl. Die "
                               "Geschwindigkeitstabelle bleibt unverändert.")
                    .arg(path));
}

TEST_F(SpdFileTest, AnEmptyFileIsToldAndChangesNothing) {
  const QString path = put("Leer.spd", "");
  expectRefused(path,
                QStringLiteral("Datei %1 ist beschädigt: Ihre erste Zeile enthält keine Zahl. Die "
                               "Geschwindigkeitstabelle bleibt unverändert.")
                    .arg(path));
}

// ---- Writing ----------------------------------------------------------------------------------

TEST_F(SpdFileTest, AFileHoldsTwentyEightValuesAlsoOfAShortTable) {
  for (int i = 1; i <= 28; ++i) store(66 + i, i);
  openTable("FAMILY=1\n", 14);
  const QString path = folder.filePath(QStringLiteral("Meine.spd"));
  save(path);
  EXPECT_EQ(contents(path),
            QByteArray("1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,"
                       "24,25,26,27,28\r\n"));
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(SpdFileTest, ANameToSaveWithoutAPointGetsTheExtension) {
  openTable("");
  save(folder.filePath(QStringLiteral("Ohne")));
  EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("Ohne.spd"))));
  save(folder.filePath(QStringLiteral("Mit.txt")));
  EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("Mit.txt"))));
}

TEST_F(SpdFileTest, APointInTheFolderIsNoneInTheName) {
  EXPECT_EQ(withSpdExtension(QStringLiteral("/a.b/Tab1")), QStringLiteral("/a.b/Tab1.spd"));
}

TEST_F(SpdFileTest, TheNameOfferedIsTheFirstThatIsFree) {
  put("tab1.SPD", "");
  put("Tab3.spd", "");
  openTable("");
  bench->buttonClicked(QStringLiteral("cmdSaveTable"));
  ASSERT_EQ(prompt.fileQuestions.size(), 1);
  EXPECT_EQ(prompt.fileQuestions[0].presetName, QStringLiteral("Tab2.spd"));
  EXPECT_EQ(prompt.fileQuestions[0].folder, folder.path() + QStringLiteral("/SpeedTab"));
  EXPECT_EQ(prompt.fileQuestions[0].filter,
            QStringLiteral("Alle Dateien (*.*)|*.*|Geschwindikeitstabellen (*.spd)|*.spd"));
}

TEST_F(SpdFileTest, AFileThatIsThereIsReplacedOnlyOnAYes) {
  const QString path = put("Da.spd", "alt");
  openTable("");
  save(path);
  EXPECT_EQ(prompt.shown,
            QStringList{QStringLiteral("Datei %1 gibt es schon. Überschreiben?").arg(path)});
  EXPECT_EQ(contents(path), QByteArray("alt"));
  prompt.answers.push_back(Answer::Yes);
  save(path);
  EXPECT_TRUE(contents(path).startsWith("0,0,"));
}

TEST_F(SpdFileTest, AFailureToWriteIsTold) {
  openTable("");
  const QString path = folder.filePath(QStringLiteral("gibt/es/nicht.spd"));
  save(path);
  EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Fehler beim Schreiben von %1").arg(path)});
}

TEST_F(SpdFileTest, WhatWasSavedIsLoadedAgain) {
  for (int i = 1; i <= 28; ++i) store(66 + i, 255 - 9 * i);
  openTable("");
  const std::vector<int> saved = tableValues(28);
  save(folder.filePath(QStringLiteral("Rund.spd")));
  for (int i = 67; i <= 94; ++i) bench->sets.setValue(CvIndex(i), 1);
  load(folder.filePath(QStringLiteral("Rund.spd")));
  EXPECT_EQ(tableValues(28), saved);
}

class ShippedSpd : public ::testing::TestWithParam<const char*> {};

TEST_P(ShippedSpd, HoldsATableThatRises) {
  const SpdFile file = readSpdFile(
      places::source() + QStringLiteral("/data/speedtab/") + QString::fromUtf8(GetParam()), 255);
  EXPECT_TRUE(file.fault.isEmpty());
  ASSERT_EQ(file.values.size(), 28U);
  EXPECT_TRUE(std::is_sorted(file.values.begin(), file.values.end()));
  EXPECT_GT(file.values.front(), 0);
}

INSTANTIATE_TEST_SUITE_P(All, ShippedSpd,
                         ::testing::Values("Gerade.spd", "Rangieren.spd", "Sanft.spd"));

}  // namespace
}  // namespace lokari
