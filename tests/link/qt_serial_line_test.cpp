// The real serial line, on a pseudo-terminal. Waits end with an event, never with a time.
#include "link/qt_serial_line.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "base/qt_clock.h"
#include "link/link_error.h"
#include "link/port_table.h"
#include "support/pseudo_terminal.h"

namespace lokari {
namespace {

class QtSerialLineTest : public ::testing::Test {
 protected:
  QtSerialLineTest() { mapTo(terminal.port()); }

  void mapTo(const QString& device) {
    QFile file(folder.filePath(QStringLiteral("PORTS.INI")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[PORTS]\r\nCOM3=" + device.toLatin1() + "\r\n");
  }

  void open(Handshaking handshaking = Handshaking::RequestToSend) {
    line.open({.comPort = 3, .baudrate = 2400, .handshaking = handshaking});
  }

  /// What opening fails with; the line then stays closed.
  QString openFault() {
    try {
      open();
    } catch (const LinkError& error) {
      EXPECT_FALSE(line.isOpen());
      return error.message();
    }
    return QStringLiteral("no fault");
  }

  /// A limit for what must happen anyway; far above what it takes.
  bool waitFor(const std::function<bool()>& done) {
    return clock.waitUntil(done, clock.now() + 20000);
  }

  test::PseudoTerminal terminal;
  QTemporaryDir folder;
  PortTable ports{folder.path(), folder.filePath(QStringLiteral("none"))};
  QtClock clock;
  QtSerialLine line{ports};
};

TEST_F(QtSerialLineTest, SendsAndReceives) {
  open();
  EXPECT_TRUE(line.isOpen());
  line.write("xPTRB 29\r");
  QByteArray got;
  EXPECT_TRUE(waitFor([&] {
    got += terminal.received();
    return got.size() >= 9;
  }));
  EXPECT_EQ(got, "xPTRB 29\r");

  terminal.send("123]\r");
  EXPECT_TRUE(waitFor([&] { return line.inBufferCount() == 5; }));
  EXPECT_EQ(line.read(3), "123");
  EXPECT_EQ(line.read(), "]\r");
  EXPECT_EQ(line.read(), "");
}

TEST_F(QtSerialLineTest, WhatNobodyReadsHasALimitAndTheNewestIsKept) {
  open(Handshaking::None);
  const QByteArray block(1000, 'x');
  qsizetype most = 0;
  for (qsizetype sent = 0; sent < 2 * QtSerialLine::kMostWaiting; sent += block.size()) {
    terminal.send(block);
    most = std::min(sent + block.size(), QtSerialLine::kMostWaiting);
    ASSERT_TRUE(waitFor([&] { return line.inBufferCount() >= most; })) << sent;
    ASSERT_EQ(line.inBufferCount(), most) << sent;
  }
  terminal.send("Ende");
  QByteArray all;
  EXPECT_TRUE(waitFor([&] {
    all += line.read();
    return all.endsWith("Ende");
  }));
  EXPECT_LE(all.size(), QtSerialLine::kMostWaiting + 4);
}

TEST_F(QtSerialLineTest, EveryByteGoesThroughUnchanged) {
  open();
  QByteArray all;
  for (int i = 0; i < 256; ++i) all.append(static_cast<char>(i));
  terminal.send(all);
  EXPECT_TRUE(waitFor([&] { return line.inBufferCount() == 256; }));
  EXPECT_EQ(line.read(), all);
  line.write(all);
  QByteArray got;
  EXPECT_TRUE(waitFor([&] {
    got += terminal.received();
    return got.size() >= 256;
  }));
  EXPECT_EQ(got, all);
}

TEST_F(QtSerialLineTest, ALineWithoutModemSignalsCountsAsClearToSend) {
  open();
  line.setRtsEnable(false);
  line.setRtsEnable(true);
  line.setDtrEnable(false);
  EXPECT_TRUE(line.ctsHolding());
  EXPECT_TRUE(line.isOpen());
}

TEST_F(QtSerialLineTest, ANumberWithoutADeviceFailsToOpen) {
  mapTo(QString());
  EXPECT_EQ(openFault(), "Für COM3 steht in PORTS.INI kein Gerät!");
}

TEST_F(QtSerialLineTest, ADeviceThatIsNotThereFailsToOpen) {
  const QString node = folder.filePath(QStringLiteral("weg"));
  mapTo(node);
  EXPECT_EQ(openFault(), "Die Schnittstelle COM3 (" + node + ") ist nicht da!");
}

TEST_F(QtSerialLineTest, AFileThatIsNoPortFailsToOpen) {
  const QString node = folder.filePath(QStringLiteral("PORTS.INI"));
  mapTo(node);
  EXPECT_EQ(openFault(), "Die Schnittstelle COM3 (" + node + ") ist keine serielle Schnittstelle!");
}

TEST_F(QtSerialLineTest, AClosedLineThrows) {
  EXPECT_THROW(line.inBufferCount(), LinkError);
  EXPECT_THROW(line.write("x"), LinkError);
}

TEST_F(QtSerialLineTest, AnUnpluggedDeviceIsNoticedWhileWaiting) {
  open();
  terminal.unplug();
  const auto wait = [&] { return line.inBufferCount() > 0; };
  EXPECT_THROW(waitFor(wait), LinkError);
  EXPECT_FALSE(line.isOpen());
  EXPECT_THROW(line.write("x"), LinkError);
}

TEST_F(QtSerialLineTest, AnUnpluggedDeviceIsNoticedByAWrite) {
  open();
  terminal.unplug();
  EXPECT_THROW(line.write("xPTRB 29\r"), LinkError);
}

TEST_F(QtSerialLineTest, AnUnpluggedDeviceIsLetGoWithoutAnyoneAsking) {
  open();
  terminal.unplug();
  EXPECT_TRUE(waitFor([&] { return !line.isOpen(); }));
}

TEST_F(QtSerialLineTest, AMissingDeviceNodeIsNoticed) {
  const QString node = folder.filePath(QStringLiteral("ttyUSB0"));
  ASSERT_TRUE(QFile::link(terminal.port(), node));
  mapTo(node);
  open();
  EXPECT_EQ(line.inBufferCount(), 0);
  ASSERT_TRUE(QFile::remove(node));
  try {
    line.inBufferCount();
    FAIL() << "not noticed";
  } catch (const LinkError& error) {
    EXPECT_EQ(error.message(), "Die Schnittstelle COM3 (" + node + ") ist nicht mehr da!");
  }
}

TEST_F(QtSerialLineTest, OpensAgainWithNothingWaiting) {
  open();
  line.close();
  EXPECT_FALSE(line.isOpen());
  terminal.send("alt");
  open(Handshaking::None);
  terminal.send("neu");
  EXPECT_TRUE(waitFor([&] { return line.inBufferCount() >= 3; }));
  EXPECT_EQ(line.read(), "neu");
}

}  // namespace
}  // namespace lokari
