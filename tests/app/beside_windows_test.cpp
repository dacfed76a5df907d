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

}  // namespace
}  // namespace lokari
