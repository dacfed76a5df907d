// The CAN traffic log, `CAN.log`: a line per event, written at once, so that other programs can
// follow it while it grows.
#pragma once

#include <QFile>

namespace lokari {

class Clock;

class CanLog {
 public:
  CanLog(const QString& path, const Clock& clock) : file_(path), clock_(clock) {}

  /// Creates the file, replacing an older one; does nothing when that has been done. A file that
  /// cannot be created is reported to nobody: nothing is logged then.
  void begin();
  bool isOpen() const { return file_.isOpen(); }
  /// Closes the file; what comes later is not logged.
  void end() { file_.close(); }

  /// "10:00:01.250 " in local time, the text, carriage return and line feed.
  void write(const QString& text);

 private:
  QFile file_;
  const Clock& clock_;
};

}  // namespace lokari
