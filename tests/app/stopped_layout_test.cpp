// A layout that we have stopped stays stopped, whatever is done with the station, until somebody
// releases it or says so.
#include <QAction>
#include <QDialog>
#include <QToolButton>

#include "link/ui/dlg_comm.h"
#include "simulated_desk.h"
#include "station/comm_test.h"

namespace lokari {
namespace {

struct Act {
  const char* name;
  StationUse use;
};

constexpr Act kActs[] = {{"Cab", StationUse::Cab},
                         {"Panel", StationUse::Panel},
                         {"Test", StationUse::Test},
                         {"Job", StationUse::CvJob}};

struct Case {
  StationKindRow kind;
  Act act;
  bool cabStays;  ///< the cab that stopped is still open
};

std::vector<Case> cases() {
  std::vector<Case> all;
  for (const StationKindRow& kind : kStationKinds) {
    if (!kind.cab.available()) continue;
    for (const Act& act : kActs) {
      for (const bool stays : {true, false}) all.push_back({kind, act, stays});
    }
  }
  return all;
}

class StoppedLayout : public test::SimulatedDesk, public ::testing::WithParamInterface<Case> {
 protected:
  StoppedLayout() : SimulatedDesk(GetParam().kind.kind) {}

  void stopIt() {
    driving().OpenCab(3, true);
    QWidget* cab = cabWindow(3);
    QTest::mouseClick(control<QWidget>(cab, "imgStop"), Qt::LeftButton);
    clock().advance(500);
    ASSERT_TRUE(halted());
    if (!GetParam().cabStays) cab->close();
    clock().advance(3000);
    ASSERT_TRUE(halted());
    ASSERT_EQ(prompt().shown, QStringList());
    ranOnce = false;
  }

  void act() {
    switch (GetParam().act.use) {
      case StationUse::Cab:
        return driving().OpenCab(100, true);
      case StationUse::Panel:
        EXPECT_EQ(form().FindFirst(QStringLiteral("DC_ADR=5")), FindResult::Found);
        return driving().butSwitch();
      case StationUse::Test:
        return job(CommJob::TestComm, [this] { TestComm(link(), workbench->settings()); });
      case StationUse::CvJob:
        return job(CommJob::ReadProgTrack, [this] {
          EXPECT_EQ(link().initComm(true, true, true), QString());
          link().ReadCV(1, 3);
          link().endcomm(true, true);
        });
    }
  }
  void job(CommJob job, const std::function<void()>& work) {
    driving().runAlone(this, [this, job, work] {
      DlgComm dialog(link(), window.get());
      dialog.run(job, [&] {
        work();
        dialog.hide();
      });
    });
  }

