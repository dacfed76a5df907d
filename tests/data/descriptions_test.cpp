// The shipped description files through the program's own loader.
#include <gtest/gtest.h>

#include <QDirIterator>

#include "base/text_file.h"
#include "decoder/bit_description.h"
#include "decoder/dec_checker.h"
#include "decoder/dec_loader.h"
#include "decoder/func_map.h"
#include "support/places.h"

namespace lokari {
namespace {

const QString kData = places::data() + QStringLiteral("/");

QString textOf(const QString& name) {
  const auto text = readTextFile(kData + name);
  EXPECT_TRUE(text.has_value()) << name.toStdString();
  return text.value_or(QString());
}

DecoderDescription load(const QString& name) {
  DecoderDescription description;
  EXPECT_TRUE(loadDescription(textOf(name), description));
  return description;
}

QStringList shipped() {
  QStringList names;
  QDirIterator files(kData, {QStringLiteral("*.dec")}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) names << files.next().mid(kData.size());
  names.sort();
  return names;
}

TEST(ShippedDescriptions, NoneHasAFault) {
  const QStringList names = shipped();
  EXPECT_EQ(names.size(), 12);
  for (const QString& name : names) {
    for (const DecFault& fault : checkDescription(textOf(name))) {
      ADD_FAILURE() << name.toStdString() << ":" << fault.line << ": " << fault.text.toStdString();
    }
  }
}

TEST(ShippedDescriptions, DefaultHasWhatEveryStandardDecoderHas) {
  const DecoderDescription description = load(QStringLiteral("Default.dec"));
  EXPECT_EQ(description.SPEEDSTEPS, 128);
  for (const int cv :
       {2, 3, 4, 5, 6, 9, 11, 13, 21, 22, 23, 24, 27, 28, 33, 46, 66, 95, 105, 106}) {
    EXPECT_TRUE(description.info(CvIndex(cv)).exists()) << cv;
  }
  EXPECT_FALSE(description.info(CvIndex(30)).hasDefault());
  EXPECT_EQ(description.info(CvIndex(6)).cvName, QStringLiteral("Mittengeschwindigkeit"));
}

TEST(ShippedDescriptions, SoundDecoderFillsThreeFunctionTabsFromPlainCvsAndABank) {
  const DecoderDescription description = load(QStringLiteral("Adlerton/AT-SND16.dec"));
  EXPECT_EQ(description.pageCount[3], 45);
  EXPECT_GT(description.pageCount[4], 20);
  EXPECT_GT(description.pageCount[6], 20);
  EXPECT_EQ(description.MAPCVA, 31);
  EXPECT_EQ(description.MAPCVB, 32);
  const CvDescriptor& volume = description.info(CvIndex(1280));
  EXPECT_EQ(volume.cvName, QStringLiteral("Gesamtlautstärke"));
  EXPECT_EQ(description.numberText(CvIndex(1280)), QStringLiteral("257 (3)"));
  EXPECT_EQ(description.bankOf(volume).selectA, 16);
  EXPECT_EQ(description.bankOf(volume).selectB, 1);
  EXPECT_EQ(description.numberText(CvIndex(1536)), QStringLiteral("300 (4)"));
}

TEST(ShippedDescriptions, SoundDecoderContinuesItsSpeedTableOnASecondLine) {
  const DecoderDescription description = load(QStringLiteral("Adlerton/AT-SND16.dec"));
  ASSERT_EQ(description.speedTabValues.size(), 28U);
  EXPECT_EQ(description.speedTabValues.front().value, 2);
  EXPECT_EQ(description.speedTabValues[14].value, 97);
  EXPECT_EQ(description.speedTabValues.back().value, 255);
}

TEST(ShippedDescriptions, EveryKeyOfAFunctionMatrixHasItsCv) {
  int matrices = 0;
  for (const QString& name : shipped()) {
    const DecoderDescription description = load(name);
    if (!description.FUNCMAP) continue;
    ++matrices;
    for (const FuncMapRow& row : funcMapRows(description, QByteArray(kCvArraySize, '\0')))
      EXPECT_TRUE(row.described) << name.toStdString() << ": " << row.label.toStdString();
  }
  EXPECT_GT(matrices, 5);
}

TEST(ShippedDescriptions, EveryCvCanBeReadOrWritten) {
  for (const QString& name : shipped()) {
    const DecoderDescription description = load(name);
    for (int i = 2; i <= kHighestCvIndex; ++i) {
      const CvIndex cv(i);
      if (!description.info(cv).exists()) continue;
      EXPECT_TRUE(description.reachable(cv)) << name.toStdString() << ": " << i;
    }
  }
}

TEST(ShippedDescriptions, BitTextsNumberTheOutputsAsTheFunctionMatrixDoes) {
  int texts = 0;
  for (const QString& name : shipped()) {
    const DecoderDescription description = load(name);
    if (!description.FUNCMAP) continue;
    for (const FuncMapRow& row : funcMapRows(description, QByteArray(kCvArraySize, '\0'))) {
      const BitDescription bits(description.info(row.cv).cvBits);
      for (const BitGroup& group : bits.groups()) {
        ++texts;
        const QString output = QStringLiteral("Ausgang %1").arg(group.position + 1 + row.offset);
        EXPECT_TRUE(group.title == output || group.title.startsWith(output + QStringLiteral(" (")))
            << name.toStdString() << ", " << row.label.toStdString() << ": "
            << group.title.toStdString();
      }
    }
  }
  EXPECT_GT(texts, 400);
}

TEST(ShippedDescriptions, SpecialKindsOfDecodersAreThere) {
  EXPECT_EQ(load(QStringLiteral("Kessler/KL-15.dec")).tablePoints(), 15);
  EXPECT_EQ(load(QStringLiteral("Kessler/KL-15.dec")).speedTabValues.size(), 15U);
  EXPECT_EQ(load(QStringLiteral("Fahrwerk/FW-F8.dec")).TYPE, 3);
  EXPECT_TRUE(load(QStringLiteral("Fahrwerk/FW-F8.dec")).info(CvIndex(67)).exists());
  EXPECT_EQ(load(QStringLiteral("Silvan/SV-PAGE.dec")).PROGMODE, 1);
  EXPECT_EQ(load(QStringLiteral("Wiesel/W-REG.dec")).PROGMODE, 2);
  EXPECT_EQ(load(QStringLiteral("Wiesel/W-REG.dec")).MAXTABS, 6);
}

}  // namespace
}  // namespace lokari
