// Whether the bench has anything that the record does not.
#include "bench_fixture.h"

namespace lokari {
namespace {

constexpr const char* kRows = "[X]\nSPEEDTABLE=N\nCV_3=drei\nCV_30=a,0-63,5,5\nCV_31=b,0-255,0,5\n";

class BenchUnsaved : public BenchFixture {
 protected:
  explicit BenchUnsaved(StationKind kind = StationKind::TamsMc) : BenchFixture(kind) {}
  void type(int cv, const char* text) { bench->rowEdited(rowOf(cv), QString::fromLatin1(text)); }
  void leave(int cv) { bench->rowLeft(rowOf(cv)); }
};

TEST_F(BenchUnsaved, ARecordThatWasOnlyLookedAtHasNothingToLose) {
  record.recCvValues[0][29] = 40;
  openEco(kRows);
  bench->selectTab(4);
  bench->chooseSet(QStringLiteral("Set 2"));
  bench->chooseSet(QStringLiteral("Set 1"));
  EXPECT_FALSE(bench->unsaved());
  EXPECT_EQ(bench->askToLeave(), Leave::Drop);
  EXPECT_TRUE(prompt.asked.isEmpty());
}

TEST_F(BenchUnsaved, ATypedValueIsUnsavedFromItsFirstCharacter) {
  openEco(kRows);
  type(30, "7");
  EXPECT_TRUE(bench->unsaved()) << "leaving the field would take it";
  leave(30);
  EXPECT_TRUE(bench->unsaved());
  type(30, "0");
  leave(30);
  EXPECT_FALSE(bench->unsaved()) << "back at what the record has";
}

TEST_F(BenchUnsaved, WhatNoFieldTakesIsNothingToSave) {
  openEco(kRows);
  type(30, "64");
  EXPECT_FALSE(bench->unsaved()) << "out of range";
  type(30, "abc");
  EXPECT_FALSE(bench->unsaved());
}

TEST_F(BenchUnsaved, ReadAndWrittenValuesAreUnsaved) {
  openEco(kRows);
  decoder().store(30, 0);
  markRow(30);
  read();
  EXPECT_TRUE(bench->unsaved()) << "the same value, but now it is known";
  CvRecord stored;
  stored.InitDcData();
  bench->cmdOK(stored);
  stored.recDecoder = QStringLiteral("AT-ECO");
  bench->open(stored, QStringLiteral("3"));
  EXPECT_FALSE(bench->unsaved());
  markRowForWriting(31);
  write();
  EXPECT_TRUE(bench->unsaved());
}

TEST_F(BenchUnsaved, AnotherSetsValuesCountAfterItWasLeft) {
  openEco(kRows);
  type(30, "7");
  leave(30);
  bench->chooseSet(QStringLiteral("Set 2"));
  EXPECT_TRUE(bench->unsaved());
  EXPECT_FALSE(bench->unsavedOfType()) << "another type would not touch it";
}

TEST_F(BenchUnsaved, ANameAndAnAddressAreUnsaved) {
  openEco(kRows);
  bench->setNameLeft(QStringLiteral("Winter"));
  EXPECT_TRUE(bench->unsaved());
  bench->setNameLeft(QStringLiteral("Set 1"));
  EXPECT_FALSE(bench->unsaved());
  bench->fieldEdited(QStringLiteral("dc_adr"), QStringLiteral("77"));
  EXPECT_TRUE(bench->unsaved());
}

TEST_F(BenchUnsaved, TheDefaultsOfAChosenTypeAreNotTheUsersValues) {
  chooseEco(kRows);
  EXPECT_EQ(value(30), 5);
  EXPECT_TRUE(bench->unsaved()) << "the type is another";
  EXPECT_FALSE(bench->unsavedOfType());
  type(30, "6");
  leave(30);
  EXPECT_TRUE(bench->unsavedOfType());
}

TEST_F(BenchUnsaved, TheQuestionOffersThreeWaysAndStaysByDefault) {
  openEco(kRows);
  type(30, "7");
  EXPECT_EQ(bench->askToLeave(), Leave::Stay);
  EXPECT_EQ(prompt.shown.last(), "Die Änderungen in diesem Fenster sind nicht gespeichert!");
  prompt.choices = {0, 1};
  EXPECT_EQ(bench->askToLeave(), Leave::Drop);
  EXPECT_EQ(bench->askToLeave(), Leave::Store);
}

// ---- What the decoder has got -----------------------------------------------------------------

class BenchWritten : public BenchUnsaved {
 protected:
  using BenchUnsaved::BenchUnsaved;

