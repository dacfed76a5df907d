#include "sim/pseudo_terminal.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

namespace lokari::sim {

PseudoTerminal::~PseudoTerminal() {
  close();
}

QString PseudoTerminal::open(const QString& link) {
  const QFileInfo old(link);
  if (old.exists() && !old.isSymLink()) {
    return QStringLiteral("%1 gibt es schon und ist keine Verknüpfung!").arg(link);
  }
  near_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (near_ < 0 || grantpt(near_) != 0 || unlockpt(near_) != 0) {
    return QStringLiteral("Kann kein Pseudoterminal öffnen!");
  }
  std::array<char, 128> name{};
  if (ptsname_r(near_, name.data(), name.size()) != 0) {
    return QStringLiteral("Kann kein Pseudoterminal öffnen!");
  }
  device_ = QString::fromLocal8Bit(name.data());
  far_ = ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  termios mode{};
  if (far_ < 0 || tcgetattr(far_, &mode) != 0) {
    return QStringLiteral("Kann %1 nicht öffnen!").arg(device_);
  }
  cfmakeraw(&mode);
  tcsetattr(far_, TCSANOW, &mode);

  QFile::remove(link);
  if (!QFile::link(device_, link)) return QStringLiteral("Kann %1 nicht anlegen!").arg(link);
  link_ = link;

  notifier_ = std::make_unique<QSocketNotifier>(near_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this] { receive(); });
  return {};
}

void PseudoTerminal::close() {
  notifier_.reset();
  // Another run may have put its own link there.
  if (!link_.isEmpty() && QFile::symLinkTarget(link_) == device_) QFile::remove(link_);
  link_.clear();
  if (far_ >= 0) ::close(far_);
  if (near_ >= 0) ::close(near_);
  far_ = -1;
  near_ = -1;
}

void PseudoTerminal::send(const QByteArray& data) const {
  if (near_ < 0) return;
  const ssize_t sent = ::write(near_, data.constData(), static_cast<size_t>(data.size()));
  Q_UNUSED(sent)
}

void PseudoTerminal::receive() const {
  std::array<char, 4096> buffer{};
  const ssize_t count = ::read(near_, buffer.data(), buffer.size());
  if (count > 0 && onReceive) onReceive(QByteArray(buffer.data(), count));
}

}  // namespace lokari::sim
