#include "link/traced_serial_line.h"

#include "base/settings.h"
#include "link/link_error.h"
#include "link/trace_head.h"

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
    trace_.opening(
        QStringLiteral("öffnet %1 an %2")
            .arg(QString::fromUtf16(trace_.settings().station().name), portText(settings)));
  }
  cts_ = true;
  own_ = true;
  watched([&] { line_.open(settings); });
}

void TracedSerialLine::close() {
  if (line_.isOpen()) trace_.event(QStringLiteral("schließt die Schnittstelle"));
  line_.close();
  own_ = false;
}

qsizetype TracedSerialLine::inBufferCount() {
  return watched([&] { return line_.inBufferCount(); });
}

QByteArray TracedSerialLine::read(qsizetype most) {
  return watched([&] { return line_.read(most); });
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
