#include "link/traced_serial_line.h"

#include "base/settings.h"
#include "link/link_error.h"

namespace lokari {

template <class Work>
auto TracedSerialLine::watched(const Work& work) {
  try {
    return work();
  } catch (const LinkError& error) {
    trace_.fault(error.message());
    throw;
  }
}

void TracedSerialLine::open(const SerialSettings& settings) {
  if (trace_.isWanted()) {
    QString text = QStringLiteral("öffnet COM%1 für %2, %3 Baud")
                       .arg(QString::number(settings.comPort),
                            QString::fromUtf16(trace_.settings().station().name),
                            QString::number(settings.baudrate));
    if (settings.handshaking == Handshaking::RequestToSend) text += QStringLiteral(", RTS/CTS");
    trace_.event(text);
  }
  cts_ = true;
  watched([&] { line_.open(settings); });
}

void TracedSerialLine::close() {
  if (line_.isOpen()) trace_.event(QStringLiteral("schließt die Schnittstelle"));
  line_.close();
}

qsizetype TracedSerialLine::inBufferCount() {
  return watched([&] { return line_.inBufferCount(); });
}

QByteArray TracedSerialLine::read(qsizetype most) {
  QByteArray data = watched([&] { return line_.read(most); });
  trace_.received(data);
  return data;
}

void TracedSerialLine::write(const QByteArray& data) {
  watched([&] { line_.write(data); });
  trace_.sent(data);
}

Millis TracedSerialLine::untilSent() {
  return watched([&] { return line_.untilSent(); });
}

void TracedSerialLine::setRtsEnable(bool raised) {
  watched([&] { line_.setRtsEnable(raised); });
  trace_.event(raised ? QStringLiteral("RTS ein") : QStringLiteral("RTS aus"));
}

void TracedSerialLine::setDtrEnable(bool raised) {
  watched([&] { line_.setDtrEnable(raised); });
  trace_.event(raised ? QStringLiteral("DTR ein") : QStringLiteral("DTR aus"));
}

bool TracedSerialLine::ctsHolding() {
  const bool raised = watched([&] { return line_.ctsHolding(); });
  if (raised != cts_) trace_.event(raised ? QStringLiteral("CTS ein") : QStringLiteral("CTS aus"));
  cts_ = raised;
  return raised;
}

}  // namespace lokari
