// Where the manual is.
#pragma once

#include <QString>

namespace lokari {

/// The help file of an installation: LOKARI.qhc in `basePath`, else in its folder HELP; where
/// there is none, LOKARI.CHM in the same two places. Empty when there is none at all.
QString findHelpFile(const QString& basePath);

}  // namespace lokari
