#include "link/port_table.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>

namespace lokari {
namespace {

constexpr int kPathSize = 4096;

QString section() {
  return QStringLiteral("PORTS");
}

QString key(int comPort) {
  return QStringLiteral("COM%1").arg(comPort);
}

/// A name without a folder is a device of this machine: "ttyUSB0" is "/dev/ttyUSB0".
QString devicePath(const QString& text) {
  return text.isEmpty() || text.contains(u'/') ? text : QStringLiteral("/dev/") + text;
}

}  // namespace

PortTable::PortTable(const QString& appPath, QString adapters)
    : ini_(QDir(appPath).filePath(QStringLiteral("PORTS.INI"))), adapters_(std::move(adapters)) {}

QList<PortTable::Port> PortTable::ports() {
  std::array<QString, kLastPort> devices;
  for (int port = 1; port <= kLastPort; ++port) {
    devices[static_cast<size_t>(port - 1)] =
        devicePath(ini_.getString(section(), key(port), {}, kPathSize));
  }
  const QDir folder(adapters_);
  const QStringList names = folder.entryList(QDir::Files | QDir::System, QDir::Name);
  for (const QString& name : names) {
    const QString adapter = folder.filePath(name);
    if (std::find(devices.begin(), devices.end(), adapter) != devices.end()) continue;
    const auto free = std::find(devices.begin(), devices.end(), QString());
    if (free == devices.end()) break;
    *free = adapter;
    ini_.writeString(section(), key(static_cast<int>(free - devices.begin()) + 1), adapter);
  }
  QList<Port> result;
  for (int port = 1; port <= kLastPort; ++port) {
    const QString& path = devices[static_cast<size_t>(port - 1)];
    if (!path.isEmpty()) result.append({port, path});
  }
  return result;
}

QString PortTable::device(int comPort) {
  const QList<Port> table = ports();
  for (const Port& port : table) {
    if (port.comPort == comPort) return port.device;
  }
  return {};
}

QList<PortTable::Port> PortTable::presentPorts() {
  QList<Port> result = ports();
  result.removeIf([](const Port& port) { return !QFile::exists(port.device); });
  return result;
}

}  // namespace lokari
