// The real UDP socket, on the loopback interface. Waits end with an event, never with a time.
#include "link/system_udp_socket.h"

#include <gtest/gtest.h>

#include <QNetworkDatagram>
#include <QUdpSocket>

#include "base/qt_clock.h"
#include "link/link_error.h"

namespace lokari {
namespace {

class SystemUdpSocketTest : public ::testing::Test {
 protected:
  SystemUdpSocketTest() {
    EXPECT_TRUE(peer.bind(QHostAddress(QHostAddress::LocalHost), 0));
    socket.onArrival = [this](qsizetype size) { sizes.append(size); };
  }

  bool waitFor(const std::function<bool()>& done) {
    return clock.waitUntil(done, clock.now() + 20000);
  }

  /// Opens the socket and lets the peer learn its port.
  quint16 introduce() {
    socket.open(QStringLiteral("127.000.000.001"), peer.localPort());
    socket.send("hallo");
    EXPECT_TRUE(waitFor([&] { return peer.hasPendingDatagrams(); }));
    QByteArray data(16, '\0');
    quint16 port = 0;
    data.resize(peer.readDatagram(data.data(), data.size(), nullptr, &port));
    EXPECT_EQ(data, "hallo");
    return port;
  }

  QtClock clock;
  QUdpSocket peer;
  SystemUdpSocket socket;
  QList<qsizetype> sizes;
};

TEST_F(SystemUdpSocketTest, SendsToAnAddressWithLeadingZeros) {
  introduce();
  EXPECT_EQ(socket.state(), UdpSocket::kOpen);
}

TEST_F(SystemUdpSocketTest, AnnouncesADatagramWithItsSizeAndHandsItOut) {
  const quint16 port = introduce();
  peer.writeDatagram("abc", QHostAddress(QHostAddress::LocalHost), port);
  EXPECT_TRUE(waitFor([&] { return !sizes.isEmpty(); }));
  EXPECT_EQ(sizes, QList<qsizetype>{3});
  EXPECT_EQ(socket.takeDatagram(), "abc");
  EXPECT_EQ(socket.takeDatagram(), "");
}

TEST_F(SystemUdpSocketTest, ADatagramThatIsNotTakenWaitsForTheNextArrival) {
  const quint16 port = introduce();
  peer.writeDatagram("alt", QHostAddress(QHostAddress::LocalHost), port);
  EXPECT_TRUE(waitFor([&] { return sizes.size() == 1; }));
  peer.writeDatagram("neuer", QHostAddress(QHostAddress::LocalHost), port);
  EXPECT_TRUE(waitFor([&] { return sizes.size() == 2; }));
  EXPECT_EQ(sizes.last(), 3);
  EXPECT_EQ(socket.takeDatagram(), "alt");
  EXPECT_TRUE(waitFor([&] { return sizes.size() == 3; }));
  EXPECT_EQ(sizes.last(), 5);
  EXPECT_EQ(socket.takeDatagram(), "neuer");
}

TEST_F(SystemUdpSocketTest, KeepsTheLastThousandDatagrams) {
  const quint16 port = introduce();
  for (int i = 1; i <= 1500; ++i) {
    peer.writeDatagram(QByteArray::number(i), QHostAddress(QHostAddress::LocalHost), port);
    ASSERT_TRUE(waitFor([&] { return sizes.size() == i; }));
  }
  EXPECT_EQ(socket.takeDatagram(), "501");
  int more = 0;
  while (!socket.takeDatagram().isEmpty()) ++more;
  EXPECT_EQ(more, 999);
}

TEST_F(SystemUdpSocketTest, PassesADatagramOfNothingOver) {
  const quint16 port = introduce();
  peer.writeDatagram("", QHostAddress(QHostAddress::LocalHost), port);
  peer.writeDatagram("abc", QHostAddress(QHostAddress::LocalHost), port);
  EXPECT_TRUE(waitFor([&] { return !sizes.isEmpty(); }));
  EXPECT_EQ(socket.takeDatagram(), "abc");
}

TEST_F(SystemUdpSocketTest, ADatagramFromAnotherPortOfTheSameAddressIsNotHandedOut) {
  const quint16 port = introduce();
  QUdpSocket stranger;
  ASSERT_TRUE(stranger.bind(QHostAddress(QHostAddress::LocalHost), 0));
  stranger.writeDatagram("fremd", QHostAddress(QHostAddress::LocalHost), port);
  peer.writeDatagram("abc", QHostAddress(QHostAddress::LocalHost), port);
  EXPECT_TRUE(waitFor([&] { return !sizes.isEmpty(); }));
  EXPECT_EQ(socket.takeDatagram(), "abc");
  EXPECT_EQ(socket.takeDatagram(), "");
}

TEST_F(SystemUdpSocketTest, AClosedPortIsReportedAndAStationThatComesBackIsHeard) {
  introduce();
  const quint16 remote = peer.localPort();
  peer.close();
  int refusals = 0;
  socket.onRefused = [&] { ++refusals; };
  socket.send("abc");
  EXPECT_TRUE(waitFor([&] { return refusals == 1; }));
  ASSERT_TRUE(peer.bind(QHostAddress(QHostAddress::LocalHost), remote));
  socket.send("def");
  EXPECT_TRUE(waitFor([&] { return peer.hasPendingDatagrams(); }));
  EXPECT_EQ(refusals, 1);
}

TEST_F(SystemUdpSocketTest, ASendBehindARefusalThatNobodyHasHeardOfStillGoesOut) {
  introduce();
  const quint16 remote = peer.localPort();
  peer.close();
  socket.send("abc");
  ASSERT_TRUE(peer.bind(QHostAddress(QHostAddress::LocalHost), remote));
  socket.send("def");
  EXPECT_TRUE(waitFor([&] { return peer.hasPendingDatagrams(); }));
  EXPECT_EQ(peer.receiveDatagram().data(), "def");
}

TEST_F(SystemUdpSocketTest, ALocalPortThatAnotherProgramHoldsIsNamed) {
  QUdpSocket holder;
  ASSERT_TRUE(holder.bind(QHostAddress(QHostAddress::AnyIPv4), 0, QUdpSocket::DontShareAddress));
  socket.open(QStringLiteral("127.0.0.1"), peer.localPort(), holder.localPort());
  EXPECT_NE(socket.state(), UdpSocket::kOpen);
  EXPECT_EQ(socket.fault(),
            QStringLiteral("Der UDP-Port %1 dieses Rechners ist von einem anderen Programm belegt!")
                .arg(holder.localPort()));
  introduce();
  EXPECT_EQ(socket.fault(), "");
}

TEST_F(SystemUdpSocketTest, ASocketMayBeClosedFromInsideAnArrival) {
  const quint16 port = introduce();
  bool closed = false;
  socket.onArrival = [&](qsizetype) {
    socket.close();
    closed = true;
  };
  peer.writeDatagram("abc", QHostAddress(QHostAddress::LocalHost), port);
  peer.writeDatagram("def", QHostAddress(QHostAddress::LocalHost), port);
  EXPECT_TRUE(waitFor([&] { return closed; }));
  EXPECT_EQ(socket.takeDatagram(), "");
}

TEST_F(SystemUdpSocketTest, ABadAddressDoesNotOpen) {
  for (const char* host : {"", "1.2.3", "1.2.3.400", "a.b.c.d", "1.2.3.4.5"}) {
    socket.open(QString::fromLatin1(host), 21105);
    EXPECT_NE(socket.state(), UdpSocket::kOpen) << host;
    EXPECT_THROW(socket.send("x"), LinkError) << host;
    EXPECT_EQ(socket.fault(),
              *host == '\0'
                  ? QStringLiteral("In den Optionen steht keine IP-Adresse!")
                  : QStringLiteral("In den Optionen steht \"%1\", das ist keine IP-Adresse!")
                        .arg(QString::fromLatin1(host)));
  }
}

TEST_F(SystemUdpSocketTest, AClosedSocketSendsNothing) {
  introduce();
  socket.close();
  EXPECT_THROW(socket.send("x"), LinkError);
}

}  // namespace
}  // namespace lokari
