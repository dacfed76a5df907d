// Names of the Zimo decoder types.
#pragma once

#include <QStringList>

namespace lokari {

/// `decTypes`: 256 names by type code, empty where the table has none; entry 0 is never filled.
///
/// Reads Zimo/DecTypes.txt below `appPath`. A line counts when its first three characters make a
/// number from 1 to 255 and it holds a "="; the name is all that stands behind the first one. A
/// missing or unreadable file leaves every name empty.
QStringList loadDecTypes(const QString& appPath);

}  // namespace lokari
