#include "sim/boot_loader.h"

#include "base/bytes.h"
#include "station_fixture.h"

namespace lokari::sim {
namespace {

/// A block of 16 bytes `value`; `sum` is worked out by hand.
QByteArray block(int bank, int high, int low, int value, int sum) {
  return "!" + bytes({bank, high, low}) + QByteArray(16, static_cast<char>(value)) + bytes({sum});
}

class BootLoaderTest : public StationFixture {
 protected:
  explicit BootLoaderTest(QStringView name = u"MX1") : StationFixture(name) {
    station->onFirmware = [this](const QByteArray& memory) { images.append(memory); };
  }

  void start() { EXPECT_EQ(replyTo("Download\r\r"), "Download..."); }

  /// The image when the boot loader is left.
  QByteArray image() {
    images.clear();
    EXPECT_EQ(replyTo("..."), "");
    EXPECT_EQ(images.size(), 1);
    return images.value(0);
  }

  static QByteArray erased() { return QByteArray(65536, '\xFF'); }

  QList<QByteArray> images;
};

class BootLoaderOfV25Test : public BootLoaderTest {
 protected:
  BootLoaderOfV25Test() : BootLoaderTest(u"MX1V25") {}
};

TEST_F(BootLoaderOfV25Test, IsThereToo) {
  start();
  EXPECT_EQ(image(), erased());
}

TEST_F(BootLoaderTest, KeepsGoodBlocksInBothBanks) {
  start();
  EXPECT_EQ(replyTo(block(0, 0x00, 0x00, 0x01, 0x10)), "?");
  EXPECT_EQ(replyTo(block(0, 0x7F, 0xF0, 0x02, 0x8F)), "?");
  EXPECT_EQ(replyTo(block(1, 0x00, 0x00, 0x03, 0x31)), "?");
  EXPECT_EQ(replyTo(block(1, 0x7F, 0xF0, 0x04, 0xB0)), "?");
  QByteArray expected = erased();
  expected.replace(0x0000, 16, QByteArray(16, '\x01'));
  expected.replace(0x7FF0, 16, QByteArray(16, '\x02'));
  expected.replace(0x8000, 16, QByteArray(16, '\x03'));
  expected.replace(0xFFF0, 16, QByteArray(16, '\x04'));
  EXPECT_EQ(image(), expected);
}

TEST_F(BootLoaderTest, RefusesABlockWithAWrongSum) {
  start();
  EXPECT_EQ(replyTo(block(0, 0, 0, 0x01, 0x11)), "E");
  EXPECT_EQ(image(), erased());
}

TEST_F(BootLoaderTest, RefusesABlockOutsideTheMemory) {
  start();
  EXPECT_EQ(replyTo(block(2, 0x00, 0x00, 0x00, 0x02)), "E");
  EXPECT_EQ(replyTo(block(0, 0x80, 0x00, 0x00, 0x80)), "E");
  EXPECT_EQ(replyTo(block(1, 0x7F, 0xF1, 0x00, 0x71)), "E");
  EXPECT_EQ(image(), erased());
}

TEST_F(BootLoaderTest, TakesDotsAndMarksInsideABlockAsData) {
  start();
  EXPECT_EQ(replyTo(block(0, 0, 0, '.', 0xE0)), "?");
  EXPECT_EQ(replyTo(block(0, 0, 0, '!', 0x10)), "?");
  EXPECT_TRUE(images.isEmpty());
}

TEST_F(BootLoaderTest, TakesABlockInPieces) {
  start();
  const QByteArray whole = block(0, 0, 0, 0x01, 0x10);
  station->receive(whole.left(5));
  clock.advance(400);
  EXPECT_EQ(replyTo(whole.mid(5)), "?");
}

TEST_F(BootLoaderTest, ForgetsABlockThatStopsInTheMiddle) {
  start();
  const QByteArray whole = block(0, 0, 0, 0x01, 0x10);
  station->receive(whole.left(5));
  clock.advance(501);
  EXPECT_EQ(replyTo(whole), "?");
}

TEST_F(BootLoaderTest, SaysAgainThatItWaits) {
  start();
  EXPECT_EQ(replyTo("Download\r\r"), "Download...");
  EXPECT_EQ(replyTo("\rnoise"), "");
  EXPECT_EQ(replyTo("QN08\r"), "");
  EXPECT_EQ(replyTo("Download\r"), "Download...");
}

TEST_F(BootLoaderTest, ThreeDotsLeadBackToNormalOperation) {
  start();
  EXPECT_EQ(replyTo("."), "");
  EXPECT_EQ(replyTo("."), "");
  EXPECT_TRUE(images.isEmpty());
  EXPECT_EQ(replyTo("."), "");
  EXPECT_EQ(images.size(), 1);
  EXPECT_EQ(replyTo("QN08\r"), "QN000861\r");
}

TEST_F(BootLoaderTest, AnswersByTheFaultPlan) {
  faults.add(*faultFromText(QStringLiteral("blockerror:2")));
  faults.add(*faultFromText(QStringLiteral("banklost@1")));
  start();
  const QByteArray first = block(0, 0, 0x00, 0x01, 0x10);
  const QByteArray second = block(0, 0, 0x10, 0x02, 0x30);
  EXPECT_EQ(replyTo(first), "E");
  EXPECT_EQ(replyTo(first), "E");
  EXPECT_EQ(replyTo(first), "?");
  EXPECT_EQ(replyTo(second), "b");
  EXPECT_EQ(image(), erased());
}

TEST_F(BootLoaderTest, ALostBankLeavesTheOtherAlone) {
  faults.add({.kind = FaultKind::BankLost, .skip = 1});
  start();
  EXPECT_EQ(replyTo(block(0, 0, 0, 0x01, 0x10)), "?");
  EXPECT_EQ(replyTo(block(1, 0, 0, 0x01, 0x11)), "b");
  EXPECT_EQ(image().left(16), QByteArray(16, '\x01'));
}

TEST_F(BootLoaderTest, AnswersLateOrNotAtAll) {
  start();
  faults.add({.kind = FaultKind::Silence});
  EXPECT_EQ(replyTo(block(0, 0, 0, 0x01, 0x10)), "");
  faults.add({.kind = FaultKind::Late, .amount = 700});
  const Millis sent = clock.now();
  EXPECT_EQ(replyTo(block(0, 0, 0x10, 0x01, 0x20)), "?");
  EXPECT_EQ(answers[0].at - sent, 720);
}

}  // namespace
}  // namespace lokari::sim
