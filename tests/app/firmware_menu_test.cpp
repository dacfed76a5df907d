// The firmware entry of the main window, from the file to the end of the transfer.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "app/ui/main_win.h"
#include "app_folder.h"
#include "link/ui/dlg_comm.h"
#include "sim/station_table.h"
#include "support/sim_line.h"

namespace lokari {
namespace {

class FirmwareMenuTest : public ::testing::Test {
 protected:
  void start(const char* kind = "MX1") {
    folder.settings(QByteArray("BaseUnit=") + kind + "\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\n");
    const WorkbenchParts around = outside.parts(folder);
    workbench = std::make_unique<Workbench>(
        WorkbenchParts{around.paths, around.clock, around.prompt, around.desktop,
                       Transports{line, outside.udp, outside.can}, around.oldFormat, around.bus});
    window = std::make_unique<MainWin>(*workbench);
    ASSERT_TRUE(window->start());
    window->show();
    QApplication::processEvents();
    station->onFirmware = [this](const QByteArray& image) { received = image; };
  }

  void chooseFile(const QByteArray& text) {
    folder.write(QStringLiteral("Mx1_2k.hex"), text);
    outside.prompt.fileNames = {folder.file(QStringLiteral("Mx1_2k.hex"))};
    outside.prompt.answers = {Answer::Ok};
  }

  /// Triggers the entry. `look` runs when the job has ended and the dialog waits for its button.
  void trigger(std::function<void(DlgComm&)> look) {
    QTimer::singleShot(0, window.get(), [this, look = std::move(look)] { await(look); });
    window->findChild<QAction*>(QStringLiteral("mnuFirmware"))->trigger();
  }

  test::AppFolder folder;
  test::Outside outside;
  sim::Layout layout;
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> station =
      sim::stationByName(u"MX1")->make({outside.clock, layout, faults, 20});
  test::SimLine line{outside.clock, *station};
  std::unique_ptr<Workbench> workbench;
  std::unique_ptr<MainWin> window;
  QByteArray received;

 private:
  void await(const std::function<void(DlgComm&)>& look) {
    auto* dialog = window->findChild<DlgComm*>();
    auto* button =
        dialog == nullptr ? nullptr : dialog->findChild<QPushButton*>(QStringLiteral("cmdCancel"));
    if (button == nullptr || button->text() != QStringLiteral("OK")) {
      QTimer::singleShot(0, window.get(), [this, look] { await(look); });
      return;
    }
    look(*dialog);
    QTest::mouseClick(button, Qt::LeftButton);
  }
};

constexpr char kOneByte[] = ":0100000001FE\r\n:00000001FF\r\n";

TEST_F(FirmwareMenuTest, AConfirmedFileGoesIntoTheStation) {
  start();
  chooseFile(kOneByte);
  bool looked = false;
  trigger([&](DlgComm& dialog) {
    looked = true;
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("lblCommStatus"))->text(),
              QStringLiteral("Übertragung der Firmware abgeschlossen!"));
    auto* bar = dialog.findChild<QProgressBar*>(QStringLiteral("panProgress"));
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->text(), QStringLiteral("100%"));
    EXPECT_EQ(workbench->link().commJob, CommJob::SendFirm);
  });
  EXPECT_TRUE(looked);
  EXPECT_EQ(outside.prompt.shown, QStringList{"Firmware-Datei Mx1_2k.hex einspielen?"});
  EXPECT_EQ(outside.prompt.fileQuestions.at(0).folder, folder.path());
  EXPECT_EQ(received, '\x01' + QByteArray(65535, '\xFF'));
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(FirmwareMenuTest, ACancelAmongTheBlocksLeavesTheBootLoader) {
  start();
  chooseFile(kOneByte);
  faults.add({.kind = sim::FaultKind::BlockError, .count = sim::Fault::kAlways});
  outside.clock.schedule(5000, [this] {
    auto* dialog = window->findChild<DlgComm*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->findChild<QLabel*>(QStringLiteral("lblCommDetail"))->text(),
              QStringLiteral("Block 1 von 1, noch etwa 5 Sekunden"));
    QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdCancel")), Qt::LeftButton);
  });
  trigger([](DlgComm& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("lblCommStatus"))->text(),
              QStringLiteral("Übertragung der Firmware abgebrochen!"));
  });
  EXPECT_EQ(received, QByteArray(65536, '\xFF'));
}

TEST_F(FirmwareMenuTest, AnOpenCabIsNamedBelowTheQuestion) {
  start();
  workbench->externalMessage(3);
  chooseFile(kOneByte);
  outside.prompt.answers = {Answer::Cancel};
  window->findChild<QAction*>(QStringLiteral("mnuFirmware"))->trigger();
  EXPECT_EQ(outside.prompt.shown.last(), "Firmware-Datei Mx1_2k.hex einspielen?");
  EXPECT_TRUE(outside.prompt.below.last().startsWith("Geöffnet: ")) << "the cab";
  EXPECT_TRUE(outside.prompt.below.last().contains("(3)"));
}

TEST_F(FirmwareMenuTest, ADeclinedFileSendsNothing) {
  start();
  chooseFile(kOneByte);
  outside.prompt.answers = {Answer::Cancel};
  window->findChild<QAction*>(QStringLiteral("mnuFirmware"))->trigger();
  EXPECT_TRUE(line.writes.isEmpty());
  EXPECT_EQ(line.opens, 0);
}

TEST_F(FirmwareMenuTest, ABadFileSendsNothing) {
  start();
  chooseFile(":0100000001FF\r\n");
  window->findChild<QAction*>(QStringLiteral("mnuFirmware"))->trigger();
  EXPECT_EQ(outside.prompt.shown,
            QStringList{"Prüfsummen-Fehler in Firmware-Datei (Zeile 1)\nÜbertragung abgebrochen."});
  EXPECT_EQ(line.opens, 0);
}

TEST_F(FirmwareMenuTest, AnotherStationKindIsTold) {
  start("TAMSMC");
  window->findChild<QAction*>(QStringLiteral("mnuFirmware"))->trigger();
  ASSERT_EQ(outside.prompt.shown.size(), 1);
  EXPECT_TRUE(outside.prompt.shown[0].startsWith("Diese Funktion ist nur mit dem Zimo MX1-2000"));
  EXPECT_EQ(line.opens, 0);
}

TEST_F(FirmwareMenuTest, ACabThatIsAskedForMeanwhileWaitsForTheEnd) {
  start();
  chooseFile(kOneByte);
  outside.clock.schedule(1500, [this] { workbench->externalMessage(3); });
  qsizetype writes = 0;
  trigger([&](DlgComm&) { writes = line.writes.size(); });
  // wake-up, download, one block, three dots; the cab comes behind them
  EXPECT_EQ(writes, 6);
  EXPECT_GT(line.writes.size(), writes);
  EXPECT_EQ(received, '\x01' + QByteArray(65535, '\xFF'));
}

}  // namespace
}  // namespace lokari
