#include "link/dotted_address.h"

#include <QStringList>

namespace lokari {

std::optional<quint32> dottedAddress(const QString& text) {
  const QStringList parts = text.trimmed().split(u'.');
  if (parts.size() != 4) return std::nullopt;
  quint32 address = 0;
  for (const QString& part : parts) {
    bool valid = false;
    const uint number = part.trimmed().toUInt(&valid, 10);
    if (!valid || number > 255) return std::nullopt;
    address = address << 8 | number;
  }
  // The address of no station in particular.
  if (address == 0) return std::nullopt;
  return address;
}

QString noAddress(const QString& text) {
  if (text.trimmed().isEmpty()) {
    return QStringLiteral("In den Optionen steht keine IP-Adresse!");
  }
  return QStringLiteral("In den Optionen steht \"%1\", das ist keine IP-Adresse!").arg(text);
}

}  // namespace lokari
