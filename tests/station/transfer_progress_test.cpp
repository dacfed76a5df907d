#include "station/transfer_progress.h"

#include <gtest/gtest.h>

#include "support/virtual_clock.h"

namespace lokari {
namespace {

class TransferProgressTest : public ::testing::Test {
 protected:
  /// The text after eight answered blocks of a file of that many blocks, `pace` ms each.
  QString afterEight(int blocks, Millis pace) {
    Firmware firmware;
    firmware.firmImage.fill('\0', blocks * 16);
    firmware.firmImage.append(65536 - blocks * 16, '\xFF');
    TransferProgress progress(firmware, clock);
    for (int i = 1; i <= 9; ++i) {
      progress.blockSent(i * 16);
      if (i < 9) clock.advance(pace);
    }
    return progress.text();
  }

  test::VirtualClock clock;
};

TEST_F(TransferProgressTest, SecondsAreRoundedUpToFives) {
  EXPECT_EQ(afterEight(108, 100), "Block 9 von 108, noch etwa 10 Sekunden");
  EXPECT_EQ(afterEight(109, 100), "Block 9 von 109, noch etwa 15 Sekunden");
}

TEST_F(TransferProgressTest, FromAMinuteOnItTellsMinutes) {
  EXPECT_EQ(afterEight(558, 100), "Block 9 von 558, noch etwa 55 Sekunden");
  EXPECT_EQ(afterEight(559, 100), "Block 9 von 559, noch etwa 1 Minute");
  EXPECT_EQ(afterEight(609, 100), "Block 9 von 609, noch etwa 2 Minuten");
  EXPECT_EQ(afterEight(4096, 100), "Block 9 von 4096, noch etwa 7 Minuten");
}

TEST_F(TransferProgressTest, ErasedBlocksAreNotCounted) {
  Firmware firmware;
  firmware.firmImage[0x20] = '\0';
  firmware.firmImage[0xFFFF] = '\0';
  TransferProgress progress(firmware, clock);
  progress.blockSent(0x30);
  EXPECT_EQ(progress.text(), "Block 1 von 2");
  progress.blockSent(0x10000);
  EXPECT_EQ(progress.text(), "Block 2 von 2");
}

TEST_F(TransferProgressTest, ARepeatedBlockIsTheSameBlock) {
  Firmware firmware;
  firmware.firmImage.fill('\0');
  TransferProgress progress(firmware, clock);
  for (int i = 0; i < 3; ++i) progress.blockSent(0x20);
  EXPECT_EQ(progress.text(), "Block 2 von 4096");
}

TEST_F(TransferProgressTest, TheShareIsThatOfTheFilesData) {
  Firmware firmware;
  firmware.firmBlocks = 48;
  const TransferProgress progress(firmware, clock);
  EXPECT_EQ(progress.percentAt(0x100), 33);
  EXPECT_EQ(progress.percentAt(0x300), 100);
  EXPECT_EQ(progress.percentAt(0x10000), 8533);
}

}  // namespace
}  // namespace lokari
