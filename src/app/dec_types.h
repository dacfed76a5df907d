// Names of the Zimo decoder types.
#pragma once

#include <QString>

#include <array>

namespace lokari {

/// `decTypes`: the name of each type code; empty where the table has none. Entry 0 is never filled.
using DecTypes = std::array<QString, 256>;

/// Reads Zimo/DecTypes.txt below `appPath`. A line counts when its first three characters make a
/// number from 1 to 255 and it holds a "="; the name is all that stands behind the first one. A
/// missing or unreadable file leaves every name empty.
DecTypes loadDecTypes(const QString& appPath);

}  // namespace lokari
