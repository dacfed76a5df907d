#include "link/can_message_text.h"

#include <algorithm>

#include "base/bytes.h"

namespace lokari {
namespace {

constexpr quint8 kLongIdentifier = 2;
constexpr int kMostBytes = 16;

QString digits(quint32 number, int count) {
  return QString::number(number, 16).toUpper().rightJustified(count, u'0');
}

QString longIdentifier(quint32 id) {
  const QString all = digits(id, 8);
  const QString group = all.left(2);
  const QString rest = u' ' + all.mid(2, 2) + u' ' + all.mid(4);
  if (all.startsWith(u'F')) return group + rest;
  return group + u' ' + QString::number((id >> 24) & 3) + rest;
}

}  // namespace

QString canMessageText(const CanMessage& message) {
  const QString id =
      (message.MSGTYPE & kLongIdentifier) != 0
          ? longIdentifier(message.ID)
          : digits(message.ID, 5) + QStringLiteral(" 0") + QString::number(message.ID & 7);
  const int shown = std::min<int>(message.LEN, kMostBytes);
  const QByteArray data(reinterpret_cast<const char*>(message.DATA.data()), shown);
  return id + QStringLiteral(" Len: %1 Data: ").arg(message.LEN) + hexDump(data);
}

}  // namespace lokari
