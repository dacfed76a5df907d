#include "support/memory_line.h"

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
  onWrite(data);
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
  if (open_) input_ += data;
}

QByteArray MemoryLine::sent() const {
  QByteArray all;
  for (const Write& one : writes) all += one.data;
  return all;
}

}  // namespace lokari::test
