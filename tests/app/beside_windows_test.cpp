// Windows that may ask the station leave the line to the cabs until they do.
#include <QAction>
#include <QDialog>
#include <QToolButton>

#include "simulated_desk.h"

namespace lokari {
namespace {

class BesideWindows : public test::SimulatedDesk,
                      public ::testing::WithParamInterface<StationKindRow> {
 protected:
  BesideWindows() : SimulatedDesk(GetParam().kind) {}

  qsizetype messages() const { return line->writes.size() + socket->sent.size(); }

  /// Runs `look` in the modal window of that name.
  void inWindow(const char* name, const std::function<void(QDialog&)>& look) {
    watch_.callOnTimeout([this, name = QString::fromLatin1(name), look] {
      QWidget* modal = QApplication::activeModalWidget();
      if (modal == nullptr || modal->objectName() != name) return;
      watch_.stop();
      look(static_cast<QDialog&>(*modal));
    });
    watch_.start(0);
  }
  /// What the cabs send in ten seconds while a window is open, which `open` opens.
  qsizetype sentBeside(const char* name, const std::function<void()>& open) {
    qsizetype sent = -1;
    inWindow(name, [&](QDialog& dialog) {
      const qsizetype before = messages();
      clock().advance(10000);
      sent = messages() - before;
      dialog.reject();
    });
    open();
    return sent;
  }

  QTimer watch_;
};

std::vector<StationKindRow> kindsWithATimer() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds)
    if (row.cab.timerMs > 0) kinds.push_back(row);
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, BesideWindows, ::testing::ValuesIn(kindsWithATimer()),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

TEST_P(BesideWindows, ACabIsKeptAliveWhileTheDecoderWindowIsOpen) {
  driving().OpenCab(3, true);
  ASSERT_EQ(prompt().shown, QStringList());
  EXPECT_GE(
      sentBeside("frmDecoder", [this] { control<QToolButton>(window.get(), "butProg")->click(); }),
      10000 / GetParam().cab.timerMs - 1);
}

TEST_P(BesideWindows, ACabIsKeptAliveWhileTheOptionsAreOpen) {
  driving().OpenCab(3, true);
  ASSERT_EQ(prompt().shown, QStringList());
  EXPECT_GE(sentBeside("dlgOptions",
                       [this] { control<QAction>(window.get(), "mnuParaOptions")->trigger(); }),
            10000 / GetParam().cab.timerMs - 1);
}

TEST_P(BesideWindows, AWindowThatIsAskedForInTheMiddleOfAnExchangeOpensBehindIt) {
  bool exchangeEnded = false;
  bool openedBehind = false;
  driving().runAlone(this, [&] {
    driving().openBeside(this, [&] { openedBehind = exchangeEnded; });
    clock().advance(1000);
    EXPECT_FALSE(openedBehind);
    exchangeEnded = true;
  });
  clock().advance(1000);
  EXPECT_TRUE(openedBehind);
}

TEST_P(BesideWindows, OfTwoThatAreAskedForInTheMiddleOfAnExchangeTheLaterOpens) {
  QStringList opened;
  driving().runAlone(this, [&] {
    for (const char* name : {"first", "second"}) {
      driving().openBeside(this, [&opened, name] { opened << QString::fromLatin1(name); });
    }
  });
  clock().advance(1000);
  EXPECT_EQ(opened, QStringList({"second"}));
}

TEST_P(BesideWindows, TheDecoderWindowIsThatOfTheVehicleItWasAskedForOrDoesNotOpen) {
  const Bookmark asked = form().records().bookmark();
  driving().runAlone(this, [&] {
    control<QToolButton>(window.get(), "butProg")->click();
    form().MoveNext();
  });
  ASSERT_NE(form().records().bookmark(), asked);
  clock().advance(1000);
  EXPECT_EQ(prompt().shown, QStringList()) << "a function unit has no decoder window";
  form().MoveFirst();
  bool opened = false;
  inWindow("frmDecoder", [&](QDialog& frmDecoder) {
    opened = true;
    frmDecoder.reject();
  });
  driving().runAlone(this, [&] { control<QToolButton>(window.get(), "butProg")->click(); });
  clock().advance(1000);
  EXPECT_TRUE(opened) << "for the vehicle that is still on show";
}

TEST_P(BesideWindows, NothingComesUpOverADialogThatWasOpenedMeanwhile) {
  QStringList opened;
  QDialog other;
  watch_.callOnTimeout([&] {
    auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (modal == nullptr || modal == &other) return;
    opened << modal->objectName();
    modal->reject();
  });
  watch_.start(0);
  driving().runAlone(this, [&] {
    control<QToolButton>(window.get(), "butProg")->click();
    control<QAction>(window.get(), "mnuParaOptions")->trigger();
  });
  other.setModal(true);
  other.show();
  clock().advance(1000);
  EXPECT_EQ(opened, QStringList());
}

TEST_P(BesideWindows, FahrenBehindAnAbbruchOfTheWaitingOpensTheCab) {
  const auto fahren = [this] { control<QToolButton>(window.get(), "butDrive")->click(); };
  driving().runAlone(this, [&] {
    fahren();
    control<QPushButton>(windowNamed("dlg_wait"), "cmdCancel")->click();
    EXPECT_EQ(windowNamed("dlg_wait"), nullptr);
    fahren();
    EXPECT_NE(windowNamed("dlg_wait"), nullptr) << "it waits once more";
    fahren();
  });
  clock().advance(1000);
  EXPECT_NE(cabWindow(3), nullptr);
  EXPECT_EQ(driving().cabs().cabCount(), 1);
  EXPECT_EQ(windowNamed("dlg_wait"), nullptr);
}

class DecoderWindowOk : public BesideWindows {};

INSTANTIATE_TEST_SUITE_P(Kinds, DecoderWindowOk,
                         ::testing::Values(stationKind(StationKind::TamsMc)));

TEST_P(DecoderWindowOk, WhatAnyOfItsJobsReadIsStoredAtOnceWhateverTheLastJobDid) {
  folder.copyData(QStringLiteral("Default.dec"));
  inWindow("frmDecoder", [&](QDialog& frmDecoder) {
    const auto click = [&](const char* name) {
      control<QAbstractButton>(&frmDecoder, name)->click();
    };
    click("chkDcAdrChk");
    click("chkDcManufChk");
    click("chkRd_29");
    click("cmdDcRead");
    click("chkRd_29");
    click("cmdDcRead");
    EXPECT_EQ(prompt().shown, QStringList({"Keine Daten zum Lesen ausgewählt!"}));
    click("cmdOK");
  });
  control<QToolButton>(window.get(), "butProg")->click();
  EXPECT_FALSE(form().isUnsaved());
}

}  // namespace
}  // namespace lokari
