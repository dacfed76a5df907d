#include "db/cv_record.h"

#include <gtest/gtest.h>

#include "db/picture_fit.h"
#include "db/record_set.h"
#include "support/test_database.h"

namespace lokari {
namespace {

TEST(CvRecord, ANullFieldGivesZeros) {
  EXPECT_EQ(chkCVVar(QVariant()), QByteArray(4865, '\0'));
}

TEST(CvRecord, AShortFieldKeepsItsBytesAndHasZerosBehindThem) {
  const QByteArray full = chkCVVar(QByteArray(1000, 'x'));
  EXPECT_EQ(full.size(), 4865);
  EXPECT_EQ(full.left(1000), QByteArray(1000, 'x'));
  EXPECT_EQ(full.mid(1000), QByteArray(3865, '\0'));
}

TEST(CvRecord, ALongerFieldStaysAsItIs) {
  EXPECT_EQ(chkCVVar(QByteArray(5000, 'x')), QByteArray(5000, 'x'));
}

TEST(CvRecord, InitDcDataEmptiesEverything) {
  CvRecord record;
  EXPECT_FALSE(record.hasArrays());
  record.recManuf = 145;
  record.recDecoder = QStringLiteral("ZX100");
  record.recSetName = QStringLiteral("Winter");
  record.recCvName[2] = QStringLiteral("Winter");
  record.InitDcData();
  EXPECT_TRUE(record.hasArrays());
  EXPECT_EQ(record.recManuf, 0);
  EXPECT_EQ(record.recDecoder, QString());
  EXPECT_EQ(record.recSetName, QString());
  for (size_t set = 0; set < kCvSetCount; ++set) {
    EXPECT_EQ(record.recCvValues[set], QByteArray(4865, '\0'));
    EXPECT_EQ(record.recCvMarks[set], QByteArray(4865, '\0'));
    EXPECT_EQ(record.recCvName[set], QString());
  }
}

TEST(CvRecord, ARecordWithNullArraysIsSavedAsZerosOfFullSize) {
  test::TestDatabase base;
  base.addVehicle(3, QStringLiteral("A"), QStringLiteral("x"));
  RecordSet set;
  set.open(base.open(), QStringLiteral("SELECT * FROM LOCO_DAT"));
  CvRecord record;
  loadCvRecord(set, record);
  set.Edit();
  assignCvRecord(set, record);
  set.Update();
  EXPECT_EQ(set.value(QStringLiteral("DC_CV")).toByteArray(), QByteArray(4865, '\0'));
  EXPECT_EQ(set.value(QStringLiteral("DC_CV_4_ST")).toByteArray(), QByteArray(4865, '\0'));
}

TEST(CvRecord, EverySetGoesToItsColumnsAndComesBack) {
  test::TestDatabase base;
  base.addVehicle(3, QStringLiteral("A"), QStringLiteral("x"));
  RecordSet set;
  set.open(base.open(), QStringLiteral("SELECT * FROM LOCO_DAT"));
  CvRecord record;
  record.InitDcData();
  for (size_t i = 0; i < kCvSetCount; ++i) {
    record.recCvValues[i][28] = static_cast<char>(10 + i);
    record.recCvMarks[i][28] = static_cast<char>('1' + (i % 2));
    record.recCvName[i] = QStringLiteral("S%1").arg(i);
  }
  record.recManuf = 145;
  record.recDecoder = QStringLiteral("ZX100");
  record.recSetName = QStringLiteral("S3");
  set.Edit();
  assignCvRecord(set, record);
  set.Update();
  EXPECT_EQ(set.value(QStringLiteral("DC_CV")).toByteArray().at(28), 10);
  EXPECT_EQ(set.value(QStringLiteral("DC_CV_1")).toByteArray().at(28), 11);
  EXPECT_EQ(set.value(QStringLiteral("DC_CV_4")).toByteArray().at(28), 14);
  EXPECT_EQ(set.text(QStringLiteral("DC_CV_NAME")), QStringLiteral("S0"));
  EXPECT_EQ(set.text(QStringLiteral("DC_CV_NAME_4")), QStringLiteral("S4"));
  CvRecord loaded;
  loadCvRecord(set, loaded);
  EXPECT_EQ(loaded.recCvValues, record.recCvValues);
  EXPECT_EQ(loaded.recCvMarks, record.recCvMarks);
  EXPECT_EQ(loaded.recCvName, record.recCvName);
  EXPECT_EQ(loaded.recManuf, 145);
  EXPECT_EQ(loaded.recDecoder, QStringLiteral("ZX100"));
  EXPECT_EQ(loaded.recSetName, QStringLiteral("S3"));
}

TEST(PictureFit, AWidePictureFillsTheWidthAndATallOneTheHeight) {
  EXPECT_EQ(fitPicture({400, 100}, {200, 100}), QRectF(-0.5, 24.5, 201, 51));
  EXPECT_EQ(fitPicture({100, 400}, {200, 100}), QRectF(87, -0.5, 26, 101));
  EXPECT_EQ(fitPicture({50, 25}, {200, 100}), QRectF(-0.5, -0.5, 201, 101));
  EXPECT_TRUE(fitPicture({0, 10}, {200, 100}).isEmpty());
}

}  // namespace
}  // namespace lokari
