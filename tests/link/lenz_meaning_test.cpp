// What the documented messages of a Lenz interface are to whoever awaits an answer.
#include "link/lenz_meaning.h"

#include <gtest/gtest.h>

#include "link/lenz_codec.h"

namespace lokari::lenz {
namespace {

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

TEST(LenzMeaning, EveryDocumentedMessageHasOne) {
  struct Row {
    const char* message;
    Meaning meaning;
  };
  const Row rows[] = {{"01 01 00", Meaning::Fault},          {"01 02 03", Meaning::Fault},
                      {"01 03 02", Meaning::Fault},          {"01 04 05", Meaning::HandedOver},
                      {"01 05 04", Meaning::Passing},        {"01 06 07", Meaning::Fault},
                      {"01 07 06", Meaning::Passing},        {"01 08 09", Meaning::Fault},
                      {"01 09 08", Meaning::Fault},          {"01 0A 0B", Meaning::Busy},
                      {"61 00 61", Meaning::Passing},        {"61 01 60", Meaning::Passing},
                      {"61 02 63", Meaning::ServiceMode},    {"61 11 70", Meaning::Ready},
                      {"61 12 73", Meaning::Report},         {"61 13 72", Meaning::Report},
                      {"61 1F 7E", Meaning::Busy},           {"61 80 E1", Meaning::Busy},
                      {"61 81 E0", Meaning::Busy},           {"61 82 E3", Meaning::Report},
                      {"63 14 1D 06 6C", Meaning::Result},   {"63 15 00 06 70", Meaning::Result},
                      {"63 10 05 06 70", Meaning::Result},   {"63 21 36 00 74", Meaning::Other},
                      {"81 00 81", Meaning::Passing},        {"E3 40 00 03 A0", Meaning::Passing},
                      {"E4 04 A5 13 05 53", Meaning::Other}, {"42 03 06 47", Meaning::Other},
                      {"02 30 01 33", Meaning::Other}};
  for (const Row& row : rows) {
    EXPECT_TRUE(isSound(fromHex(row.message))) << row.message;
    EXPECT_EQ(meaningOf(fromHex(row.message)), row.meaning) << row.message;
  }
}

TEST(LenzMeaning, AMessageIsFoundWhateverItIsCutInto) {
  const QByteArray whole = fromHex("63 14 1D 06 6C");
  for (qsizetype cut = 1; cut < whole.size(); ++cut) {
    QByteArray input = whole.left(cut);
    EXPECT_FALSE(takeMessage(input, false)) << cut;
    input += whole.mid(cut);
    EXPECT_EQ(takeMessage(input, false).value().bytes, whole) << cut;
  }
}

TEST(LenzMeaning, BytesThatBeginNoMessageDoNotHoldTheNextOneUp) {
  QByteArray input = fromHex("FF FE FF 00 7E 61 02 63");
  EXPECT_EQ(takeMessage(input, false).value().bytes, fromHex("61 02 63"));
  input = fromHex("FF 61 FF FD 61 02 63 FF FE 01 04 05");
  EXPECT_EQ(takeMessage(input, true).value().bytes, fromHex("61 02 63"));
  EXPECT_EQ(takeMessage(input, true).value().bytes, fromHex("01 04 05"));
}

TEST(LenzMeaning, AConfirmationOrTheServiceModeTellsThatACommandIsAtWork) {
  EXPECT_TRUE(tellsTaken(fromHex("01 04 05"), false));
  EXPECT_TRUE(tellsTaken(fromHex("FF FD 61 02 63"), true));
  EXPECT_TRUE(tellsTaken(fromHex("61 01 60 61 02 63"), false));
  EXPECT_FALSE(tellsTaken(fromHex("61 82 E3"), false));
  EXPECT_FALSE(tellsTaken(fromHex("61 02"), false));
  EXPECT_FALSE(tellsTaken(fromHex("61 02 62"), false));
  EXPECT_FALSE(tellsTaken({}, false));
}

TEST(LenzMeaning, AMessageStandsAtTheBeginningOrNot) {
  EXPECT_TRUE(beginsWithMessage(fromHex("81 00 81 61"), false));
  EXPECT_TRUE(beginsWithMessage(fromHex("FF FD 81 00 81"), true));
  EXPECT_FALSE(beginsWithMessage(fromHex("06 6C 61 01 60"), false));
  EXPECT_FALSE(beginsWithMessage(fromHex("81 00"), false));
}

TEST(LenzMeaning, OnUsbWhatAccessoriesReportByThemselvesIsNews) {
  EXPECT_EQ(withoutNews(fromHex("FF FD 42 03 06 47 FF FE 42 03 09 48"), true),
            fromHex("FF FE 42 03 09 48"));
  EXPECT_EQ(withoutNews(fromHex("61 02 63 61 02 63 63 14"), false), fromHex("63 14"));
  EXPECT_EQ(withoutNews(fromHex("61 02 63 63"), false, Meaning::ServiceMode),
            fromHex("61 02 63 63"));
}

TEST(LenzMeaning, RegistersHaveMessagesOfTheirOwn) {
  EXPECT_EQ(readRegister(1), fromHex("22 11 01 32"));
  EXPECT_EQ(readRegister(29), fromHex("22 11 05 36")) << "register 5 is CV 29";
  EXPECT_EQ(writeRegister(1, 17), fromHex("23 12 01 11 21"));
  EXPECT_EQ(writeBlockEnd(6, 1), fromHex("23 17 00 06 32"));
  EXPECT_EQ(writeBlockEnd(6, 0), fromHex("23 16 00 06 33"));
  for (const int cv : {0, 9, 28, 256}) {
    EXPECT_FALSE(readRegister(cv)) << cv;
    EXPECT_FALSE(writeRegister(cv, 1)) << cv;
  }
}

TEST(LenzMeaning, TheVersionOfTheStation) {
  EXPECT_EQ(stationVersion(fromHex("63 21 36 00 74")), 0x36);
  EXPECT_EQ(stationVersion(fromHex("62 21 23 60")), 0x23);
  EXPECT_FALSE(stationVersion(fromHex("62 22 00 40")));
  EXPECT_FALSE(stationVersion({}));
}

}  // namespace
}  // namespace lokari::lenz
