// The transfer of firmware to a simulated station, in virtual time.
#include "session_fixture.h"
#include "station/send_firm.h"
#include "support/recording_view.h"

namespace lokari {
namespace {

class FirmwareSession : public test::SerialSession,
                        public ::testing::WithParamInterface<StationKind> {
 protected:
  FirmwareSession() : SerialSession(GetParam()) {
    link->FinishComm();
    link->commJob = CommJob::SendFirm;
    station->onFirmware = [this](const QByteArray& memory) { received = memory; };
    for (const int address : {0x0000, 0x0010, 0x0100, 0x7FF0, 0x8000, 0x8010, 0xFFF0}) {
      for (int i = 0; i < 16; ++i) {
        firmware.firmImage[address + i] = static_cast<char>(address / 16 * 7 + i);
      }
    }
    firmware.firmBlocks = 7;
  }

  FirmEnd send() { return FirmTransfer(*link, view, firmware).SendFirm(); }

  test::RecordingView view;
  Firmware firmware;
  QByteArray received;
};

INSTANTIATE_TEST_SUITE_P(Both, FirmwareSession,
                         ::testing::Values(StationKind::Mx1, StationKind::Mx1V25));

TEST_P(FirmwareSession, TheStationHoldsTheImage) {
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(received, firmware.firmImage);
  EXPECT_EQ(view.statuses.last(), "Übertragung der Firmware abgeschlossen!");
}

TEST_P(FirmwareSession, TheStationIsBackInNormalOperation) {
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(link->initComm(true, true, true), "");
  EXPECT_EQ(link->ReadCV(8, 3), 97);
}

TEST_P(FirmwareSession, RefusedBlocksAndALostBankAreMended) {
  fault("blockerror:3@1");
  fault("banklost:1@5");
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(received, firmware.firmImage);
}

TEST_P(FirmwareSession, ABlockThatOnlyItsAnswerWasLostOfIsThere) {
  fault("silence:1@2");
  EXPECT_EQ(send(), FirmEnd::Unconfirmed);
  EXPECT_EQ(received, firmware.firmImage);
}

TEST_P(FirmwareSession, AStationThatIsSilentInTheSessionIsReachedOnTheHandle) {
  fault("silence:2");
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(received, firmware.firmImage);
}

TEST_P(FirmwareSession, AGarbledAnswerInTheSessionLeadsToTheHandle) {
  fault("garbage:1");
  EXPECT_EQ(send(), FirmEnd::Complete);
  EXPECT_EQ(received, firmware.firmImage);
}

TEST_P(FirmwareSession, ASilentStationIsLeftWithItsFarewell) {
  fault("silence:immer");
  EXPECT_EQ(send(), FirmEnd::NoAnswer);
  EXPECT_EQ(view.statuses.last(), "Keine Antwort vom Basisgerät!");
  EXPECT_EQ(received, QByteArray(65536, '\xFF'));
}

TEST_P(FirmwareSession, AnUnpluggedStationEndsTheTransfer) {
  fault("unplugged@3");
  EXPECT_EQ(send(), FirmEnd::Failed);
  EXPECT_TRUE(view.statuses.last().startsWith("Die Schnittstelle ist nicht mehr da!\n"));
  EXPECT_TRUE(received.isEmpty());
}

}  // namespace
}  // namespace lokari
