#include "app/driving.h"

#include <gtest/gtest.h>

#include "app_folder.h"
#include "recording_workbench_view.h"

namespace lokari {
namespace {

class DrivingTest : public ::testing::Test {
 protected:
  void start(const QByteArray& keys) {
    folder_.settings(keys + "ComPort=3\r\nTimeout=1\r\nDelay=0\r\nCANLog=0\r\n");
    folder_.add({{QStringLiteral("Anlage"), 3, QStringLiteral("Lok")},
                 {QStringLiteral("Anlage"), 5, QStringLiteral("Weiche")}});
    workbench_.emplace(outside_.parts(folder_));
    ASSERT_TRUE(workbench_->start(view_));
    ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=3")), FindResult::Found);
    outside_.prompt.shown.clear();
  }

  RecordForm& form() { return workbench_->session().form(); }
  Driving& driving() { return workbench_->driving(); }
  void type(const char* text) {
    form().edited(QStringLiteral("dc_type"), QString::fromLatin1(text));
  }
  QString lastMessage() const {
    return outside_.prompt.shown.isEmpty() ? QString() : outside_.prompt.shown.last();
  }

  /// The program ends while a cab and a job wait for the end of a reading that nobody answers.
  void endInTheMiddleOfAReading() {
    bool ran = false;
    outside_.clock.schedule(500, [&] {
      driving().OpenCab(9, true);
      driving().runAlone(this, [&] { ran = true; });
      ASSERT_TRUE(workbench_->shutDown());
    });
    driving().OpenCab(7, true);
    EXPECT_FALSE(ran);
    driving().OpenCab(11, true);
    for (const int address : {7, 9, 11}) EXPECT_FALSE(driving().cabs().isOpen(address)) << address;
    EXPECT_FALSE(view_.windows.log.contains("9: up"));
    EXPECT_EQ(workbench_->link().commUseCount, 0);
  }