  bool switchesOn() const {
    return lokari::switchesOn(GetParam().kind, GetParam().act.use, GetParam().cabStays);
  }
  QStringList questions() const {
    QStringList texts;
    for (const Choice& each : outside.prompt.asked) texts << each.text;
    return texts;
  }
};

INSTANTIATE_TEST_SUITE_P(Uses, StoppedLayout, ::testing::ValuesIn(cases()), [](const auto& row) {
  return QString::fromUtf16(row.param.kind.name).toStdString() + row.param.act.name +
         (row.param.cabStays ? "BesideTheCab" : "BehindTheCab");
});

TEST_P(StoppedLayout, IsNeverSwitchedOnWithoutAQuestionAndAbbruchSendsNothing) {
  stopIt();
  const auto serialBefore = line->writes.size();
  const auto sentBefore = socket->sent.size();
  act();
  clock().advance(5000);
  EXPECT_FALSE(ranOnce);
  EXPECT_TRUE(halted());
  EXPECT_TRUE(stop().isHeld());
  ASSERT_EQ(questions().size(), switchesOn() ? 1 : 0) << qPrintable(questions().join(u'\n'));
  if (!switchesOn()) return;
  EXPECT_TRUE(questions().first().startsWith(QStringLiteral("Die Anlage ist angehalten.")));
  EXPECT_TRUE(questions().first().endsWith(QStringLiteral("schaltet sie wieder ein.")));
  EXPECT_EQ(prompt().asked.first().answers.at(prompt().asked.first().safe),
            QStringLiteral("Abbruch"));
  EXPECT_EQ(line->writes.size(), serialBefore);
  // The cab that is still open goes on asking its vehicle.
  if (!GetParam().cabStays) {
    EXPECT_EQ(socket->sent.size(), sentBefore);
  }
  EXPECT_EQ(cabWindow(100), nullptr);
}

TEST_P(StoppedLayout, GoesOnWhenTheUserSaysSoAndEveryCabShowsIt) {
  stopIt();
  prompt().choices = {0};
  act();
  clock().advance(5000);
  EXPECT_EQ(halted(), !switchesOn());
  EXPECT_EQ(stop().isHeld(), !switchesOn());
  const QString word = switchesOn() ? QStringLiteral("Halt") : QStringLiteral("Los");
  for (const int address : {3, 100}) {
    if (QWidget* cab = cabWindow(address)) {
      EXPECT_EQ(wordOfStop(cab), word) << address;
    }
  }
  // What was agreed to once holds for that once.
  if (switchesOn()) return;
  EXPECT_EQ(prompt().asked.size(), 0);
}

class StoppedLi100V3 : public test::SimulatedDesk {
 protected:
  StoppedLi100V3() : SimulatedDesk(StationKind::Li100V3) {}
};

TEST_F(StoppedLi100V3, ACvStepOfACabAsksAndAbbruchChangesNothing) {
  folder.write(QStringLiteral("Zimo/MX620.dec"), "PROGMAIN=J\nCV_3=Anfahren\n");
  folder.change(3, {{QStringLiteral("DC_MANUF"), 145}, {QStringLiteral("DC_DECODER"), "MX620"}});
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=5")), FindResult::Found);
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=3")), FindResult::Found);
  driving().butDrive();
  Cab* cab = driving().cabs().cabForms(1);
  ASSERT_NE(cab, nullptr);
  ASSERT_TRUE(cab->programming().isAvailable());
  cab->imgStop();
  clock().advance(1000);
  const auto before = line->writes.size();
  const QString value = cab->programming().shownValue();
  cab->stepCVUp();
  EXPECT_EQ(prompt().asked.size(), 1);
  EXPECT_EQ(line->writes.size(), before);
  EXPECT_EQ(cab->programming().shownValue(), value);
  EXPECT_TRUE(halted());
  prompt().choices = {0};
  cab->stepCVUp();
  clock().advance(3000);
  EXPECT_FALSE(halted());
  EXPECT_FALSE(stop().isHeld());
  EXPECT_NE(cab->programming().shownValue(), value);
}

class StoppedZ21 : public test::SimulatedDesk {
 protected:
  StoppedZ21() : SimulatedDesk(StationKind::Z21Ip) {}
};

TEST_F(StoppedZ21, ACvStepBehindAnAgreedGoThatWaitsForTheLineIsWrittenBehindIt) {
  folder.write(QStringLiteral("Zimo/MX620.dec"), "PROGMAIN=J\nCV_3=Anfahren\n");
  folder.change(3, {{QStringLiteral("DC_MANUF"), 145}, {QStringLiteral("DC_DECODER"), "MX620"}});
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=5")), FindResult::Found);
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=3")), FindResult::Found);
  driving().butDrive();
  Cab* cab = driving().cabs().cabForms(1);
  ASSERT_NE(cab, nullptr);
  ASSERT_TRUE(cab->programming().isAvailable());
  cab->imgStop();
  clock().advance(1000);
  ASSERT_TRUE(stop().isHeld());
  socket->close();
  socket->failsToSend = true;
  cab->imgDirBackward();
  clock().advance(20000);
  socket->failsToSend = false;
  prompt().choices = {0};
  const QString value = cab->programming().shownValue();
  clock().schedule(10, [cab] { cab->stepCVUp(); });
  cab->imgDirForward();
  clock().advance(10000);
  ASSERT_EQ(prompt().asked.size(), 1);
  EXPECT_FALSE(halted());
  EXPECT_NE(cab->programming().shownValue(), value);
  EXPECT_EQ(cab->notice(), QString());
}

TEST_F(StoppedZ21, ACvStepBehindAnAgreedGoThatFailedIsTold) {
  folder.write(QStringLiteral("Zimo/MX620.dec"), "PROGMAIN=J\nCV_3=Anfahren\n");
  folder.change(3, {{QStringLiteral("DC_MANUF"), 145}, {QStringLiteral("DC_DECODER"), "MX620"}});
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=5")), FindResult::Found);
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=3")), FindResult::Found);
  driving().butDrive();
  Cab* cab = driving().cabs().cabForms(1);
  ASSERT_NE(cab, nullptr);
  cab->imgStop();
  clock().advance(1000);
  socket->close();
  socket->failsToSend = true;
  prompt().choices = {0};
  const QString value = cab->programming().shownValue();
  cab->stepCVUp();
  clock().advance(20000);
  EXPECT_TRUE(halted());
  EXPECT_EQ(cab->programming().shownValue(), value);
  EXPECT_TRUE(cab->notice().contains(QStringLiteral("wurde nicht geschrieben")))
      << qPrintable(cab->notice());
}

}  // namespace
}  // namespace lokari
