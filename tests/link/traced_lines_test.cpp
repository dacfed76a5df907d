// The traced transports: what a conversation leaves in the file, and that nobody else notices.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "base/bytes.h"
#include "link/link_error.h"
#include "link/trace.h"
#include "link/traced_transports.h"
#include "support/memory_can.h"
#include "support/memory_line.h"
#include "support/memory_socket.h"
#include "support/no_larger_files.h"

namespace lokari {
namespace {

class TracedLinesTest : public ::testing::Test {
 protected:
  void begin(StationKind kind) {
    settings.baseUnit = kind;
    settings.comPort = 3;
    settings.ipAddr = QStringLiteral("192.168.000.111");
    settings.trace = true;
    trace.follow(settings);
  }

  /// The lines behind the head, each without its time unless it is asked for.
  QStringList lines(bool withTime = false) const {
    QFile file(trace.path());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList found;
    const QStringList all = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& each : all) {
      if (each.startsWith(u'#') || each.startsWith(QLatin1String("Lokari"))) continue;
      found << (withTime ? each : each.mid(13)).simplified();
    }
    return found;
  }

  void openSerial() { serial().open({.comPort = 3, .baudrate = 9600}); }
  SerialLine& serial() { return traced.transports().serial; }
  UdpSocket& udp() { return traced.transports().udp; }
  CanDriver& driver() { return traced.transports().can; }

