#include "station/firm_block.h"

#include <gtest/gtest.h>

#include "base/bytes.h"
#include "station/firmware.h"

namespace lokari {
namespace {

/// An image with the values `first`, `first` + 1 ... in 16 bytes from an address.
QByteArray imageWith(int address, int first) {
  QByteArray image = Firmware().firmImage;
  for (int i = 0; i < 16; ++i) image[address + i] = static_cast<char>(first + i);
  return image;
}

TEST(FirmBlock, TheFirstBlockOfTheMemory) {
  EXPECT_EQ(firmBlock(imageWith(0, 0x00), 0),
            bytes({'!',  0x00, 0x00, 0x00, 0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06,
                   0x07, 0x08, 0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0x78}));
}

TEST(FirmBlock, TheLastBlockOfTheFirstBank) {
  // 0x7F + 0xF0 + 16 * 0x10 + 120 = 0x2E7
  EXPECT_EQ(firmBlock(imageWith(0x7FF0, 0x10), 0x7FF0),
            bytes({'!',  0x00, 0x7F, 0xF0, 0x10, 0x11, 0x12, 0x13, 0x14, 0x15, 0x16,
                   0x17, 0x18, 0x19, 0x1A, 0x1B, 0x1C, 0x1D, 0x1E, 0x1F, 0xE7}));
}

TEST(FirmBlock, TheSecondBankCountsItsAddressesFromZero) {
  // 1 + 16 * 0xF0 + 120 = 0xF79
  EXPECT_EQ(firmBlock(imageWith(0x8000, 0xF0), 0x8000),
            bytes({'!',  0x01, 0x00, 0x00, 0xF0, 0xF1, 0xF2, 0xF3, 0xF4, 0xF5, 0xF6,
                   0xF7, 0xF8, 0xF9, 0xFA, 0xFB, 0xFC, 0xFD, 0xFE, 0xFF, 0x79}));
}

TEST(FirmBlock, TheLastBlockOfTheMemory) {
  // 1 + 0x7F + 0xF0 + 120 = 0x1E8
  EXPECT_EQ(firmBlock(imageWith(0xFFF0, 0x00), 0xFFF0),
            bytes({'!',  0x01, 0x7F, 0xF0, 0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06,
                   0x07, 0x08, 0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0xE8}));
}

TEST(FirmBlock, IsErasedOnlyWhenAllItsBytesAre255) {
  QByteArray image = Firmware().firmImage;
  EXPECT_TRUE(firmBlockErased(image, 0x100));
  image[0x10F] = '\xFE';
  EXPECT_FALSE(firmBlockErased(image, 0x100));
  EXPECT_TRUE(firmBlockErased(image, 0x110));
  image[0x10F] = '\xFF';
  image[0x100] = '\0';
  EXPECT_FALSE(firmBlockErased(image, 0x100));
  EXPECT_TRUE(firmBlockErased(image, 0xF0));
}

TEST(FirmBlock, OnlyThreeCharactersAreReplies) {
  EXPECT_EQ(firmReplyFrom('?'), FirmReply::Next);
  EXPECT_EQ(firmReplyFrom('b'), FirmReply::SameBank);
  EXPECT_EQ(firmReplyFrom('E'), FirmReply::SameBlock);
  for (const char other : {'B', 'e', '!', '\r', '\0', '\xBF'}) {
    EXPECT_EQ(firmReplyFrom(other), FirmReply::None) << other;
  }
}

}  // namespace
}  // namespace lokari
