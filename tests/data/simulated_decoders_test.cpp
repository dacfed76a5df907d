// The shipped decoders of the simulated stations.
#include <gtest/gtest.h>

#include "base/text_file.h"
#include "sim/decoder_file.h"
#include "support/places.h"

namespace lokari::sim {
namespace {

Layout layoutOf(const char* name) {
  Layout layout;
  const auto text =
      readTextFile(places::demo() + QStringLiteral("/sim/") + QString::fromLatin1(name));
  EXPECT_TRUE(text.has_value()) << name;
  EXPECT_EQ(readDecoders(text.value_or(QString()), layout), QString());
  return layout;
}

TEST(SimulatedDecoders, DemonstrationPutsAddress64OnTheProgrammingTrack) {
  Layout layout = layoutOf("decoder.txt");
  Decoder* decoder = layout.onProgrammingTrack();
  ASSERT_NE(decoder, nullptr);
  EXPECT_EQ(decoder->address(), 64);
  EXPECT_EQ(decoder->manufacturer(), 97);
  for (const int address : {64, 1001, 3, 200, 110}) {
    EXPECT_NE(layout.onMainTrack(address), nullptr) << address;
  }
}

TEST(SimulatedDecoders, DemonstrationShowsEachBankByItsIndexRegisters) {
  Layout layout = layoutOf("decoder.txt");
  Decoder* decoder = layout.onProgrammingTrack();
  ASSERT_NE(decoder, nullptr);
  EXPECT_TRUE(decoder->write(31, 16));
  EXPECT_TRUE(decoder->write(32, 1));
  EXPECT_EQ(decoder->read(258), 90);
  EXPECT_TRUE(decoder->write(32, 0));
  EXPECT_EQ(decoder->read(258), 2);
  EXPECT_TRUE(decoder->write(31, 17));
  EXPECT_EQ(decoder->read(300), 31);
}

TEST(SimulatedDecoders, StubbornDecoderAcknowledgesAndKeepsItsValue) {
  Layout layout = layoutOf("stur.txt");
  Decoder* decoder = layout.onProgrammingTrack();
  ASSERT_NE(decoder, nullptr);
  EXPECT_EQ(decoder->address(), 64);
  EXPECT_TRUE(decoder->write(3, 99));
  EXPECT_EQ(decoder->read(3), 12);
  EXPECT_EQ(decoder->read(63), std::nullopt);
}

TEST(SimulatedDecoders, ForeignDecoderHasAnotherAddressAndMaker) {
  Layout layout = layoutOf("fremd.txt");
  ASSERT_NE(layout.onProgrammingTrack(), nullptr);
  EXPECT_EQ(layout.onProgrammingTrack()->address(), 33);
  EXPECT_EQ(layout.onProgrammingTrack()->manufacturer(), 131);
}

TEST(SimulatedDecoders, OldDecoderKnowsTheRegisterModeAlone) {
  Layout layout = layoutOf("alt.txt");
  Decoder* decoder = layout.onProgrammingTrack();
  ASSERT_NE(decoder, nullptr);
  EXPECT_EQ(decoder->read(3), std::nullopt);
  EXPECT_EQ(decoder->read(3, Method::Register), 2);
  EXPECT_EQ(decoder->read(1, Method::Register), 5);
}

}  // namespace
}  // namespace lokari::sim
