// An edit of a record whose CV sets others store meanwhile: a mark never stands beside a value that
// it was not set for, and nobody's values are written over unasked.
#include "form_fixture.h"

namespace lokari {
namespace {

constexpr char kRead = '1';

class CvEditTest : public test::FormFixture {
 protected:
  CvEditTest() {
    put(3, {{1, 3}, {3, 10}}, {1, 3});
    open();
  }

  /// What a program stores of the first set: values of CVs, and those that were read.
  void put(int address, const QList<std::pair<int, int>>& values, const QList<int>& read) {
    QByteArray array(kCvFieldBytes, '\0');
    for (const auto& [cv, value] : values) array[cv - 1] = static_cast<char>(value);
    QByteArray marks(kCvFieldBytes, '\0');
    for (const int cv : read) marks[cv - 1] = kRead;
    base_.run("UPDATE LOCO_DAT SET DC_CV = ?, DC_CV_ST = ? WHERE DC_ADR = ?",
              {array, marks, address});
  }
  int value(int cv, const char* name = "A3") { return byteOf("DC_CV", cv, name); }
  bool isRead(int cv, const char* name = "A3") { return byteOf("DC_CV_ST", cv, name) == kRead; }

 private:
  int byteOf(const char* column, int cv, const char* name) {
    const QByteArray array = stored(str("SELECT %1 FROM LOCO_DAT WHERE ST_SNAME = '%2'")
                                        .arg(str(column), str(name))
                                        .toUtf8())
                                 .toByteArray();
    return array.size() < cv ? 0 : array[cv - 1];
  }
};

// ---- An address that is typed -------------------------------------------------------------------

TEST_F(CvEditTest, AnAddressThatIsTypedCallsNoCopiedValueRead) {
  type("dc_adr", "33");
  // Copied onto all vehicles from the decoder window, which is then given up.
  put(3, {{1, 3}, {3, 50}}, {1});
  form_.refreshCvSets();
  EXPECT_EQ(form_.workingCopy().recCvValues[0][2], 50);
  EXPECT_EQ(form_.workingCopy().recCvMarks[0][0], '\0') << "the window opens with the new address";
  form_.MoveNext();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(stored("SELECT DC_ADR FROM LOCO_DAT WHERE ST_SNAME = 'A3'").toInt(), 33);
  EXPECT_EQ(value(3), 50);
  EXPECT_FALSE(isRead(3));
  EXPECT_FALSE(isRead(1));
}

TEST_F(CvEditTest, MyAddressIsStoredBesideTheValuesAndMarksOfTheOther) {
  type("dc_adr", "33");
  put(3, {{1, 3}, {3, 50}, {4, 7}}, {1, 4});
  prompt_.choices = {0};
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_EQ(prompt_.asked.size(), 1);
  EXPECT_EQ(stored("SELECT DC_ADR FROM LOCO_DAT WHERE ST_SNAME = 'A3'").toInt(), 33);
  EXPECT_EQ(value(3), 50);
  EXPECT_FALSE(isRead(3));
  EXPECT_TRUE(isRead(4));
  EXPECT_FALSE(isRead(1));
}

TEST_F(CvEditTest, AnAddressThatWasRefusedLeavesTheSetsToOthers) {
  type("dc_adr", "5");
  EXPECT_FALSE(form_.storeEdit()) << "taken; the safe answer goes on editing";
  put(3, {{1, 3}, {3, 50}}, {1, 3});
  form_.refreshCvSets();
  type("dc_adr", "33");
  prompt_.shown.clear();
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(value(3), 50);
  EXPECT_TRUE(isRead(3));
  EXPECT_FALSE(isRead(1));
}

TEST_F(CvEditTest, AnAddressThatIsTypedAndThenProgrammedKeepsItsMark) {
  type("dc_adr", "33");
  ASSERT_TRUE(form_.prepareProgramming());
  CvRecord record = form_.workingCopy();
  record.recCvValues[0][0] = 33;
  record.recCvMarks[0][0] = kRead;
  form_.storeProgrammed(record, str("33"), QString());
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_EQ(value(1), 33);
  EXPECT_TRUE(isRead(1));
}

// ---- Sets that the edit holds -------------------------------------------------------------------

TEST_F(CvEditTest, APasteOverValuesThatAnotherProgramStoredIsAskedAbout) {
  form_.mnuEditCopy();
  form_.MoveNext();
  form_.mnuEditInsert();
  put(5, {{3, 77}}, {3});
  // The decoder window opens and is given up.
  form_.refreshCvSets();
  EXPECT_EQ(form_.workingCopy().recCvValues[0][2], 10) << "what was pasted";
  form_.MoveNext();
  ASSERT_EQ(prompt_.asked.size(), 1);
  EXPECT_TRUE(prompt_.below.last().contains(str("CV-Werte, Satz 1: ")))
      << qPrintable(prompt_.below.last());
  EXPECT_EQ(value(3, "A5"), 77) << "the safe answer stores nothing";
}

TEST_F(CvEditTest, AMarkOfMineIsStoredWithItsValue) {
  put(3, {{3, 10}}, {});
  open();
  CvRecord record = form_.workingCopy();
  record.recCvMarks[0][2] = kRead;
  form_.storeProgrammed(record, str("3"), QString());
  put(3, {{3, 77}}, {});
  prompt_.choices = {0};
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_TRUE(prompt_.below.last().contains(str("CV-Werte, Satz 1: CV 3 dort 77, hier 10")))
      << qPrintable(prompt_.below.last());
  EXPECT_EQ(value(3), 10);
  EXPECT_TRUE(isRead(3));
}

}  // namespace
}  // namespace lokari
