#include "sim/decoder.h"

#include <gtest/gtest.h>

namespace lokari::sim {
namespace {

TEST(SimDecoder, HoldsACv) {
  Decoder decoder;
  EXPECT_EQ(decoder.read(5), 0);
  EXPECT_TRUE(decoder.write(5, 200));
  EXPECT_EQ(decoder.read(5), 200);
}

TEST(SimDecoder, TakesAShortAddress) {
  Decoder decoder;
  decoder.store(29, 0x26);
  decoder.setAddress(127);
  EXPECT_EQ(decoder.stored(1), 127);
  EXPECT_EQ(decoder.stored(29), 0x06);
  EXPECT_EQ(decoder.address(), 127);
}

TEST(SimDecoder, TakesALongAddress) {
  Decoder decoder;
  decoder.setAddress(10239);
  EXPECT_EQ(decoder.stored(17), 231);
  EXPECT_EQ(decoder.stored(18), 255);
  EXPECT_EQ(decoder.stored(29), 0x20);
  EXPECT_EQ(decoder.address(), 10239);
}

TEST(SimDecoder, FollowsAnAddressThatIsProgrammed) {
  Decoder decoder;
  decoder.setAddress(3);
  decoder.write(17, 195);
  decoder.write(18, 232);
  EXPECT_EQ(decoder.address(), 3);
  decoder.write(29, 0x20);
  EXPECT_EQ(decoder.address(), 1000);
}

TEST(SimDecoder, DoesNotAcknowledgeCvsItDoesNotHave) {
  Decoder decoder;
  decoder.present = {{1, 10}, {29, 29}};
  EXPECT_TRUE(decoder.read(10).has_value());
  EXPECT_FALSE(decoder.read(11).has_value());
  EXPECT_FALSE(decoder.write(28, 1));
  EXPECT_TRUE(decoder.write(29, 1));
  EXPECT_FALSE(Decoder().read(1025).has_value());
  EXPECT_FALSE(Decoder().read(0).has_value());
}

TEST(SimDecoder, RefusesAWriteToAReadOnlyCv) {
  Decoder decoder;
  decoder.store(8, 97);
  EXPECT_FALSE(decoder.write(8, 1));
  EXPECT_EQ(decoder.read(8), 97);
}

TEST(SimDecoder, AcknowledgesAWriteThatDoesNotStick) {
  Decoder decoder;
  decoder.sticky = {57};
  decoder.store(57, 9);
  EXPECT_TRUE(decoder.write(57, 10));
  EXPECT_EQ(decoder.read(57), 9);
}

TEST(SimDecoder, ALockedDecoderTakesOnlyTheKey) {
  Decoder decoder;
  decoder.lock = {15, 16};
  decoder.store(15, 1);
  decoder.store(16, 2);
  EXPECT_FALSE(decoder.write(5, 200));
  EXPECT_FALSE(decoder.write(15, 2));
  EXPECT_TRUE(decoder.write(16, 1));
  EXPECT_TRUE(decoder.write(5, 200));
}

TEST(SimDecoder, RegisterModeReachesEightRegistersAndTheFifthIsCv29) {
  Decoder decoder;
  decoder.store(1, 3);
  decoder.store(5, 200);
  decoder.store(29, 6);
  EXPECT_EQ(decoder.read(1, Method::Register), 3);
  EXPECT_EQ(decoder.read(5, Method::Register), 6);
  EXPECT_FALSE(decoder.read(9, Method::Register).has_value());
  EXPECT_TRUE(decoder.write(5, 2, Method::Register));
  EXPECT_EQ(decoder.stored(29), 2);
  EXPECT_EQ(decoder.stored(5), 200);
}

TEST(SimDecoder, KnowsOnlyItsMethods) {
  Decoder decoder;
  decoder.methods = {Method::Paged};
  EXPECT_FALSE(decoder.read(1, Method::Direct).has_value());
  EXPECT_TRUE(decoder.read(1, Method::Paged).has_value());
}

class BankedDecoder : public ::testing::Test {
 protected:
  BankedDecoder() {
    decoder.banks = {{{16, 0}, {{257, 11}}}, {{16, 1}, {{257, 21}}}};
    decoder.store(257, 1);
  }
  Decoder decoder;
};

TEST_F(BankedDecoder, ShowsThePlainCvsWhileNoBankIsSelected) {
  EXPECT_EQ(decoder.read(257), 1);
}

TEST_F(BankedDecoder, ShowsTheBankThatTheIndexRegistersSelect) {
  decoder.write(31, 16);
  EXPECT_EQ(decoder.read(257), 11);
  decoder.write(32, 1);
  EXPECT_EQ(decoder.read(257), 21);
  EXPECT_EQ(decoder.read(258), 0);
  decoder.write(32, 2);
  EXPECT_EQ(decoder.read(257), 1);
}

TEST_F(BankedDecoder, WritesIntoTheSelectedBankOnly) {
  decoder.write(31, 16);
  decoder.write(257, 99);
  decoder.write(32, 1);
  EXPECT_EQ(decoder.read(257), 21);
  decoder.write(32, 0);
  EXPECT_EQ(decoder.read(257), 99);
}

TEST_F(BankedDecoder, CvsOutsideTheBankedRangeAreTheSameInEveryBank) {
  decoder.write(31, 16);
  decoder.write(5, 7);
  decoder.write(32, 1);
  EXPECT_EQ(decoder.read(5), 7);
}

TEST(SimDecoder, MayHaveOneIndexRegisterOfItsOwn) {
  Decoder decoder;
  decoder.indexRegisters = {6};
  decoder.banked = {100, 110};
  decoder.banks = {{{4}, {{100, 44}}}};
  decoder.write(6, 4);
  EXPECT_EQ(decoder.read(100), 44);
}

}  // namespace
}  // namespace lokari::sim
