// Why a file could not be made, read or written, in words for the user.
#pragma once

#include <QString>

namespace lokari {

/// German words for a number of the system's `errno`; the system's own words for a rare one.
QString fileFault(int error);

}  // namespace lokari
