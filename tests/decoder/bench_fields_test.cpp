// Value fields: what enters the working set, the colours, the events.
#include "bench_fixture.h"

namespace lokari {
namespace {

const char* const kFields =
    "[X]\n"
    "CV_2=Spannung,\"1,3,5-7\",3,0,Hinweis zu CV 2\n"
    "CV_3=Zeit,0-255,0\n"
    "CV_9=Periode,0-99,0,2\n"
    "CV_30=Wert,0-255,0,5\n"
    "CV_31=Groß,0-300,0,5\n";

class BenchFields : public BenchFixture {
 protected:
  void SetUp() override { openEco(kFields); }

  bool type(const char* field, const char* text, int cv, const char* range = "0-255") {
    bench->fieldEdited(QString::fromUtf8(field), QString::fromUtf8(text));
    return bench->CheckDcField(QString::fromUtf8(field), CvIndex(cv), QString::fromUtf8(range));
  }
  const QStringList kOutOfRange{"Eingabe außerhalb des Wertebereichs!"};
};

TEST_F(BenchFields, AValueInRangeIsTaken) {
  EXPECT_TRUE(type("txtDcDrvMinVolt", "6", 2, "1,3,5-7"));
  EXPECT_EQ(value(2), 6);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(BenchFields, AValueOutOfRangeIsRefusedAndTheFocusReturns) {
  type("txtDcDrvMinVolt", "6", 2, "1,3,5-7");
  focused.clear();
  EXPECT_FALSE(type("txtDcDrvMinVolt", "2", 2, "1,3,5-7"));
  EXPECT_EQ(value(2), 6);
  EXPECT_EQ(prompt.shown, kOutOfRange);
  EXPECT_EQ(focused, QStringList({"txtDcDrvMinVolt"}));
}

TEST_F(BenchFields, TextIsLeftAloneWithoutAMessage) {
  type("txtDcComAccTime", "8", 3);
  EXPECT_TRUE(type("txtDcComAccTime", "abc", 3));
  EXPECT_EQ(value(3), 8);
  EXPECT_EQ(text("txtDcComAccTime"), "abc");
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(BenchFields, AnEmptyFieldStoresZero) {
  type("txtDcComAccTime", "8", 3);
  EXPECT_TRUE(type("txtDcComAccTime", "  ", 3));
  EXPECT_EQ(value(3), 0);
}

TEST_F(BenchFields, TheConsistFieldKeepsTheDirection) {
  bench->optionClicked(QStringLiteral("optDcConsistDirReverse"));
  EXPECT_EQ(value(19), 128);
  EXPECT_TRUE(type("txtDcComConsist", "5", 19, "0-127"));
  EXPECT_EQ(value(19), 133);
  EXPECT_TRUE(type("txtDcComConsist", "", 19, "0-127"));
  EXPECT_EQ(value(19), 128);
  EXPECT_FALSE(type("txtDcComConsist", "128", 19, "0-127"));
  EXPECT_EQ(value(19), 128);
}

TEST_F(BenchFields, NumbersAreRoundedLikeAllOthers) {
  EXPECT_TRUE(type("txtDcComAccTime", "2,5", 3));
  EXPECT_EQ(value(3), 2);
}

TEST_F(BenchFields, WhatNoByteHoldsIsRefusedWhateverTheRangeSays) {
  EXPECT_FALSE(type("txtDcComAccTime", "300", 3, "0-300"));
  EXPECT_FALSE(type("txtDcComAccTime", "99999999", 3, "0-255"));
  EXPECT_FALSE(type("txtDcComAccTime", "-1", 3, "0-255"));
  EXPECT_EQ(value(3), 0);
  EXPECT_EQ(prompt.shown.size(), 3);
}

TEST_F(BenchFields, WhileTheWindowOpensOrAJobRunsAValueOutOfRangeEntersInSilence) {
  for (bool DecoderBench::*flag : {&DecoderBench::windowOpening, &DecoderBench::commRunning}) {
    bench->sets.setValue(CvIndex(2), 0);
    (*bench).*flag = true;
    EXPECT_TRUE(type("txtDcDrvMinVolt", "2", 2, "1,3,5-7"));
    (*bench).*flag = false;
    EXPECT_EQ(value(2), 2);
  }
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(BenchFields, NothingIsCheckedWhileTheCalculatorIsOpen) {
  bench->calcOpen = true;
  EXPECT_TRUE(type("txtDcDrvMinVolt", "2", 2, "1,3,5-7"));
  EXPECT_EQ(value(2), 0);
}

TEST_F(BenchFields, LeavingAFieldChecksItAgainstItsCv) {
  bench->fieldEdited(QStringLiteral("txtDcDrvMinVolt"), QStringLiteral("2"));
  bench->fieldLeft(QStringLiteral("txtDcDrvMinVolt"));
  EXPECT_EQ(prompt.shown, kOutOfRange);
  bench->fieldEdited(QStringLiteral("txtDcDrvMinVolt"), QStringLiteral("7"));
  bench->fieldLeft(QStringLiteral("txtDcDrvMinVolt"));
  EXPECT_EQ(value(2), 7);
  bench->fieldEdited(QStringLiteral("txtDcDrvUser"), QStringLiteral("44"));
  bench->fieldLeft(QStringLiteral("txtDcDrvUser"));
  EXPECT_EQ(value(9), 44);
  bench->fieldEdited(QStringLiteral("txtDcComConsist"), QStringLiteral("12"));
  bench->fieldLeft(QStringLiteral("txtDcComConsist"));
  EXPECT_EQ(value(19), 12);
}

TEST_F(BenchFields, ARowsFieldWorksTheSame) {
  bench->rowEdited(rowOf(30), QStringLiteral("200"));
  bench->rowLeft(rowOf(30));
  EXPECT_EQ(value(30), 200);
  bench->rowEdited(rowOf(30), QStringLiteral("256"));
  bench->rowLeft(rowOf(30));
  EXPECT_EQ(value(30), 200);
  EXPECT_EQ(prompt.shown, kOutOfRange);
  EXPECT_EQ(focused.last(), "txtOther_1");
}

TEST_F(BenchFields, AnEditedValueLosesItsMarkAndItsColour) {
  setMark(30, CvMark::Verified);
  bench->refreshFields(false);
  EXPECT_EQ(row(30).colour, TextColour::Blue);
  bench->rowEdited(rowOf(30), QStringLiteral("5"));
  EXPECT_EQ(mark(30), CvMark::None);
  EXPECT_EQ(row(30).colour, TextColour::Normal);
}

TEST_F(BenchFields, DuringAJobTheMarkStays) {
  setMark(3, CvMark::Failed);
  bench->commRunning = true;
  bench->fieldEdited(QStringLiteral("txtDcComAccTime"), QStringLiteral("5"));
  bench->commRunning = false;
  EXPECT_EQ(mark(3), CvMark::Failed);
  EXPECT_EQ(control("txtDcComAccTime").colour, TextColour::Red);
}

TEST_F(BenchFields, F2PutsTheCalculatorsAnswerIntoTheField) {
  QString given;
  bench->calculatorBox = [&](const QString& text) {
    given = text;
    EXPECT_TRUE(bench->calcOpen);
    bench->rowLeft(rowOf(30));
    return QStringLiteral("77");
  };
  bench->rowEdited(rowOf(30), QStringLiteral("999"));
  bench->rowF2(rowOf(30));
  EXPECT_EQ(given, "999");
  EXPECT_EQ(row(30).text, "77");
  EXPECT_FALSE(bench->calcOpen);
  EXPECT_TRUE(prompt.shown.isEmpty()) << "the field that lost the focus to it is not checked";
  bench->calculatorBox = [](const QString&) { return QString(); };
  bench->rowF2(rowOf(30));
  EXPECT_EQ(row(30).text, "77");
}

TEST_F(BenchFields, SetCvvalCountsFromZero) {
  bench->setCvval(99, 29);
  EXPECT_EQ(value(30), 99);
  EXPECT_EQ(row(30).text, "99");
}

// ---- The address ------------------------------------------------------------------------------

TEST_F(BenchFields, AnAddressOutsideOneTo10239KeepsTheFocus) {
  for (const char* address : {"0", "10240", "99999999"}) {
    focused.clear();
    bench->fieldEdited(QStringLiteral("dc_adr"), QString::fromUtf8(address));
    EXPECT_EQ(focused, QStringList({"dc_adr"})) << address;
  }
  focused.clear();
  bench->fieldEdited(QStringLiteral("dc_adr"), QStringLiteral("10239"));
  bench->fieldEdited(QStringLiteral("dc_adr"), QStringLiteral("abc"));
  EXPECT_TRUE(focused.isEmpty());
}

TEST_F(BenchFields, LeavingAnAddressAboveTheTypesHighestIsRefused) {
  openEco("[X]\nMAXADDRESS=99");
  bench->fieldEdited(QStringLiteral("dc_adr"), QStringLiteral("100"));
  bench->fieldLeft(QStringLiteral("dc_adr"));
  EXPECT_EQ(prompt.shown, QStringList({"Adresse für diesen Decodertyp ungültig!"}));
  EXPECT_EQ(focused.last(), "dc_adr");
  bench->fieldEdited(QStringLiteral("dc_adr"), QStringLiteral("99"));
  bench->fieldLeft(QStringLiteral("dc_adr"));
  EXPECT_EQ(prompt.shown.size(), 1);
}

TEST_F(BenchFields, ATypedAddressLosesItsMarks) {
  for (const int index : {1, 17, 18}) setMark(index, CvMark::Verified);
  bench->fieldEdited(QStringLiteral("dc_adr"), QStringLiteral("9"));
  for (const int index : {1, 17, 18}) EXPECT_EQ(mark(index), CvMark::None);
  EXPECT_EQ(control("dc_adr").colour, TextColour::Normal);
}

TEST_F(BenchFields, TheColourOfALongAddressNeedsBothMarks) {
  struct Case {
    const char* address;
    CvMark whole, high, low;
    TextColour colour;
  };
  constexpr auto none = CvMark::None, good = CvMark::Verified, bad = CvMark::Failed;
  const Case cases[] = {
      {"127", good, bad, bad, TextColour::Blue},     {"127", bad, good, good, TextColour::Red},
      {"127", none, good, good, TextColour::Normal}, {"128", bad, good, good, TextColour::Blue},
      {"128", good, good, none, TextColour::Normal}, {"128", good, good, bad, TextColour::Red},
      {"128", good, bad, good, TextColour::Red},     {"abc", good, bad, bad, TextColour::Blue},
  };
  for (const Case& c : cases) {
    record.recCvMarks[0][0] = static_cast<char>(c.whole);
    record.recCvMarks[0][16] = static_cast<char>(c.high);
    record.recCvMarks[0][17] = static_cast<char>(c.low);
    openEco(kFields, c.address);
    EXPECT_EQ(control("dc_adr").colour, c.colour) << c.address;
  }
}

// ---- Options ----------------------------------------------------------------------------------

struct OptionCase {
  const char* sets;
  const char* clears;
  int cv;
  int bit;
  const char* twin;  // of the one that sets
};

TEST_F(BenchFields, EveryOptionSetsAndClearsItsBit) {
  const OptionCase cases[] = {
      {"optDcComDirReverse", "optDcComDirNormal", 29, 1, nullptr},
      {"optDcComSteps28", "optDcComSteps14", 29, 2, "optDcDrvSteps28"},
      {"optDcDrvSteps28", "optDcDrvSteps14", 29, 2, "optDcComSteps28"},
      {"optDcComAnalogYes", "optDcComAnalogNo", 29, 4, nullptr},
      {"optDcComDetectPulseYes", "optDcComDetectPulseNo", 29, 8, nullptr},
      {"optDcComRailComYes", "optDcComRailComNo", 29, 8, nullptr},
      {"optDcComSpdTblYes", "optDcComSpdTblNo", 29, 16, "optDcDrvSpdTblYes"},
      {"optDcDrvSpdTblYes", "optDcDrvSpdTblNo", 29, 16, "optDcComSpdTblYes"},
      {"optDcComManBitYes", "optDcComManBitNo", 29, 64, nullptr},
      {"optDcConsistDirReverse", "optDcConsistDirNormal", 19, 128, nullptr},
  };
  for (const OptionCase& c : cases) {
    bench->sets.setValue(CvIndex(c.cv), 0);
    bench->refreshFields(false);
    setMark(c.cv, CvMark::Verified);
    bench->optionClicked(QString::fromUtf8(c.sets));
    EXPECT_EQ(value(c.cv), c.bit) << c.sets;
    EXPECT_TRUE(checked(c.sets) && !checked(c.clears)) << c.sets;
    EXPECT_TRUE(!c.twin || checked(c.twin)) << c.sets;
    EXPECT_EQ(mark(c.cv), CvMark::None) << c.sets;
    bench->sets.setValue(CvIndex(c.cv), 255);
    bench->optionClicked(QString::fromUtf8(c.clears));
    EXPECT_EQ(value(c.cv), 255 - c.bit) << c.clears;
    EXPECT_TRUE(!checked(c.sets) && checked(c.clears)) << c.clears;
    EXPECT_FALSE(c.twin && checked(c.twin)) << c.clears;
  }
}

TEST_F(BenchFields, StepsAndTableOptionsDrawTheSpeedTableAnew) {
  int draws = 0;
  QObject::connect(bench.get(), &DecoderBench::speedTableChanged, bench.get(), [&] { ++draws; });
  bench->optionClicked(QStringLiteral("optDcDrvSpdTblYes"));
  EXPECT_EQ(draws, 1);
  bench->optionClicked(QStringLiteral("optDcComSteps28"));
  EXPECT_EQ(draws, 2);
  bench->optionClicked(QStringLiteral("optDcComDirReverse"));
  EXPECT_EQ(draws, 2);
}

TEST_F(BenchFields, AllOptionsShowTheMarkOfTheirCv) {
  setMark(29, CvMark::Failed);
  setMark(19, CvMark::Verified);
  bench->refreshFields(false);
  for (const char* name :
       {"optDcComDirNormal", "optDcDrvSteps28", "optDcComAnalogYes", "optDcDrvSpdTblNo",
        "optDcComDetectPulseNo", "optDcComManBitYes", "optDcComRailComYes"}) {
    EXPECT_EQ(control(name).colour, TextColour::Red) << name;
  }
  for (const char* name : {"optDcConsistDirNormal", "optDcConsistDirReverse", "txtDcComConsist"}) {
    EXPECT_EQ(control(name).colour, TextColour::Blue) << name;
  }
  bench->ColorCV29();
  EXPECT_EQ(mark(29), CvMark::None);
  EXPECT_EQ(control("optDcComDirNormal").colour, TextColour::Normal);
}

// ---- Tool tips --------------------------------------------------------------------------------

TEST_F(BenchFields, AToolTipIsTheTipOfTheCvOrTheTagItself) {
  EXPECT_EQ(control("txtDcDrvMinVolt").tag, "2");
  EXPECT_EQ(bench->DcToolTips(QStringLiteral("2")), " Hinweis zu CV 2 ");
  EXPECT_EQ(bench->DcToolTips(QStringLiteral("3")), "");
  EXPECT_EQ(bench->DcToolTips(QStringLiteral("Adresse des Decoders")), " Adresse des Decoders ");
  EXPECT_EQ(bench->DcToolTips(QStringLiteral("12345")), " 12345 ");
  EXPECT_EQ(bench->DcToolTips(QStringLiteral("abc")), " abc ");
  EXPECT_EQ(bench->DcToolTips(QString()), "");
}

}  // namespace
}  // namespace lokari
