// The trace of the program with windows: switched on by its settings or the environment, and its
// end beside the work.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>

#include "app/ui/application.h"
#include "app/ui/main_win.h"
#include "app_folder.h"

namespace lokari {
namespace {

class TraceStart : public ::testing::Test {
 protected:
  TraceStart() { qputenv("LOKARI_APP", QFile::encodeName(folder.path())); }
  ~TraceStart() override {
    qunsetenv("LOKARI_APP");
    qunsetenv("LOKARI_TRACE");
  }

  void settings(const char* more) const {
    folder.settings(QByteArray("BaseUnit=TAMSMC\r\nComPort=3\r\nCANLog=0\r\n") + more);
  }

  test::AppFolder folder;
};

TEST_F(TraceStart, WithoutItsKeyThereIsNone) {
  settings("");
  Application lokari{QString()};
  ASSERT_TRUE(lokari.start());
  EXPECT_FALSE(QFile::exists(folder.file(QStringLiteral("TRACE.log"))));
}

TEST_F(TraceStart, TheSettingsSwitchItOn) {
  settings("Trace=1\r\n");
  Application lokari{QString()};
  ASSERT_TRUE(lokari.start());
  EXPECT_TRUE(folder.read(QStringLiteral("TRACE.log")).startsWith("Lokari-Mitschrift: Lokari V"));
}

TEST_F(TraceStart, TheEnvironmentSwitchesItOnAndStaysOutOfTheSettings) {
  settings("");
  qputenv("LOKARI_TRACE", "1");
  {
    Application lokari{QString()};
    ASSERT_TRUE(lokari.start());
  }
  EXPECT_TRUE(folder.read(QStringLiteral("TRACE.log")).contains("TAMSMC an COM3"));
  EXPECT_FALSE(folder.read(QStringLiteral("LOKARI.INI")).contains("Trace"));
}

TEST_F(TraceStart, AFileThatCannotBeWrittenIsToldBesideTheWorkAndNothingElseChanges) {
  settings("Trace=1\r\n");
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("TRACE.log")));
  Application lokari{QString()};
  ASSERT_TRUE(lokari.start());
  QApplication::processEvents();
  const auto* note = lokari.window().findChild<QMessageBox*>(QStringLiteral("boxPassingNote"));
  ASSERT_NE(note, nullptr);
  EXPECT_TRUE(note->text().startsWith("Die Verbindung wird nicht mehr mitgeschrieben!\n"));
  EXPECT_TRUE(note->isVisible());
  EXPECT_FALSE(note->isModal());
  EXPECT_TRUE(lokari.window().isVisible());
}

}  // namespace
}  // namespace lokari
