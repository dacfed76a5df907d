// One main for every test program: windows need an application object, and QtTest's input helpers
// need it too.
#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>

#include "support/mnemonic_watch.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  // Windows are drawn into memory unless the caller wants to see them.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QStandardPaths::setTestModeEnabled(true);
  QApplication app(argc, argv);
  lokari::test::MnemonicWatch mnemonics;
  app.installEventFilter(&mnemonics);
  return RUN_ALL_TESTS();
}