  test::AppFolder folder_;
  test::Outside outside_;
  test::RecordingWorkbenchView view_{outside_.prompt};
  std::optional<Workbench> workbench_;
};

const QString kNoCabs = QStringLiteral("Fahrregler für diese Digitalzentrale nicht verfügbar!");

TEST_F(DrivingTest, ACabNeedsATypeThatIsANumber) {
  start("BaseUnit=MX1\r\n");
  type("");
  driving().butDrive();
  driving().butSwitch();
  EXPECT_EQ(outside_.prompt.shown,
            (QStringList{"Type nicht festgelegt!", "Type nicht festgelegt!"}));
  EXPECT_EQ(outside_.serial.opens, 0);
}

TEST_F(DrivingTest, AFunctionUnitHasNoCabAndAVehicleNoPanel) {
  start("BaseUnit=MX1\r\n");
  driving().butSwitch();
  EXPECT_EQ(lastMessage(), "Schaltpult nur für Funktionsteile verfügbar!");
  type("2");
  driving().butDrive();
  EXPECT_EQ(lastMessage(), "Fahrregler für Funktionsteile nicht verfügbar!");
  EXPECT_EQ(outside_.serial.opens, 0);
  EXPECT_EQ(driving().cabs().cabCount(), 0);
  EXPECT_EQ(driving().panels().panelCount(), 0);
}

TEST_F(DrivingTest, TheKindWithoutCabsIsToldForBoth) {
  start("BaseUnit=LIDP\r\n");
  driving().butDrive();
  EXPECT_EQ(lastMessage(), kNoCabs);
  type("2");
  driving().butSwitch();
  EXPECT_EQ(outside_.prompt.shown, (QStringList{kNoCabs, kNoCabs}));
}

TEST_F(DrivingTest, WithoutAnAddressNothingIsDriven) {
  start("BaseUnit=MX1\r\n");
  form().edited(QStringLiteral("dc_adr"), QStringLiteral("0"));
  driving().butDrive();
  EXPECT_EQ(lastMessage(), "Adresse ungültig");
  EXPECT_EQ(outside_.serial.opens, 0);
}

TEST_F(DrivingTest, TheCabIsForTheRecordOnShow) {
  start("BaseUnit=MX1\r\n");
  driving().butDrive();
  ASSERT_NE(driving().cabs().cabForms(1), nullptr);
  EXPECT_EQ(driving().cabs().cabForms(1)->caption(), "Lok (3)");
  driving().butDrive();
  EXPECT_EQ(driving().cabs().cabCount(), 1);
}

TEST_F(DrivingTest, AnotherProgramsCabIsNamedByItsAddress) {
  start("BaseUnit=MX1\r\n");
  workbench_->externalMessage(5);
  ASSERT_NE(driving().cabs().cabForms(1), nullptr);
  EXPECT_EQ(driving().cabs().cabForms(1)->caption(), "Weiche (5)");
}

TEST_F(DrivingTest, ALinkThatIsToStayOpenAndCannotBeOpenedGivesAMessageAndNoCab) {
  start("BaseUnit=Z21IP\r\nIPAddr=127.000.000.001\r\n");
  outside_.udp.stateAfterOpen = 6;
  driving().butDrive();
  EXPECT_EQ(outside_.prompt.shown,
            QStringList{QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (6)!")});
  EXPECT_EQ(driving().cabs().cabCount(), 0);
  EXPECT_EQ(workbench_->link().commUseCount, 0);
}

TEST_F(DrivingTest, APanelOpensForAFunctionUnit) {
  start("BaseUnit=MX1\r\n");
  type("2");
  driving().butSwitch();
  ASSERT_NE(driving().panels().panelForms(1), nullptr);
  EXPECT_EQ(driving().panels().panelForms(1)->caption(), "Lok (3)");
}

TEST_F(DrivingTest, TheEndOfTheProgramClosesAllInOrderAndThePortWithTheLast) {
  start("BaseUnit=MX1\r\n");
  driving().OpenCab(7, true);
  driving().OpenCab(9, true);
  driving().butDrive();
  view_.windows.log.clear();
  outside_.serial.writes.clear();
  EXPECT_TRUE(outside_.serial.isOpen());
  ASSERT_TRUE(workbench_->shutDown());
  EXPECT_EQ(view_.windows.log, (QStringList{"7: away", "9: away", "3: away"}));
  EXPECT_FALSE(outside_.serial.isOpen());
  EXPECT_TRUE(outside_.serial.writes.isEmpty());
}

TEST_F(DrivingTest, TheEndInTheMiddleOfAnExchangeDoesNotWaitForASilentStation) {
  start("BaseUnit=MX1\r\n");
  driving().OpenCab(7, true);
  const Millis before = outside_.clock.now();
  // The next cab reads, and nobody answers.
  outside_.clock.schedule(1500, [&] { ASSERT_TRUE(workbench_->shutDown()); });
  driving().OpenCab(9, true);
  EXPECT_LT(outside_.clock.now() - before, 2000);
  EXPECT_FALSE(outside_.serial.isOpen());
  EXPECT_EQ(workbench_->link().commUseCount, 0);
}

TEST_F(DrivingTest, WhatStillWaitsForTheLineDoesNotComeUpAfterTheEnd) {
  start("BaseUnit=MX1\r\n");
  endInTheMiddleOfAReading();
}

TEST_F(DrivingTest, WhatStillWaitsForALinkThatStaysOpenDoesNotComeUpAfterTheEnd) {
  start("BaseUnit=Z21IP\r\nIPAddr=127.000.000.001\r\n");
  endInTheMiddleOfAReading();
}

TEST_F(DrivingTest, CVsThatWereChangedWhileDrivingAreStoredAtTheEndOfTheProgram) {
  folder_.write(QStringLiteral("Zimo/MX620.dec"), "PROGMAIN=J\nCV_3=Anfahren\n");
  start("BaseUnit=MX1\r\n");
  folder_.change(3, {{QStringLiteral("DC_MANUF"), 145}, {QStringLiteral("DC_DECODER"), "MX620"}});
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=5")), FindResult::Found);
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=3")), FindResult::Found);
  driving().butDrive();
  Cab* cab = driving().cabs().cabForms(1);
  ASSERT_TRUE(cab->programming().isAvailable());
  cab->stepCVUp();
  cab->stepCVUp();
  ASSERT_TRUE(workbench_->shutDown());
  EXPECT_EQ(folder_.stored(3, QStringLiteral("DC_CV")).toByteArray().mid(2, 1), QByteArray("\2"));
}

TEST_F(DrivingTest, WhatNeedsTheStationForItselfKeepsANewCabWaiting) {
  start("BaseUnit=MX1\r\n");
  driving().runAlone(this, [&] {
    driving().OpenCab(7, true);
    EXPECT_EQ(outside_.serial.opens, 0);
  });
  EXPECT_EQ(outside_.serial.opens, 1);
}

TEST_F(DrivingTest, FahrenShowsAtOnceThatItWaitsAndUntilTheStationHasAnswered) {
  start("BaseUnit=MX1BIN\r\n");
  int waitingInTheMiddle = 0;
  outside_.clock.schedule(500, [&] { waitingInTheMiddle = view_.waiting; });
  driving().butDrive();
  EXPECT_EQ(waitingInTheMiddle, 1);
  EXPECT_EQ(view_.waiting, 0);
  EXPECT_TRUE(view_.steps.contains(
      QStringLiteral("wait Fahrpult für Adresse 3: Warte auf die Digitalzentrale ...")));
}

TEST_F(DrivingTest, AbbruchEndsTheWaitingAndNoCabOpens) {
  start("BaseUnit=MX1BIN\r\n");
  const Millis before = outside_.clock.now();
  outside_.clock.schedule(2500, [&] { view_.giveUpWaiting(); });
  driving().butDrive();
  outside_.clock.advance(100);
  EXPECT_LT(outside_.clock.now() - before, 5000);
  EXPECT_EQ(view_.waiting, 0);
  EXPECT_EQ(driving().cabs().cabForms(1), nullptr);
  EXPECT_EQ(workbench_->link().commUseCount, 0);
  EXPECT_FALSE(outside_.serial.isOpen());
  EXPECT_EQ(outside_.prompt.shown, QStringList());
}

TEST_F(DrivingTest, AbbruchWhileTheSessionOpensTellsNoFailure) {
  start("BaseUnit=Z21IP\r\nIPAddr=127.000.000.001\r\n");
  outside_.clock.schedule(300, [&] { view_.giveUpWaiting(); });
  driving().butDrive();
  EXPECT_EQ(outside_.prompt.shown, QStringList());
  EXPECT_EQ(driving().cabs().cabForms(1), nullptr);
  EXPECT_EQ(workbench_->link().commUseCount, 0);
}

TEST_F(DrivingTest, AbbruchWhileAnotherJobHasTheLineForgetsTheCab) {
  start("BaseUnit=MX1\r\n");
  driving().runAlone(this, [&] {
    driving().OpenCab(7, true);
    EXPECT_EQ(view_.waiting, 1);
    view_.giveUpWaiting();
    EXPECT_EQ(view_.waiting, 0);
    EXPECT_FALSE(workbench_->link().cancelRequested);
  });
  EXPECT_EQ(driving().cabs().cabCount(), 0);
  EXPECT_EQ(outside_.serial.opens, 0);
}

TEST_F(DrivingTest, ASecondPressWhileItWaitsAsksNoSecondTime) {
  start("BaseUnit=MX1\r\n");
  driving().runAlone(this, [&] {
    driving().OpenCab(7, true);
    driving().OpenCab(7, true);
    EXPECT_EQ(view_.waiting, 1);
  });
  EXPECT_EQ(driving().cabs().cabCount(), 1);
  EXPECT_EQ(view_.waiting, 0);
}

TEST_F(DrivingTest, APortThatIsMissingIsToldOnceWithItsReason) {
  start("BaseUnit=MX1\r\n");
  outside_.serial.failsToOpen = true;
  driving().butDrive();
  EXPECT_EQ(outside_.prompt.shown,
            (QStringList{"Kann Kommunikationsschnittstelle nicht öffnen (0)!",
                         "Keine Daten von Digitalzentrale erhalten"}));
  EXPECT_EQ(outside_.prompt.below.first(), "Kein Gerät!");
  EXPECT_NE(driving().cabs().cabForms(1), nullptr);
}

}  // namespace
}  // namespace lokari
