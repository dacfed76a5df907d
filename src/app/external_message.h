// How another program on this machine asks for a cab: D-Bus, session bus, service and interface
// org.lokari.Workbench, object /org/lokari/Workbench, method OpenCab(i address).
#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <optional>

namespace lokari {

class ExternalMessage final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.lokari.Workbench")

 public:
  /// `receive` gets each address from the event loop, after the caller has been answered: what it
  /// opens may wait for the user.
  explicit ExternalMessage(std::function<void(int)> receive);

  /// Takes messages from a bus. False without a bus, or when another instance has the name; the
  /// program then does without.
  bool listen(const QDBusConnection& bus);
  /// Gives the name back.
  void stop();

 public slots:
  Q_SCRIPTABLE void OpenCab(int address);

 private:
  std::function<void(int)> receive_;
  std::optional<QDBusConnection> bus_;
};

}  // namespace lokari
