#include "station/firm_blocks.h"

#include "firm_fixture.h"
#include "link/link_error.h"
#include "station/raw_port.h"

namespace lokari {
namespace {

class FirmBlocksTest : public test::FirmFixture {
 protected:
  FirmBlocksTest() { port.OpenComm(); }

  FirmEnd send() { return FirmBlocks(link, port, view, firmware).send(); }

  /// Adds blocks of the values 1, 2 ... from address 0 on.
  void addBlocks(int count) {
    for (int i = 0; i < count; ++i) addBlock(i * 16, i + 1);
  }
  /// Expects the block that addBlocks() made for a place.
  test::ScriptedLine& expectBlock(int place) {
    return line.expect(message(0, place / 16, place % 16 * 16, place + 1));
  }

  RawPort port{line, {.comPort = 3, .baudrate = 9600}};
};

TEST_F(FirmBlocksTest, AnEmptyImageSucceedsAtOnceWithoutABlock) {
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_TRUE(line.writes.isEmpty());
  EXPECT_EQ(clock.now(), 0);
}

TEST_F(FirmBlocksTest, OnlyBlocksThatAreNotErasedAreSent) {
  addBlock(0x0010, 0x11);
  addBlock(0x7FF0, 0x22);
  addBlock(0x8000, 0x33);
  addBlock(0xFFF0, 0x44);
  line.expect(message(0, 0x00, 0x10, 0x11)).answer("?");
  line.expect(message(0, 0x7F, 0xF0, 0x22)).answer("?");
  line.expect(message(1, 0x00, 0x00, 0x33)).answer("?");
  line.expect(message(1, 0x7F, 0xF0, 0x44)).answer("?");
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(FirmBlocksTest, ABlockWithOneByteIsSentWhole) {
  firmware.firmImage[0x105] = 'A';
  QByteArray data(16, '\xFF');
  data[5] = 'A';
  // 1 + 15 * 255 + 65 = 0xF33
  line.expect("!" + bytes({0, 1, 0}) + data + bytes({0x33})).answer("?");
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(FirmBlocksTest, ARefusedBlockGoesOutAgain) {
  addBlocks(2);
  expectBlock(0).answer("E");
  expectBlock(0).answer("E");
  expectBlock(0).answer("?");
  expectBlock(1).answer("E");
  expectBlock(1).answer("?");
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(FirmBlocksTest, ARefusalForEverIsEndedByACancelOnly) {
  addBlocks(2);
  for (int i = 0; i < 500; ++i) expectBlock(0).answer("E");
  expectBlock(0).then([this] { link.cancelRequested = true; });
  EXPECT_EQ(send(), FirmEnd::Cancelled);
}

TEST_F(FirmBlocksTest, ALostFirstBankStartsOverAtAddress0) {
  addBlocks(3);
  expectBlock(0).answer("?");
  expectBlock(1).answer("b");
  expectBlock(0).answer("?");
  expectBlock(1).answer("?");
  expectBlock(2).answer("?");
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(FirmBlocksTest, ALostSecondBankStartsOverAtItsOwnBeginning) {
  addBlock(0x0000, 0x01);
  addBlock(0x8000, 0x02);
  addBlock(0x8010, 0x03);
  line.expect(message(0, 0, 0x00, 0x01)).answer("?");
  line.expect(message(1, 0, 0x00, 0x02)).answer("?");
  line.expect(message(1, 0, 0x10, 0x03)).answer("b");
  line.expect(message(1, 0, 0x00, 0x02)).answer("?");
  line.expect(message(1, 0, 0x10, 0x03)).answer("?");
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(FirmBlocksTest, TheLastBlockOfTheFirstBankBelongsToTheFirstBank) {
  addBlock(0x0000, 0x01);
  addBlock(0x7FF0, 0x02);
  line.expect(message(0, 0x00, 0x00, 0x01)).answer("?");
  line.expect(message(0, 0x7F, 0xF0, 0x02)).answer("b");
  line.expect(message(0, 0x00, 0x00, 0x01)).answer("?");
  line.expect(message(0, 0x7F, 0xF0, 0x02)).answer("?");
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(FirmBlocksTest, ABlockWithoutAnAnswerIsNotSentAgain) {
  addBlocks(2);
  expectBlock(0);
  expectBlock(1).answer("?");
  EXPECT_EQ(send(), FirmEnd::Unconfirmed);
  EXPECT_EQ(line.writes[1].at, 32 * 20);
}

TEST_F(FirmBlocksTest, TwentyBlocksInARowWithoutAnAnswerAreAFailure) {
  addBlocks(21);
  for (int i = 0; i < 20; ++i) expectBlock(i);
  EXPECT_EQ(send(), FirmEnd::Failed);
  EXPECT_EQ(clock.now(), 20 * 32 * 20);
}

TEST_F(FirmBlocksTest, EachOfTheThreeAnswersEndsARowOfSilence) {
  addBlocks(40);
  for (int i = 0; i < 19; ++i) expectBlock(i);
  expectBlock(19).answer("?");
  for (int i = 20; i < 39; ++i) expectBlock(i);
  expectBlock(39).answer("E");
  expectBlock(39).answer("b");
  for (int i = 0; i < 19; ++i) expectBlock(i);
  for (int i = 19; i < 40; ++i) expectBlock(i).answer("?");
  EXPECT_EQ(send(), FirmEnd::Unconfirmed);
}

TEST_F(FirmBlocksTest, TwentySilentBlocksAtTheEndOfTheImageAreAFailureToo) {
  addBlocks(20);
  for (int i = 0; i < 20; ++i) expectBlock(i);
  EXPECT_EQ(send(), FirmEnd::Failed);
}

TEST_F(FirmBlocksTest, AnAnswerInTheLastTryCounts) {
  addBlocks(2);
  expectBlock(0).answer("E", 620);
  expectBlock(0).answer("?");
  expectBlock(1).answer("?");
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(FirmBlocksTest, AnAnswerBehindTheLastTryIsDroppedBeforeTheNextBlock) {
  addBlocks(2);
  expectBlock(0).answer("E", 630);
  expectBlock(1).answer("?");
  EXPECT_EQ(send(), FirmEnd::Unconfirmed);
}

TEST_F(FirmBlocksTest, OtherBytesAreReadPastAndCountNoTry) {
  addBlocks(1);
  expectBlock(0).answer(QByteArray(64, 'x'), 10).answer("\r\nE", 605);
  expectBlock(0).answer("xyz?");
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(FirmBlocksTest, TheFirstOfTwoAnswersCounts) {
  addBlocks(2);
  expectBlock(0).answer("?E");
  expectBlock(1).answer("?");
  EXPECT_EQ(send(), FirmEnd::Complete);
}

TEST_F(FirmBlocksTest, ACancelActsBehindTheBlockInHandWithoutAwaitingItsAnswer) {
  addBlocks(2);
  expectBlock(0).then([this] { link.cancelRequested = true; });
  EXPECT_EQ(send(), FirmEnd::Cancelled);
  EXPECT_EQ(clock.now(), 0);
}

/// A station that pours out bytes without a pause.
class NoisyLine final : public test::MemoryLine {
 public:
  using MemoryLine::MemoryLine;
  qsizetype inBufferCount() override { return 1; }
  QByteArray read(qsizetype) override { return "x"; }
};

TEST_F(FirmBlocksTest, NoiseWithoutAnEndDoesNotShutOutACancel) {
  NoisyLine noise(clock);
  RawPort noisyPort(noise, {});
  noisyPort.OpenComm();
  addBlocks(3);
  clock.schedule(0, [&] { clock.schedule(0, [&] { link.cancelRequested = true; }); });
  EXPECT_EQ(FirmBlocks(link, noisyPort, view, firmware).send(), FirmEnd::Cancelled);
}

TEST_F(FirmBlocksTest, AVanishedDeviceIsToldAtOnce) {
  addBlocks(2);
  expectBlock(0).then([this] { line.vanish(); });
  EXPECT_THROW(send(), LinkError);
}

TEST_F(FirmBlocksTest, TheBarMovesWithEveryPage) {
  addBlocks(48);
  for (int i = 0; i < 48; ++i) expectBlock(i).answer("?");
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(view.percents, (QList<double>{33, 66}));
}

TEST_F(FirmBlocksTest, ABarBeyondItsEndIsNotShown) {
  addBlock(0x80F0, 1);
  addBlock(0x81F0, 2);
  line.expect(message(1, 0, 0xF0, 1)).answer("?");
  line.expect(message(1, 1, 0xF0, 2)).answer("?");
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_TRUE(view.percents.isEmpty());
}

TEST_F(FirmBlocksTest, TellsTheBlockInHandAndAfterAFewTheTimeLeft) {
  addBlocks(16);
  for (int i = 0; i < 16; ++i) expectBlock(i).answer("?", 600);
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(view.details.first(), "Block 1 von 16");
  EXPECT_EQ(view.details[7], "Block 8 von 16");
  // eight took 4800 ms, eight are left
  EXPECT_EQ(view.details[8], "Block 9 von 16, noch etwa 5 Sekunden");
}

}  // namespace
}  // namespace lokari