  QTemporaryDir folder;
  test::VirtualClock clock;
  Settings settings;
  test::MemoryLine line{clock};
  test::MemorySocket socket{clock};
  test::MemoryCan can;
  Trace trace{folder.path(), clock};
  TracedTransports traced{{line, socket, can, nullptr, &trace}, settings, clock};
};

// ---- Serial -------------------------------------------------------------------------------------

TEST_F(TracedLinesTest, AMessageIsALineWithTimeDirectionBytesAndMeaning) {
  begin(StationKind::Li100);
  openSerial();
  clock.advance(250);
  serial().write(QByteArray::fromHex("22151D2A"));
  clock.advance(40);
  line.arrive(QByteArray::fromHex("010405"));
  serial().read();
  serial().close();
  EXPECT_EQ(lines(true), (QStringList{
                             "10:00:00.000 - öffnet LI100 an COM3, 9600 Baud",
                             "10:00:00.250 > 22 15 1D 2A ; liest CV 29 (direct)",
                             "10:00:00.290 < 01 04 05 ; an die Zentrale weitergegeben",
                             "10:00:00.290 - schließt die Schnittstelle",
                         }));
}

TEST_F(TracedLinesTest, PiecesOfAMessageAreOneLineWithTheTimeOfTheFirst) {
  begin(StationKind::Li100);
  openSerial();
  line.arrive(QByteArray::fromHex("63"));
  serial().read();
  clock.advance(100);
  line.arrive(QByteArray::fromHex("141D0E64610160"));
  serial().read(4);
  serial().read();
  EXPECT_EQ(lines(true).mid(1),
            (QStringList{"10:00:00.000 < 63 14 1D 0E 64 ; Ergebnis: CV 29 hat 14",
                         "10:00:00.100 < 61 01 60 ; normaler Betrieb, das Gleis ist ein"}));
}

TEST_F(TracedLinesTest, APieceThatStaysOneIsTheLineOfAPauseAnAnswerOrTheEnd) {
  begin(StationKind::Li100);
  openSerial();
  const auto piece = [this] {
    line.arrive(QByteArray::fromHex("6314"));
    serial().read();
  };
  piece();
  clock.advance(MessageTrace::kPause + 1);
  piece();
  serial().write(QByteArray::fromHex("211031"));
  piece();
  serial().close();
  EXPECT_EQ(lines().mid(1),
            (QStringList{"< 63 14 ; Ergebnis: CV ? hat ?", "< 63 14 ; Ergebnis: CV ? hat ?",
                         "> 21 10 31 ; fragt nach dem Ergebnis des Programmierens",
                         "< 63 14 ; Ergebnis: CV ? hat ?", "- schließt die Schnittstelle"}));
}

TEST_F(TracedLinesTest, ACommandThatGoesOutByteByByteIsOneLine) {
  begin(StationKind::Ibx);
  openSerial();
  for (const int byte : {0x78, 0xF2, 0x1D, 0x00}) {
    serial().write(bytes({byte}));
    clock.advance(10);
  }
  line.arrive(bytes({0}));
  serial().read(1);
  EXPECT_EQ(lines(true).mid(1), (QStringList{"10:00:00.000 > 78 F2 1D 00 ; liest CV 29 (direct)",
                                             "10:00:00.040 < 00 ; angenommen"}));
}

TEST_F(TracedLinesTest, TheLinesOfTheHandshakeAreTold) {
  begin(StationKind::Li100);
  openSerial();
  serial().setRtsEnable(false);
  line.cts = false;
  EXPECT_FALSE(serial().ctsHolding());
  EXPECT_FALSE(serial().ctsHolding());
  line.cts = true;
  EXPECT_TRUE(serial().ctsHolding());
  serial().setRtsEnable(true);
  serial().setDtrEnable(false);
  EXPECT_EQ(lines().mid(1),
            (QStringList{"- RTS aus", "- CTS aus", "- CTS ein", "- RTS ein", "- DTR aus"}));
  EXPECT_EQ(line.rtsChanges, (QList<bool>{false, true}));
  EXPECT_EQ(line.dtrChanges, QList<bool>{false});
}

TEST_F(TracedLinesTest, AFailureIsToldOnceAndPassedOn) {
  begin(StationKind::Li100);
  openSerial();
  line.vanish();
  for (int i = 0; i < 3; ++i) EXPECT_THROW(serial().inBufferCount(), LinkError);
  EXPECT_THROW(serial().write("x"), LinkError);
  EXPECT_EQ(lines().mid(1), QStringList{"- Die Schnittstelle ist nicht mehr da!"});
}

TEST_F(TracedLinesTest, NoiseWithoutEndIsCutAndLongMessagesAreCounted) {
  begin(StationKind::Mx1);
  openSerial();
  line.arrive(QByteArray(200, 'a'));
  serial().read();
  serial().write(QByteArray(300, '\xFF'));
  EXPECT_TRUE(lines()[1].contains("… (200 Bytes)")) << qPrintable(lines()[1]);
  EXPECT_TRUE(lines()[2].contains("… (300 Bytes)"));
}

TEST_F(TracedLinesTest, SwitchedOffItWritesNothingAndPassesEverythingOn) {
  openSerial();
  serial().write("x");
  line.arrive("y");
  EXPECT_EQ(serial().inBufferCount(), 1);
  EXPECT_EQ(serial().read(), "y");
  EXPECT_EQ(serial().untilSent(), 0);
  EXPECT_EQ(line.sent(), "x");
  EXPECT_EQ(line.opened.baudrate, 9600);
  EXPECT_TRUE(serial().isOpen());
  serial().close();
  EXPECT_FALSE(line.isOpen());
  EXPECT_FALSE(QFile::exists(trace.path()));
}

TEST_F(TracedLinesTest, ADiskThatFillsUpLeavesTheConversationAsItIs) {
  begin(StationKind::Li100);
  openSerial();
  {
    const test::NoLargerFiles full(QFile(trace.path()).size());
    serial().write("x");
    line.arrive("y");
  }
  EXPECT_FALSE(trace.isOn());
  serial().write("x");
  EXPECT_EQ(line.sent(), "xx");
  EXPECT_EQ(serial().read(), "y");
}

TEST_F(TracedLinesTest, WhatArrivesStandsWhereItArrivedNotWhereItIsTaken) {
  begin(StationKind::Li100);
  openSerial();
  line.arrive(QByteArray::fromHex("010405"));
  clock.advance(5000);
  serial().write(QByteArray::fromHex("22151D2A"));
  serial().read();
  EXPECT_EQ(lines(true).mid(1),
            (QStringList{"10:00:00.000 < 01 04 05 ; an die Zentrale weitergegeben",
                         "10:00:05.000 > 22 15 1D 2A ; liest CV 29 (direct)"}));
}

TEST_F(TracedLinesTest, AnAnswerThatNobodyTakesIsTold) {
  begin(StationKind::Z21Ip);
  udp().open(QStringLiteral("192.168.0.111"), 21105);
  socket.arrive(QByteArray::fromHex("0800100012345678"));
  udp().close();
  EXPECT_EQ(lines()[1], "< 08 00 10 00 12 34 56 78 ; Seriennummer");
}

TEST_F(TracedLinesTest, EachOpeningThatFailsSaysWhy) {
  begin(StationKind::Z21Ip);
  socket.stateAfterOpen = 0;
  socket.faultAfterOpen = QStringLiteral("Das Netz ist nicht da!");
  for (int i = 0; i < 2; ++i) udp().open(QStringLiteral("192.168.0.111"), 21105);
  EXPECT_EQ(lines().count(QStringLiteral("- Das Netz ist nicht da!")), 2);
}

// ---- UDP ----------------------------------------------------------------------------------------

TEST_F(TracedLinesTest, EachMessageOfADatagramIsALine) {
  begin(StationKind::Z21Ip);
  QList<qsizetype> sizes;
  udp().onArrival = [&](qsizetype size) {
    sizes << size;
    udp().takeDatagram();
  };
  udp().open(QStringLiteral("192.168.0.111"), 21105);
  udp().send(QByteArray::fromHex("04001000"));
  clock.advance(5);
  socket.arrive(
      QByteArray::fromHex("0800100012345678"
                          "07004000610160"));
  EXPECT_EQ(sizes, QList<qsizetype>{15});
  EXPECT_EQ(lines(true), (QStringList{
                             "10:00:00.000 - öffnet Z21IP an 192.168.000.111, UDP-Port 21105",
                             "10:00:00.000 > 04 00 10 00 ; fragt nach der Seriennummer",
                             "10:00:00.005 < 08 00 10 00 12 34 56 78 ; Seriennummer",
                             "10:00:00.005 < 07 00 40 00 61 01 60 ; das Gleis ist ein",
                         }));
}

TEST_F(TracedLinesTest, AnAnswerThatIsThereAtOnceStandsBehindItsQuestion) {
  struct QuickSocket final : test::MemorySocket {
    using MemorySocket::MemorySocket;
    void onSend(const QByteArray&) override { arrive(QByteArray::fromHex("07004000610160")); }
  };
  QuickSocket quick(clock);
  TracedTransports around{{line, quick, can, nullptr, &trace}, settings, clock};
  begin(StationKind::Z21Ip);
  UdpSocket& udp = around.transports().udp;
  udp.onArrival = [&](qsizetype) { udp.takeDatagram(); };
  udp.open(QStringLiteral("192.168.0.111"), 21105);
  udp.send(QByteArray::fromHex("0700400021 81A0"));
  EXPECT_TRUE(lines()[1].startsWith("> 07 00 40 00 21 81")) << qPrintable(lines().join('|'));
  EXPECT_TRUE(lines()[2].startsWith("< 07 00 40 00 61 01"));
}

TEST_F(TracedLinesTest, WhatTheSocketTellsIsPassedOnAndTold) {
  begin(StationKind::Z21Ip);
  int refused = 0;
  int closed = 0;
  udp().onRefused = [&] { ++refused; };
  udp().onClosed = [&] { ++closed; };
  udp().open(QStringLiteral("192.168.0.111"), 21105);
  socket.refuse();
  socket.onClosed();
  EXPECT_EQ(refused, 1);
  EXPECT_EQ(closed, 1);
  socket.failsToSend = true;
  EXPECT_THROW(udp().send("x"), LinkError);
  udp().close();
  EXPECT_EQ(socket.state(), 0);
  EXPECT_EQ(lines().mid(1), (QStringList{"- dort hört niemand zu", "- die Verbindung ist zu",
                                         "> 78", "- nicht gesendet: Netzwerkfehler beim Senden!",
                                         "- schließt die Verbindung"}));
}

TEST_F(TracedLinesTest, AnAddressByWhichItsOwnerIsFoundStandsInNoLine) {
  begin(StationKind::Z21Ip);
  settings.ipAddr = QStringLiteral("093.184.216.034");
  socket.stateAfterOpen = 0;
  for (const char* host : {"093.184.216.034", "93.184.216.34"}) {
    socket.faultAfterOpen = "Die Adresse " + QString::fromLatin1(host) + " ist nicht zu erreichen!";
    udp().open(QString::fromLatin1(host), 21105);
    EXPECT_EQ(lines().last(), "- Die Adresse … ist nicht zu erreichen!");
  }
  EXPECT_FALSE(lines().join(u' ').contains(QLatin1String("184")));
}

TEST_F(TracedLinesTest, ASocketThatAnotherOneTookMeanwhileIsListenedToAgain) {
  int arrivals = 0;
  udp().onArrival = [&](qsizetype) { ++arrivals; };
  udp().open(QStringLiteral("192.168.0.111"), 21105);
  socket.onArrival = nullptr;
  udp().open(QStringLiteral("192.168.0.111"), 21105);
  socket.arrive("x");
  EXPECT_EQ(arrivals, 1);
  EXPECT_EQ(udp().takeDatagram(), "x");
}

// ---- CAN ----------------------------------------------------------------------------------------

TEST_F(TracedLinesTest, CanMessagesAreLinesOfTheirOwn) {
  begin(StationKind::Mx10);
  EXPECT_EQ(driver().open({.driver = 9}), 0);
  CanMessage question{.ID = 0x020886C2, .MSGTYPE = 2, .LEN = 2, .DATA = {3, 0}};
  EXPECT_EQ(driver().write(question), 0);
  can.arrive({.ID = 0x020B1234, .MSGTYPE = 2, .LEN = 5, .DATA = {3, 0, 8, 0, 0}});
  CanMessage answer;
  EXPECT_EQ(driver().read(answer), 0);
  EXPECT_EQ(answer.ID, 0x020B1234U);
  EXPECT_NE(driver().read(answer), 0);
  can.writeResult = 0x103;
  EXPECT_EQ(driver().write(question), 0x103);
  EXPECT_EQ(driver().close(), 0);
  EXPECT_EQ(
      lines(),
      (QStringList{"- öffnet MX10 an COM3, CAN-Treiber 9",
                   "> 02 2 08 86C2 Len: 2 Data: 03 00 ; Geschwindigkeit und Richtung von Fahrzeug "
                   "3 (Frage)",
                   "< 02 2 0B 1234 Len: 5 Data: 03 00 08 00 00 ; Geschwindigkeit und Richtung von "
                   "Fahrzeug 3 (Bestätigung)",
                   "> 02 2 08 86C2 Len: 2 Data: 03 00 ; Geschwindigkeit und Richtung von Fahrzeug "
                   "3 (Frage)",
                   "- nicht gesendet (259)", "- schließt den CAN-Treiber"}));
}

TEST_F(TracedLinesTest, EachCanMessageThatDoesNotGoOutSaysSo) {
  begin(StationKind::Mx10);
  EXPECT_EQ(driver().open({.driver = 9}), 0);
  can.writeResult = 0x103;
  const CanMessage question{.ID = 0x020886C2, .MSGTYPE = 2, .LEN = 2, .DATA = {3, 0}};
  for (int i = 0; i < 2; ++i) EXPECT_EQ(driver().write(question), 0x103);
  EXPECT_EQ(lines().count(QStringLiteral("- nicht gesendet (259)")), 2);
}

TEST_F(TracedLinesTest, ADriverThatDoesNotOpenSaysWhy) {
  begin(StationKind::Mx10);
  can.openResult = 0x100;
  EXPECT_EQ(driver().open({.driver = 5}), 0x100);
  EXPECT_EQ(lines().last(), "- nicht geöffnet (256)");
}

}  // namespace
}  // namespace lokari
