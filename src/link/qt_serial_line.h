// A serial port of this machine, by the number that the port table gives it.
#pragma once

#include <QElapsedTimer>
#include <QSerialPort>

#include "link/serial_line.h"

namespace lokari {

class PortTable;

class QtSerialLine final : public SerialLine {
 public:
  /// Bytes that wait at most. A cab may leave a talking station, or a line that gives noise, unread
  /// for hours; older ones are dropped.
  static constexpr qsizetype kMostWaiting = 65536;

  /// `ports` must outlive the line.
  explicit QtSerialLine(PortTable& ports);
  ~QtSerialLine() override;

  void open(const SerialSettings& settings) override;
  void close() override;
  bool isOpen() const override;
  qsizetype inBufferCount() override;
  QByteArray read(qsizetype most = 0) override;
  void write(const QByteArray& data) override;
  Millis untilSent() override;
  void setRtsEnable(bool raised) override;
  void setDtrEnable(bool raised) override;
  bool ctsHolding() override;

 private:
  void onError(QSerialPort::SerialPortError error);
  /// Drops the oldest of what nobody reads.
  void keepWithinLimit();
  /// Tells onReceived what has come since the last call.
  void hear();
  /// Throws when the port is closed or its device has vanished.
  void check();
  /// Never throws.
  bool clearToSend();
  [[noreturn]] void fail(const QString& what) const;

  PortTable& ports_;
  QSerialPort port_;
  SerialSettings settings_;
  QString device_;
  bool vanished_ = false;
  qsizetype heard_ = 0;  // bytes of those that wait
  QElapsedTimer sinceOpen_;
  Millis sentBy_ = 0;  // when all that was written is on the wire at its rate, since the opening
};

}  // namespace lokari
