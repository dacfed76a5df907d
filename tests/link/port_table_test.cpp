#include "link/port_table.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace lokari {
namespace {

class PortTableTest : public ::testing::Test {
 protected:
  PortTableTest() { QDir(folder.path()).mkdir(QStringLiteral("by-id")); }

  void plug(const QString& name) {
    QFile file(adapterPath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  }

  void unplug(const QString& name) { EXPECT_TRUE(QFile::remove(adapterPath(name))); }

  QString adapterPath(const QString& name) const {
    return folder.filePath(QStringLiteral("by-id/") + name);
  }

  void writeIni(const QByteArray& text) {
    QFile file(folder.filePath(QStringLiteral("PORTS.INI")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  QByteArray ini() const {
    QFile file(folder.filePath(QStringLiteral("PORTS.INI")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir folder;
  PortTable ports{folder.path(), folder.filePath(QStringLiteral("by-id"))};
};

TEST_F(PortTableTest, ANumberWithoutALineHasNoDevice) {
  EXPECT_EQ(ports.device(3), "");
}

TEST_F(PortTableTest, ADeviceSetByHandIsTakenAsItStands) {
  writeIni("[PORTS]\r\nCOM3=/dev/pts/7\r\n");
  EXPECT_EQ(ports.device(3), "/dev/pts/7");
}

TEST_F(PortTableTest, ABareNameIsADeviceOfThisMachine) {
  writeIni("[PORTS]\r\nCOM3=ttyUSB0\r\n");
  EXPECT_EQ(ports.device(3), "/dev/ttyUSB0");
}

TEST_F(PortTableTest, AnAdapterSeenForTheFirstTimeGetsTheLowestFreeNumberAndKeepsIt) {
  writeIni("[PORTS]\r\nCOM1=/dev/ttyS0\r\n");
  plug(QStringLiteral("usb-B"));
  EXPECT_EQ(ports.device(2), adapterPath(QStringLiteral("usb-B")));
  EXPECT_TRUE(ini().contains("COM2="));

  plug(QStringLiteral("usb-A"));
  EXPECT_EQ(ports.device(2), adapterPath(QStringLiteral("usb-B")));
  EXPECT_EQ(ports.device(3), adapterPath(QStringLiteral("usb-A")));
}

TEST_F(PortTableTest, AnUnpluggedAdapterKeepsItsNumberAndIsNotPresent) {
  plug(QStringLiteral("usb-A"));
  EXPECT_EQ(ports.presentPorts().size(), 1);
  unplug(QStringLiteral("usb-A"));
  EXPECT_TRUE(ports.presentPorts().isEmpty());
  plug(QStringLiteral("usb-0"));
  EXPECT_EQ(ports.device(1), adapterPath(QStringLiteral("usb-A")));
  EXPECT_EQ(ports.device(2), adapterPath(QStringLiteral("usb-0")));
}

TEST_F(PortTableTest, TheEleventhAdapterGetsNoNumber) {
  for (int i = 0; i < 11; ++i) plug(QStringLiteral("usb-%1").arg(i, 2, 10, QLatin1Char('0')));
  const QList<PortTable::Port> present = ports.presentPorts();
  ASSERT_EQ(present.size(), 10);
  EXPECT_EQ(present.first().comPort, 1);
  EXPECT_EQ(present.last().device, adapterPath(QStringLiteral("usb-09")));
}

TEST_F(PortTableTest, TheOrderOfNewAdaptersIsThatOfTheirNames) {
  plug(QStringLiteral("usb-B"));
  plug(QStringLiteral("usb-A"));
  EXPECT_EQ(ports.device(1), adapterPath(QStringLiteral("usb-A")));
  EXPECT_EQ(ports.device(2), adapterPath(QStringLiteral("usb-B")));
}

TEST_F(PortTableTest, OtherLinesOfTheFileStay) {
  writeIni("; mein Kommentar\r\n[PORTS]\r\nCOM4=/dev/ttyS1\r\n");
  plug(QStringLiteral("usb-A"));
  ports.device(1);
  EXPECT_TRUE(ini().startsWith("; mein Kommentar\r\n[PORTS]\r\nCOM4=/dev/ttyS1\r\n"));
}

TEST_F(PortTableTest, NumbersOutsideTheTableHaveNoDevice) {
  writeIni("[PORTS]\r\nCOM11=/dev/ttyS1\r\nCOM0=/dev/ttyS2\r\n");
  EXPECT_EQ(ports.device(11), "");
  EXPECT_EQ(ports.device(0), "");
}

}  // namespace
}  // namespace lokari
