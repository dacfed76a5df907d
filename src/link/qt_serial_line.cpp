#include "link/qt_serial_line.h"

#include <QFile>

#include <algorithm>
#include <sys/ioctl.h>

#include "link/link_error.h"
#include "link/port_table.h"

namespace lokari {
namespace {

/// Why a port does not open, as the end of a sentence that begins with the port.
QString openFault(QSerialPort::SerialPortError error) {
  switch (error) {
    case QSerialPort::DeviceNotFoundError:
      return QStringLiteral("ist nicht da");
    case QSerialPort::PermissionError:
      return QStringLiteral("ist belegt oder nicht freigegeben");
    default:
      return QStringLiteral("ist keine serielle Schnittstelle");
  }
}

}  // namespace

QtSerialLine::QtSerialLine(PortTable& ports) : ports_(ports) {
  QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                   [this](QSerialPort::SerialPortError error) { onError(error); });
  QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] {
    hear();
    keepWithinLimit();
  });
}

QtSerialLine::~QtSerialLine() {
  close();
}

void QtSerialLine::open(const SerialSettings& settings) {
  close();
  settings_ = settings;
  device_ = ports_.device(settings.comPort);
  if (device_.isEmpty()) {
    throw LinkError(
        QStringLiteral("Für COM%1 steht in PORTS.INI kein Gerät!").arg(settings.comPort));
  }
  port_.setPortName(device_);
  port_.setBaudRate(settings.baudrate);
  port_.setDataBits(QSerialPort::Data8);
  port_.setParity(QSerialPort::NoParity);
  port_.setStopBits(QSerialPort::OneStop);
  port_.setFlowControl(settings.handshaking == Handshaking::RequestToSend
                           ? QSerialPort::HardwareControl
                           : QSerialPort::NoFlowControl);
  if (!port_.open(QIODevice::ReadWrite)) fail(openFault(port_.error()));
  vanished_ = false;
  port_.clear();
  heard_ = 0;
  sinceOpen_.start();
  sentBy_ = 0;
}

void QtSerialLine::close() {
  if (port_.isOpen() && !vanished_) {
    port_.flush();
    // Closing waits for what is still to be sent. A station that holds its line down would never
    // take it.
    if (settings_.handshaking == Handshaking::RequestToSend && !clearToSend()) {
      port_.clear(QSerialPort::Output);
    }
  }
  port_.close();
  vanished_ = false;
}

bool QtSerialLine::isOpen() const {
  return port_.isOpen() && !vanished_;
}

void QtSerialLine::onError(QSerialPort::SerialPortError error) {
  switch (error) {
    case QSerialPort::ResourceError:
    case QSerialPort::ReadError:
    case QSerialPort::WriteError:
    case QSerialPort::DeviceNotFoundError:
      break;
    default:  // time-outs, and modem lines that a device does not have
      return;
  }
  if (!port_.isOpen() || vanished_) return;
  vanished_ = true;
  // The dead device reports itself as readable for ever; closing ends that. Not from inside the
  // signal, which its notifier sends.
  QMetaObject::invokeMethod(
      &port_,
      [this] {
        if (vanished_) port_.close();
      },
      Qt::QueuedConnection);
}

void QtSerialLine::keepWithinLimit() {
  // Not by the port's own limit: it would keep the oldest, and hold up a station with handshaking.
  const qsizetype tooMany = port_.bytesAvailable() - kMostWaiting;
  if (tooMany > 0) heard_ -= port_.skip(tooMany);
}

void QtSerialLine::hear() {
  const qsizetype fresh = port_.bytesAvailable() - heard_;
  if (fresh <= 0) return;
  heard_ += fresh;
  if (onReceived) onReceived(port_.peek(heard_).right(fresh));
}

void QtSerialLine::fail(const QString& what) const {
  throw LinkError(QStringLiteral("Die Schnittstelle COM%1 (%2) %3!")
                      .arg(QString::number(settings_.comPort), device_, what));
}

void QtSerialLine::check() {
  if (port_.isOpen() && !vanished_ && !QFile::exists(device_)) vanished_ = true;
  if (vanished_) {
    port_.close();
    fail(QStringLiteral("ist nicht mehr da"));
  }
  if (!port_.isOpen()) fail(QStringLiteral("ist nicht geöffnet"));
}

qsizetype QtSerialLine::inBufferCount() {
  check();
  // Takes over what the system holds, which the event loop may not have come to yet.
  port_.waitForReadyRead(0);
  if (port_.bytesAvailable() == 0) check();
  return port_.bytesAvailable();
}

QByteArray QtSerialLine::read(qsizetype most) {
  const qsizetype waiting = inBufferCount();
  hear();
  const QByteArray taken = port_.read(most == 0 ? waiting : std::min(most, waiting));
  heard_ -= taken.size();
  return taken;
}

void QtSerialLine::write(const QByteArray& data) {
  check();
  port_.write(data);
  port_.flush();
  check();
  sentBy_ = std::max(sentBy_, sinceOpen_.elapsed()) + timeOnWire(data.size(), settings_.baudrate);
}

Millis QtSerialLine::untilSent() {
  check();
  // What the system still holds shows a station that keeps the line; it does not know what an
  // adapter has in its own memory, which the rate tells.
  int held = 0;
  if (ioctl(port_.handle(), TIOCOUTQ, &held) != 0) held = 0;
  const Millis byQueue = timeOnWire(port_.bytesToWrite() + held, settings_.baudrate);
  return std::max({byQueue, sentBy_ - sinceOpen_.elapsed(), Millis{0}});
}

void QtSerialLine::setRtsEnable(bool raised) {
  check();
  const bool handshaking = settings_.handshaking == Handshaking::RequestToSend;
  if (handshaking && !raised) port_.setFlowControl(QSerialPort::NoFlowControl);
  port_.setRequestToSend(raised);
  if (handshaking && raised) port_.setFlowControl(QSerialPort::HardwareControl);
}

void QtSerialLine::setDtrEnable(bool raised) {
  check();
  port_.setDataTerminalReady(raised);
}

bool QtSerialLine::ctsHolding() {
  check();
  return clearToSend();
}

bool QtSerialLine::clearToSend() {
  port_.clearError();
  const QSerialPort::PinoutSignals lines = port_.pinoutSignals();
  return port_.error() != QSerialPort::NoError || lines.testFlag(QSerialPort::ClearToSendSignal);
}

}  // namespace lokari
