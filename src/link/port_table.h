// Which device stands behind COM1 to COM10: the file PORTS.INI, section [PORTS], a line
// `COM3=/dev/serial/by-id/...` each. The user may set any path there, or the bare name of a device
// ("ttyUSB0").
#pragma once

#include <QList>
#include <QString>

#include "base/ini_file.h"

namespace lokari {

class PortTable {
 public:
  static constexpr int kLastPort = 10;

  struct Port {
    int comPort = 0;
    QString device;
  };

  /// `adapters` is the folder that names each plugged adapter by a stable link.
  explicit PortTable(const QString& appPath,
                     QString adapters = QStringLiteral("/dev/serial/by-id"));

  /// The device of a number, empty when it has none.
  QString device(int comPort);

  /// All numbers that have a device which is there now, in rising order.
  QList<Port> presentPorts();

 private:
  /// The table, after every adapter seen for the first time has got the lowest free number, which
  /// is written down so that it keeps it. Adapters beyond the last number get none.
  QList<Port> ports();

  IniFile ini_;
  QString adapters_;
};

}  // namespace lokari
