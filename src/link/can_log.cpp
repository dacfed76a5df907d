#include "link/can_log.h"

#include <QFileInfo>

#include "base/clock.h"

namespace lokari {

void CanLog::begin() {
  if (isOpen()) return;
  // A pipe would hold the start up until somebody reads it.
  if (QFileInfo::exists(file_.fileName()) && !QFileInfo(file_.fileName()).isFile()) return;
  file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
}

void CanLog::write(const QString& text) {
  if (!isOpen()) return;
  const QString time = clock_.localTime().toString(QStringLiteral("HH:mm:ss.zzz"));
  file_.write((time + u' ' + text + QStringLiteral("\r\n")).toLatin1());
}

}  // namespace lokari
