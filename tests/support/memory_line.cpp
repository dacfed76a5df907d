#include "support/memory_line.h"

#include <algorithm>

#include "link/link_error.h"

namespace lokari::test {

void MemoryLine::open(const SerialSettings& settings) {
  if (failsToOpen || vanished_) throw LinkError(QStringLiteral("Kein Gerät!"));
  opened = settings;
  open_ = true;
  input_.clear();
  ++opens;
}

void MemoryLine::close() {
  if (open_) ++closes;
  open_ = false;
}

void MemoryLine::check() const {
  if (!open_) throw LinkError(QStringLiteral("Die Schnittstelle ist nicht geöffnet!"));
  if (vanished_) throw LinkError(QStringLiteral("Die Schnittstelle ist nicht mehr da!"));
}

qsizetype MemoryLine::inBufferCount() {
  check();
  return input_.size();
}

QByteArray MemoryLine::read(qsizetype most) {
  check();
  const QByteArray taken = most == 0 ? input_ : input_.left(most);
  input_.remove(0, taken.size());
  return taken;
}

void MemoryLine::write(const QByteArray& data) {
  check();
  writes.append({clock_.now(), data});
  if (!atLineSpeed) {
    onWrite(data);
    return;
  }
  sentBy_ = std::max(sentBy_, clock_.now()) + timeOnWire(data.size(), opened.baudrate);
  clock_.schedule(sentBy_ - clock_.now(), [this, data] {
    if (isOpen()) onWrite(data);
  });
}

Millis MemoryLine::untilSent() {
  check();
  return std::max<Millis>(sentBy_ - clock_.now(), 0);
}

void MemoryLine::setRtsEnable(bool raised) {
  check();
  rtsChanges.append(raised);
}

void MemoryLine::setDtrEnable(bool raised) {
  check();
  dtrChanges.append(raised);
}

bool MemoryLine::ctsHolding() {
  check();
  return cts;
}

void MemoryLine::arrive(const QByteArray& data) {
  if (!open_) return;
  input_ += data;
  if (onReceived) onReceived(data);
}

QByteArray MemoryLine::sent() const {
  QByteArray all;
  for (const Write& one : writes) all += one.data;
  return all;
}

}  // namespace lokari::test
