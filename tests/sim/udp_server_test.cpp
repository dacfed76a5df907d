// The station's UDP port: whom it answers.
#include "sim/udp_server.h"

#include <gtest/gtest.h>

#include <QNetworkDatagram>

#include "base/qt_clock.h"

namespace lokari::sim {
namespace {

class UdpServerTest : public ::testing::Test {
 protected:
  UdpServerTest() {
    // A port that the system has just given away is free again.
    QUdpSocket probe;
    EXPECT_TRUE(probe.bind(QHostAddress(QHostAddress::LocalHost)));
    port_ = probe.localPort();
    probe.close();
    EXPECT_EQ(server.open(port_), "");
    server.onReceiveFrom = [this](int client, const QByteArray& data) {
      heard.append({client, data});
    };
    for (QUdpSocket* socket : {&first, &second}) {
      EXPECT_TRUE(socket->bind(QHostAddress(QHostAddress::LocalHost)));
    }
  }

  void say(QUdpSocket& socket, const char* text) {
    const qsizetype before = heard.size();
    socket.writeDatagram(text, QHostAddress(QHostAddress::LocalHost), port_);
    ASSERT_TRUE(clock.waitUntil([&] { return heard.size() > before; }, clock.now() + 10000));
  }
  QByteArray heardBy(QUdpSocket& socket) {
    clock.waitUntil([&] { return socket.hasPendingDatagrams(); }, clock.now() + 10000);
    return socket.receiveDatagram().data();
  }

  QtClock clock;
  UdpServer server;
  QUdpSocket first;
  QUdpSocket second;
  QList<std::pair<int, QByteArray>> heard;

 private:
  quint16 port_ = 0;
};

TEST_F(UdpServerTest, ClientsAreNumberedAndAnsweredEach) {
  say(first, "eins");
  say(second, "zwei");
  say(first, "drei");
  const QList<std::pair<int, QByteArray>> expected{{0, "eins"}, {1, "zwei"}, {0, "drei"}};
  EXPECT_EQ(heard, expected);
  server.sendTo(1, "an zwei");
  server.send("an den letzten");
  EXPECT_EQ(heardBy(second), "an zwei");
  EXPECT_EQ(heardBy(first), "an den letzten");
  EXPECT_FALSE(second.hasPendingDatagrams());
}

}  // namespace
}  // namespace lokari::sim
