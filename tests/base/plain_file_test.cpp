// Whatever stands under a name from outside, reading it waits for nobody.
#include "base/plain_file.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "base/text_file.h"

namespace lokari {
namespace {

class PlainFileTest : public ::testing::Test {
 protected:
  QString path(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }
  QString made(const char* name, const QByteArray& data) const {
    EXPECT_TRUE(writeFileAtomically(path(name), data));
    return path(name);
  }
  QString pipe() const {
    EXPECT_EQ(::mkfifo(path("pipe").toLocal8Bit().constData(), S_IRUSR | S_IWUSR), 0);
    return path("pipe");
  }

  QTemporaryDir folder_;
};

TEST_F(PlainFileTest, AFileIsReadAndSought) {
  PlainFile file(made("a", "abcdef"));
  ASSERT_TRUE(file.open());
  EXPECT_EQ(file.size(), 6);
  ASSERT_TRUE(file.seek(2));
  EXPECT_EQ(file.read(3), QByteArray("cde"));
  file.close();
  ASSERT_TRUE(file.open()) << "again";
  EXPECT_EQ(file.readAll(), QByteArray("abcdef"));
}

TEST_F(PlainFileTest, ALinkIsWhatItLeadsTo) {
  made("a", "x");
  ASSERT_TRUE(QFile::link(path("a"), path("link")));
  EXPECT_TRUE(PlainFile(path("link")).open());
  pipe();
  ASSERT_TRUE(QFile::link(path("pipe"), path("trap")));
  EXPECT_FALSE(PlainFile(path("trap")).open());
}

TEST_F(PlainFileTest, APipeIsRefusedAndNotWaitedFor) {
  PlainFile file(pipe());
  EXPECT_FALSE(file.open());
  EXPECT_EQ(file.errorString(),
            QStringLiteral("Sie ist keine gewöhnliche Datei, sondern eine Pipe."));
  EXPECT_FALSE(readPlainFile(path("pipe")));
  EXPECT_FALSE(copyPlainFile(path("pipe"), path("copy")));
  EXPECT_FALSE(QFile::exists(path("copy")));
}

TEST_F(PlainFileTest, SocketsDevicesAndFoldersAreRefused) {
  const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const QByteArray name = path("socket").toLocal8Bit();
  ASSERT_LT(name.size(), static_cast<qsizetype>(sizeof address.sun_path));
  std::copy(name.begin(), name.end(), std::begin(address.sun_path));
  ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(specialFileFault(path("socket"), QStringLiteral("x")),
            QStringLiteral("x ist keine gewöhnliche Datei, sondern ein Socket."));
  EXPECT_FALSE(PlainFile(path("socket")).open());
  ::close(listener);
  EXPECT_FALSE(PlainFile(QStringLiteral("/dev/null")).open());
  EXPECT_FALSE(PlainFile(folder_.path()).open());
  EXPECT_FALSE(PlainFile(path("missing")).open());
  EXPECT_FALSE(PlainFile(QString()).open());
  EXPECT_TRUE(specialFileFault(path("missing")).isEmpty());
}

}  // namespace
}  // namespace lokari
