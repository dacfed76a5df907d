#include "base/station_kind.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace lokari {
namespace {

TEST(StationKinds, StandInTheOrderOfTheirNumbers) {
  for (size_t i = 0; i < kStationKinds.size(); ++i) {
    EXPECT_EQ(static_cast<size_t>(kStationKinds[i].kind), i + 1);
    EXPECT_EQ(&stationKind(kStationKinds[i].kind), &kStationKinds[i]);
  }
}

TEST(StationKinds, AreTheSameStationsInEitherForm) {
  for (size_t i = 0; i < kStationKinds.size(); ++i) {
    const StationKindRow& told = kStationKinds[i];
    const StationKindRow& makers = stationKind(told.kind, true);
    EXPECT_EQ(&makers, &kMakerKinds[i]);
    EXPECT_EQ(makers.kind, told.kind);
    EXPECT_EQ(QStringView(makers.name), QStringView(told.name));
    EXPECT_EQ(makers.family, told.family);
    EXPECT_EQ(makers.transport, told.transport);
    EXPECT_GE(makers.cab.funcCount, told.cab.funcCount) << "the documents take no function away";
  }
}

TEST(StationKinds, HaveTheRatesAndHandshakingOfTheirInterfaces) {
  const auto line = [](const char16_t* name) {
    const StationKindRow* row = stationKindByName(name);
    return std::make_pair(row->defaultRate, row->handshaking);
  };
  EXPECT_EQ(line(u"MX1"), std::make_pair(9600, Handshaking::None));
  EXPECT_EQ(line(u"LI100"), std::make_pair(9600, Handshaking::RequestToSend));
  EXPECT_EQ(line(u"LI100V3"), std::make_pair(9600, Handshaking::RequestToSend));
  EXPECT_EQ(line(u"IBX"), std::make_pair(2400, Handshaking::RequestToSend));
  EXPECT_EQ(line(u"MX1V25"), std::make_pair(9600, Handshaking::RequestToSend));
  EXPECT_EQ(line(u"LIUSB"), std::make_pair(57600, Handshaking::RequestToSend));
  EXPECT_EQ(line(u"TAMSMC"), std::make_pair(2400, Handshaking::RequestToSend));
  EXPECT_EQ(line(u"MX1BIN"), std::make_pair(9600, Handshaking::RequestToSend));
  EXPECT_EQ(line(u"MX1ULF"), std::make_pair(9600, Handshaking::RequestToSend));
  EXPECT_EQ(line(u"LIDP"), std::make_pair(57600, Handshaking::None));
}

TEST(StationKinds, ProveAWriteOnTheProgrammingTrackWhereTheyReadBack) {
  QStringList unproved;
  for (const StationKindRow& row : kStationKinds) {
    if (!row.provesWrites(true)) unproved << QString::fromUtf16(row.name);
    EXPECT_FALSE(row.provesWrites(false)) << "nothing reads back on the main track";
  }
  EXPECT_EQ(unproved, QStringList({"IBX", "TAMSMC", "LIDP", "MX10", "MX10IP"}));
}

TEST(StationKinds, KnowTheMethodsAndCvsThatTheirMessagesReach) {
  QStringList paged;
  QStringList byRegister;
  QStringList limited;
  for (const StationKindRow& row : kStationKinds) {
    const QString name = QString::fromUtf16(row.name);
    EXPECT_TRUE(row.progMethods.has(ProgMethod::Direct));
    if (row.progMethods.has(ProgMethod::Paged)) paged << name;
    if (row.progMethods.has(ProgMethod::Register)) byRegister << name;
    EXPECT_TRUE(row.canSendWrite(255, true, false));
    EXPECT_TRUE(row.canSendWrite(300, false, false));
    EXPECT_TRUE(row.canSendWrite(300, true, true));
    if (!row.canSendWrite(256, true, false)) limited << name;
  }
  EXPECT_EQ(paged, QStringList({"LI100", "LI100V3", "IBX", "LIUSB", "TAMSMC"}));
  EXPECT_EQ(byRegister, QStringList({"IBX", "TAMSMC"}));
  EXPECT_EQ(limited, QStringList({"LI100", "LI100V3", "LIUSB"}));
}

TEST(StationKinds, AreFoundByNameInAnyCase) {
  EXPECT_EQ(stationKindByName(u"z21ip")->kind, StationKind::Z21Ip);
  EXPECT_EQ(stationKindByName(u"MX99"), nullptr);
  EXPECT_EQ(stationKindByName(u""), nullptr);
}

}  // namespace
}  // namespace lokari
