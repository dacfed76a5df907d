#include "app/external_message.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QProcess>

namespace lokari {
namespace {

/// A message bus of its own, as a desktop session has one.
class Bus {
 public:
  Bus() {
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"),
                   QStringLiteral("--print-address")});
    EXPECT_TRUE(daemon_.waitForReadyRead());
    address_ = QString::fromLatin1(daemon_.readLine()).trimmed();
  }
  ~Bus() {
    daemon_.kill();
    daemon_.waitForFinished();
  }
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  QDBusConnection connect(const QString& name) const {
    return QDBusConnection::connectToBus(address_, name);
  }

 private:
  QProcess daemon_;
  QString address_;
};

TEST(ExternalMessage, AnotherProgramReachesItOverTheBus) {
  const Bus bus;
  QList<int> received;
  ExternalMessage message([&](int address) { received << address; });
  ASSERT_TRUE(message.listen(bus.connect(QStringLiteral("workbench"))));

  const QDBusConnection other = bus.connect(QStringLiteral("other"));
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.lokari.Workbench"), QStringLiteral("/org/lokari/Workbench"),
      QStringLiteral("org.lokari.Workbench"), QStringLiteral("OpenCab"));
  call << 4711;
  QDBusPendingCallWatcher watcher(other.asyncCall(call));
  QEventLoop loop;
  QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
  loop.exec();
  EXPECT_FALSE(watcher.isError()) << qPrintable(watcher.error().message());
  QCoreApplication::processEvents();
  EXPECT_EQ(received, QList<int>{4711});
  QDBusConnection::disconnectFromBus(QStringLiteral("workbench"));
  QDBusConnection::disconnectFromBus(QStringLiteral("other"));
}

TEST(ExternalMessage, TheCallerIsAnsweredBeforeTheAddressIsUsed) {
  bool used = false;
  ExternalMessage message([&](int) { used = true; });
  message.OpenCab(5);
  EXPECT_FALSE(used);
  QCoreApplication::processEvents();
  EXPECT_TRUE(used);
}

TEST(ExternalMessage, WithoutABusTheProgramDoesWithout) {
  ExternalMessage message([](int) {});
  EXPECT_FALSE(message.listen(QDBusConnection(QStringLiteral("no such bus"))));
}

}  // namespace
}  // namespace lokari
