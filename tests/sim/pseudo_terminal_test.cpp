// The simulator's real port. Waits end with an event, never with a time.
#include "sim/pseudo_terminal.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>

#include "base/qt_clock.h"

namespace lokari::sim {
namespace {

class PseudoTerminalTest : public ::testing::Test {
 protected:
  QString link() const { return folder.filePath(QStringLiteral("tams")); }

  QTemporaryDir folder;
  QtClock clock;
  PseudoTerminal terminal;
};

TEST_F(PseudoTerminalTest, AppearsUnderItsLinkAndGoesWithIt) {
  EXPECT_EQ(terminal.open(link()), "");
  EXPECT_EQ(QFile::symLinkTarget(link()), terminal.device());
  terminal.close();
  EXPECT_FALSE(QFileInfo(link()).isSymLink());
}

TEST_F(PseudoTerminalTest, ReplacesTheLinkOfAnEarlierRun) {
  ASSERT_TRUE(QFile::link(QStringLiteral("/dev/pts/verschwunden"), link()));
  EXPECT_EQ(terminal.open(link()), "");
  EXPECT_EQ(QFile::symLinkTarget(link()), terminal.device());
}

TEST_F(PseudoTerminalTest, LeavesAFileOfThatNameAlone) {
  QFile file(link());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  EXPECT_EQ(terminal.open(link()), link() + " gibt es schon und ist keine Verknüpfung!");
  EXPECT_TRUE(QFile::exists(link()));
}

TEST_F(PseudoTerminalTest, AFolderThatIsNotThereIsReported) {
  const QString nowhere = folder.filePath(QStringLiteral("nein/tams"));
  EXPECT_EQ(terminal.open(nowhere), "Kann " + nowhere + " nicht anlegen!");
}

TEST_F(PseudoTerminalTest, CarriesBytesUnchangedAlsoAfterTheProgramReopensThePort) {
  ASSERT_EQ(terminal.open(link()), "");
  QByteArray got;
  terminal.onReceive = [&](const QByteArray& data) { got += data; };
  for (int round = 0; round < 2; ++round) {
    got.clear();
    const int port = ::open(link().toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    ASSERT_GE(port, 0);
    ASSERT_EQ(::write(port, "a\r\n\x03z", 5), 5);
    EXPECT_TRUE(clock.waitUntil([&] { return got.size() == 5; }, clock.now() + 20000));
    EXPECT_EQ(got, "a\r\n\x03z");
    terminal.send("b\n\x04");
    QByteArray back(3, '\0');
    EXPECT_EQ(::read(port, back.data(), 3), 3);
    EXPECT_EQ(back, "b\n\x04");
    ::close(port);
  }
}

}  // namespace
}  // namespace lokari::sim