  /// What the question names below its text.
  QString named() {
    bench->askToLeave();
    const QString more = prompt.asked.last().more;
    const QString before = QStringLiteral("Schreibbefehle gingen seit dem Öffnen an ");
    if (!more.contains(before)) return {};
    return more.section(before, 1).section(u':', 0, 0);
  }
  void typeAddress(const char* address) {
    bench->fieldEdited(QStringLiteral("dc_adr"), QString::fromUtf8(address));
    check("chkDcAdrWrite");
  }
};

TEST_F(BenchWritten, WhatTheDecoderHasBeenWrittenIsNamedBeforeItIsForgotten) {
  openEco(kRows);
  type(30, "7");
  leave(30);
  EXPECT_EQ(named(), "");
  markRowForWriting(30);
  markRowForWriting(31);
  write();
  EXPECT_EQ(named(), "CV 30 und 31");
  EXPECT_TRUE(prompt.asked.last().more.endsWith(
      QStringLiteral(": Dort kann der Decoder anderes haben, als die Datenbank dann zeigt.")));
}

TEST_F(BenchWritten, AnAddressWhoseCv29WasRefusedIsNamedWithBoth) {
  openEco(kRows);
  typeAddress("5");
  decoder().readOnly.insert(29);
  write();
  ASSERT_EQ(decoder().stored(1), 5);
  EXPECT_EQ(named(), "CV 1 und 29");
}

TEST_F(BenchWritten, Cv29AheadOfAnAddressThatFailedIsNamed) {
  settings.addressCheckNow = true;
  openEco(kRows);
  typeAddress("1001");
  decoder().readOnly.insert(17);
  write();
  ASSERT_EQ(decoder().stored(29) & 32, 32);
  EXPECT_EQ(named(), "CV 17, 18 und 29");
}

TEST_F(BenchWritten, AWriteThatWasCancelledInItsWaitIsNamed) {
  openEco(kRows);
  markRowForWriting(30);
  fault("late:1:5000");
  clock.schedule(2000, [this] { link.cancelRequested = true; });
  write();
  EXPECT_EQ(named(), "CV 30");
}

TEST_F(BenchWritten, AWriteBehindWhichThePortVanishedIsNamed) {
  openEco(kRows);
  type(30, "7");
  leave(30);
  markRowForWriting(30);
  fault("unplugged");
  write();
  EXPECT_EQ(named(), "CV 30");
}

class BenchWrittenMx1 : public BenchWritten {
 protected:
  BenchWrittenMx1() : BenchWritten(StationKind::Mx1) {}
};

TEST_F(BenchWrittenMx1, AValueThatReadsBackOtherwiseIsNamed) {
  openEco(kRows);
  type(30, "7");
  leave(30);
  markRowForWriting(30);
  decoder().sticky = {30};
  write();
  EXPECT_EQ(named(), "CV 30");
}

TEST_F(BenchWrittenMx1, WhatALateRefusalMeetsIsNamed) {
  openEco("[X]\nPROGMAIN=J\nSPEEDTABLE=N\nCV_3=drei\nCV_30=a,0-63,5,5\nCV_31=b,0-255,0,5\n");
  type(30, "7");
  leave(30);
  markRowForWriting(30);
  markRowForWriting(31);
  fault("busy:immer");
  runJob(CommJob::WriteMain);
  EXPECT_EQ(named(), "CV 30 und 31") << "the refusal does not say which one it is for";
}

}  // namespace
}  // namespace lokari
