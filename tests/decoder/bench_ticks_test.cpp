// Ticks that no job acts upon: which they are, how they look, what a job says about them.
#include "bench_fixture.h"

namespace lokari {
namespace {

constexpr const char* kDirect =
    "[X]\nSPEEDTABLE=J\nCV_2=zwei\nCV_3=drei\nCV_4=vier\nCV_5=fuenf\nCV_6=sechs\n"
    "CV_10=Regelung,0-255,0,2\n"
    "CV_40=a,0-255,0,0\nCV_41=b,0-255,0,1\nCV_42=c,0-255,0,0\nCV_50=d,0-255,0,5\n"
    "CV_52=e,0-255,256,0\n";

std::string inMode(const char* description, int mode) {
  return description + ("PROGMODE=" + std::to_string(mode) + "\n");
}

class BenchTicks : public BenchFixture {
 protected:
  void tick(int cv, bool write = false) {
    bench->gridClicked(bench->grid().rowOf(CvIndex(cv)),
                       write ? GridColumn::Write : GridColumn::Read);
  }
  const Control& box(int cv) const {
    return bench->controls.at(QStringLiteral("chkRd_%1").arg(cv));
  }
};

TEST_F(BenchTicks, ATickLooksIdleExactlyWhereItPlansNothing) {
  for (const int mode : {0, 1, 2}) {
    for (const char* family : {"FAMILY=0\n", "FAMILY=1\n"}) {
      openEco((inMode(kDirect, mode) + family).c_str());
      for (int row = 1; row < bench->grid().rowCount(); ++row) {
        const CvIndex cv = bench->grid().cvAt(row);
        if (!cv.inRange() || bench->gridRow(row).read) continue;
        tick(cv.value());
        EXPECT_EQ(bench->isPlanned(false, cv), bench->gridRow(row).idle.isEmpty())
            << "CV " << cv.value() << " mode " << mode << ' ' << family;
        tick(cv.value());
      }
    }
  }
}

TEST_F(BenchTicks, TheBoxesOfPagedModeLookIdleBeyondCv4) {
  openEco(inMode(kDirect, 1).c_str());
  for (const int cv : {2, 3, 4, 29}) EXPECT_EQ(box(cv).idle, "") << cv;
  for (const int cv : {5, 6, 9, 19})
    EXPECT_EQ(box(cv).idle, "mit der Programmierart dieses Decoders nicht erreichbar") << cv;
  EXPECT_EQ(control("chkRd_Tbl").idle, box(5).idle);
  EXPECT_EQ(row(50).idle, box(5).idle);
  openEco(kDirect);
  for (const int cv : {5, 6, 9, 19}) EXPECT_EQ(box(cv).idle, "") << cv;
  EXPECT_EQ(row(50).idle, "");
}

TEST_F(BenchTicks, AReadNamesBeforehandWhatItLeavesOut) {
  openEco(kDirect);
  decoder().store(50, 77);
  for (const int cv : {10, 40, 41, 42, 50}) tick(cv);
  read();
  EXPECT_EQ(prompt.shown.first(), "Nicht gelesen werden, obwohl angekreuzt:");
  EXPECT_EQ(prompt.below.first(),
            "CV 10: es gilt das Kästchen der Seite Fahren\n"
            "CV 40-42: steht auf keiner Seite dieses Decoders");
  EXPECT_EQ(value(50), 77);
  EXPECT_EQ(bench->jobEnd, JobEnd::Complete);
}

TEST_F(BenchTicks, AJobOfNothingButIdleTicksSaysWhyItHasNothingToDo) {
  openEco(inMode(kDirect, 2).c_str());
  tick(50, true);
  check("chkWrt_5");
  write();
  EXPECT_EQ(prompt.shown, QStringList("Keine Daten zum Schreiben ausgewählt!"));
  EXPECT_EQ(prompt.below, QStringList("CV 5, 50: mit der Programmierart dieses Decoders nicht "
                                      "erreichbar"));
  EXPECT_TRUE(sent().isEmpty());
}

TEST_F(BenchTicks, AJobThatLeavesNothingOutSaysNothing) {
  openEco(kDirect);
  tick(50);
  check("chkRd_9");
  tick(10);
  read();
  EXPECT_TRUE(prompt.shown.isEmpty()) << "CV 10 goes with the box of the drive page";
}

TEST_F(BenchTicks, AlleNamesNoPointsBeyondAShortTable) {
  openEco("[X]\nSPEEDTABLE=J\nFAMILY=1\nCV_3=drei\n");
  bench->buttonClicked(QStringLiteral("cmdReadAll"));
  EXPECT_EQ(bench->leftOut(false), "");
}

TEST_F(BenchTicks, CellsThatCannotBeChangedSaySo) {
  openEco(kDirect);
  const auto gridRow = [this](int cv) { return bench->gridRow(bench->grid().rowOf(CvIndex(cv))); };
  EXPECT_TRUE(gridRow(52).readOnly);
  EXPECT_FALSE(gridRow(50).readOnly);
}

}  // namespace
}  // namespace lokari
