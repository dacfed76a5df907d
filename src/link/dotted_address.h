// An IP address as the settings hold it.
#pragma once

#include <QString>

#include <optional>

namespace lokari {

/// The address of a text "192.168.000.111", its first number highest. Leading zeros are decimal,
/// where a library would take them as octal.
std::optional<quint32> dottedAddress(const QString& text);

/// What the user is told of a text that is none.
QString noAddress(const QString& text);

}  // namespace lokari
