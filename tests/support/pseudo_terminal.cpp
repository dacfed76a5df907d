#include "support/pseudo_terminal.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

namespace lokari::test {

PseudoTerminal::PseudoTerminal() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
  EXPECT_EQ(grantpt(master_), 0);
  EXPECT_EQ(unlockpt(master_), 0);
  port_ = QString::fromLocal8Bit(ptsname(master_));
  termios mode{};
  EXPECT_EQ(tcgetattr(master_, &mode), 0);
  cfmakeraw(&mode);
  EXPECT_EQ(tcsetattr(master_, TCSANOW, &mode), 0);
}

PseudoTerminal::~PseudoTerminal() {
  unplug();
}

void PseudoTerminal::send(const QByteArray& data) const {
  EXPECT_EQ(::write(master_, data.constData(), static_cast<size_t>(data.size())), data.size());
}

QByteArray PseudoTerminal::received() const {
  QByteArray data(4096, '\0');
  const ssize_t count = ::read(master_, data.data(), static_cast<size_t>(data.size()));
  return data.left(std::max<ssize_t>(count, 0));
}

void PseudoTerminal::unplug() {
  if (master_ >= 0) ::close(master_);
  master_ = -1;
}

}  // namespace lokari::test
