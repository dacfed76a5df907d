#include "sim/decoder_file.h"

#include <gtest/gtest.h>

namespace lokari::sim {
namespace {

class DecoderFile : public ::testing::Test {
 protected:
  QString read(const char* text) { return readDecoders(QString::fromUtf8(text), layout); }
  Decoder& first() { return layout.vehicles().at(0)->decoder; }

  Layout layout;
};

TEST_F(DecoderFile, DescribesAVehicle) {
  EXPECT_EQ(read("# Beispiel\n\n[Adlerton AT-SND16]\ncv29=6\naddress=1000\n"
                 "Manufacturer = 97\nCV2=5\ncvs=1-40,57,257-300\nreadonly=7\nsticky=57,60-61\n"
                 "lock=15,16\nmethods=direct,paged\n"),
            "");
  ASSERT_EQ(layout.vehicles().size(), 1U);
  EXPECT_EQ(first().name, "Adlerton AT-SND16");
  EXPECT_EQ(first().address(), 1000);
  EXPECT_EQ(first().stored(29), 0x26);
  EXPECT_EQ(first().manufacturer(), 97);
  EXPECT_EQ(first().read(2), 5);
  EXPECT_FALSE(first().read(41).has_value());
  EXPECT_TRUE(first().read(57).has_value());
  EXPECT_EQ(first().readOnly, (std::set<int>{7}));
  EXPECT_EQ(first().sticky, (std::set<int>{57, 60, 61}));
  EXPECT_EQ(first().lock, (std::array<int, 2>{15, 16}));
  EXPECT_EQ(first().methods, (std::set<Method>{Method::Direct, Method::Paged}));
}

TEST_F(DecoderFile, DescribesBanks) {
  EXPECT_EQ(read("[A]\nindex=31,32\nbanked=257-260\nbank=16,0\nCV257=1\nbank=16,1\nCV257=2\n"
                 "bank=\nCV257=9\n"),
            "");
  EXPECT_EQ(first().read(257), 9);
  first().write(31, 16);
  EXPECT_EQ(first().read(257), 1);
  first().write(32, 1);
  EXPECT_EQ(first().read(257), 2);
}

TEST_F(DecoderFile, HoldsSeveralVehiclesAndWhereTheyStand) {
  EXPECT_EQ(read("[A]\naddress=1\ntrack=main\n[B]\naddress=2\ntrack=prog\n[C]\naddress=3\n"), "");
  EXPECT_EQ(layout.onProgrammingTrack()->name, "B");
  EXPECT_EQ(layout.onMainTrack(1)->name, "A");
  EXPECT_EQ(layout.onMainTrack(2), nullptr);
  EXPECT_EQ(layout.onMainTrack(3)->name, "C");
}

TEST_F(DecoderFile, NamesTheLineOfAFault) {
  EXPECT_EQ(read("CV1=3\n"), "Zeile 1: vor der ersten Zeile \"[Name]\"!");
  EXPECT_EQ(read("[A]\nnix\n"), "Zeile 2: weder \"[Name]\" noch \"Schlüssel=Wert\"!");
  EXPECT_EQ(read("[A]\nfarbe=rot\n"), "Zeile 2: Schlüssel \"farbe\" ist unbekannt!");
  EXPECT_EQ(read("[A]\nCV0=3\n"), "Zeile 2: \"0\" ist keine Zahl von 1 bis 1024!");
  EXPECT_EQ(read("[A]\nCV1=256\n"), "Zeile 2: \"256\" ist keine Zahl von 0 bis 255!");
  EXPECT_EQ(read("[A]\naddress=10240\n"), "Zeile 2: \"10240\" ist keine Zahl von 1 bis 10239!");
  EXPECT_EQ(read("[A]\ntrack=links\n"), "Zeile 2: \"links\" ist unbekannt!");
  EXPECT_EQ(read("[A]\nmethods=direct,laut\n"), "Zeile 2: \"laut\" ist unbekannt!");
  EXPECT_EQ(read("[A]\nlock=15\n"), "Zeile 2: zwei CV-Nummern erwartet!");
  EXPECT_EQ(read("[A]\nbank=16\n"), "Zeile 2: je Indexregister ein Wert erwartet!");
  EXPECT_EQ(read("[A]\nbank=16,0\nCV5=1\n"), "Zeile 3: CV liegt in keiner Bank!");
}

TEST_F(DecoderFile, TheBuiltInVehiclesAreWellFormed) {
  EXPECT_EQ(readDecoders(builtInDecoders(), layout), "");
  EXPECT_EQ(layout.onProgrammingTrack()->address(), 3);
  EXPECT_EQ(layout.onMainTrack(1000)->manufacturer(), 145);
  EXPECT_EQ(layout.onMainTrack(24)->methods, (std::set<Method>{Method::Register}));
}

}  // namespace
}  // namespace lokari::sim
